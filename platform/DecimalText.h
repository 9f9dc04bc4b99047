// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// DecimalText.h - reads and writes numbers as the standard library's from_chars and to_chars do: rounded to nearest, whatever
// the locale.
#pragma once

#include <string_view>

namespace platform {

/// @param text  digits, with a point among them or not
/// @return false, with a meaningless value, where the number is too large for a double or too small
bool readDecimal(std::string_view text, double& value) noexcept;

// The numbers to be written are finite and not negative. There has to be room for the text; its end is returned.

/// Writes the fewest digits that read back to the number, without an exponent: "0.001", "1200".
char* writeFixed(char* begin, char* end, double number) noexcept;

/// Writes the fewest digits that read back to the number: "1.2e+03".
char* writeScientific(char* begin, char* end, double number) noexcept;

/// The same with so many digits behind the point.
char* writeScientific(char* begin, char* end, double number, int decimals) noexcept;

}
