// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// DisplayWidth.cpp - adds up the widths of the characters. Terminals disagree on characters that combine into one
// glyph, so the sum is the best available estimate.
#include "tools/calc/text/DisplayWidth.h"

#include <utf8.h>

std::size_t displayWidth(std::string_view utf8)
{
    std::size_t width = 0;
    for (auto at = utf8.begin(); at != utf8.end();)
    {
        width += characterWidth(static_cast<char32_t>(utf8::next(at, utf8.end())));
    }
    return width;
}
