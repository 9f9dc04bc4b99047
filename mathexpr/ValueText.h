// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ValueText.h - formats a value as text that the language reads back.
//
//     0.1            a plain decimal, from 1e-6 up to 1e15
//     100000         a whole number up to 2^53: all its digits
//     3000000000.0   above 2147483647 with a decimal point, since the language refuses longer integer literals
//     1.5e+20        1.5*10^-7: for other numbers, a mantissa and a power of ten
//     [1,2,0]        a point
//     nan inf -inf   words, which no expression can contain
//
// Allocates nothing. Depends neither on the locale nor on the host's floating-point control words.
#pragma once

#include "mathexpr/ValType.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace mathexpr {

class ValueText
{
public:
    /// Number of digits: as few as read back to the same bits.
    static constexpr std::uint32_t exactDigits = 0;
    static constexpr std::uint32_t maxDigits = 17;
    /// Upper bound on the text of a number: a sign, and a plain decimal with up to 309 digits before the decimal point,
    /// or with up to 308 zeros and 17 digits after it.
    static constexpr std::size_t maxNumberLength = 336;
    static constexpr std::size_t maxLength = 3 * maxNumberLength + 4;

    /// @param digits  significant digits, 1 to maxDigits, or exactDigits. Whole numbers up to 2^53 keep all digits, as
    ///                do numbers whose rounded text would read back as 0 or infinity.
    ValueText(const VALTYPE& value, std::uint32_t digits) noexcept;

    std::string_view view() const noexcept { return {text.data(), length}; }

private:
    std::array<char, maxLength> text;
    std::size_t length = 0;
};

}
