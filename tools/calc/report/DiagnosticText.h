// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// DiagnosticText.h - where an expression failed, as lines for a person.
#pragma once

#include "mathexpr/ExpressionDiagnostic.h"
#include "tools/calc/terminal/TerminalStyle.h"

#include <string>
#include <string_view>

/// The text with a caret under every column of the failure, then the hints of the library. Each line is indented and ends with a line end. Of a
/// text that is long, or wider than the terminal, the surroundings of the failure are shown, so that the caret stays
/// below what it marks.
/// @param expression  as typed
std::string diagnosticText(std::wstring_view expression, const mathexpr::ExpressionDiagnostic& diagnostic,
                           const TerminalStyle& style = {});

/// The expression with the correction that the diagnostic offers; empty where it offers none.
std::string correctedText(std::wstring_view expression, const mathexpr::ExpressionDiagnostic& diagnostic);
