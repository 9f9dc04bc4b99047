// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Displayable.h - text from files, from the command line and from the clipboard, as it may be shown: on one line, with nothing in
// it that a terminal would obey.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Controls, ill-formed bytes and characters that turn the direction of writing appear as their numbers, such as \x1B and
/// \u202E. A longer text is cut between two characters, and ends in "...".
/// @param text  any bytes
/// @param most  how many characters are shown; 0 for all
std::string displayable(std::string_view text, std::size_t most = 60);

/// Whether a terminal writes from here on in the other direction, or stops doing so.
bool turnsDirection(char32_t character);
