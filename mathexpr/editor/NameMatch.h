// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// NameMatch.h - how well the typed word matches a name or a one-line text. The typed word has no blanks, and blanks of
// the text are ignored: "squarer" matches "Square root".
#pragma once

#include <cstdint>
#include <string_view>

namespace mathexpr::editor {

/// Kind of match, the best first.
enum class Match : std::uint8_t
{
    Beginning,
    BeginningInOtherCase,
    Word,     ///< A later word of the name begins with it: "mm" in "i2mm".
    Meaning,  ///< A word of the description, or of a unit's name, begins with it.
    None,
};

/// Match of the typed word with a name and its description.
Match matchOf(std::wstring_view name, std::wstring_view description, std::wstring_view typed) noexcept;

/// Whether a text or a word in it begins like this, ignoring case.
bool hasBeginning(std::wstring_view text, std::wstring_view beginning) noexcept;

}
