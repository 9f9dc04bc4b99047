// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ValueText.h - how a value is written for people.
#pragma once

#include "mathexpr/ValType.h"

#include <cstdint>
#include <string>

/// How many significant digits a value has: as many as most people want to read, at most, or as many as read back to the
/// same bits.
constexpr std::uint32_t usualDigits = 15;
constexpr std::uint32_t mostDigits = 17;
constexpr std::uint32_t exactDigits = 0;

/// A number as an expression reads it, in any locale; "nan", "inf" and "-inf" where they apply, which none reads.
std::string numberText(double number, std::uint32_t digits = exactDigits);

/// The 16 hexadecimal digits of a double, the most significant first.
std::string bitsText(double number);

/// A number as such, a point as [x,y,z].
std::string valueText(const VALTYPE& value, std::uint32_t digits);
