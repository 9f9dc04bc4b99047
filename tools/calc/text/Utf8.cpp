// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Utf8.cpp - the conversions, for wide characters of 16 bits (Windows) and 32 bits.

#include "tools/calc/text/Utf8.h"

#include <algorithm>
#include <iterator>

#include <utf8.h>

namespace {

constexpr bool wideIsUtf16 = sizeof(wchar_t) == 2;
constexpr char32_t replacementCharacter = 0xFFFD;

bool isLeadingSurrogate(wchar_t unit)
{
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool isTrailingSurrogate(wchar_t unit)
{
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

/// Whether a code point can be encoded in UTF-8.
bool isCharacter(char32_t point)
{
    return point <= 0x10FFFF && (point < 0xD800 || point > 0xDFFF);
}

}

std::optional<std::wstring> toWide(std::string_view text)
{
    if (!utf8::is_valid(text.begin(), text.end()) || text.find('\0') != std::string_view::npos)
    {
        return std::nullopt;
    }
    std::wstring wide;
    if constexpr (wideIsUtf16)
    {
        utf8::utf8to16(text.begin(), text.end(), std::back_inserter(wide));
    }
    else
    {
        utf8::utf8to32(text.begin(), text.end(), std::back_inserter(wide));
    }
    return wide;
}

std::size_t lengthOfText(std::string_view text)
{
    const auto valid = static_cast<std::size_t>(utf8::find_invalid(text.begin(), text.end()) - text.begin());
    return std::min(valid, text.find('\0'));
}

std::string toUtf8(std::wstring_view text)
{
    std::string narrow;
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        auto point = static_cast<char32_t>(text[i]);
        if (wideIsUtf16 && isLeadingSurrogate(text[i]) && i + 1 < text.size() && isTrailingSurrogate(text[i + 1]))
        {
            ++i;
            point = 0x10000 + ((point - 0xD800) << 10) + (static_cast<char32_t>(text[i]) - 0xDC00);
        }
        utf8::append(isCharacter(point) ? point : replacementCharacter, std::back_inserter(narrow));
    }
    return narrow;
}
