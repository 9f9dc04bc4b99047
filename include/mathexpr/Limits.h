// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Limits.h - upper bounds on the texts that an expression object accepts.
#pragma once

#include "mathexpr/CMathExpr.h"
#include "mathexpr/Export.h"
#include "mathexpr/MathExpression.h"

#include <cstdint>

namespace mathexpr {

/// Upper bounds on an accepted text; 0 is no limit. A text that exceeds one is refused before it is compiled and before the
/// host is asked for a name. The failure is message 3, or an exception with the code given here. Its position counts from 0 in
/// the text as typed.
struct ExpressionLimits
{
    /// Characters as typed, blanks included. Code 17.
    std::uint32_t maxTextLength = 0;
    /// Values, operators and function calls, counted at each use: 1+sin(30) has four, [1,2,3] has four (a point is a call),
    /// 1.5e+3 is one value. Code 18.
    std::uint32_t maxRecords = 0;
    /// Nesting depth: brackets of all kinds that are open at the same place, and prefix operators such as the signs in --x.
    /// ((1)) has two, 2*-(-x) three. Code 19.
    std::uint32_t maxNesting = 0;
};

/// Sets the limits of an object; they apply from its next setExpression. Copies of a CMathExpr share them.
/// @return false, with nothing changed, while a call on the object waits for the host
MATHEXPR_API bool setLimits(MathExpression& expression, const ExpressionLimits& limits) noexcept;

/// The current limits; all 0 in a new object.
MATHEXPR_API ExpressionLimits getLimits(const MathExpression& expression) noexcept;

}
