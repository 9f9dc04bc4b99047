// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// NumberLiterals.h - numbers as other programs and countries write them: 1,5 and 1'000 and 1.000,50.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace mathexpr {

/// A text whose numbers are written as the language has them.
struct NumberReadings
{
    std::wstring text;
    std::wstring other;  ///< Where a comma may also stand between thousands, as in 1,500; else empty.
};

/// @param begin, end  where a comma belongs to a number; elsewhere it separates arguments
NumberReadings rewriteNumbers(std::wstring_view text, std::size_t begin, std::size_t end);

}
