// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Utf8.h - between the tool's narrow text, which is UTF-8 everywhere, and the library's wide text.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// The wide form, in the platform's own units; nothing when the text is not valid UTF-8 or holds a zero character,
/// which would end the library's zero-terminated text early.
std::optional<std::wstring> toWide(std::string_view text);

/// How many bytes at the beginning are a text that toWide takes.
std::size_t lengthOfText(std::string_view text);

/// The narrow form. A unit that is no character, such as one half of a pair, becomes the replacement character.
std::string toUtf8(std::wstring_view text);
