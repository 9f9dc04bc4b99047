// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Displayable.cpp - see Displayable.h.
#include "tools/calc/text/Displayable.h"

#include <array>
#include <cstdio>

#include <utf8.h>

namespace {

std::string numbered(const char* format, unsigned value)
{
    std::array<char, 16> text{};
    const int length = std::snprintf(text.data(), text.size(), format, value);
    return {text.data(), static_cast<std::size_t>(length)};
}

bool isControl(char32_t character)
{
    return character < 0x20 || (character >= 0x7F && character <= 0x9F) || character == 0x2028 || character == 0x2029;
}

}

bool turnsDirection(char32_t character)
{
    return (character >= 0x202A && character <= 0x202E) || (character >= 0x2066 && character <= 0x2069) ||
           character == 0x200E || character == 0x200F || character == 0x061C;
}

std::string displayable(std::string_view text, std::size_t most)
{
    std::string shown;
    std::size_t count = 0;
    for (const char* at = text.data(); at != text.data() + text.size(); ++count)
    {
        if (most != 0 && count == most)
        {
            return shown + "...";
        }
        const char* const begin = at;
        char32_t character = 0;
        try
        {
            character = static_cast<char32_t>(utf8::next(at, text.data() + text.size()));
        }
        catch (const utf8::exception&)
        {
            at = begin + 1;
            shown += numbered("\\x%02X", static_cast<unsigned char>(*begin));
            continue;
        }
        if (isControl(character) || turnsDirection(character))
        {
            shown += numbered(character < 0x100 ? "\\x%02X" : "\\u%04X", character);
            continue;
        }
        shown.append(begin, at);
    }
    return shown;
}
