// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ValueText.cpp - formats numbers and points.

#include "tools/calc/text/ValueText.h"

#include <mathexpr.h>

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace {

std::string formatted(const mathexpr_value& value, std::uint32_t digits)
{
    std::array<char, MATHEXPR_VALUE_TEXT_CAPACITY> text;
    std::size_t length = 0;
    mathexpr_format_value_utf8(&value, digits, text.data(), text.size(), &length);
    return {text.data(), length};
}

}

std::string numberText(double number, std::uint32_t digits)
{
    mathexpr_value value = {};
    value.x = number;
    return formatted(value, digits);
}

std::string bitsText(double number)
{
    constexpr const char* digits = "0123456789abcdef";
    auto bits = std::bit_cast<std::uint64_t>(number);
    std::string text(16, '0');
    for (auto digit = text.rbegin(); digit != text.rend(); ++digit, bits >>= 4)
    {
        *digit = digits[bits & 0xF];
    }
    return text;
}

std::string valueText(const VALTYPE& value, std::uint32_t digits)
{
    mathexpr_value given = {};
    given.type = value.type == 0 ? MATHEXPR_NUMBER : MATHEXPR_POINT;
    given.x = value.x;
    given.y = value.y;
    given.z = value.z;
    return formatted(given, digits);
}
