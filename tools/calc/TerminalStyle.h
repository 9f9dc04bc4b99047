// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TerminalStyle.h - how wide the lines for a person are, and whether they have colours.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

struct TerminalStyle
{
    std::size_t columns = 1000;  ///< Of the terminal; as wide as this, nothing is cut for its sake.
    bool coloured = false;

    /// What is wrong, in red.
    std::string failure(std::string_view text) const;
};

/// Whether output to a terminal is coloured: not where the user has set NO_COLOR, and not where TERM says that the
/// terminal is a plain one or does not say anything.
bool coloursWelcome();
