// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Table.h - one expression over a table of comma-separated values: the headings are names, and each row has a result.
#pragma once

#include "tools/calc/Options.h"

/// Reads the table that the options name, and writes one column of results to standard output, a row for each row.
///
/// A row is broken when it has too few or too many cells, when a cell that the expression reads is neither a number nor
/// a point, or when the expression has no value for it. Each is reported with its line. The first one ends the work
/// after the rows before it are written, unless broken rows are to be skipped: those have an empty result.
/// @return the exit status of the program
int computeTable(const Options& options);
