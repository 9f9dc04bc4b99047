// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Prompt.h - the interactive prompt.
#pragma once

#include "tools/calc/Calculator.h"
#include "tools/calc/options/Options.h"

/// Reads and runs lines until the user leaves. Standard input and output must be a terminal.
void runPrompt(const Options& options, Calculator& calculator);
