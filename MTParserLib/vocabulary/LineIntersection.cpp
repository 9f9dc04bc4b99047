// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// LineIntersection.cpp - see LineIntersection.h.
//
// Whether a bound is strict, and the direction of a comparison, decide what happens for NaN: do not rewrite the tests.
#include "MTParserLib/vocabulary/LineIntersection.h"

#include <cmath>

namespace {

constexpr double tolerance = 1e-11;
constexpr double segmentTolerance = 1e-7;  // of a product of two lengths
constexpr double verticalSlope = 1e30;

bool isNearZero(double value)
{
    return std::fabs(value) <= tolerance;
}

bool isApart(double value, double reference)
{
    if (std::fabs(reference) <= tolerance)
    {
        return std::fabs(value) > tolerance;
    }
    return std::fabs(value - reference) >= std::fabs(reference * tolerance);
}

bool isNear(const VALTYPE& point, const VALTYPE& reference)
{
    return !isApart(point.x, reference.x) && !isApart(point.y, reference.y) && !isApart(point.z, reference.z);
}

double inverseSlope(double dx, double dy)
{
    if (std::fabs(dy) >= tolerance)
    {
        return dx / dy;
    }
    return isNearZero(dx) ? 0.0 : verticalSlope;
}

bool isOnSegment(const VALTYPE& point, const VALTYPE& from, const VALTYPE& to, double dx, double dy)
{
    const double product =
        std::fabs(dx) > std::fabs(dy) ? (point.x - from.x) * (point.x - to.x) : (point.y - from.y) * (point.y - to.y);
    const bool isBeyond = product > segmentTolerance;
    return !isBeyond || isNear(point, from) || isNear(point, to);
}

double interpolateZ(const VALTYPE& point, const VALTYPE& from, const VALTYPE& to)
{
    const double fraction = std::fabs(to.y - from.y) > std::fabs(to.x - from.x) ? (point.y - from.y) / (to.y - from.y)
                                                                                : (point.x - from.x) / (to.x - from.x);
    return (to.z - from.z) * fraction + from.z;
}

}

Intersection::Code intersectLines(const VALTYPE& p0, const VALTYPE& p1, const VALTYPE& p2, const VALTYPE& p3,
                                  VALTYPE& meeting)
{
    const double d1x = p1.x - p0.x;
    const double d1y = p1.y - p0.y;
    const double d2x = p3.x - p2.x;
    const double d2y = p3.y - p2.y;
    const double determinant = d1x * d2y - d2x * d1y;
    if (isNearZero(determinant) || isNear(p0, p1) || isNear(p2, p3))
    {
        return Intersection::None;
    }
    if (std::fabs(inverseSlope(d1x, d1y) - inverseSlope(d2x, d2y)) < tolerance)
    {
        return Intersection::None;
    }

    meeting.x = (p2.x * (d1x * d2y) - p0.x * (d2x * d1y) - (p2.y - p0.y) * d1x * d2x) / determinant;
    meeting.y = std::fabs(d1x) > std::fabs(d2x) ? (d1y / d1x) * (meeting.x - p0.x) + p0.y
                                                : (d2y / d2x) * (meeting.x - p2.x) + p2.y;

    // Evaluated before z is written, since the comparison with the endpoints uses the z on entry.
    const bool onFirst = isOnSegment(meeting, p0, p1, d1x, d1y);
    const bool onSecond = isOnSegment(meeting, p2, p3, d2x, d2y);
    const auto code = static_cast<Intersection::Code>((onFirst ? 1 : 0) + (onSecond ? 2 : 0));

    meeting.z = code == Intersection::OnFirst ? interpolateZ(meeting, p0, p1) : interpolateZ(meeting, p2, p3);
    return code;
}
