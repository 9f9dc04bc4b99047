// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// UnitQuestion.h - a text that is no expression but says what is wanted, as other calculators understand it, and the
// expression that computes it here.
//
//     3 inch to mm      i2mm(3)                 5'6"         f2mm(5)+i2mm(6)
//     90 deg to rad     d2r(90)                 11'6-7/8"    f2mm(11)+i2mm(6+7/8)
//
// It is a suggestion to the user, who learns the name: nothing is computed in the place of what was typed.
#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Nothing where a word is no unit, where the units measure different things, and where there is nothing to convert.
/// Without a target, lengths become millimetres, and millimetres inches.
/// @param text  UTF-8
std::optional<std::string> expressionForUnits(std::string_view text);
