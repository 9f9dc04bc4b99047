// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// DecimalText.h - reads and writes numbers like from_chars and to_chars of the standard library: rounded to nearest,
// independent of the locale.
#pragma once

#include <string_view>

namespace platform {

/// @param text  digits with at most one decimal point
/// @return false, with an unspecified value, if the number is too large or too small for a double
bool readDecimal(std::string_view text, double& value) noexcept;

// The numbers must be finite and not negative, and the buffer large enough. The functions return the end of the text.

/// Writes the fewest digits that read back to the number, without an exponent: "0.001", "1200".
char* writeFixed(char* begin, char* end, double number) noexcept;

/// Writes the fewest digits that read back to the number: "1.2e+03".
char* writeScientific(char* begin, char* end, double number) noexcept;

/// The same with a fixed number of digits after the decimal point.
char* writeScientific(char* begin, char* end, double number, int decimals) noexcept;

}
