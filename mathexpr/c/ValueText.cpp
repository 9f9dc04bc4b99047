// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ValueText.cpp - implements the formatting of values of mathexpr.h.
#include "mathexpr/ValueText.h"

#include "mathexpr/c/Values.h"

#include <algorithm>

namespace {

static_assert(mathexpr::ValueText::maxLength < MATHEXPR_VALUE_TEXT_CAPACITY &&
              mathexpr::ValueText::exactDigits == MATHEXPR_EXACT_DIGITS);

template <class Unit>
mathexpr_status format(const mathexpr_value* value, std::uint32_t digits, Unit* text, std::size_t capacity,
                       std::size_t* length) noexcept
{
    if (value == nullptr || (text == nullptr && capacity != 0))
    {
        return MATHEXPR_NULL_ARGUMENT;
    }
    if (!isNumberOrPoint(*value))
    {
        return MATHEXPR_BAD_VALUE;
    }
    if (digits > mathexpr::ValueText::maxDigits)
    {
        return MATHEXPR_BAD_OPTION;
    }
    const mathexpr::ValueText own(toLibrary(*value), digits);
    const std::string_view written = own.view();
    if (length != nullptr)
    {
        *length = written.size();
    }
    if (written.size() >= capacity)
    {
        return MATHEXPR_BUFFER_TOO_SMALL;
    }
    *std::copy(written.begin(), written.end(), text) = Unit{};
    return MATHEXPR_OK;
}

}

mathexpr_status mathexpr_format_value_utf8(const mathexpr_value* value, uint32_t digits, char* text, size_t capacity,
                                           size_t* length) noexcept
{
    return format(value, digits, text, capacity, length);
}

mathexpr_status mathexpr_format_value_utf16(const mathexpr_value* value, uint32_t digits, mathexpr_char16* text,
                                            size_t capacity, size_t* length) noexcept
{
    return format(value, digits, text, capacity, length);
}
