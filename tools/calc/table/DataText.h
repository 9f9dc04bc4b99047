// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// DataText.h - values in tables, for programs: with an exponent such as e-07, which they read and an expression does not.
// Whole numbers up to 2^53 have all their digits.
#pragma once

#include "mathexpr/ValType.h"
#include "tools/calc/text/ValueText.h"

#include <cstdint>
#include <string>

/// @param digits  significant ones, or exactDigits: as few as read back to the same bits
void appendData(std::string& text, double number, std::uint32_t digits);

/// A number as such, a point as [x,y,z].
void appendData(std::string& text, const VALTYPE& value, std::uint32_t digits);
