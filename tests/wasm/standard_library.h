// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// standard_library.h - parts of C++20's standard library that test programs use and that emscripten's, of LLVM 13,
// lacks. Included before everything else, for WebAssembly only.
#pragma once

#if defined(__cplusplus)

#include <charconv>
#include <cstdio>
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

/// As many digits as distinguish any two numbers, for messages.
inline to_chars_result to_chars(char* first, char* last, double value)
{
    return {first + snprintf(first, static_cast<size_t>(last - first), "%.17g", value), errc()};
}

}

#endif
