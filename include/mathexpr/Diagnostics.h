// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Diagnostics.h - describes the last failure of an expression object.
//
//     if (!expression.setExpression(text) || !expression.evaluate(value))
//     {
//         const mathexpr::ExpressionDiagnostic diagnostic = mathexpr::getDiagnostic(expression);
//         ...  // underline diagnostic.length characters of text from diagnostic.start on
//     }
//
// The failure is recorded in both modes, with the content of the message box and of the exception. The next setExpression
// clears it, and so does the next evaluate that runs a program. An evaluate without a program keeps it, since it explains why
// there is no program. Exceptions of the host's service or message display are not recorded, except engine exceptions from a
// service (IMathExprService.h). Copies of a CMathExpr share the record, as they share the program.
#pragma once

#include "mathexpr/CMathExpr.h"
#include "mathexpr/Export.h"
#include "mathexpr/ExpressionDiagnostic.h"
#include "mathexpr/IMathExprNameSource.h"
#include "mathexpr/MathExpression.h"

namespace mathexpr {

/// Whether a failure is recorded.
MATHEXPR_API bool hasFailed(const MathExpression& expression) noexcept;

/// The recorded failure. The call prepares the texts for the user, in time proportional to the length of the text and the number
/// of known names.
/// @throws std::bad_alloc, and what the name source throws
MATHEXPR_API ExpressionDiagnostic getDiagnostic(const MathExpression& expression);

/// Sets the source of the host's names, for suggestions; null for none. The host owns it and keeps it alive until it is replaced.
MATHEXPR_API void setNameSource(MathExpression& expression, const IMathExprNameSource* source) noexcept;

}
