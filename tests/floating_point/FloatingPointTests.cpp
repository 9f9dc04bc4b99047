// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// FloatingPointTests.cpp - a host with its own floating-point control words gets the usual values and no trap. Its
// words are unchanged after every call, every callback and every exception.

#include "mathexpr/CMathExpr.h"
#include "mathexpr/Diagnostics.h"
#include "mathexpr/MessageDisplay.h"
#include "mathexpr/SMTDefExcepData.h"
#include "mathexpr/SMTParsingExcepData.h"
#include "tests/floating_point/HostWords.h"

#if defined(HOST_WORDS_KNOWN)

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

/// Runs work with the words of a host, and returns the words afterwards.
template <class Work>
Words wordsAfter(const Words& words, Work work)
{
    struct Restore
    {
        ~Restore() { librarys.set(); }
    } restore;
    words.set();
    work();
    return Words::current();
}

/// The hosts, with the bits that this processor supports.
std::vector<Words> hostsHere()
{
    std::vector<Words> words;
    for (const Words& host : hosts)
    {
        words.push_back(wordsAfter(host, [] {}));
    }
    return words;
}

/// The result of a host with these words.
double quotient(const Words& words, double dividend, double divisor)
{
    volatile double numerator = dividend;
    volatile double denominator = divisor;
    volatile double result = 0.0;
    wordsAfter(words, [&] { result = numerator / denominator; });
    return result;
}

/// A NaN with a sign and a payload, which arithmetic propagates.
double tellingNaN()
{
    constexpr std::uint64_t bits = 0xFFF8'0000'0000'0123;
    double nan = 0.0;
    std::memcpy(&nan, &bits, sizeof(nan));
    return nan;
}

bool sameBytes(double left, double right)
{
    return std::memcmp(&left, &right, sizeof(double)) == 0;
}

constexpr const wchar_t* telling[] = {
    L"1/3",
    L"0-1/3",
    L"2/3*1.1",
    L"exp(1000)",
    L"exp(-1000)",
    L"10^400",
    L"10^-320*1",
    L"mod(5,0)",
    L"5%0",
    L"5.5%2",
    L"fact(200)",
    L"sin(30)",
    L"tan(90)",
    L"sinh(1e+9)",
    L"acos(0.3)",
    L"sqrt(2)",
    L"ln(3)",
    L"log(7)",
    L"exp10(0-400)",
    L"nor([0,0,0],[0,0,0])",
    L"vec1([0,0,0],[0,0,0])",
    L"dist([0,0,0],[1,1,1])",
    L"ill([0,0,0],[1,0,0],[0,1,0],[1,1,0])",
    L"ill([0,0,0],[1,1,1],[0,1,0],[1,0,1])",
    L"round(0.5)",
    L"trunc(2.5)",
    L"0.1+0.2",
    L"0.1*3",
    L"10^308*10",
    L"m2f(1)",
    L"(10^200)*(10^200)-(10^200)*(10^200)",
    L"[1,2,3]/3",
    L"2^0.5",
    L"atan(1)",
};

class ControlWords : public testing::TestWithParam<Words>
{
protected:
    void SetUp() override
    {
        // Checks only that messages are shown with the host's words in force.
        before = mathexpr::setMessageDisplay({[](void* context, std::uint32_t, const wchar_t*) {
                                                  static_cast<ControlWords*>(context)->whileShowing = Words::current();
                                              },
                                              this});
    }
    void TearDown() override { mathexpr::setMessageDisplay(before); }

    Words whileShowing{};

private:
    mathexpr::ProcessMessageDisplay before;
};

TEST_P(ControlWords, NeitherTrapNorChangeAValue)
{
    for (const wchar_t* text : telling)
    {
        VALTYPE expected;
        VALTYPE found;
        bool expectedOk = false;
        bool foundOk = true;
        {
            CMathExpr calculator;
            expectedOk = calculator.Calculate(text, expected, 2147483647);
        }
        CMathExpr calculator;
        EXPECT_EQ(wordsAfter(GetParam(), [&] { foundOk = calculator.Calculate(text, found, 2147483647); }), GetParam());
        EXPECT_EQ(foundOk, expectedOk) << text;
        EXPECT_TRUE(sameBytes(found.x, expected.x) && sameBytes(found.y, expected.y) && sameBytes(found.z, expected.z))
            << text << ' ' << found.x << " instead of " << expected.x;
    }
}

