// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Terminal.h - whether a stream is a terminal, and the terminal's size.
#pragma once

#include <cstddef>

bool standardInputIsTerminal();
bool standardOutputIsTerminal();
bool standardErrorIsTerminal();

/// Columns of the terminal at standard output; 80 if there is none or its width is unknown.
std::size_t terminalColumns();

/// Lines of the terminal at standard output; 24 if there is none or its height is unknown.
std::size_t terminalLines();
