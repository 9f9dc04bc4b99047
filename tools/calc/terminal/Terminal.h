// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Terminal.h - whether a user sits at the other end, and how much fits on a line there.
#pragma once

#include <cstddef>

bool standardInputIsTerminal();
bool standardOutputIsTerminal();
bool standardErrorIsTerminal();

/// Of the terminal of standard output; 80 where there is none, or where it does not tell.
std::size_t terminalColumns();

/// The same for lines; 24.
std::size_t terminalLines();
