// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// LineIntersection.h - where two lines meet in the XY plane, with a z from one of them.
#pragma once

#include "mathexpr/ValType.h"

/// Which of the two segments the intersection lies on; bit 0 stands for the first, bit 1 for the second.
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

/// Intersects the infinite lines p0-p1 and p2-p3. z is interpolated along the first line where the intersection lies on
/// the first segment only, and along the second line otherwise.
/// @param meeting  receives x, y and z, and nothing where the answer is None. Its z is also read: whether the
///                 intersection coincides with an endpoint is decided with the z that it holds on entry.
Intersection::Code intersectLines(const VALTYPE& p0, const VALTYPE& p1, const VALTYPE& p2, const VALTYPE& p3,
                                  VALTYPE& meeting);
