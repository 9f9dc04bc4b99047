// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// HostServiceTests.cpp - hosts whose service supplies a value, refuses, throws, or calls the library.
#include "mathexpr/CMathExpr.h"
#include "mathexpr/Diagnostics.h"
#include "mathexpr/MathExpression.h"
#include "mathexpr/MessageDisplay.h"
#include "mathexpr/SMTDefExcepData.h"
#include "mathexpr/SMTParsingExcepData.h"
#include "mathexpr/Variables.h"
#include "tests/support/MessageRecorder.h"
#include "tests/unit/Hosts.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

using Ids = std::vector<std::uint32_t>;

struct HostFailure
{
    int code;
};

constexpr VALTYPE untouched{7, 7, 7, 7, 7.0, 7.0, 7.0};

bool isUntouched(const VALTYPE& value)
{
    return std::memcmp(&value, &untouched, sizeof(VALTYPE)) == 0;
}

double valueOf(MathExpression& expression, const wchar_t* text)
{
    VALTYPE value = untouched;
    EXPECT_TRUE(expression.setExpression(text));
    EXPECT_TRUE(expression.evaluate(value));
    return value.x;
}

TEST(HostService, IsCalledWithTheNameAsWrittenAndAFreshValue)
{
    CallingHost host;
    std::wstring asked;
    host.lookup = [&](const wchar_t* name, VALTYPE& value) {
        asked = name;
        const VALTYPE zero{};
        EXPECT_EQ(std::memcmp(&value, &zero, sizeof(VALTYPE)), 0);
        value = point(1.0, 2.0, 3.0);
        return true;
    };
    MathExpression expression(true, &host);
    VALTYPE value;
    ASSERT_TRUE(expression.setExpression(L"2*aName"));
    EXPECT_EQ(asked, L"aName");
    ASSERT_TRUE(expression.evaluate(value));
    EXPECT_EQ(value.type, 1);
    EXPECT_EQ(value.x, 2.0);
    EXPECT_EQ(value.y, 4.0);
    EXPECT_EQ(value.z, 6.0);
}

TEST(HostService, IsCalledOnceForANameThatItKnows)
{
    CallingHost host;
    int nbAsked = 0;
    host.lookup = [&](const wchar_t*, VALTYPE& value) {
        value = number(++nbAsked);
        return true;
    };
    MathExpression expression(true, &host);
    EXPECT_EQ(valueOf(expression, L"x"), 1.0);
    EXPECT_EQ(valueOf(expression, L"x+X"), 2.0);
    EXPECT_EQ(nbAsked, 1);
    // Another object looks the name up again.
    MathExpression other(true, &host);
    EXPECT_EQ(valueOf(other, L"x"), 2.0);
}

TEST(HostService, ThatAnswersWithoutWritingYieldsZero)
{
    CallingHost host;
    host.lookup = [](const wchar_t*, VALTYPE&) { return true; };
    MathExpression expression(true, &host);
    VALTYPE value = untouched;
    ASSERT_TRUE(expression.setExpression(L"name"));
    ASSERT_TRUE(expression.evaluate(value));
    const VALTYPE zero{};
    EXPECT_EQ(std::memcmp(&value, &zero, sizeof(VALTYPE)), 0);
}

TEST(HostService, ThatWritesAndRefusesHasRefused)
{
    CallingHost host;
    int nbAsked = 0;
    host.lookup = [&](const wchar_t*, VALTYPE& value) {
        ++nbAsked;
        value = number(5.0);
        return false;
    };
    MathExpression expression(true, &host);
    EXPECT_THROW(expression.setExpression(L"name"), mathexpr::ParsingException);
    EXPECT_THROW(expression.setExpression(L"name"), mathexpr::ParsingException);
    EXPECT_EQ(nbAsked, 2);
}

TEST(HostService, MayThrow)
{
    MessageRecorder recorder;
    for (const bool silent : {false, true})
    {
        CallingHost host;
        host.lookup = [](const wchar_t* name, VALTYPE& value) -> bool {
            if (std::wstring(name) == L"bad")
            {
                throw HostFailure{42};
            }
            value = number(3.0);
            return true;
        };
        MathExpression expression(silent, &host);
        EXPECT_EQ(valueOf(expression, L"good"), 3.0);
        try
        {
            expression.setExpression(L"a=[1,2,3]+min(good,(2*bad");
            FAIL() << "the host's exception was swallowed";
        }
        catch (const HostFailure& failure)
        {
            EXPECT_EQ(failure.code, 42);
        }
        // There is nothing to evaluate, and the object stays usable.
        VALTYPE value = untouched;
        EXPECT_FALSE(expression.evaluate(value));
        EXPECT_TRUE(isUntouched(value));
        EXPECT_EQ(valueOf(expression, L"good*2"), 6.0);
        EXPECT_EQ(recorder.take(), Ids{});
    }
}

/// Throws a given exception for every name.
template <class Exception>
class ThrowingHost final : public IMathExprService
{
public:
    explicit ThrowingHost(Exception toThrow) : exception(std::move(toThrow)) {}

