// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// LineIntersection.h - where two lines meet in the XY plane, with a z from one of them.
#pragma once

#include "mathexpr/ValType.h"

/// Which of the two segments contain the intersection: bit 0 is the first, bit 1 the second.
namespace Intersection {
enum Code : int
{
    None = -1,  ///< Parallel lines, or a line whose endpoints coincide.
    OffBoth = 0,
    OnFirst = 1,
    OnSecond = 2,
    OnBoth = 3,
};
}

/// Intersects the infinite lines p0-p1 and p2-p3. z is interpolated along the first line if the intersection is on the
/// first segment only, otherwise along the second line.
/// @param meeting  receives x, y and z; unchanged if None is returned. Its z on entry is read: the comparison of the
///                 intersection with the endpoints uses it.
Intersection::Code intersectLines(const VALTYPE& p0, const VALTYPE& p1, const VALTYPE& p2, const VALTYPE& p3,
                                  VALTYPE& meeting);
