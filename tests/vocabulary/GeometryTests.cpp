// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// GeometryTests.cpp - the geometry functions: results, written fields, refusals.
#include "MTParserLib/vocabulary/Geometry.h"

#include "Items.h"

#include <cmath>

namespace {

const VALTYPE origin = point(0, 0, 0);

VALTYPE madePoint(double x, double y, double z)
{
    VALTYPE value = withPoint(x, y, z);
    value.flag = 0;
    value.reserved = 0;
    return value;
}

TEST(Point, TakesUpToThreeNumbers)
{
    EXPECT_TRUE(yields(Point{}, {}, madePoint(0, 0, 0)));
    EXPECT_TRUE(yields(Point{}, {number(5)}, madePoint(5, 0, 0)));
    EXPECT_TRUE(yields(Point{}, {number(1), number(2)}, madePoint(1, 2, 0)));
    EXPECT_TRUE(yields(Point{}, {number(1), number(2), number(-0.0)}, madePoint(1, 2, -0.0)));
}

TEST(Point, TakesXOfEachArgument)
{
    EXPECT_TRUE(yields(Point{}, {point(1, 2, 3), converted(4), point(5, 6, 7)}, madePoint(1, 4, 5)));
}

TEST(Point, OfMoreThanThreeKeepsTheCoordinates)
{
    const VALTYPE kept = madePoint(stale().x, stale().y, stale().z);
    EXPECT_TRUE(yields(Point{}, {number(1), number(2), number(3), number(4)}, kept));
    EXPECT_TRUE(yields(Point{}, {number(1), number(2), number(3), number(4), number(5)}, kept));
}

TEST(dist, IsTheDistance)
{
    EXPECT_TRUE(yields(dist{}, {origin, point(3, 4, 12)}, withConverted(13)));
    EXPECT_TRUE(yields(dist{}, {point(3, 4, 12), origin}, withConverted(13)));
    EXPECT_TRUE(yields(dist{}, {origin, origin}, withConverted(0)));
}

TEST(dist, SumsTheSquaresInOrder)
{
    // 1e16 + 1 is 1e16, so the order of summation matters.
    EXPECT_TRUE(yields(dist{}, {origin, point(1e8, 1, 1)}, withConverted(std::sqrt(opaque(1e16)))));
    EXPECT_TRUE(yields(dist{}, {origin, point(1, 1, 1e8)}, withConverted(std::sqrt(opaque(1e16 + 2)))));
}

TEST(nor, IsNormalInThePlane)
{
    EXPECT_TRUE(yields(nor{}, {origin, point(1, 0, 7)}, withPoint(0, 1, 0)));
    EXPECT_TRUE(yields(nor{}, {point(1, 1, 5), point(4, 5, -5)}, withPoint(-0.8, 0.6, 0)));
}

TEST(nor, OfPointsAboveEachOtherIsNan)
{
    EXPECT_TRUE(yields(nor{}, {point(1, 2, 3), point(1, 2, 9)}, withPoint(notANumber, notANumber, 0)));
}

TEST(vec, IsTheDifference)
{
    EXPECT_TRUE(yields(vec{}, {point(1, 2, 3), point(4, 6, 8)}, withPoint(3, 4, 5)));
}

TEST(vec1, HasLengthOne)
{
    EXPECT_TRUE(yields(vec1{}, {origin, point(0, 0, 5)}, withPoint(0, 0, 1)));
    EXPECT_TRUE(
        yields(vec1{}, {point(1, 1, 1), point(4, 5, 13)}, withPoint(3 / opaque(13), 4 / opaque(13), 12 / opaque(13))));
}

TEST(vec1, OfEqualPointsIsNan)
{
    const VALTYPE p = point(1, 2, 3);
    EXPECT_TRUE(yields(vec1{}, {p, p}, withPoint(notANumber, notANumber, notANumber)));
}

TEST(ill, IsTheIntersection)
{
    EXPECT_TRUE(yields(ill{}, {origin, point(2, 2, 0), point(0, 2, 0), point(2, 0, 0)}, withPoint(1, 1, 0)));
}

TEST(ill, OfParallelLinesKeepsTheCoordinates)
{
    VALTYPE kept = stale();
    kept.type = 1;
    EXPECT_TRUE(yields(ill{}, {origin, point(2, 2, 0), point(0, 1, 0), point(2, 3, 0)}, kept));
}

TEST(Geometry, RefusesANumberAnywhere)
{
    const VALTYPE p = point(1, 2, 3);
    const VALTYPE n = number(1);
    for (const std::vector<VALTYPE>& args : {std::vector{n, n}, std::vector{p, n}, std::vector{n, p}})
    {
        EXPECT_TRUE(refuses(dist{}, args, 14));
        EXPECT_TRUE(refuses(nor{}, args, 15));
        EXPECT_TRUE(refuses(vec{}, args, 16));
        EXPECT_TRUE(refuses(vec1{}, args, 17));
    }
    for (std::size_t position = 0; position < 4; ++position)
    {
        std::vector<VALTYPE> args(4, p);
        args[position] = n;
        EXPECT_TRUE(refuses(ill{}, args, 18));
    }
}

}
