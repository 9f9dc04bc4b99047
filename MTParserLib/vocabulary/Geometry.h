// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Geometry.h - points from numbers, distances, vectors, normals, the intersection of two lines.
//
// The classes bear their symbols. Where a function needs points and is given a number, it refuses with a message.
#pragma once

#include "MTParserLib/vocabulary/BuiltInItem.h"
#include "MTParserLib/vocabulary/LineIntersection.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

/// Takes the x of up to three arguments as coordinates; missing ones are 0. With more arguments x, y and z stay.
struct Point final : BuiltInFunction<Point>
{
    static constexpr FunctionText text{L"point", L"point", L"Convert Number To Point", NB_ARGS_UNDEFINED};

    static Message::Id apply(std::uint32_t nbArgs, const VALTYPE* args, VALTYPE& result)
    {
        result.type = 1;
        result.flag = 0;
        result.reserved = 0;
        if (nbArgs <= 3)
        {
            result.x = nbArgs > 0 ? args[0].x : 0.0;
            result.y = nbArgs > 1 ? args[1].x : 0.0;
            result.z = nbArgs > 2 ? args[2].x : 0.0;
        }
        return Message::None;
    }
};

/// A function of two points. It states compute, which takes them and the result.
template <class Function, Message::Id needsPoints>
class PointFunction : public BuiltInFunction<Function>
{
public:
    static Message::Id apply(const VALTYPE& a, const VALTYPE& b, VALTYPE& result)
    {
        if (!isPoint(a) || !isPoint(b))
        {
            return needsPoints;
        }
        Function::compute(a, b, result);
        return Message::None;
    }
};

struct dist final : PointFunction<dist, Message::DistNeedsPoints>
{
    static constexpr FunctionText text{L"dist", L"dist(x,y)", L"Distance between two endpoints", 2};

    static void compute(const VALTYPE& a, const VALTYPE& b, VALTYPE& result)
    {
        setNumber(result, between(a, b));
        result.flag = 1;
        result.reserved = 0;
    }

    static double between(const VALTYPE& a, const VALTYPE& b)
    {
        const double x = a.x - b.x;
        const double y = a.y - b.y;
        const double z = a.z - b.z;
        return std::sqrt(x * x + y * y + z * z);
    }
};

/// z never enters; endpoints above each other yield NaN.
struct nor final : PointFunction<nor, Message::NorNeedsPoints>
{
    // "normao" is required as it stands.
    static constexpr FunctionText text{L"nor", L"nor(x,y)", L"Unit vector in the XY plane normao to two endpoints", 2};

    static void compute(const VALTYPE& a, const VALTYPE& b, VALTYPE& result)
    {
        const double x = a.x - b.x;
        const double y = a.y - b.y;
        const double length = std::sqrt(x * x + y * y);
        setPoint(result, (a.y - b.y) / length, (b.x - a.x) / length, 0.0);
    }
};

struct vec final : PointFunction<vec, Message::VecNeedsPoints>
{
    static constexpr FunctionText text{L"vec", L"vec(x,y)", L"Vector from two endpoints", 2};

    static void compute(const VALTYPE& a, const VALTYPE& b, VALTYPE& result)
    {
        setPoint(result, b.x - a.x, b.y - a.y, b.z - a.z);
    }
};

/// Equal endpoints yield NaN.
struct vec1 final : PointFunction<vec1, Message::Vec1NeedsPoints>
{
    static constexpr FunctionText text{L"vec1", L"vec1(x,y)", L"Unit vector from two endpoints", 2};

    static void compute(const VALTYPE& a, const VALTYPE& b, VALTYPE& result)
    {
        const double length = dist::between(a, b);
        setPoint(result, (b.x - a.x) / length, (b.y - a.y) / length, (b.z - a.z) / length);
    }
};

/// Lines that have no one intersection leave x, y and z of the result as they were.
struct ill final : BuiltInFunction<ill>
{
    static constexpr FunctionText text{L"ill", L"ill(x,y,z,w)", L"Intersection of two lines defined by four endpoints",
                                       4};

    static Message::Id apply(std::uint32_t, const VALTYPE* points, VALTYPE& result)
    {
        if (!std::all_of(points, points + text.nbArgs, isPoint))
        {
            return Message::IllNeedsPoints;
        }
        result.type = 1;
        intersectLines(points[0], points[1], points[2], points[3], result);
        return Message::None;
    }
};
