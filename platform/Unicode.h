// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Unicode.h - converts between the wide text of the platform, UTF-32 or on Windows UTF-16, and UTF-8 and UTF-16.
//
// What comes in is looked through first and refused where it is ill-formed. What goes out is always well-formed: should
// the wide text not be, U+FFFD stands for what is no character.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace platform {

inline constexpr std::size_t wellFormed = static_cast<std::size_t>(-1);

/// The index of the first unit of the first thing that is no character: in UTF-8 also an overlong form, an encoded
/// surrogate and a number above 0x10FFFF, in UTF-16 a lone surrogate. wellFormed where there is none.
std::size_t findIllFormed(std::string_view text) noexcept;
std::size_t findIllFormed(std::u16string_view text) noexcept;

/// @param text  well-formed
/// @throws std::bad_alloc, as the next two
std::wstring toWide(std::string_view text);
std::wstring toWide(std::u16string_view text);

std::string toUtf8(std::wstring_view text);
std::u16string toUtf16(std::wstring_view text);

}
