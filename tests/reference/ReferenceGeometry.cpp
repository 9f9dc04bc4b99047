// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ReferenceGeometry.cpp - the arithmetic of the point and vector functions.
#include "ReferenceVocabulary.h"

#include <algorithm>
#include <cmath>

namespace reference {
namespace {

using Args = std::vector<VALTYPE>;

constexpr double tol = 1e-11;

bool allPoints(const Args& args)
{
    return std::all_of(args.begin(), args.end(), [](const VALTYPE& arg) { return arg.type != 0; });
}

double sqr(double v)
{
    return v * v;
}

double length3(const VALTYPE& a, const VALTYPE& b)
{
    return std::sqrt(sqr(a.x - b.x) + sqr(a.y - b.y) + sqr(a.z - b.z));
}

bool point(const Args& args, VALTYPE& result, Messages&)
{
    result.type = 1;
    result.flag = 0;
    result.reserved = 0;
    if (args.size() <= 3)
    {
        result.x = !args.empty() ? args[0].x : 0.0;
        result.y = args.size() > 1 ? args[1].x : 0.0;
        result.z = args.size() > 2 ? args[2].x : 0.0;
    }
    return true;
}

bool distance(const Args& args, VALTYPE& result, Messages& messages)
{
    if (!allPoints(args))
    {
        return messages.refuse(14);
    }
    result.type = 0;
    result.flag = 1;
    result.reserved = 0;
    result.x = length3(args[0], args[1]);
    return true;
}

bool normal(const Args& args, VALTYPE& result, Messages& messages)
{
    if (!allPoints(args))
    {
        return messages.refuse(15);
    }
    const VALTYPE& a = args[0];
    const VALTYPE& b = args[1];
    const double length = std::sqrt(sqr(a.x - b.x) + sqr(a.y - b.y));
    result.type = 1;
    result.x = (a.y - b.y) / length;
    result.y = (b.x - a.x) / length;
    result.z = 0.0;
    return true;
}

bool vector(const Args& args, VALTYPE& result, Messages& messages)
{
    if (!allPoints(args))
    {
        return messages.refuse(16);
    }
    result.type = 1;
    result.x = args[1].x - args[0].x;
    result.y = args[1].y - args[0].y;
    result.z = args[1].z - args[0].z;
    return true;
}

bool unitVector(const Args& args, VALTYPE& result, Messages& messages)
{
    if (!allPoints(args))
    {
        return messages.refuse(17);
    }
    const double length = length3(args[0], args[1]);
    result.type = 1;
    result.x = (args[1].x - args[0].x) / length;
    result.y = (args[1].y - args[0].y) / length;
    result.z = (args[1].z - args[0].z) / length;
    return true;
}

bool nearZero(double v)
{
    return std::fabs(v) <= tol;
}

bool nearComponent(double p, double q)
{
    if (std::fabs(q) <= tol)
    {
        return !(std::fabs(p) > tol);
    }
    return !(std::fabs(p - q) >= std::fabs(q * tol));
}

bool nearPoint(const VALTYPE& p, const VALTYPE& q)
{
    return nearComponent(p.x, q.x) && nearComponent(p.y, q.y) && nearComponent(p.z, q.z);
}

double inverseSlope(double dx, double dy)
{
    if (std::fabs(dy) >= tol)
    {
        return dx / dy;
    }
    return nearZero(dx) ? 0.0 : 1e30;
}

bool onSegment(const VALTYPE& o, const VALTYPE& p, const VALTYPE& q, double dx, double dy)
{
    const double t = std::fabs(dx) > std::fabs(dy) ? (o.x - p.x) * (o.x - q.x) : (o.y - p.y) * (o.y - q.y);
    return !(t > 1e-7) || nearPoint(o, p) || nearPoint(o, q);
}

double interpolatedZ(const VALTYPE& o, const VALTYPE& p, const VALTYPE& q)
{
    const double f =
        std::fabs(q.y - p.y) > std::fabs(q.x - p.x) ? (o.y - p.y) / (q.y - p.y) : (o.x - p.x) / (q.x - p.x);
    return (q.z - p.z) * f + p.z;
}

// Parallel and degenerate lines leave o unchanged. The comparisons with endpoints use the previous z of o.
void intersect(const VALTYPE& p0, const VALTYPE& p1, const VALTYPE& p2, const VALTYPE& p3, VALTYPE& o)
{
    const double d1x = p1.x - p0.x;
    const double d1y = p1.y - p0.y;
    const double d2x = p3.x - p2.x;
    const double d2y = p3.y - p2.y;
    const double det = d1x * d2y - d2x * d1y;
    if (nearZero(det) || nearPoint(p0, p1) || nearPoint(p2, p3))
    {
        return;
    }
    if (std::fabs(inverseSlope(d1x, d1y) - inverseSlope(d2x, d2y)) < tol)
    {
        return;
    }
    const double first = p2.x * (d1x * d2y);
    const double second = p0.x * (d2x * d1y);
    const double third = (p2.y - p0.y) * d1x * d2x;
    o.x = (first - second - third) / det;
    if (std::fabs(d1x) > std::fabs(d2x))
    {
        o.y = (d1y / d1x) * (o.x - p0.x) + p0.y;
    }
    else
    {
        o.y = (d2y / d2x) * (o.x - p2.x) + p2.y;
    }
    const bool onFirst = onSegment(o, p0, p1, d1x, d1y);
    const bool onSecond = onSegment(o, p2, p3, d2x, d2y);
    o.z = onFirst && !onSecond ? interpolatedZ(o, p0, p1) : interpolatedZ(o, p2, p3);
}

bool intersection(const Args& args, VALTYPE& result, Messages& messages)
{
    if (!allPoints(args))
    {
        return messages.refuse(18);
    }
    result.type = 1;
    intersect(args[0], args[1], args[2], args[3], result);
    return true;
}
}

void addGeometry(std::vector<Item>& list)
{
    list.push_back({L"point", anyNumberOfArguments, 0, false, true, point});
    list.push_back({L"dist", 2, 0, false, true, distance});
    list.push_back({L"nor", 2, 0, false, true, normal});
    list.push_back({L"vec", 2, 0, false, true, vector});
    list.push_back({L"vec1", 2, 0, false, true, unitVector});
    list.push_back({L"ill", 4, 0, false, true, intersection});
}
}
