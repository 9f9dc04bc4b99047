// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// NumberLiterals.h - reads numbers as other programs and countries write them: 1,5 and 1'000 and 1.000,50.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace mathexpr {

/// A text with its numbers rewritten for the language.
struct NumberReadings
{
    std::wstring text;
    std::wstring other;  ///< With a comma read as a mark of thousands, as in 1,500; empty if that is impossible.
};

/// @param areDecimal  for each character: whether a comma there is part of a number; otherwise it separates arguments
NumberReadings rewriteNumbers(std::wstring_view text, const std::vector<bool>& areDecimal);

}
