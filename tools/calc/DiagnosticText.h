// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// DiagnosticText.h - where an expression failed, as lines for a person.
#pragma once

#include "mathexpr/ExpressionDiagnostic.h"
#include "tools/calc/TerminalStyle.h"

#include <string>
#include <string_view>
#include <vector>

/// The text with a caret under every column of the failure, then what would have been accepted there and what an
/// unknown name may mean, where that says more than the message. Each line is indented and ends with a line end. Of a
/// text that is long, or wider than the terminal, the surroundings of the failure are shown, so that the caret stays
/// below what it marks.
/// @param expression  as typed
std::string diagnosticText(std::wstring_view expression, const mathexpr::ExpressionDiagnostic& diagnostic,
                           const TerminalStyle& style = {});

/// "Did you mean this, that or the other?"; empty without names.
std::string suggestionText(const std::vector<std::wstring>& names);
