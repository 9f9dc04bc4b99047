// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// PlainReport.h - answers for people: values on standard output, failures on standard error.
#pragma once

#include "tools/calc/answer/Answer.h"
#include "tools/calc/terminal/TerminalStyle.h"

#include <string>

/// Prints one value per line; for a failure the error, and below it the position, indented. On a terminal also notes on
/// surprising values, and the expression that answers a question about units.
/// @param origin  location of the expression, printed before the error; empty if the user knows it
void reportPlain(const Answer& answer, const std::string& origin = {}, const TerminalStyle& style = {});

/// The error of an answer that failed: a line for each message, and a sentence for an exception.
std::string failureText(const Answer& answer);
