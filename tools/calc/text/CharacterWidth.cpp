// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// CharacterWidth.cpp - uses the tables of utf8proc, which come from Unicode.
#include "tools/calc/text/DisplayWidth.h"

#include <algorithm>

#include <utf8proc.h>

std::size_t characterWidth(char32_t character)
{
    return static_cast<std::size_t>(std::max(0, utf8proc_charwidth(static_cast<utf8proc_int32_t>(character))));
}
