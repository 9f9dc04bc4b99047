// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// DataText.cpp - see DataText.h.
#include "tools/calc/table/DataText.h"

#include <array>
#include <charconv>
#include <cmath>

void appendData(std::string& text, double number, std::uint32_t digits)
{
    if (std::isnan(number))
    {
        text += "nan";  // the sign of a NaN is ignored
        return;
    }
    constexpr double firstGap = 9007199254740992.0;  // 2^53: all whole numbers up to it are doubles
    std::array<char, 32> buffer;
    char* const begin = buffer.data();
    char* const end = begin + buffer.size();
    if (std::abs(number) <= firstGap && number == std::trunc(number) && !(number == 0.0 && std::signbit(number)))
    {
        text.append(begin, std::to_chars(begin, end, static_cast<std::int64_t>(number)).ptr);
        return;
    }
    const auto written = digits == exactDigits
                             ? std::to_chars(begin, end, number)
                             : std::to_chars(begin, end, number, std::chars_format::general, static_cast<int>(digits));
    text.append(begin, written.ptr);
}

void appendData(std::string& text, const VALTYPE& value, std::uint32_t digits)
{
    if (value.type == 0)
    {
        appendData(text, value.x, digits);
        return;
    }
    const std::array<double, 3> coordinates = {value.x, value.y, value.z};
    for (std::size_t index = 0; index < coordinates.size(); ++index)
    {
        text += index == 0 ? '[' : ',';
        appendData(text, coordinates[index], digits);
    }
    text += ']';
}
