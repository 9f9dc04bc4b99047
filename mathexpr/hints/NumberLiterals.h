// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// NumberLiterals.h - numbers as other programs and countries write them: 1,5 and 1'000 and 1.000,50.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace mathexpr {

/// A text whose numbers are written as the language has them.
struct NumberReadings
{
    std::wstring text;
    std::wstring other;  ///< Where a comma may also stand between thousands, as in 1,500; else empty.
};

/// @param areDecimal  for each character whether a comma there belongs to a number; else it separates arguments
NumberReadings rewriteNumbers(std::wstring_view text, const std::vector<bool>& areDecimal);

}