    bool lookupValue(const wchar_t*, VALTYPE&) const override { throw exception; }

private:
    Exception exception;
};

/// The outcome of an engine exception that the host throws, in both modes.
template <class Data>
void expectPassedOn(const Data& data, mathexpr::ExpressionDiagnostic::Kind kind)
{
    MessageRecorder recorder;
    const ThrowingHost<MTExceptions<Data>> host(MTExceptions<Data>(7, 1, L"host", data));

    MathExpression loud(false, &host);
    EXPECT_FALSE(loud.setExpression(L"1 + bad*2"));
    EXPECT_EQ(recorder.take(), Ids{3});

    MathExpression silent(true, &host);
    try
    {
        silent.setExpression(L"1 + bad*2");
        FAIL() << "the host's exception was swallowed";
    }
    catch (const MTExceptions<Data>& exception)
    {
        ASSERT_EQ(exception.entries.size(), 2U);
        EXPECT_EQ(exception.entries[0].file, L"MTParserLib/MTParserCompiler");
        EXPECT_EQ(exception.entries[0].data.exID, data.exID);
        EXPECT_EQ(exception.entries[0].data.itemName, data.itemName);
        EXPECT_EQ(exception.entries[1].file, L"host");
        EXPECT_EQ(exception.entries[1].line, 7U);
        EXPECT_EQ(exception.entries[1].reserved, 1U);
    }
    EXPECT_EQ(recorder.take(), Ids{});

    for (MathExpression* const expression : {&loud, &silent})
    {
        const mathexpr::ExpressionDiagnostic diagnostic = mathexpr::getDiagnostic(*expression);
        EXPECT_EQ(diagnostic.message, 3U);
        EXPECT_EQ(diagnostic.kind, kind);
        EXPECT_EQ(diagnostic.code, data.exID);
        EXPECT_EQ(diagnostic.itemName, data.itemName);
        EXPECT_EQ(diagnostic.start, 4U);
        EXPECT_EQ(diagnostic.length, 3U);
        EXPECT_EQ(diagnostic.expected, mathexpr::Expected::KnownName);
        VALTYPE value = untouched;
        EXPECT_FALSE(expression->evaluate(value));
        EXPECT_TRUE(isUntouched(value));
        EXPECT_EQ(valueOf(*expression, L"2+3"), 5.0);
    }
}

TEST(HostService, MayThrowAnEngineExceptionOfEitherKind)
{
    SMTDefExcepData definition;
    definition.exID = mathexpr::DefinitionError::VariableNameIsConstant;
    definition.itemName = L"taken";
    expectPassedOn(definition, mathexpr::ExpressionDiagnostic::Kind::Definition);
    SMTParsingExcepData parsing;
    parsing.exID = mathexpr::ParsingError::NoOverload;
    parsing.itemName = L"sin";
    parsing.nbArgs = 2;
    expectPassedOn(parsing, mathexpr::ExpressionDiagnostic::Kind::Parsing);
}

TEST(HostService, MayThrowAnEngineExceptionWithoutEntries)
{
    mathexpr::ParsingException parsing(1, 0, L"host", SMTParsingExcepData());
    parsing.entries.clear();
    const ThrowingHost<mathexpr::ParsingException> host(parsing);
    MathExpression expression(true, &host);
    try
    {
        expression.setExpression(L"bad");
        FAIL() << "the host's exception was swallowed";
    }
    catch (const mathexpr::ParsingException& exception)
    {
        ASSERT_EQ(exception.entries.size(), 1U);
        EXPECT_EQ(exception.entries[0].data.exID, 0U);
    }
}

TEST(HostService, MayAnswerANameThatCannotBeAVariable)
{
    MessageRecorder recorder;
    const AnsweringHost host({{L"..", number(1.0)}, {L"a.b", number(1.0)}});
    for (const wchar_t* const text : {L"..", L"1+a.b"})
    {
        MathExpression silent(true, &host);
        EXPECT_THROW(silent.setExpression(text), mathexpr::DefinitionException);
        EXPECT_EQ(recorder.take(), Ids{});
        EXPECT_EQ(valueOf(silent, L"2+3"), 5.0);

        MathExpression loud(false, &host);
        EXPECT_FALSE(loud.setExpression(text));
        EXPECT_EQ(recorder.take(), Ids{3});
        EXPECT_EQ(valueOf(loud, L"2+3"), 5.0);
    }
}

TEST(HostService, CannotReachTheObjectThatAsksIt)
{
    MessageRecorder recorder;
    for (const bool silent : {false, true})
    {
        CallingHost host;
        MathExpression* asking = nullptr;
        host.lookup = [&](const wchar_t*, VALTYPE& value) {
            VALTYPE result = untouched;
            EXPECT_FALSE(asking->setExpression(L"1+1"));
            EXPECT_FALSE(asking->setExpression(L"1+"));
            EXPECT_FALSE(asking->setExpression(L"other"));
            EXPECT_FALSE(asking->evaluate(result));
            EXPECT_TRUE(isUntouched(result));
            EXPECT_EQ(recorder.take(), Ids{});
            value = number(5.0);
            return true;
        };
        MathExpression expression(silent, &host);
        asking = &expression;
        EXPECT_EQ(valueOf(expression, L"2*first+sqr(first)+other"), 40.0);
    }
}

