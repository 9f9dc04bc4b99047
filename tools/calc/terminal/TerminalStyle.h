// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TerminalStyle.h - what a person sees of answers: how wide lines are, whether they have colours, how many digits values
// have.
#pragma once

#include "tools/calc/text/ValueText.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

struct TerminalStyle
{
    std::size_t columns = 1000;  ///< Of the terminal; as wide as this, nothing is cut for its sake.
    bool coloured = false;
    bool atPrompt = false;               ///< Whether the prompt's commands can be typed.
    bool isTerminal = false;             ///< Whether a person reads what is said beside the values.
    std::uint32_t digits = usualDigits;  ///< Of values.

    /// What is wrong, in red.
    std::string failure(std::string_view text) const;
};

/// Whether output to a terminal is coloured: not where the user has set NO_COLOR, and not where TERM says that the
/// terminal is a plain one or does not say anything.
bool coloursWelcome();
