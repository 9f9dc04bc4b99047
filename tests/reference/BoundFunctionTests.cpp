// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// BoundFunctionTests.cpp - compares functions of numbers with the reference: every call with a new session.
#include "ExpressionGenerator.h"
#include "ReferenceEvaluator.h"
#include "Settings.h"

#include "MTParserLib/MTParser.h"
#include "MTParserLib/run/MTBoundFunction.h"
#include "mathexpr/MathExpression.h"
#include "mathexpr/SMTParsingExcepData.h"

#include <gtest/gtest.h>

#include <array>
#include <cfenv>
#include <cstring>
#include <memory>
#include <string>

void showMessage(Message::Id id)
{
    FAIL() << "message " << id;
}

namespace {

using reference::Random;

const std::array<std::wstring, 3> names = {L"a", L"b", L"c"};

VALTYPE number(double x)
{
    VALTYPE value;
    value.x = x;
    return value;
}

/// A formula of the arguments, with numbers and points; p is a point, k a number.
std::wstring formula(Random& random, std::size_t depth)
{
    static const std::array<std::wstring, 10> binary = {L"+", L"-", L"*", L"/", L"*", L"&", L"*", L"^", L">", L"|"};
    static const std::array<std::wstring, 9> unary = {L"-",   L"sqrt",   L"ln", L"abs", L"fact",
                                                      L"m2m", L"sf2skm", L"!",  L"asin"};
    static const std::array<std::wstring, 6> ofTwo = {L"min", L"dist", L"nor", L"vec", L"vec1", L"pow"};
    static const std::array<std::wstring, 7> leaves = {L"a", L"b", L"c", L"k", L"p", L"2.5", L"[1,2.5,-3]"};
    if (depth == 0 || random.chance(12))
    {
        return random.pick(leaves);
    }
    const auto operand = [&] { return formula(random, depth - 1); };
    const std::size_t kind = random.below(100);
    if (kind < 50)
    {
        return L"(" + operand() + random.pick(binary) + operand() + L")";
    }
    if (kind < 65)
    {
        return L"(" + random.pick(unary) + L"(" + operand() + L"))";
    }
    if (kind < 82)
    {
        return random.pick(ofTwo) + L"(" + operand() + L"," + operand() + L")";
    }
    if (kind < 95)
    {
        return L"[" + operand() + L"," + operand() + L"," + operand() + L"]";
    }
    return kind < 98 ? L"min(" + operand() + L"," + operand() + L",3,k)"
                     : L"ill(p," + operand() + L"," + operand() + L",[9,8,7])";
}

/// A host that knows the arguments, p and k.
reference::Host hostWith(const std::array<double, 3>& arguments)
{
    return [=](const std::wstring& name, VALTYPE& value) {
        for (std::size_t j = 0; j < names.size(); ++j)
        {
            if (name == names[j])
            {
                value = number(arguments[j]);
                return true;
            }
        }
        value = name == L"p" ? VALTYPE{1, 0, 0, 0, 1.0, 2.0, 3.0} : number(4.0);
        return name == L"p" || name == L"k";
    };
}

/// A session that has compiled a text, and the function made from it.
struct Bound
{
    /// @param hostsVariable  whether a variable may run code of the host, so that all variables are copied
    explicit Bound(const std::wstring& text, bool hostsVariable = false)
    {
        if (hostsVariable)
        {
            session.getRegistrar().defineVariable(new MathExpression::MemVariableEvaluator(L"h", number(1.0)));
        }
        std::array<const VALTYPE*, 3> arguments{};
        for (std::size_t j = 0; j < names.size(); ++j)
        {
            define(names[j], number(0.0));
            arguments[j] = session.getRegistrar().findVariable(names[j])->getValuePtr();
        }
        define(L"p", {1, 0, 0, 0, 1.0, 2.0, 3.0});
        define(L"k", number(4.0));
        if (compiles(text))
        {
            function = std::make_unique<MTBoundFunction>(session.getProgram(), arguments);
        }
    }

    bool compiles(const std::wstring& text)
    {
        std::wstring assignTarget;
        try
        {
            return session.compile(text.c_str(), false, assignTarget);
        }
        catch (const mathexpr::ParsingException&)
        {
            return false;
        }
    }

