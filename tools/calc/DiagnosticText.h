// DiagnosticText.h - where an expression failed, as lines for a person.
#pragma once

#include "mathexpr/ExpressionDiagnostic.h"

#include <string>
#include <string_view>
#include <vector>

/// The text with a caret under every character of the failure, then what would have been accepted there and what an
/// unknown name may mean, where that says more than the message. Each line is indented and ends with a line end.
/// @param expression  as typed
std::string diagnosticText(std::wstring_view expression, const ExpressionDiagnostic& diagnostic);

/// "Did you mean this, that or the other?"; empty without names.
std::string suggestionText(const std::vector<std::wstring>& names);