TEST_P(ControlWords, NeitherTrapNorChangeAValueThatIsNotFolded)
{
    struct Host : IMathExprService
    {
        bool lookupValue(const wchar_t* name, VALTYPE& value) const override
        {
            value.x = *name == L'z' ? 0.0 : *name == L'n' ? tellingNaN() : 3.0;
            return true;
        }
    } host;
    for (const wchar_t* text : {L"one/three+1/three", L"1%zero", L"exp(three*1000)", L"ln(three)/three",
                                L"nor([zero,zero,zero],[zero,zero,zero])", L"(10^three)^(three*100)", L"nan+one",
                                L"three*nan", L"10^(0-107*three)*one"})
    {
        MathExpression plain(true, &host);
        MathExpression guarded(true, &host);
        VALTYPE expected;
        VALTYPE found;
        ASSERT_TRUE(plain.setExpression(text) && guarded.setExpression(text));
        const bool expectedOk = plain.evaluate(expected);
        // With the interpreter, with scalar code, and on the fast path.
        for (int run = 0; run < 3; ++run)
        {
            bool foundOk = false;
            EXPECT_EQ(wordsAfter(GetParam(), [&] { foundOk = guarded.evaluate(found); }), GetParam());
            EXPECT_EQ(foundOk, expectedOk) << text;
            EXPECT_TRUE(sameBytes(found.x, expected.x) && sameBytes(found.y, expected.y) &&
                        sameBytes(found.z, expected.z))
                << text << ", run " << run;
        }
    }
}

TEST_P(ControlWords, AreTheHostsInItsService)
{
    struct Host : IMathExprService
    {
        mutable Words seen{};
        mutable Words seenAfterwards{};
        bool lookupValue(const wchar_t*, VALTYPE& value) const override
        {
            seen = Words::current();
            MathExpression inner(true, nullptr);
            VALTYPE result;
            inner.setExpression(L"1/3+exp(1000)") && inner.evaluate(result);
            seenAfterwards = Words::current();
            fromCallback.set();  // changes by the service end with its call
            value.x = 3;
            return true;
        }
    } host;
    MathExpression expression(true, &host);
    VALTYPE result;
    bool ok = false;
    const Words after = wordsAfter(GetParam(), [&] {
        ok = expression.setExpression(L"name/3+exp(1000)+1/3*name") && expression.evaluate(result);
    });
    EXPECT_EQ(after, GetParam());
    EXPECT_EQ(host.seen, GetParam());
    EXPECT_EQ(host.seenAfterwards, GetParam());
    EXPECT_TRUE(ok);
    EXPECT_TRUE(std::isinf(result.x));
}

TEST_P(ControlWords, AreTheHostsInItsNameSource)
{
    struct Names : mathexpr::IMathExprNameSource
    {
        mutable std::vector<Words> seen;
        bool throws = false;
        const wchar_t* getName(std::uint32_t index) const override
        {
            seen.push_back(Words::current());
            if (throws)
            {
                throw std::runtime_error("refused");
            }
            MathExpression inner(true, nullptr);
            VALTYPE result;
            inner.setExpression(L"1/3+exp(1000)") && inner.evaluate(result);
            seen.push_back(Words::current());
            fromCallback.set();  // changes by the name source end with its call
            return index < 2 ? L"width" : nullptr;
        }
    } names;
    CMathExpr calculator;
    mathexpr::setNameSource(mathexpr::expressionOf(calculator), &names);
    VALTYPE result;
    mathexpr::ExpressionDiagnostic diagnostic;
    bool caught = false;
    EXPECT_EQ(wordsAfter(GetParam(),
                         [&] {
                             calculator.Calculate(L"wdith", result, 2147483647);
                             diagnostic = mathexpr::getDiagnostic(mathexpr::expressionOf(calculator));
                         }),
              GetParam());
    EXPECT_EQ(names.seen, std::vector<Words>(6, GetParam()));
    EXPECT_EQ(diagnostic.suggestions, std::vector<std::wstring>{L"width"});
    names.throws = true;
    EXPECT_EQ(wordsAfter(GetParam(),
                         [&] {
                             try
                             {
                                 mathexpr::getDiagnostic(mathexpr::expressionOf(calculator));
                             }
                             catch (const std::runtime_error&)
                             {
                                 caught = Words::current() == GetParam();
                             }
                         }),
              GetParam());
    EXPECT_TRUE(caught);
}