    void define(const std::wstring& name, const VALTYPE& value)
    {
        session.defineVariable(std::make_unique<MathExpression::MemVariableEvaluator>(name.c_str(), value));
    }

    MTParser session{false, nullptr};
    std::unique_ptr<MTBoundFunction> function;  // only if the text compiles
};

bool areSame(double left, double right)
{
    return std::memcmp(&left, &right, sizeof left) == 0 || (left != left && right != right);
}

double someNumber(Random& random)
{
    static constexpr std::array<double, 9> numbers = {0.0, -0.0, 1.0, 2.5, -3.0, 4.0, 9.0, 0.3048, 30.0};
    return random.pick(numbers);
}

TEST(BoundFunction, ComputesWhatAFreshSessionDoes)
{
    std::size_t nbNumbers = 0;
    std::size_t nbPoints = 0;
    std::size_t nbRefused = 0;
    const std::uint64_t first = reference::firstSeed();
    const std::uint64_t count = reference::fromEnvironment("MATHEXPR_DIFFERENTIAL_COUNT", 6000);
    for (std::uint64_t seed = first; seed < first + count; ++seed)
    {
        Random random(seed);
        const std::wstring text = formula(random, 1 + seed % 4);
        Bound bound(text);
        std::array<std::array<double, 3>, 2> places{};
        for (int call = 0; call < 12 && bound.function != nullptr; ++call)
        {
            std::array<double, 3>& arguments = places[random.below(2)];
            arguments = {someNumber(random), someNumber(random), someNumber(random)};
            reference::Session session(false, hostWith(arguments));
            ASSERT_TRUE(session.setExpression(text).returned);
            const reference::Outcome expected = session.evaluate(VALTYPE{});
            if (bound.function->yieldsPoint())
            {
                ASSERT_TRUE(!expected.returned || expected.value.type == 1) << reference::printable(text);
                ++nbPoints;
                continue;
            }
            double result = 77.0;
            ASSERT_EQ(bound.function->call(arguments.data(), result), expected.returned) << reference::printable(text);
            ASSERT_TRUE(areSame(result, expected.returned ? expected.value.x : 77.0))
                << reference::printable(text) << " seed " << seed;
            ASSERT_EQ(expected.value.type, 0) << reference::printable(text);
            ++(expected.returned ? nbNumbers : nbRefused);
        }
    }
    EXPECT_GT(nbNumbers, count);
    EXPECT_GT(nbPoints, count);
    EXPECT_GT(nbRefused, count);
}

// "-" for numbers does not write the kind of its result, which was a point before.
TEST(BoundFunction, OfAProgramThatHasRunWithPointsIsStillOneOfNumbers)
{
    Bound bound(L"a-b");
    std::array<const VALTYPE*, 2> variables{};
    for (std::size_t j = 0; j < variables.size(); ++j)
    {
        VALTYPE* const value = bound.session.getRegistrar().findVariable(names[j])->getValuePtr();
        *value = {1, 0, 0, 0, 1.0, 2.0, 3.0};
        variables[j] = value;
    }
    ASSERT_TRUE(bound.session.run(false));
    MTBoundFunction function(bound.session.getProgram(), variables);
    EXPECT_FALSE(function.yieldsPoint());
    const std::array<double, 2> arguments = {5.0, 3.0};
    double result = 0.0;
    ASSERT_TRUE(function.call(arguments.data(), result));
    EXPECT_EQ(result, 2.0);
}

// The result may overwrite an argument, and each call may pass another array. One text is computed on records.
TEST(BoundFunction, ReadsTheArrayOfTheCall)
{
    for (const wchar_t* text : {L"a-2*b", L"a-m2m(b)"})
    {
        const Bound bound(text);
        std::array<double, 9> arguments = {10.0, 2.0, 0.0, 20.0, 2.0, 0.0, 30.0, 2.0, 0.0};
        const auto difference = [&](std::size_t place, double& result) {
            EXPECT_TRUE(bound.function->call(&arguments[place], result));
            return result;
        };
        const double subtracted = 10.0 - difference(0, arguments[2]);
        EXPECT_EQ(subtracted, text == std::wstring(L"a-2*b") ? 4.0 : 2.0);
        for (const std::size_t place : {0U, 3U, 6U, 6U, 6U, 0U, 0U})
        {
            const double before = arguments[place];
            EXPECT_EQ(difference(place, arguments[place]), before - subtracted) << place;
        }
    }
}

// No step consumes the copy of a, which scalar code does not support.
TEST(BoundFunction, InterpretsAProgramThatScalarCodeCannotRun)
{
    const Bound bound(L"-((a),b)", true);
    for (const double b : {2.0, 3.0})
    {
        const std::array<double, 3> arguments = {0.5, b, 0.0};
        double result = 0.0;
        ASSERT_TRUE(bound.function->call(arguments.data(), result));
        EXPECT_EQ(result, -b);
    }
}

// Programs that are too long for scalar code are interpreted.
TEST(BoundFunction, ComputesTextsOfAnyLength)
{
    std::wstring text = L"a";
    for (int term = 0; term < 5000; ++term)
    {
        text += L"+b";
    }
    const Bound bound(text);
    for (const double b : {2.0, 3.0})
    {
        const std::array<double, 3> arguments = {0.5, b, 0.0};
        double result = 0.0;
        ASSERT_TRUE(bound.function->call(arguments.data(), result));
        EXPECT_EQ(result, 0.5 + 5000 * b);
    }
}

// A dot product is added to the content of its slot.
TEST(BoundFunction, ForgetsEarlierCallsOfLongTexts)
{
    std::wstring text = L"[a,1,2]*[3,b,4]";
    for (int term = 0; term < 5000; ++term)
    {
        text += L"+b";
    }
    const Bound bound(text);
    for (const double b : {2.0, 3.0, 3.0})
    {
        const std::array<double, 3> arguments = {0.5, b, 0.0};
        double result = 0.0;
        ASSERT_TRUE(bound.function->call(arguments.data(), result));
        EXPECT_EQ(result, 9.5 + 5001 * b);
    }
}

// A dot product of flagged points is computed on records.
TEST(BoundFunction, ForgetsEarlierProductsOfFlaggedPoints)
{
    Bound bound(L"p*p+a");
    VALTYPE& p = *bound.session.getRegistrar().findVariable(L"p")->getValuePtr();
    p.flag = 1;
    const std::array<const VALTYPE*, 1> arguments = {bound.session.getRegistrar().findVariable(L"a")->getValuePtr()};
    MTBoundFunction function(bound.session.getProgram(), arguments);
    for (const double a : {0.5, 2.0, 2.0})
    {
        double result = 0.0;
        ASSERT_TRUE(function.call(&a, result));
        EXPECT_EQ(result, 14.0 + a);
    }
}

// For parallel lines, the result is the content of its slot before the first call.
TEST(BoundFunction, ForgetsEarlierIntersections)
{
    const Bound bound(L"ill([0,0,1],[a,b,1],[0,2,1],[2,0,1])*[1,10,100]");
    for (const auto& [b, expected] : {std::pair{1.0, 111.0}, {-1.0, 0.0}, {1.0, 111.0}, {-1.0, 0.0}})
    {
        const std::array<double, 3> arguments = {1.0, b, 0.0};
        double result = 77.0;
        ASSERT_TRUE(bound.function->call(arguments.data(), result));
        EXPECT_EQ(result, expected);
    }
}

// The host may have changed the rounding direction.
TEST(BoundFunction, ComputesWithTheLibrarysFloatingPointWords)
{
    const Bound bound(L"a/b+c");
    const std::array<double, 3> arguments = {1.0, 3.0, 0.1};
    double expected = 0.0;
    double result = 0.0;
    // The second call binds the array, as later calls use it.
    ASSERT_TRUE(bound.function->call(arguments.data(), expected));
    ASSERT_TRUE(bound.function->call(arguments.data(), expected));
    std::fesetround(FE_UPWARD);
    const bool called = bound.function->call(arguments.data(), result);
    const int rounding = std::fegetround();
    std::fesetround(FE_TONEAREST);
    EXPECT_TRUE(called);
    EXPECT_EQ(result, expected);
    EXPECT_EQ(rounding, FE_UPWARD);
}

}
