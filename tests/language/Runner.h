// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Runner.h - runs a row through every path that applies to it.
//
// The paths: as written, with constants folded; with numbers hidden in host variables; with points hidden; with
// messages and silent; on a new object and on one with an earlier program and failure; with MathExpression, and with
// CMathExpr if the host supplies nothing. Every program is evaluated at least twice.
#pragma once

#include "tests/language/Row.h"

#include <string>
#include <vector>

struct RowReport
{
    std::vector<std::string> failures;  // each with path, text, expected and actual outcome
    std::size_t nbPaths = 0;            // number of paths taken
};

RowReport runRow(const Row& row);
