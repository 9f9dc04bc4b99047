// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// HostFunctionTests.cpp - texts as callables of numbers.
#include <mathexpr.hpp>

#include <gtest/gtest.h>

#include <map>
#include <thread>

namespace {

using mathexpr::Error;
using mathexpr::Function;

TEST(HostFunction, IsCalledByPosition)
{
    Function area("pi/4*d^2", {"d"});
    EXPECT_EQ(area(2.0), mathexpr::number("pi/4*2^2"));
    Function difference("a-2*b", {"b", "a"});
    EXPECT_EQ(difference(1, 10), 8.0);
    EXPECT_EQ(difference.argumentCount(), 2u);
    EXPECT_EQ(difference.text(), "a-2*b");
    const double arguments[] = {2, 10};
    EXPECT_EQ(difference.callWith(arguments, 2), 6.0);
    EXPECT_EQ(Function("2*3", {})(), 6.0);
    Function moved = std::move(difference);
    EXPECT_EQ(moved(0, 1), 1.0);
}

TEST(HostFunction, TakesTheNamesThatTheHostFindsAtRunTime)
{
    const std::vector<std::string> names{"d", "h"};
    const std::map<std::string, double, std::less<>> constants{{"density", 2}};
    Function mass("density*d*h", names, constants);
    EXPECT_EQ(mass(3, 5), 30.0);
}

TEST(HostFunction, KeepsWhatItReadsBesideItsArguments)
{
    mathexpr::Options options;
    options.resolver = [](std::string_view name) -> std::optional<mathexpr::Value> {
        return name == "offset" ? std::optional<mathexpr::Value>(0.5) : std::nullopt;
    };
    Function scaled("x*factor+offset", {"x"}, {{"factor", 10}}, options);
    EXPECT_EQ(scaled(2), 20.5);
}

TEST(HostFunction, ReportsWhyItHasNoValue)
{
    Function logarithm("1+ln(x*k)", {"x"}, {{"k", 2}});
    EXPECT_EQ(logarithm(0.5), 1.0);
    const auto refused = logarithm.tryCall(-1);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().status(), MATHEXPR_REFUSED);
    EXPECT_EQ(refused.error().start(), 2u);
    EXPECT_EQ(std::string(refused.error().what()).substr(0, 2), "ln");
    EXPECT_THROW(logarithm(-1), Error);
    EXPECT_EQ(Function("sin([x,1])", {"x"}).tryCall(1).error().status(), MATHEXPR_PARSING_ERROR);
    EXPECT_STREQ(logarithm.tryCall(1, 2).error().what(), "the function takes 1 argument, not 2");
    EXPECT_STREQ(Function("1", {}).tryCall(1).error().what(), "the function takes 0 arguments, not 1");
}

TEST(HostFunction, IsNotMadeOfWhatYieldsAPoint)
{
    const auto point = Function::tryCreate("[x,1]/x", {"x"});
    ASSERT_FALSE(point);
    EXPECT_EQ(point.error().status(), MATHEXPR_OTHER_KIND);
    EXPECT_STREQ(point.error().what(), "the value is a point, and a number is needed");
    EXPECT_THROW(Function("p", {}, {{"p", mathexpr::Point{1, 2, 3}}}), Error);
}

TEST(HostFunction, IsNotMadeOfWhatDoesNotCompile)
{
    const auto missing = Function::tryCreate("x+y", {"x"});
    ASSERT_FALSE(missing);
    EXPECT_EQ(missing.error().start(), 2u);
    EXPECT_EQ(missing.error().item(), "y");
    EXPECT_STREQ(Function::tryCreate("x", {"x", "X"}).error().what(), "two arguments have the same name");
    EXPECT_EQ(Function::tryCreate("x", {"x", "2"}).error().status(), MATHEXPR_DEFINITION_ERROR);
    EXPECT_EQ(Function::tryCreate("x\xFF", {"x"}).error().start(), 1u);
    EXPECT_THROW(Function("2*(", {}), Error);
    mathexpr::Options options;
    options.resolver = [](std::string_view) -> std::optional<mathexpr::Value> { throw 7; };
    EXPECT_THROW(Function("y", {"x"}, {}, options), int);
}

TEST(HostFunction, IsClonedForAThread)
{
    Function function("[x,1]*[x,1]", {"x"});  // a dot product, which would accumulate
    Function clone = function.clone();
    double sum = 0;
    std::thread thread([&] {
        for (int i = 0; i < 1000; ++i)
        {
            sum += clone(2);
        }
    });
    double own = 0;
    for (int i = 0; i < 1000; ++i)
    {
        own += function(3);
    }
    thread.join();
    EXPECT_EQ(sum, 5000.0);
    EXPECT_EQ(own, 10000.0);
}

}
