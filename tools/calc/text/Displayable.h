// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Displayable.h - makes text from files, the command line or the clipboard safe to show: on one line, without control
// characters that a terminal would act on.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Control characters, ill-formed bytes and characters that change the writing direction are shown as numbers, such as
/// \x1B and \u202E. A longer text is cut between two characters, and ends in "...".
/// @param text  any bytes
/// @param most  maximum number of characters shown; 0 for all
std::string displayable(std::string_view text, std::size_t most = 60);

/// Whether the character changes the writing direction of a terminal, or ends such a change.
bool turnsDirection(char32_t character);