TEST_P(ControlWords, AreTheHostsAfterAnException)
{
    struct Host : IMathExprService
    {
        bool lookupValue(const wchar_t*, VALTYPE&) const override { throw std::runtime_error("refused"); }
    } host;
    MathExpression silent(true, &host);
    CMathExpr calculator;
    bool caught[3] = {};
    Words inHandler[3] = {};
    const auto attempt = [&](int index, auto work) {
        return wordsAfter(GetParam(), [&] {
            try
            {
                work();
            }
            catch (const mathexpr::ParsingException&)
            {
                caught[index] = true;
                inHandler[index] = Words::current();
            }
            catch (const std::runtime_error&)
            {
                caught[index] = true;
                inHandler[index] = Words::current();
            }
        });
    };
    VALTYPE result;
    EXPECT_EQ(attempt(0, [&] { silent.setExpression(L"1+"); }), GetParam());
    EXPECT_EQ(attempt(1, [&] { silent.setExpression(L"1+name"); }), GetParam());
    EXPECT_EQ(attempt(2, [&] { calculator.Calculate(L"sin([1,2,3])", result, 2147483647); }), GetParam());
    for (int index = 0; index < 3; ++index)
    {
        EXPECT_TRUE(caught[index]) << index;
        EXPECT_EQ(inHandler[index], GetParam()) << index;
    }
}

TEST_P(ControlWords, AreTheHostsWhileAMessageIsShown)
{
    CMathExpr calculator;
    VALTYPE result;
    bool ok = true;
    EXPECT_EQ(wordsAfter(GetParam(), [&] { ok = calculator.Calculate(L"1/0", result, 2147483647); }), GetParam());
    EXPECT_FALSE(ok);
    EXPECT_EQ(whileShowing, GetParam());
}

INSTANTIATE_TEST_SUITE_P(Hosts, ControlWords, testing::ValuesIn(hostsHere()));

// Without this, the tests above would prove nothing.
TEST(HostsWords, ChangeWhatTheHostComputes)
{
    EXPECT_GT(quotient(roundsUp, 1.0, 3.0), quotient(librarys, 1.0, 3.0));
    const double denormal = std::numeric_limits<double>::min() / 4.0;
    EXPECT_GT(quotient(librarys, denormal, 2.0), 0.0);
    EXPECT_EQ(quotient(flushesToZero, denormal, 2.0), 0.0);
#if defined(__aarch64__)
    EXPECT_TRUE(sameBytes(quotient(librarys, tellingNaN(), 2.0), tellingNaN()));
    EXPECT_FALSE(sameBytes(quotient(losesPayloads, tellingNaN(), 2.0), tellingNaN()));
#endif
}

#if !defined(__aarch64__)  // which has them in another register
TEST(StatusFlags, OfTheHostAreKeptWhereItsWordsDiffer)
{
    // The overflow sets no flag of the host, and the host's own flag, division by zero, stays set.
    CMathExpr calculator;
    VALTYPE result;
    _mm_setcsr(0x1F80 | 0x4000 | 0x04);
    calculator.Calculate(L"exp(1000)", result, 2147483647);
    const std::uint32_t after = _mm_getcsr();
    _mm_setcsr(0x1F80);
    EXPECT_EQ(after, 0x1F80U | 0x4000U | 0x04U);
}
#endif

}

#endif
