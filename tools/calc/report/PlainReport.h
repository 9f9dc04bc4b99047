// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// PlainReport.h - answers for people: values on standard output, failures on standard error.
#pragma once

#include "tools/calc/answer/Answer.h"
#include "tools/calc/terminal/TerminalStyle.h"

#include <string>

/// One value a line; when the expression failed, what went wrong, and below it where, in indented lines. On a terminal also
/// notes on values that surprise, and what computes a question about units.
/// @param origin  where the expression stands, to be said before what went wrong; empty where the user knows
void reportPlain(const Answer& answer, const std::string& origin = {}, const TerminalStyle& style = {});

/// What went wrong, for an answer that failed: a line for each message, and for an exception a sentence.
std::string failureText(const Answer& answer);
