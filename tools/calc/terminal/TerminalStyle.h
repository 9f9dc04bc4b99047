// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TerminalStyle.h - how answers are shown to a person: line width, colours, digits of values.
#pragma once

#include "tools/calc/text/ValueText.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

struct TerminalStyle
{
    std::size_t columns = 1000;  ///< Width of the terminal; the default shortens nothing.
    bool coloured = false;
    bool atPrompt = false;               ///< Whether prompt commands are available.
    bool isTerminal = false;             ///< Whether notes are shown with the values.
    std::uint32_t digits = usualDigits;  ///< Significant digits of values.

    /// Formats an error in red.
    std::string failure(std::string_view text) const;
};

/// Whether to colour output to a terminal: not if the user has set NO_COLOR, and not if TERM names a plain terminal or
/// is not set.
bool coloursWelcome();
