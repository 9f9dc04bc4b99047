// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ValueText.h - formats values for people.
#pragma once

#include "mathexpr/ValType.h"

#include <cstdint>
#include <string>

/// Numbers of significant digits: the default, the maximum, and the fewest that read back to the same bits.
constexpr std::uint32_t usualDigits = 15;
constexpr std::uint32_t mostDigits = 17;
constexpr std::uint32_t exactDigits = 0;

/// A number in the syntax of expressions, independent of the locale. "nan", "inf" and "-inf" are not valid there.
std::string numberText(double number, std::uint32_t digits = exactDigits);

/// The 16 hexadecimal digits of a double, the most significant first.
std::string bitsText(double number);

/// A number as it is, a point as [x,y,z].
std::string valueText(const VALTYPE& value, std::uint32_t digits);
