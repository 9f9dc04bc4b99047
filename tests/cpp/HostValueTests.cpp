// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// HostValueTests.cpp - values, and results that hold one or an error.
#include <mathexpr.hpp>

#include <gtest/gtest.h>

#include <sstream>

namespace {

using mathexpr::Error;
using mathexpr::Point;
using mathexpr::Result;
using mathexpr::Value;

TEST(HostValue, IsANumberOrAPoint)
{
    const Value number = 2;
    const Value point = Point{1, 2, 3};
    EXPECT_TRUE(number.isNumber() && !number.isPoint());
    EXPECT_TRUE(point.isPoint() && !point.isNumber());
    EXPECT_EQ(number.number(), 2.0);
    EXPECT_EQ(point.point(), (Point{1, 2, 3}));
    EXPECT_EQ(Value().number(), 0.0);
    EXPECT_THROW((void)number.point(), Error);
    EXPECT_THROW((void)point.number(), Error);
    EXPECT_EQ(point.tryNumber().error().status(), MATHEXPR_OTHER_KIND);
    EXPECT_STREQ(number.tryPoint().error().what(), "the value is a number, and a point is needed");
}

TEST(HostValue, IsComparedByKindAndCoordinates)
{
    EXPECT_EQ(Value(1.5), 1.5);
    EXPECT_NE(Value(1.5), 2.0);
    EXPECT_NE(Value(1.0), Value(Point{1, 0, 0}));
    EXPECT_NE(Value(Point{1, 2, 3}), Value(Point{1, 2, 4}));
    EXPECT_NE((Point{1, 2, 3}), (Point{1, 3, 3}));
}

TEST(HostValue, IsWrittenAsAnExpressionHasIt)
{
    EXPECT_EQ(Value(0.1 + 0.2).text(), "0.30000000000000004");
    EXPECT_EQ(Value(0.1 + 0.2).text(15), "0.3");
    EXPECT_EQ(Value(0.1).text(99), "0.10000000000000001");
    std::ostringstream stream;
    stream << Value(Point{1, -2.5, 1e-9}) << ' ' << Value(1e20);
    EXPECT_EQ(stream.str(), "[1,-2.5,1*10^-9] 1e+20");
}

TEST(HostResult, HoldsAValueOrAnError)
{
    Result<std::string> good(std::string("yes"));
    EXPECT_TRUE(good.has_value());
    EXPECT_EQ(good->size(), 3u);
    EXPECT_EQ(good.value(), "yes");
    EXPECT_EQ(std::move(good).value(), "yes");

    const Result<std::string> bad(mathexpr::tryEvaluate("1+").error());
    EXPECT_FALSE(bad);
    EXPECT_EQ(bad.value_or("no"), "no");
    EXPECT_THROW((void)bad.value(), Error);
}

}
