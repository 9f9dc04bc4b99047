// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Evaluation.h - compiles a text for an expression of the C interface, and evaluates it.
#pragma once

#include "mathexpr/c/Expression.h"

/// @param expression  no calculator
/// @return as mathexpr_set_expression_utf8
/// @throws std::bad_alloc, HostCallbackFailure
mathexpr_status compileText(mathexpr_expression& expression, const std::wstring& text);

/// Evaluates the program of a plain expression, whatever the state of the expression is.
mathexpr_status evaluateInFull(mathexpr_expression* handle, mathexpr_value* value) noexcept;
