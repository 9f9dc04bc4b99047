// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Prompt.h - the calculator as a conversation at a terminal.
#pragma once

#include "tools/calc/Calculator.h"
#include "tools/calc/options/Options.h"

/// Runs lines until the user leaves. Standard input and output are a terminal.
void runPrompt(const Options& options, Calculator& calculator);
