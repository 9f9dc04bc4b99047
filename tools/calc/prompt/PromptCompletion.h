// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// PromptCompletion.h - how a line can go on at the cursor: as the library completes an expression, or as a command does.
#pragma once

#include "mathexpr/Completion.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

struct Completion
{
    std::size_t replacedBefore = 0;  ///< So many bytes before the cursor,
    std::size_t replacedBehind = 0;  ///< and so many behind it, make way for what is chosen.
    /// UTF-8, each once, the best first. Those that begin with what has been typed; where none does, those that begin so
    /// but for the case of letters; where none does either, all that have to do with it, such as the conversions of a unit.
    std::vector<std::string> candidates;
};

/// @param before  the line up to the cursor, UTF-8
/// @param behind  what follows the cursor
/// @param notes   what is known of names that the host offers; may be null
Completion complete(const MathExpression& expression, const mathexpr::IMathExprNameNotes* notes,
                    std::string_view before, std::string_view behind);

/// What all candidates begin with.
std::string commonBeginning(const std::vector<std::string>& candidates);
