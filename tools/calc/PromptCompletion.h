// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// PromptCompletion.h - how a line can go on at the cursor.
//
// A name is offered when the expression up to the cursor, with the name in place and all that is open closed, is one that
// the library accepts: what follows a number or a closing bracket, a point where a number is needed, or anything behind a
// mistake is not. A function is tried with arguments of its own, and offered with its opening bracket.
#pragma once

#include "tools/calc/PromptProbe.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

struct Completion
{
    std::size_t replaced = 0;             ///< So many bytes before the cursor make way for what is chosen.
    std::vector<std::string> candidates;  ///< UTF-8, each once, in the order of the vocabulary, variables first.
};

/// @param before  the line up to the cursor, UTF-8
/// @param after   what follows the cursor
/// @param names   what has a value in the session
Completion complete(std::string_view before, std::string_view after, const std::vector<NamedValue>& names,
                    std::optional<std::uint32_t> maxInteger);

/// What all candidates begin with.
std::string commonBeginning(const std::vector<std::string>& candidates);
