// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// RandomNumberTests.cpp - random numbers come from the process's own generator, which the host may seed at any time.
#include "mathexpr/MathExpression.h"
#include "mathexpr/Variables.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <vector>

namespace {

std::vector<int> drawn()
{
    std::vector<int> numbers(5);
    for (int& number : numbers)
    {
        number = std::rand();
    }
    return numbers;
}

TEST(RandomNumbers, TheHostsSequenceIsNotDisturbed)
{
    std::srand(3);
    const std::vector<int> undisturbed = drawn();
    std::srand(3);
    MathExpression expression(true, nullptr);
    VALTYPE value;
    ASSERT_TRUE(expression.setExpression(L"rand(0,1)"));
    ASSERT_TRUE(expression.setExpression(L"2+3"));
    ASSERT_TRUE(expression.evaluate(value));
    EXPECT_EQ(drawn(), undisturbed);
}

TEST(RandomNumbers, FollowTheHostsSeed)
{
    MathExpression expression(true, nullptr);
    ASSERT_TRUE(expression.setExpression(L"rand(0,1)+2*rand(0,1)"));
    std::vector<double> first;
    for (const unsigned seed : {3U, 4U, 3U, 4U})
    {
        std::srand(seed);
        VALTYPE value;
        ASSERT_TRUE(expression.evaluate(value));
        first.push_back(value.x);
    }
    EXPECT_EQ(first[0], first[2]);
    EXPECT_EQ(first[1], first[3]);
    EXPECT_NE(first[0], first[1]);
}

// A run draws one number per evaluated "rand", even if a later item refuses.
TEST(RandomNumbers, ARefusedRunHasDrawn)
{
    constexpr unsigned seed = 5;
    std::srand(seed);
    const std::vector<int> numbers = drawn();
    MathExpression expression(true, nullptr);
    ASSERT_TRUE(expression.setExpression(L"w=1"));
    VALTYPE value;
    ASSERT_TRUE(expression.evaluate(value));
    ASSERT_TRUE(expression.setExpression(L"rand(0,1)/w"));
    std::srand(seed);
    for (std::size_t run = 0; run < numbers.size(); ++run)
    {
        const bool refused = run % 3 == 2;
        value.x = refused ? 0.0 : 1.0;
        ASSERT_TRUE(mathexpr::setVariable(expression, L"w", value));
        ASSERT_EQ(expression.evaluate(value), !refused);
        if (!refused)
        {
            EXPECT_EQ(value.x, (numbers[run] & 0x7FFF) / 32767.0) << run;
        }
    }
}

}
