// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// standard_library.h - parts of C++20's standard library that test programs use and that emscripten's, of LLVM 13,
// lacks. Included before everything else, for WebAssembly only.
#pragma once

#if defined(__cplusplus)

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <fast_float/fast_float.h>

namespace std {

template <class To, class From>
To bit_cast(const From& from) noexcept
{
    static_assert(sizeof(To) == sizeof(From));
    To to;
    memcpy(&to, &from, sizeof to);
    return to;
}

inline from_chars_result from_chars(const char* first, const char* last, double& value)
{
    const fast_float::from_chars_result result = fast_float::from_chars(first, last, value);
    return {result.ptr, result.ec};
}

/// The shortest text that reads back as the same number, without an exponent if that is no longer.
inline to_chars_result to_chars(char* first, char* last, double value)
{
    char scientific[32];
    int digits = 1;
    do
    {
        snprintf(scientific, sizeof scientific, "%.*e", digits - 1, value);
    } while (strtod(scientific, nullptr) != value && digits++ < 17);
    const size_t length = strlen(scientific);
    const char* const mark = strchr(scientific, 'e');
    const int decimals = mark == nullptr ? 0 : digits - 1 - atoi(mark + 1);
    const int fixed = snprintf(first, static_cast<size_t>(last - first), "%.*f", decimals > 0 ? decimals : 0, value);
    if (static_cast<size_t>(fixed) > length)
    {
        memcpy(first, scientific, length);
        return {first + length, errc()};
    }
    return {first + fixed, errc()};
}

}

#endif
