// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Table.h - expressions over a table: the headings are names, and each row has results.
#pragma once

#include "tools/calc/options/Options.h"

/// Reads the table that the options name, and writes a column of results for each expression to standard output, a row for
/// each row. An expression may read the results of those before it.
///
/// A row is broken when it has too few or too many cells, when a cell that an expression reads is neither a number nor a
/// point, or when an expression has no value for it. Each is reported with its line. The first one ends the work
/// after the rows before it are written, unless broken rows are to be skipped: those have an empty result.
/// @return the exit status of the program
int computeTable(const Options& options);
