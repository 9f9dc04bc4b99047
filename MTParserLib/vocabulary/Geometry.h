// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Geometry.h - points from numbers, distances, vectors, normals, the intersection of two lines.
//
// A class has the name of its symbol. A function that needs points refuses numbers with a message.
#pragma once

#include "MTParserLib/vocabulary/FormulaItem.h"
#include "MTParserLib/vocabulary/LineIntersection.h"

#include <algorithm>
#include <cstdint>

/// Uses the x of up to three arguments as coordinates; missing ones are 0. With more arguments, x, y and z are
/// unchanged.
struct Point final : BuiltInFunction<Point>
{
    static constexpr FunctionText text{L"point", L"point", L"Convert Number To Point", NB_ARGS_UNDEFINED};
    using Formula = formulas::MakePoint;

    static Message::Id apply(std::uint32_t nbArgs, const VALTYPE* args, VALTYPE& result)
    {
        result.type = 1;
        result.flag = 0;
        result.reserved = 0;
        if (nbArgs <= 3)
        {
            const auto coordinate = [&](std::uint32_t index) { return index < nbArgs ? args[index].x : 0.0; };
            deliver<NumberWrites::X>(result, Formula::of(coordinate(0), coordinate(1), coordinate(2)));
        }
        return Message::None;
    }
};

/// A function of two points.
template <class Function, class FormulaOfPoints, Message::Id needsPoints>
class PointFunction : public BuiltInFunction<Function>
{
public:
    using Formula = FormulaOfPoints;
    static constexpr NumberWrites writes = NumberWrites::KindAndFlag;
    static constexpr Message::Id otherKinds = needsPoints;

    static Message::Id apply(const VALTYPE& a, const VALTYPE& b, VALTYPE& result)
    {
        return applyByKind<Function>(a, b, result);
    }
};

struct dist final : PointFunction<dist, formulas::Dist, Message::DistNeedsPoints>
{
    static constexpr FunctionText text{L"dist", L"dist(x,y)", L"Distance between two endpoints", 2};
};

struct nor final : PointFunction<nor, formulas::Nor, Message::NorNeedsPoints>
{
    // "normao" is part of the interface.
    static constexpr FunctionText text{L"nor", L"nor(x,y)", L"Unit vector in the XY plane normao to two endpoints", 2};
};

struct vec final : PointFunction<vec, formulas::Vec, Message::VecNeedsPoints>
{
    static constexpr FunctionText text{L"vec", L"vec(x,y)", L"Vector from two endpoints", 2};
};

struct vec1 final : PointFunction<vec1, formulas::Vec1, Message::Vec1NeedsPoints>
{
    static constexpr FunctionText text{L"vec1", L"vec1(x,y)", L"Unit vector from two endpoints", 2};
};

/// For lines without a unique intersection, x, y and z of the result are unchanged.
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
