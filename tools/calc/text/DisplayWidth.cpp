// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// DisplayWidth.cpp - the sum over the characters. What a terminal makes of several that join to one picture differs from
// terminal to terminal, so that the sum is the best guess there is.
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
