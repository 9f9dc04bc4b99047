// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ReadNumber.h - std::from_chars for doubles, also if the standard library has it for integers only.
#pragma once

#include <charconv>

#if !defined(__cpp_lib_to_chars)
#include <fast_float/fast_float.h>
#endif

template <class Number, class... Format>
std::from_chars_result readNumber(const char* first, const char* last, Number& number, Format... format)
{
#if !defined(__cpp_lib_to_chars)
    if constexpr (std::is_floating_point_v<Number>)
    {
        const fast_float::from_chars_result result = fast_float::from_chars(first, last, number, format...);
        return {result.ptr, result.ec};
    }
    else
#endif
    {
        return std::from_chars(first, last, number, format...);
    }
}
