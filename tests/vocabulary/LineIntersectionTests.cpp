// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// LineIntersectionTests.cpp - the codes of the line intersection, and its tolerances with values on either side.
#include "MTParserLib/vocabulary/LineIntersection.h"

#include "Items.h"

#include <cmath>

namespace {

struct Line
{
    VALTYPE from, to;
};

struct Outcome
{
    Intersection::Code code;
    VALTYPE meeting;
};

/// Before the call, the result record contains z, which the intersection compares with the z of the endpoints.
Outcome intersect(const Line& first, const Line& second, double z = 0.0)
{
    Outcome outcome{Intersection::None, stale()};
    outcome.meeting.z = z;
    outcome.code = intersectLines(first.from, first.to, second.from, second.to, outcome.meeting);
    return outcome;
}

testing::AssertionResult meetsAt(const Outcome& outcome, Intersection::Code code, double x, double y, double z)
{
    VALTYPE expected = stale();
    expected.x = x;
    expected.y = y;
    expected.z = z;
    if (outcome.code != code || !sameRecord(outcome.meeting, expected))
    {
        return testing::AssertionFailure()
               << "code " << outcome.code << ", " << testing::PrintToString(outcome.meeting);
    }
    return testing::AssertionSuccess();
}

testing::AssertionResult meetsNowhere(const Line& first, const Line& second)
{
    return meetsAt(intersect(first, second, 0.25), Intersection::None, stale().x, stale().y, 0.25);
}

TEST(LineIntersection, CodeNamesTheSegmentsAndDeterminesZ)
{
    const Line along{point(0, 0, 10), point(4, 0, 14)};
    EXPECT_TRUE(meetsAt(intersect(along, {point(1, -1, 100), point(1, 1, 200)}), Intersection::OnBoth, 1, 0, 150));
    EXPECT_TRUE(meetsAt(intersect(along, {point(1, 1, 100), point(1, 2, 200)}), Intersection::OnFirst, 1, 0, 11));
    EXPECT_TRUE(meetsAt(intersect(along, {point(6, -1, 100), point(6, 1, 200)}), Intersection::OnSecond, 6, 0, 150));
    EXPECT_TRUE(meetsAt(intersect(along, {point(6, 1, 100), point(6, 2, 200)}), Intersection::OffBoth, 6, 0, 0));
}

TEST(LineIntersection, SteepAndFlatLinesTradePlaces)
{
    const Line upward{point(0, 0, 10), point(0, 4, 14)};
    EXPECT_TRUE(meetsAt(intersect(upward, {point(-1, 1, 100), point(1, 1, 200)}), Intersection::OnBoth, 0, 1, 150));
    EXPECT_TRUE(meetsAt(intersect(upward, {point(1, 1, 100), point(2, 1, 200)}), Intersection::OnFirst, -0.0, 1, 11));
    EXPECT_TRUE(meetsAt(intersect(upward, {point(-1, 6, 100), point(1, 6, 200)}), Intersection::OnSecond, 0, 6, 150));
}

// On a diagonal, z is interpolated along x. Along y, the result would be rounded differently.
TEST(LineIntersection, ZOfADiagonalIsInterpolatedAlongX)
{
    const Line diagonal{point(30.5, -9.4, 0), point(7.4, -32.5, 7)};
    const Outcome outcome = intersect(diagonal, {point(-73.937, -16.637, 0), point(24.263, -14.637, 0)});
    const double width = diagonal.to.x - diagonal.from.x;
    const double height = diagonal.to.y - diagonal.from.y;
    ASSERT_EQ(width, height);
    const double byX = 7 * ((outcome.meeting.x - diagonal.from.x) / width);
    const double byY = 7 * ((outcome.meeting.y - diagonal.from.y) / height);
    ASSERT_NE(byX, byY);
    EXPECT_EQ(outcome.code, Intersection::OnFirst);
    EXPECT_EQ(outcome.meeting.z, byX);
}

TEST(LineIntersection, OfLinesInGeneralPosition)
{
    const Line first{point(1, 2, 3), point(5, 10, 7)};
    const Line second{point(4.5, 0, 1), point(2.5, 8, 9)};
    EXPECT_TRUE(meetsAt(intersect(first, second), Intersection::OnBoth, 3, 6, 7));
    EXPECT_TRUE(meetsAt(intersect(second, first), Intersection::OnBoth, 3, 6, 5));
}

TEST(LineIntersection, ParallelLines)
{
    EXPECT_TRUE(meetsNowhere({point(0, 0, 0), point(2, 2, 0)}, {point(0, 1, 0), point(2, 3, 0)}));
    EXPECT_TRUE(meetsNowhere({point(0, 0, 0), point(2, 2, 0)}, {point(2, 2, 0), point(0, 0, 0)}));
    EXPECT_TRUE(meetsNowhere({point(0, 0, 0), point(2, 0, 0)}, {point(0, 1, 0), point(2, 1, 5)}));
}

TEST(LineIntersection, DeterminantWithinTheToleranceIsZero)
{
    // Lengths are powers of two, so that the determinant equals the tolerance.
    const Line small{point(0, 0, 0), point(1.0 / 1024, 0, 0)};
    EXPECT_TRUE(meetsNowhere(small, {point(0, 0, 0), point(0, 1e-11 * 1024, 0)}));
    const double beyond = std::nextafter(1e-11, 1.0);
    EXPECT_NE(intersect(small, {point(0, 0, 0), point(0, beyond * 1024, 0)}).code, Intersection::None);
}

TEST(LineIntersection, EndpointsThatCoincide)
{
    // The determinant is above the tolerance, but the endpoints coincide within the relative bound.
    const Line far{point(0, 0, 0), point(0, 1e6, 0)};
    EXPECT_TRUE(meetsNowhere({point(1e6, 0, 0), point(1e6 + 1e-6, 0, 0)}, far));
    EXPECT_TRUE(meetsNowhere(far, {point(1e6, 0, 0), point(1e6 + 1e-6, 0, 0)}));
    EXPECT_NE(intersect({point(1e6, 0, 0), point(1e6 + 1e-6, 0, 1)}, far).code, Intersection::None)
        << "z keeps them apart";
    EXPECT_NE(intersect({point(1e6, 0, 0), point(1e6 + 1e-4, 0, 0)}, far).code, Intersection::None);
}

TEST(LineIntersection, RelativeBoundBelongsToApart)
{
    // The bound has two significant bits, so that the difference equals it exactly. At the bound, the points are
    // distinct; at half of it, they coincide.
    const double bound = 0x1.8p-35;
    const double reference = bound / 1e-11;
    const double at = reference - bound;
    ASSERT_EQ(reference - at, reference * 1e-11);
    const Line far{point(0, 0, 0), point(0, 1e6, 0)};
    EXPECT_NE(intersect({point(at, 0, 0), point(reference, 0, 0)}, far).code, Intersection::None);
    EXPECT_EQ(intersect({point(reference - bound / 2, 0, 0), point(reference, 0, 0)}, far).code, Intersection::None);
}

TEST(LineIntersection, AbsoluteBoundBelongsToNear)
{
    const Line far{point(0, 0, 0), point(0, 1e6, 0)};
    const VALTYPE origin = point(0, 0, 0);
    const VALTYPE at = point(1e-11, 1e-11, 0);
    const double beyond = std::nextafter(1e-11, 1.0);
    EXPECT_TRUE(meetsNowhere({origin, at}, far));
    EXPECT_TRUE(meetsNowhere({at, origin}, far));
    EXPECT_NE(intersect({origin, point(beyond, 1e-11, 0)}, far).code, Intersection::None);
    EXPECT_NE(intersect({point(1e-11, beyond, 0), origin}, far).code, Intersection::None);
}

TEST(LineIntersection, SlopesWithinTheTolerance)
{
    const Line upward{point(0, 0, 0), point(0, 1000, 0)};
    EXPECT_TRUE(meetsNowhere(upward, {point(0, 0, 0), point(1e-9, 1000, 0)})) << "slopes 1e-12 apart";
    const double below = std::nextafter(1e-11, 0.0);
    EXPECT_TRUE(meetsNowhere(upward, {point(0, 0, 0), point(below * 1024, 1024, 0)}));
    EXPECT_NE(intersect(upward, {point(0, 0, 0), point(1e-11 * 1024, 1024, 0)}).code, Intersection::None);
}

TEST(LineIntersection, SlopeOfATinyLineIsZero)
{
    // The endpoints are distinct, but too close for a slope. The line then has the slope of an upward line.
    EXPECT_TRUE(meetsNowhere({point(1e-4, 0, 0), point(1e-4 + 1e-12, 0, 0)}, {point(0, 0, 0), point(0, 1000, 0)}));
}

TEST(LineIntersection, SlopeOfAFlatLineIsHuge)
{
    // Both rise by less than the tolerance, so both slopes count as equal, although the determinant is not zero.
    EXPECT_TRUE(meetsNowhere({point(0, 0, 0), point(1e6, 0, 0)}, {point(0, 0, 0), point(1e6, 9e-12, 0)}));
    EXPECT_NE(intersect({point(0, 0, 0), point(1e6, 0, 0)}, {point(0, 0, 0), point(1e6, 1e-11, 0)}).code,
              Intersection::None)
        << "a rise of exactly the tolerance has a slope";
}

TEST(LineIntersection, JustBeyondTheEndIsStillOn)
{
    const auto second = [](double x) { return Line{point(x, 1, 0), point(x, 2, 0)}; };
    const Line unit{point(0, 0, 7), point(1, 0, 7)};
    EXPECT_EQ(intersect(unit, second(1 + 0.9e-7)).code, Intersection::OnFirst);
    EXPECT_EQ(intersect(unit, second(1 + 1.1e-7)).code, Intersection::OffBoth);
    EXPECT_EQ(intersect(unit, second(-0.9e-7)).code, Intersection::OnFirst);
    EXPECT_EQ(intersect(unit, second(-1.1e-7)).code, Intersection::OffBoth);
}

TEST(LineIntersection, TheBoundBeyondTheEndIsOn)
{
    const Line upward{point(0, 1, 0), point(0, 2, 0)};
    const double beyond = std::nextafter(1e-7, 1.0);
    EXPECT_EQ(intersect({point(-1, 0, 7), point(-1e-7, 0, 7)}, upward).code, Intersection::OnFirst);
    EXPECT_EQ(intersect({point(-1, 0, 7), point(-beyond, 0, 7)}, upward).code, Intersection::OffBoth);
}

TEST(LineIntersection, EndpointTestReadsZOnEntry)
{
    // The point is outside the line according to the product test, but equals the endpoint within the relative bound if
    // z is equal, too.
    const Line longLine{point(0, 0, 0), point(1e6, 0, 5)};
    const double x = 1e6 + 1e-6;
    const Line beside{point(x, 1, 9), point(x, 2, 11)};
    const Outcome same = intersect(longLine, beside, 5.0);
    EXPECT_EQ(same.code, Intersection::OnFirst);
    EXPECT_NEAR(same.meeting.z, 5.0, 1e-11) << "interpolated a little beyond the end";
    EXPECT_TRUE(meetsAt(intersect(longLine, beside, 4.0), Intersection::OffBoth, same.meeting.x, 0, 7));
}

TEST(LineIntersection, NanMeetsSomewhere)
{
    const Outcome outcome = intersect({point(notANumber, 0, 0), point(1, 1, 0)}, {point(0, 1, 3), point(1, 0, 3)});
    EXPECT_TRUE(meetsAt(outcome, Intersection::OnBoth, notANumber, notANumber, notANumber));
}

}
