// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Runner.h - drives one row through every path in which it has a meaning.
//
// As written, where what is constant is folded; with its numbers hidden in host variables; with its points hidden; with
// messages and silent; on a new object and on one that compiled and failed before; through MathExpression, and through
// CMathExpr where the host has nothing to answer. Every program is evaluated at least twice.
#pragma once

#include "tests/language/Row.h"

#include <string>
#include <vector>

struct RowReport
{
    std::vector<std::string> failures;  // each: path, text, expected, got
    std::size_t nbPaths = 0;            // through which the row was driven
};

RowReport runRow(const Row& row);
