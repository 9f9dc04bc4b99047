// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// DiagnosticText.h - shows users where an expression failed.
#pragma once

#include "mathexpr/ExpressionDiagnostic.h"
#include "tools/calc/terminal/TerminalStyle.h"

#include <string>
#include <string_view>

/// The text with a caret under each column of the failure, then the library's hints. Each line is indented and ends
/// with a line feed. A text that is long, or wider than the terminal, is cut to the part around the failure, so that
/// the caret stays below the failure.
/// @param expression  as typed
std::string diagnosticText(std::wstring_view expression, const mathexpr::ExpressionDiagnostic& diagnostic,
                           const TerminalStyle& style = {});

/// The expression with the correction of the diagnostic; empty if there is none.
std::string correctedText(std::wstring_view expression, const mathexpr::ExpressionDiagnostic& diagnostic);
