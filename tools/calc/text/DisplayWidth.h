// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// DisplayWidth.h - how many columns of a terminal a text takes: two for a wide character of East Asia and for most
// emoji, none for a mark that combines with the character before it, one for most others.
//
// The locale has no say, unlike in the C library's wcwidth. A character whose width is ambiguous in Unicode takes one.
#pragma once

#include <cstddef>
#include <string_view>

/// @param utf8  valid UTF-8, of one line
std::size_t displayWidth(std::string_view utf8);

/// The columns of one character; its source differs between operating systems.
std::size_t characterWidth(char32_t character);
