// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Text.cpp - implements the text checks of mathexpr.h.
#include "mathexpr/c/Encoding.h"

namespace {

template <class Encoding>
mathexpr_status check(const typename Encoding::Unit* text, std::size_t length, std::size_t* offset) noexcept
{
    std::basic_string_view<typename Encoding::Unit> view;
    std::size_t found = 0;
    const mathexpr_status status = inspect<Encoding>(text, length, view, found);
    if (offset != nullptr && (status == Encoding::illFormed || status == MATHEXPR_ZERO_IN_TEXT))
    {
        *offset = found;
    }
    return status;
}

}

mathexpr_status mathexpr_check_utf8(const char* text, size_t length, size_t* offset) noexcept
{
    return check<Utf8>(text, length, offset);
}

mathexpr_status mathexpr_check_utf16(const mathexpr_char16* text, size_t length, size_t* offset) noexcept
{
    return check<Utf16>(text, length, offset);
}
