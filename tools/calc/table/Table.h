// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Table.h - evaluates expressions over a table: headings are names, and each row yields results.
#pragma once

#include "tools/calc/options/Options.h"

/// Reads the table that the options name, and writes a table with one column per expression and one row per row to
/// standard output. An expression may read the results of earlier ones.
///
/// A row is broken if it has too few or too many cells, if a cell that an expression reads is neither a number nor a
/// point, or if an expression has no value for it. Each broken row is reported with its line. The first one ends the
/// work, after the rows before it have been written, unless broken rows are skipped: these have empty results.
/// @return the exit status of the program
int computeTable(const Options& options);
