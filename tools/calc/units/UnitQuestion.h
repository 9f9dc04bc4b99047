// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// UnitQuestion.h - recognises questions about units that other calculators understand, and builds the expression that
// computes them.
//
//     3 inch to mm      i2mm(3)                 5'6"         f2mm(5)+i2mm(6)
//     90 deg to rad     d2r(90)                 11'6-7/8"    f2mm(11)+i2mm(6+7/8)
//
// The expression is a suggestion that teaches the user the function's name; it never replaces what was typed.
#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Nothing if a word is not a unit, the units measure different quantities, or there is nothing to convert. Without a
/// target, lengths are converted to millimetres, and millimetres to inches.
/// @param text  UTF-8
std::optional<std::string> expressionForUnits(std::string_view text);
