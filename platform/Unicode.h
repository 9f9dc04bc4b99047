// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Unicode.h - converts between the platform's wide text (UTF-32, on Windows UTF-16) and UTF-8 and UTF-16.
//
// Ill-formed input is refused. Output is always well-formed: units of the wide text that are not characters become
// U+FFFD.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace platform {

inline constexpr std::size_t wellFormed = static_cast<std::size_t>(-1);

/// Index of the first ill-formed unit; wellFormed if there is none. Overlong forms, encoded surrogates and numbers
/// above 0x10FFFF are ill-formed in UTF-8, lone surrogates in UTF-16.
std::size_t findIllFormed(std::string_view text) noexcept;
std::size_t findIllFormed(std::u16string_view text) noexcept;

/// @param text  well-formed
/// @throws std::bad_alloc, like the next two functions
std::wstring toWide(std::string_view text);
std::wstring toWide(std::u16string_view text);

std::string toUtf8(std::wstring_view text);
std::u16string toUtf16(std::wstring_view text);

}
