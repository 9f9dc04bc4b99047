// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// CharacterWidthWindows.cpp - uses the system's tables, which classify UTF-16 units. They do not cover characters
// beyond 16 bits; of these, the planes of ideographs and the blocks of emoji are wide.
#include "tools/calc/text/DisplayWidth.h"

#include <windows.h>

namespace {

struct Block
{
    char32_t first;
    char32_t last;
};

constexpr Block wideBeyond16Bits[] = {
    {0x1F300, 0x1F64F},
    {0x1F680, 0x1F6FF},
    {0x1F900, 0x1F9FF},
    {0x20000, 0x3FFFF},
};

}

std::size_t characterWidth(char32_t character)
{
    if (character > 0xFFFF)
    {
        for (const Block& block : wideBeyond16Bits)
        {
            if (character >= block.first && character <= block.last)
            {
                return 2;
            }
        }
        return 1;
    }
    const auto unit = static_cast<wchar_t>(character);
    WORD kind = 0;
    GetStringTypeW(CT_CTYPE3, &unit, 1, &kind);
    if ((kind & C3_NONSPACING) != 0 && (kind & C3_ALPHA) == 0)
    {
        return 0;
    }
    const bool isWide = (kind & (C3_FULLWIDTH | C3_IDEOGRAPH | C3_HIRAGANA | C3_KATAKANA)) != 0;
    const bool isHangulSyllable = character >= 0xAC00 && character <= 0xD7A3;
    return (isWide && (kind & C3_HALFWIDTH) == 0) || isHangulSyllable ? 2 : 1;
}
