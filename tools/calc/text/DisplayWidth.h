// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// DisplayWidth.h - the number of terminal columns of a text: two for a wide East Asian character and for most emoji,
// none for a combining mark, one for most others.
//
// Independent of the locale, unlike the C library's wcwidth. Characters of ambiguous width in Unicode take one column.
#pragma once

#include <cstddef>
#include <string_view>

/// @param utf8  valid UTF-8, on one line
std::size_t displayWidth(std::string_view utf8);

/// The columns of one character. Implemented per operating system.
std::size_t characterWidth(char32_t character);
