// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Hiding.h - the same expression with its operands where the compiler cannot see them.
//
// A literal becomes a name that the host answers with the same value, so that nothing of it can be folded and every
// item runs in the evaluator.
#pragma once

#include "tests/language/Row.h"

#include <string>

enum class Hidden
{
    Numbers,  ///< Every numeric literal, those in point brackets too.
    Points,   ///< Every point of three literals in point brackets, as a whole.
};

/// Replaces what is to be hidden in a text, blanks removed.
/// @param host  receives the names made and their values; names already there are not made again
std::wstring hideOperands(const std::wstring& text, Hidden what, Bindings& host);
