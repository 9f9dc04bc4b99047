// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// NameWords.h - compares names ignoring case, and splits them into words: "mm" in "i2mm", "Pipe" in "innerPipe", "wall"
// in "outer_wall".
#pragma once

#include "MTParserLib/names/MTNameIndex.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace mathexpr {

inline std::wstring inLowerCase(std::wstring_view name)
{
    std::wstring folded(name);
    std::transform(folded.begin(), folded.end(), folded.begin(), foldCase);
    return folded;
}

inline bool isLetter(wchar_t character) noexcept
{
    const wchar_t folded = foldCase(character);
    return folded >= L'a' && folded <= L'z';
}

/// Whether a word other than the first begins at a character of a name.
inline bool beginsWord(std::wstring_view name, std::size_t at) noexcept
{
    const bool isUpper = name[at] != foldCase(name[at]);
    return isLetter(name[at]) && (!isLetter(name[at - 1]) || (isUpper && name[at - 1] == foldCase(name[at - 1])));
}

}
