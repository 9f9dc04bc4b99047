// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ValueText.cpp - numbers and points as text.

#include "tools/calc/ValueText.h"

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>

std::string numberText(double number)
{
    if (std::isnan(number))
    {
        return "nan";  // whatever its sign, which says nothing to a reader
    }
    std::array<char, 32> buffer;
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr;
    return {buffer.data(), end};
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

std::string valueText(const VALTYPE& value)
{
    if (value.type == 0)
    {
        return numberText(value.x);
    }
    std::string text = "[";
    text += numberText(value.x) + ',' + numberText(value.y) + ',' + numberText(value.z) + ']';
    return text;
}
