// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// DataText.h - formats values in tables, for programs. Exponents have the form e-07, which programs read, but
// expressions do not. Whole numbers up to 2^53 have all their digits.
#pragma once

#include "mathexpr/ValType.h"
#include "tools/calc/text/ValueText.h"

#include <cstdint>
#include <string>

/// @param digits  significant digits, or exactDigits: the fewest that read back to the same bits
void appendData(std::string& text, double number, std::uint32_t digits);

/// A number as it is, a point as [x,y,z].
void appendData(std::string& text, const VALTYPE& value, std::uint32_t digits);
