// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// DepthTests.cpp - long and deeply nested texts are compiled, evaluated and destroyed without recursion, in linear
// time.
#include "mathexpr/MathExpression.h"
#include "mathexpr/SMTParsingExcepData.h"
#include "tests/unit/Hosts.h"

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr std::size_t depth = 100000;

std::wstring repeated(const std::wstring& part, std::size_t count = depth)
{
    std::wstring text;
    text.reserve(part.size() * count);
    for (std::size_t i = 0; i < count; ++i)
    {
        text += part;
    }
    return text;
}

/// Compiles with a new object, evaluates twice, and destroys the object.
VALTYPE valueOf(const std::wstring& text)
{
    const AnsweringHost host({{L"x", number(1.0)}});
    MathExpression expression(true, &host);
    VALTYPE value;
    EXPECT_TRUE(expression.setExpression(text.c_str()));
    EXPECT_TRUE(expression.evaluate(value));
    EXPECT_TRUE(expression.evaluate(value));
    return value;
}

std::uint32_t codeOf(const std::wstring& text)
{
    MathExpression expression(true, nullptr);
    try
    {
        expression.setExpression(text.c_str());
    }
    catch (const mathexpr::ParsingException& exception)
    {
        return exception.entries.front().data.exID;
    }
    ADD_FAILURE() << "nothing was raised";
    return 0;
}

TEST(Depth, AFlatSum)
{
    EXPECT_EQ(valueOf(L"1" + repeated(L"+1")).x, depth + 1.0);
    EXPECT_EQ(valueOf(L"x" + repeated(L"+x")).x, depth + 1.0);
    EXPECT_EQ(valueOf(L"x" + repeated(L"+1")).x, depth + 1.0);
    EXPECT_EQ(valueOf(L"1" + repeated(L"+x*1")).x, depth + 1.0);
}

TEST(Depth, NestedBrackets)
{
    EXPECT_EQ(valueOf(repeated(L"(") + L"2" + repeated(L")")).x, 2.0);
    EXPECT_EQ(valueOf(repeated(L"(") + L"x" + repeated(L")")).x, 1.0);
    EXPECT_EQ(valueOf(repeated(L"1+(") + L"1" + repeated(L")")).x, depth + 1.0);
    EXPECT_EQ(valueOf(repeated(L"1+(") + L"x" + repeated(L")")).x, depth + 1.0);
    EXPECT_EQ(valueOf(repeated(L"(") + L"x" + repeated(L"+1)")).x, depth + 1.0);
}

TEST(Depth, UnaryOperators)
{
    EXPECT_EQ(valueOf(repeated(L"-") + L"2").x, 2.0);
    EXPECT_EQ(valueOf(repeated(L"-") + L"x").x, 1.0);
    EXPECT_EQ(valueOf(repeated(L"!") + L"x").x, 1.0);
}

TEST(Depth, NestedCallsAndPoints)
{
    EXPECT_EQ(valueOf(repeated(L"abs(") + L"2" + repeated(L")")).x, 2.0);
    EXPECT_EQ(valueOf(repeated(L"abs(") + L"x" + repeated(L")")).x, 1.0);
    EXPECT_EQ(valueOf(repeated(L"max(0,") + L"x" + repeated(L")")).x, 1.0);
    const VALTYPE nested = valueOf(repeated(L"[") + L"x" + repeated(L"]"));
    EXPECT_EQ(nested.type, 1);
    EXPECT_EQ(nested.x, 1.0);
}

TEST(Depth, ManyArguments)
{
    EXPECT_EQ(valueOf(L"sum(1" + repeated(L",1") + L")").x, depth + 1.0);
    EXPECT_EQ(valueOf(L"sum(x" + repeated(L",x") + L")").x, depth + 1.0);
}

TEST(Depth, LongTokensAndShorthands)
{
    EXPECT_EQ(valueOf(repeated(L"0") + L"7").x, 7.0);
    EXPECT_EQ(valueOf(repeated(L"a") + L"=3").x, 3.0);
    EXPECT_EQ(valueOf(repeated(L" ") + L"3" + repeated(L" ")).x, 3.0);
    EXPECT_EQ(valueOf(L"0" + repeated(L"e+0")).x, 0.0);
}

TEST(Depth, WhatDoesNotCompile)
{
    EXPECT_EQ(codeOf(repeated(L"(")), mathexpr::ParsingError::BracketNotClosed);
    EXPECT_EQ(codeOf(repeated(L"(") + L"1"), mathexpr::ParsingError::BracketNotClosed);
    EXPECT_EQ(codeOf(L"1" + repeated(L")")), mathexpr::ParsingError::ClosingWithoutOpening);
    EXPECT_EQ(codeOf(repeated(L"-")), mathexpr::ParsingError::OperandMissing);
    EXPECT_EQ(codeOf(repeated(L"1+")), mathexpr::ParsingError::OperandMissing);
    EXPECT_EQ(codeOf(repeated(L"abs(") + L"1"), mathexpr::ParsingError::BracketNotClosed);
    EXPECT_EQ(codeOf(repeated(L"a")), mathexpr::ParsingError::UnknownName);
    EXPECT_EQ(codeOf(repeated(L"1+", depth) + L"unk"), mathexpr::ParsingError::UnknownName);
}

TEST(Depth, LeavesTheObjectUsable)
{
    MathExpression expression(true, nullptr);
    VALTYPE value;
    for (int i = 0; i < 3; ++i)
    {
        ASSERT_TRUE(expression.setExpression((repeated(L"(") + L"1" + repeated(L"+1)")).c_str()));
        ASSERT_TRUE(expression.evaluate(value));
        EXPECT_EQ(value.x, depth + 1.0);
        ASSERT_TRUE(expression.setExpression(L"2+3"));
        ASSERT_TRUE(expression.evaluate(value));
        EXPECT_EQ(value.x, 5.0);
    }
}

}
