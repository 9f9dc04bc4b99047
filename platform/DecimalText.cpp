// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// DecimalText.cpp - see DecimalText.h. Some standard libraries have from_chars for integers only, such as LLVM's before
// version 20; the header-only library fast_float replaces it there. LLVM's library has to_chars since version 14;
// emscripten has version 13. The module for the web reads numbers with strtod, which is also exact: the tables of
// fast_float would be 10 % of the download.

#include "platform/DecimalText.h"

#include <charconv>
#include <system_error>

#if defined(__EMSCRIPTEN__)

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <new>

bool platform::readDecimal(std::string_view text, double& value) noexcept
{
    // strtod needs a terminating zero.
    char shortText[64];
    const bool isShort = text.size() < sizeof shortText;
    const std::unique_ptr<char[]> longText(isShort ? nullptr : new (std::nothrow) char[text.size() + 1]);
    char* const copy = isShort ? shortText : longText.get();
    if (copy == nullptr)
    {
        return false;
    }
    *std::copy(text.begin(), text.end(), copy) = '\0';
    value = std::strtod(copy, nullptr);
    const std::string_view mantissa = text.substr(0, text.find('e'));
    return std::isfinite(value) && (value != 0.0 || mantissa.find_first_of("123456789") == std::string_view::npos);
}

#else

#if defined(__cpp_lib_to_chars)

namespace decimal = std;

#else

#include <fast_float/fast_float.h>

namespace decimal = fast_float;

#endif

bool platform::readDecimal(std::string_view text, double& value) noexcept
{
    const auto [end, error] = decimal::from_chars(text.data(), text.data() + text.size(), value);
    return error != std::errc::result_out_of_range;
}

#endif

#if defined(__cpp_lib_to_chars) || (defined(_LIBCPP_VERSION) && _LIBCPP_VERSION >= 14000)

char* platform::writeFixed(char* begin, char* end, double number) noexcept
{
    return std::to_chars(begin, end, number, std::chars_format::fixed).ptr;
}

char* platform::writeScientific(char* begin, char* end, double number) noexcept
{
    return std::to_chars(begin, end, number, std::chars_format::scientific).ptr;
}

char* platform::writeScientific(char* begin, char* end, double number, int decimals) noexcept
{
    return std::to_chars(begin, end, number, std::chars_format::scientific, decimals).ptr;
}

#else

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <iterator>

namespace {

constexpr int mostDecimals = 16;  // 17 digits distinguish any two doubles

/// Capacity for d.ddde+ddd and a terminating zero.
constexpr std::size_t scientificCapacity = 32;

/// Numbers from this bound on are written with all their digits.
constexpr double maxWholeNumber = 9007199254740992.0;  // 2^53

char* print(char* begin, double number, int decimals) noexcept
{
    return begin + std::snprintf(begin, scientificCapacity, "%.*e", decimals, number);
}

bool readsAs(const char* begin, const char* end, double number) noexcept
{
    double value = 0.0;
    return platform::readDecimal({begin, static_cast<std::size_t>(end - begin)}, value) && value == number;
}

/// The nearest of the shortest texts that read back to the number. For a power of two, another text with as many digits
/// may be nearer without reading back, because doubles are closer together below a power of two than above.
char* printShortest(char* begin, double number) noexcept
{
    for (int decimals = 0; decimals < mostDecimals; ++decimals)
    {
        char* const end = print(begin, number, decimals);
        if (readsAs(begin, end, number))
        {
            return end;
        }
        char* const last = std::find(begin, end, 'e') - 1;
        if (*last != '9')
        {
            ++*last;
            if (readsAs(begin, end, number))
            {
                return end;
            }
        }
    }
    return print(begin, number, mostDecimals);
}

}

char* platform::writeFixed(char* begin, char* end, double number) noexcept
{
    if (number >= maxWholeNumber)
    {
        return begin + std::snprintf(begin, static_cast<std::size_t>(end - begin), "%.0f", number);
    }
    char digits[scientificCapacity];
    char* const last = printShortest(digits, number);
    char* const mark = std::find(digits, last, 'e');
    int exponent = 0;
    std::from_chars(mark[1] == '+' ? mark + 2 : mark + 1, last, exponent);
    const std::ptrdiff_t digitCount = std::remove(digits, mark, '.') - digits;
    if (exponent < 0)
    {
        constexpr char point[] = {'0', '.'};
        char* const zeros = std::copy(std::begin(point), std::end(point), begin);
        return std::copy_n(digits, digitCount, std::fill_n(zeros, -1 - exponent, '0'));
    }
    const std::ptrdiff_t wholeCount = std::min<std::ptrdiff_t>(digitCount, exponent + 1);
    char* const whole = std::copy_n(digits, wholeCount, begin);
    if (wholeCount == digitCount)
    {
        return std::fill_n(whole, exponent + 1 - wholeCount, '0');
    }
    *whole = '.';
    return std::copy_n(digits + wholeCount, digitCount - wholeCount, whole + 1);
}

char* platform::writeScientific(char* begin, char*, double number) noexcept
{
    return printShortest(begin, number);
}

char* platform::writeScientific(char* begin, char*, double number, int decimals) noexcept
{
    return print(begin, number, decimals);
}

#endif
