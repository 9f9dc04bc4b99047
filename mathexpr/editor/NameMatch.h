// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// NameMatch.h - how well what has been typed matches a name or a line about it. What has been typed holds no blanks, and
// those of the text that it is matched with do not count: "squarer" matches "Square root".
#pragma once

#include <cstdint>
#include <string_view>

namespace mathexpr::editor {

/// The best first.
enum class Match : std::uint8_t
{
    Beginning,
    BeginningInOtherCase,
    Word,     ///< A word within the name begins so: "mm" in "i2mm".
    Meaning,  ///< The description or the name of a unit has a word that does.
    None,
};

/// Of a name and its description.
Match matchOf(std::wstring_view name, std::wstring_view description, std::wstring_view typed) noexcept;

/// Whether a text or a word in it begins so, in any case of letters.
bool hasBeginning(std::wstring_view text, std::wstring_view beginning) noexcept;

}
