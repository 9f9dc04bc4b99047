// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTParserNumber.cpp - reads short numbers itself, all others with the standard library's locale-independent
// conversion.
#include "MTParserLib/text/MTParserNumber.h"

#include "platform/DecimalText.h"

#include <array>
#include <cstdint>
#include <limits>

namespace {

/// The powers of ten that a double holds exactly.
constexpr std::array<double, 23> powersOfTen{1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                             1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

/// Upper bound on the digits of a number that a double holds exactly as an integer; one division then rounds correctly.
constexpr std::size_t mostDigits = std::numeric_limits<double>::digits10;

double readShortNumber(std::wstring_view number, wchar_t decimalPoint)
{
    std::uint64_t digits = 0;
    std::size_t nbDecimals = 0;
    for (std::size_t at = 0; at < number.size(); ++at)
    {
        if (number[at] == decimalPoint)
        {
            nbDecimals = number.size() - at - 1;
        }
        else
        {
            digits = 10 * digits + static_cast<std::uint64_t>(number[at] - L'0');
        }
    }
    return static_cast<double>(digits) / powersOfTen[nbDecimals];
}

}

double readNumber(std::wstring_view number, wchar_t decimalPoint, std::string& scratch)
{
    if (number.size() <= mostDigits)
    {
        return readShortNumber(number, decimalPoint);
    }
    scratch.clear();
    for (const wchar_t character : number)
    {
        scratch += character == decimalPoint ? '.' : static_cast<char>(character);
    }

    double value = 0.0;
    if (!platform::readDecimal(scratch, value))
    {
        // Too large if there is a non-zero digit before the decimal point, otherwise too small.
        const std::size_t nonZero = scratch.find_first_of("123456789");
        const std::size_t point = scratch.find('.');
        return nonZero < point ? std::numeric_limits<double>::infinity() : 0.0;
    }
    return value;
}
