// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Native.cpp - compiled with -O2, with two exceptions. pow is not a built-in: g++ would replace pow(x, 2) by x*x, which
// rounds differently for about one value in a thousand. And nothing is vectorised: a vector load of two coordinates
// that were just stored one by one stalls, so vector code would be slower.
#include "benchmarks/Native.h"

#include <cmath>

namespace native {

namespace {

double radians(double degrees)
{
    return degrees * 3.14159265359 / 180.0;
}

double distanceOf(const Point& p, const Point& q)
{
    const double x = p.x - q.x;
    const double y = p.y - q.y;
    const double z = p.z - q.z;
    return std::sqrt(x * x + y * y + z * z);
}

}

double increment(const Inputs& in)
{
    return in.x + 1;
}

double multiplyAdd(const Inputs& in)
{
    return in.a * in.b + in.r;
}

double differenceOfSquares(const Inputs& in)
{
    return (in.x + in.y) * (in.x - in.y) / 2;
}

double nestedArithmetic(const Inputs& in)
{
    return ((in.x * 2 + in.y) * 3 - in.z) / (in.a + in.b * 2);
}

double lengthByPowers(const Inputs& in)
{
    return std::sqrt(std::pow(in.x, 2.0) + std::pow(in.y, 2.0) + std::pow(in.z, 2.0));
}

double lengthByProducts(const Inputs& in)
{
    return std::sqrt(in.x * in.x + in.y * in.y + in.z * in.z);
}

double trigonometry(const Inputs& in)
{
    return std::sin(radians(in.x)) * in.r + std::cos(radians(in.y)) * in.r;
}

double trigonometryInRadians(const Inputs& in)
{
    return std::sin(in.x) * in.r + std::cos(in.y) * in.r;
}

double extremes(const Inputs& in)
{
    return (in.b > in.a ? in.a : in.b) * (in.x > in.y ? in.x : in.y) + std::fabs(in.z);
}

double comparisons(const Inputs& in)
{
    return (in.x > in.y ? 1.0 : 0.0) * in.a + (in.x <= in.y ? 1.0 : 0.0) * in.b;
}

double polynomial(const Inputs& in)
{
    const double x = in.x;
    // clang-format off
    return (((((((((((((((0.16 * x + 0.15) * x + 0.14) * x + 0.13) * x + 0.12) * x + 0.11) * x + 0.1) * x + 0.09)
           * x + 0.08) * x + 0.07) * x + 0.06) * x + 0.05) * x + 0.04) * x + 0.03) * x + 0.02) * x + 0.01);
    // clang-format on
}

double constants(const Inputs&)
{
    return 2.0 * 3 + 4.0 * 5 - 6.0 / 7;
}

double flatSum(const Inputs& in)
{
    const double x = in.x;
    // clang-format off
    return x + 1 + x + 2 + x + 3 + x + 4 + x + 5 + x + 6 + x + 7 + x + 8 + x + 9 + x + 10
        + x + 11 + x + 12 + x + 13 + x + 14 + x + 15 + x + 16 + x + 17 + x + 18 + x + 19 + x + 20
        + x + 21 + x + 22 + x + 23 + x + 24 + x + 25 + x + 26 + x + 27 + x + 28 + x + 29 + x + 30
        + x + 31 + x + 32 + x + 33 + x + 34 + x + 35 + x + 36 + x + 37 + x + 38 + x + 39 + x + 40
        + x + 41 + x + 42 + x + 43 + x + 44 + x + 45 + x + 46 + x + 47 + x + 48 + x + 49 + x + 50;
    // clang-format on
}

double nestedSum(const Inputs& in)
{
    const double x = in.x;
    // clang-format off
    return x
        + x + x + x + x + x + x + x + x + x + x + x + x + x + x + x + x + x + x + x + x
        + x + x + x + x + x + x + x + x + x + x + x + x + x + x + x + x + x + x + x + x
        + x + x + x + x + x + x + x + x + x + x + x + x + x + x + x + x + x + x + x + x
        + x + x + x + x + x + x + x + x + x + x + x + x + x + x + x + x + x + x + x + x
        + x + x + x + x + x + x + x + x + x + x + x + x + x + x + x + x + x + x + x + x;
    // clang-format on
}

Point pointArithmetic(const Inputs& in)
{
    return {in.p.x + in.q.x * 2, in.p.y + in.q.y * 2, in.p.z + in.q.z * 2};
}

double distance(const Inputs& in)
{
    return distanceOf(in.p, in.q);
}

Point direction(const Inputs& in)
{
    const double length = distanceOf(in.p, in.q);
    return {(in.q.x - in.p.x) / length * in.r, (in.q.y - in.p.y) / length * in.r, (in.q.z - in.p.z) / length * in.r};
}

Point crossProduct(const Inputs& in)
{
    return {in.p.y * in.q.z - in.p.z * in.q.y, in.p.z * in.q.x - in.p.x * in.q.z, in.p.x * in.q.y - in.p.y * in.q.x};
}

Point packing(const Inputs& in)
{
    return {in.x, in.y, in.x + in.y};
}

double conversions(const Inputs& in)
{
    return in.x * 10000.0 / 3048.0 + in.y * 0.3048;
}

}
