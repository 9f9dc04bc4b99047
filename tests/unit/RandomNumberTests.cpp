// RandomNumberTests.cpp - random numbers come from the process's own generator, which the host may seed when it likes.
#include "mathexpr/MathExpression.h"

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

TEST(RandomNumbers, TheHostsSequenceIsItsOwn)
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

}