TEST(HostService, MayUseAnotherObject)
{
    const AnsweringHost inner({{L"y", number(4.0)}});
    CallingHost host;
    MathExpression other(true, &inner);
    host.lookup = [&](const wchar_t* name, VALTYPE& value) {
        return std::wstring(name) == L"x" && other.setExpression(L"y+1") && other.evaluate(value);
    };
    MathExpression expression(true, &host);
    EXPECT_EQ(valueOf(expression, L"x*2"), 10.0);
}

/// A message display that calls a function of the test.
class CallingDisplay
{
public:
    explicit CallingDisplay(std::function<void(std::uint32_t)> show)
        : shown(std::move(show)), previous(mathexpr::setMessageDisplay({&call, this}))
    {}
    ~CallingDisplay() { mathexpr::setMessageDisplay(previous); }
    CallingDisplay(const CallingDisplay&) = delete;
    CallingDisplay& operator=(const CallingDisplay&) = delete;

private:
    static void call(void* context, std::uint32_t id, const wchar_t*)
    {
        static_cast<CallingDisplay*>(context)->shown(id);
    }

    std::function<void(std::uint32_t)> shown;
    mathexpr::ProcessMessageDisplay previous;
};

TEST(MessageDisplayFunction, CannotReachTheObjectThatFailed)
{
    const AnsweringHost host({{L"zero", number(0.0)}});
    MathExpression expression(false, &host);
    Ids shown;
    const CallingDisplay display([&](std::uint32_t id) {
        shown.push_back(id);
        VALTYPE result = untouched;
        EXPECT_FALSE(expression.setExpression(L"1+1"));
        EXPECT_FALSE(expression.setExpression(L"1+"));
        EXPECT_FALSE(expression.evaluate(result));
        EXPECT_TRUE(isUntouched(result));
    });
    VALTYPE value = untouched;
    EXPECT_FALSE(expression.setExpression(L"1+"));
    EXPECT_FALSE(expression.setExpression(L"1/0"));
    EXPECT_FALSE(expression.setExpression(L"2147483648"));
    EXPECT_TRUE(expression.setExpression(L"1/zero"));
    EXPECT_FALSE(expression.evaluate(value));
    EXPECT_TRUE(expression.setExpression(L"pi=3"));
    EXPECT_FALSE(expression.evaluate(value));
    mathexpr::dropAssignment(expression);
    EXPECT_EQ(shown, (Ids{3, 10, 19, 10, 3}));
    EXPECT_EQ(valueOf(expression, L"2+3"), 5.0);
}

TEST(MessageDisplayFunction, CannotReachTheCalculatorThatFailed)
{
    CMathExpr calculator;
    int nbShown = 0;
    const CallingDisplay display([&](std::uint32_t) {
        ++nbShown;
        VALTYPE result = untouched;
        EXPECT_FALSE(calculator.Calculate(L"1+1", result, 0));
        EXPECT_TRUE(isUntouched(result));
    });
    VALTYPE value = untouched;
    EXPECT_FALSE(calculator.Calculate(L"1+", value, 10));
    EXPECT_FALSE(calculator.Calculate(L"11", value, 10));
    EXPECT_EQ(nbShown, 2);
    EXPECT_TRUE(calculator.Calculate(L"5+5", value, 10));
    EXPECT_EQ(value.x, 10.0);
}

TEST(MessageDisplayFunction, MayThrow)
{
    const AnsweringHost host({{L"zero", number(0.0)}});
    MathExpression expression(false, &host);
    {
        const CallingDisplay display([](std::uint32_t id) { throw HostFailure{static_cast<int>(id)}; });
        VALTYPE value = untouched;
        for (const wchar_t* const text : {L"1+", L"1/0", L"unknown", L"2147483648"})
        {
            EXPECT_THROW(expression.setExpression(text), HostFailure);
            EXPECT_FALSE(expression.evaluate(value));
        }
        ASSERT_TRUE(expression.setExpression(L"1/zero"));
        EXPECT_THROW(expression.evaluate(value), HostFailure);
        EXPECT_THROW(expression.evaluate(value), HostFailure);
        EXPECT_TRUE(isUntouched(value));
    }
    EXPECT_EQ(valueOf(expression, L"2+3"), 5.0);
}

TEST(MessageDisplayFunction, IsPutInPlaceAndGivenBack)
{
    MessageRecorder outer;
    {
        MessageRecorder inner;
        MathExpression expression(false, nullptr);
        EXPECT_FALSE(expression.setExpression(L"1+"));
        EXPECT_EQ(inner.take(), Ids{3});
    }
    MathExpression expression(false, nullptr);
    EXPECT_FALSE(expression.setExpression(L"(1"));
    EXPECT_EQ(outer.take(), Ids{2});
}

}
