// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Diagnostics.h - asks an expression object what went wrong.
//
//     if (!expression.setExpression(text) || !expression.evaluate(value))
//     {
//         const mathexpr::ExpressionDiagnostic diagnostic = mathexpr::getDiagnostic(expression);
//         ...  // underline diagnostic.length characters of text from diagnostic.start on
//     }
//
// The record of the last failure is there in both modes, also after an exception, and tells the same as the message box
// and the exception do. It is cleared by the next setExpression, and by the next evaluate that runs a program; an
// evaluate without a program leaves it, so that it still tells why there is none. What the host's own service or
// message display throws leaves no record, but for the engine's exceptions from a service (IMathExprService.h). Copies
// of a CMathExpr share the record, as they share the program.
#pragma once

#include "mathexpr/CMathExpr.h"
#include "mathexpr/Export.h"
#include "mathexpr/ExpressionDiagnostic.h"
#include "mathexpr/IMathExprNameSource.h"
#include "mathexpr/MathExpression.h"

namespace mathexpr {

/// Whether there is a failure to tell about.
MATHEXPR_API bool hasFailed(const MathExpression& expression) noexcept;

/// The failure, made ready for the user when it is asked for: this takes time in proportion to the text and the number
/// of names known, which a host that does not ask is spared.
/// @throws std::bad_alloc, and what the name source throws
MATHEXPR_API ExpressionDiagnostic getDiagnostic(const MathExpression& expression);

/// Names that the host would answer, for suggestions; null for none. Kept until it is replaced; owned by the host and
/// kept alive by it.
MATHEXPR_API void setNameSource(MathExpression& expression, const IMathExprNameSource* source) noexcept;

}
