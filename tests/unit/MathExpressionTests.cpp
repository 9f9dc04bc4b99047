// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MathExpressionTests.cpp - states of an expression object: nothing compiled, pending assignments, constants.
#include "mathexpr/MathExpression.h"
#include "mathexpr/SMTParsingExcepData.h"
#include "mathexpr/Variables.h"
#include "tests/language/VariableAccess.h"
#include "tests/support/MessageRecorder.h"
#include "tests/unit/Hosts.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>

namespace {

using Ids = std::vector<std::uint32_t>;

constexpr VALTYPE untouched{7, 7, 7, 7, 7.0, 7.0, 7.0};

void expectNothingToEvaluate(MathExpression& expression)
{
    VALTYPE value = untouched;
    EXPECT_FALSE(expression.evaluate(value));
    EXPECT_EQ(std::memcmp(&value, &untouched, sizeof(VALTYPE)), 0);
}

VALTYPE valueOf(MathExpression& expression, const wchar_t* text)
{
    VALTYPE value = untouched;
    EXPECT_TRUE(expression.setExpression(text));
    EXPECT_TRUE(expression.evaluate(value));
    return value;
}

TEST(Expression, HasNothingToEvaluateBeforeTheFirstText)
{
    MessageRecorder recorder;
    for (const bool silent : {false, true})
    {
        MathExpression expression(silent, nullptr);
        expectNothingToEvaluate(expression);
        expectNothingToEvaluate(expression);
    }
    EXPECT_EQ(recorder.take(), Ids{});
}

TEST(Expression, HasNothingToEvaluateAfterATextThatFailed)
{
    MessageRecorder recorder;
    MathExpression expression(false, nullptr);
    EXPECT_EQ(valueOf(expression, L"2+3").x, 5.0);
    EXPECT_FALSE(expression.setExpression(L"2+3+"));
    EXPECT_EQ(recorder.take(), Ids{3});
    expectNothingToEvaluate(expression);
    EXPECT_EQ(recorder.take(), Ids{});
}

TEST(Expression, TakesANullPointerForAnEmptyText)
{
    MessageRecorder recorder;
    MathExpression loud(false, nullptr);
    EXPECT_FALSE(loud.setExpression(nullptr));
    EXPECT_EQ(recorder.take(), Ids{3});
    expectNothingToEvaluate(loud);

    MathExpression silent(true, nullptr);
    try
    {
        silent.setExpression(nullptr);
        FAIL() << "nothing was raised";
    }
    catch (const mathexpr::ParsingException& exception)
    {
        EXPECT_EQ(exception.entries.front().data.exID, mathexpr::ParsingError::NoExpression);
        EXPECT_EQ(exception.entries.front().data.itemName, L"");
        EXPECT_EQ(exception.entries.front().data.pos, 0u);
    }
    EXPECT_EQ(recorder.take(), Ids{});
}

TEST(Expression, AssignsOnceOfManyEvaluations)
{
    MathExpression expression(true, nullptr);
    VALTYPE first;
    VALTYPE later;
    ASSERT_TRUE(expression.setExpression(L"a=rand(0,1)"));
    ASSERT_TRUE(expression.evaluate(first));
    bool changed = false;
    for (int i = 0; i < 100; ++i)
    {
        ASSERT_TRUE(expression.evaluate(later));
        changed = changed || later.x != first.x;
    }
    EXPECT_TRUE(changed);
    EXPECT_EQ(valueOf(expression, L"a").x, first.x);
}

TEST(Expression, DrawsRandomNumbersInTheirRange)
{
    MathExpression expression(true, nullptr);
    ASSERT_TRUE(expression.setExpression(L"rand(0,32767)"));
    VALTYPE value;
    for (int i = 0; i < 1000; ++i)
    {
        ASSERT_TRUE(expression.evaluate(value));
        EXPECT_GE(value.x, 0.0);
        EXPECT_LE(value.x, 32767.0);
    }
}

TEST(Expression, OverwritesAVariableInPlace)
{
    MathExpression expression(true, nullptr);
    valueOf(expression, L"a=1");
    const VALTYPE* const address = registrarOf(expression).getVariableValuePtr(L"a");
    valueOf(expression, L"A=[1,2,3]");
    EXPECT_EQ(registrarOf(expression).getVariableValuePtr(L"a"), address);
    EXPECT_EQ(address->type, 1);
    EXPECT_EQ(address->z, 3.0);
}

TEST(Expression, DropsAPendingAssignment)
{
    MessageRecorder recorder;
    MathExpression expression(false, nullptr);
    VALTYPE value;
    ASSERT_TRUE(expression.setExpression(L"pi=3"));
    EXPECT_FALSE(expression.evaluate(value));
    EXPECT_FALSE(expression.evaluate(value));
    mathexpr::dropAssignment(expression);
    EXPECT_TRUE(expression.evaluate(value));
    EXPECT_EQ(value.x, 3.0);
    EXPECT_EQ(recorder.take(), (Ids{3, 3}));
    mathexpr::dropAssignment(expression);
    EXPECT_EQ(valueOf(expression, L"pi").x, 3.14159265359);
}

/// A function that counts its calls.
class CountingFunction final : public IMathFunction
{
public:
    explicit CountingFunction(int& calls) : nbCalls(calls) {}

    std::wstring getHelpString() const override { return {}; }
    std::wstring getDescription() const override { return {}; }
    bool evaluate(std::uint32_t nbArgs, const VALTYPE*, VALTYPE& result, bool) const override
    {
        ++nbCalls;
        result.x = nbArgs;
        return true;
    }
    std::wstring getSymbol() const override { return L"count"; }
    std::uint32_t getNbArgs() const override { return NB_ARGS_UNDEFINED; }

private:
    int& nbCalls;
};

TEST(Expression, CallsNoItemForWhatIsConstant)
{
    int nbCalls = 0;
    const AnsweringHost host({{L"x", number(1.0)}});
    MathExpression expression(true, &host);
    registrarOf(expression).defineFunction(new CountingFunction(nbCalls), true);

    EXPECT_EQ(valueOf(expression, L"2*count(7,8,9)").x, 6.0);
    VALTYPE value;
    ASSERT_TRUE(expression.evaluate(value));
    EXPECT_EQ(nbCalls, 1);

    EXPECT_EQ(valueOf(expression, L"2*count(7,x)").x, 4.0);
    ASSERT_TRUE(expression.evaluate(value));
    EXPECT_EQ(nbCalls, 3);
}

TEST(Expression, SharesNothingWithAnother)
{
    MathExpression one(true, nullptr);
    MathExpression other(true, nullptr);
    valueOf(one, L"a=1");
    EXPECT_THROW(other.setExpression(L"a"), mathexpr::ParsingException);
    valueOf(other, L"a=2");
    EXPECT_EQ(valueOf(one, L"a").x, 1.0);
}

}
