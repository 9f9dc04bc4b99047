// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Evaluation.h - compiles and evaluates a text for an expression of the C interface.
#pragma once

#include "mathexpr/c/Expression.h"

/// @param expression  not a calculator
/// @return as mathexpr_set_expression_utf8
/// @throws std::bad_alloc, HostCallbackFailure
mathexpr_status compileText(mathexpr_expression& expression, const std::wstring& text);

/// Evaluates the program of a plain expression in any state, without the fast path.
mathexpr_status evaluateInFull(mathexpr_expression* handle, mathexpr_value* value) noexcept;
