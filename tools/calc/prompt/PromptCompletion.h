// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// PromptCompletion.h - completion at the cursor, of expressions by the library, and of commands.
#pragma once

#include "mathexpr/Completion.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

struct Completion
{
    std::size_t replacedBefore = 0;  ///< Number of bytes to replace before the cursor,
    std::size_t replacedBehind = 0;  ///< and after it.
    /// UTF-8, without duplicates, the best first: candidates that begin with the typed text; if there are none, those
    /// that begin with it ignoring case; if there are none either, all that match otherwise, such as the conversions of
    /// a unit.
    std::vector<std::string> candidates;
};

/// @param before  the line up to the cursor, UTF-8
/// @param behind  the line after the cursor
/// @param notes   notes on the host's names; may be null
Completion complete(const MathExpression& expression, const mathexpr::IMathExprNameNotes* notes,
                    std::string_view before, std::string_view behind);

/// The longest common prefix of all candidates.
std::string commonBeginning(const std::vector<std::string>& candidates);
