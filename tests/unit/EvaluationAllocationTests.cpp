// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// EvaluationAllocationTests.cpp - evaluation allocates nothing, except when it defines a variable.
#include "mathexpr/MathExpression.h"
#include "mathexpr/SMTParsingExcepData.h"
#include "tests/support/FailingMemory.h"
#include "tests/unit/Hosts.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace {

/// Number of allocations during an evaluation.
std::size_t allocationsOf(MathExpression& expression, bool succeeds = true)
{
    VALTYPE value;
    const std::size_t before = memory::madeCount();
    const bool ok = expression.evaluate(value);
    const std::size_t made = memory::madeCount() - before;
    EXPECT_EQ(ok, succeeds);
    return made;
}

class Allocation : public testing::Test
{
protected:
    const AnsweringHost host{{{L"x", number(2.5)},
                              {L"zero", number(0.0)},
                              {L"p", point(1.0, 2.0, 3.0)},
                              {L"q", point(4.0, 5.0, 6.0)},
                              {L"r", point(0.0, 2.0, 0.0)},
                              {L"s", point(2.0, 0.0, 0.0)}}};
    MathExpression expression{true, &host};
};

TEST_F(Allocation, IsSeenWhereItHappens)
{
    const std::size_t before = memory::madeCount();
    ASSERT_TRUE(expression.setExpression(L"x+sqr(zero)"));
    EXPECT_GT(memory::madeCount(), before);
}

TEST_F(Allocation, IsMadeByNoEvaluation)
{
    const wchar_t* const texts[] = {
        L"2*3",
        L"x",
        L"p",
        L"x*2+3^x-7%x",
        L"x>1&x<3|!x",
        L"sin(x)+sqrt(x)+pow(x,2)+fact(x)+round(x)",
        L"min(x,1,2,3,4,5)+max(x)+avg(x,x,x)+sum(x,2)",
        L"rand(0,x)",
        L"[x,x+1,2]*2+p",
        L"p*q+dist(p,q)",
        L"p&q",
        L"nor(p,q)+vec(p,q)+vec1(p,q)",
        L"ill(p,q,r,s)",
        L"(x+1,x)",
    };
    for (const wchar_t* const text : texts)
    {
        ASSERT_TRUE(expression.setExpression(text));
        for (int i = 0; i < 3; ++i)
        {
            EXPECT_EQ(allocationsOf(expression), 0u) << testing::PrintToString(std::wstring(text));
        }
    }
}

// Each evaluation first compares the kinds of all variables. There are four kinds.
TEST_F(Allocation, IsMadeForNoNumberOfVariables)
{
    std::map<std::wstring, VALTYPE> variables;
    std::wstring text;
    for (std::size_t count = 1; count <= 60; ++count)
    {
        const std::wstring name = L"v" + std::to_wstring(count);
        VALTYPE& value = variables[name] = count % 2 != 0 ? number(2.5) : point(1.0, 2.0, 3.0);
        value.flag = count % 4 < 2 ? 1 : 0;
        text += (count == 1 ? L"abs(" : L"+abs(") + name + L")";
        const AnsweringHost many(variables);
        MathExpression sum(true, &many);
        ASSERT_TRUE(sum.setExpression(text.c_str()));
        for (int i = 0; i < 3; ++i)
        {
            EXPECT_EQ(allocationsOf(sum), 0u) << count << " variables";
        }
    }
}

TEST_F(Allocation, IsMadeByNoRefusal)
{
    for (const wchar_t* const text : {L"x/zero", L"p+x", L"sqrt(zero)", L"dist(p,x)"})
    {
        ASSERT_TRUE(expression.setExpression(text));
        EXPECT_EQ(allocationsOf(expression, false), 0u) << testing::PrintToString(std::wstring(text));
    }
}

TEST_F(Allocation, IsMadeForANewVariableOnly)
{
    ASSERT_TRUE(expression.setExpression(L"aNameTooLongForAStringToKeepInItself=x+1"));
    EXPECT_GT(allocationsOf(expression), 0u);
    EXPECT_EQ(allocationsOf(expression), 0u);
    ASSERT_TRUE(expression.setExpression(L"aNameTooLongForAStringToKeepInItself=p*x"));
    EXPECT_EQ(allocationsOf(expression), 0u);
    EXPECT_EQ(allocationsOf(expression), 0u);
}

}
