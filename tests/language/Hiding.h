// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Hiding.h - rewrites an expression so that its operands are hidden from the compiler.
//
// A literal becomes a name for which the host supplies the same value, so nothing is folded and every item runs in the
// evaluator.
#pragma once

#include "tests/language/Row.h"

#include <string>

enum class Hidden
{
    Numbers,  ///< Every numeric literal, including those in point brackets.
    Points,   ///< Every point of three literals in brackets, as a whole.
};

/// Replaces the literals of a text; blanks are removed.
/// @param host  receives the new names and their values; existing names are reused
std::wstring hideOperands(const std::wstring& text, Hidden what, Bindings& host);
