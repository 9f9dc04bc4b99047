// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Utf8.h - converts between the tool's narrow text, which is always UTF-8, and the library's wide text.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Converts to the platform's wide text. Nothing if the text is ill-formed UTF-8 or contains a zero, which would end
/// the library's zero-terminated text early.
std::optional<std::wstring> toWide(std::string_view text);

/// Number of bytes at the beginning that toWide accepts.
std::size_t lengthOfText(std::string_view text);

/// Converts to UTF-8. A unit that is not a character, such as half a surrogate pair, becomes the replacement character.
std::string toUtf8(std::wstring_view text);
