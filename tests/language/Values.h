// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Values.h - values in the notation of the data files.
//
//     2.5  -0  inf  -inf  nan        a number, to the bit; nan is any NaN
//     0x400921fb54442eea             a number by its 64 bits
//     [1,2,3]                        a point
//     13/flag  [1,2,3]/flag          the same with the second flag set
//     number[11,7,9]                 a number whose record holds those three coordinates
#pragma once

#include "mathexpr/ValType.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

/// An expected value: every byte counts, except coordinates that may be any NaN.
struct ExpectedValue
{
    VALTYPE record;
    std::array<bool, 3> anyNan{};
};

/// Nothing if the text is not a value.
std::optional<ExpectedValue> parseValue(std::string_view text);

bool matches(const ExpectedValue& expected, const VALTYPE& actual);

/// The whole record, so that different records print differently.
std::string describe(const VALTYPE& value);
