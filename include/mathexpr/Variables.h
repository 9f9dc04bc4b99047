// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Variables.h - lists, reads, sets and removes the variables of an expression object, without compiling again.
//
//     mathexpr::setVariable(expression, L"width", VALTYPE());
//     expression.setExpression(L"width*height");
//     VALTYPE* width = mathexpr::getVariableAddress(expression, L"width");
//     for (width->x = 1; width->x <= 10; ++width->x)
//         expression.evaluate(area);
//
// Names ignore the case of the letters A to Z, as in the language. They are returned in the spelling of their definition.
// Constants are not variables. Copies of a CMathExpr share their variables (see expressionOf in CMathExpr.h).
//
// Threads: as for the expression object. While a call on the object waits for the host (in its service or its message
// display), setVariable and removeVariable return false and change nothing.
#pragma once

#include "mathexpr/CMathExpr.h"
#include "mathexpr/Export.h"
#include "mathexpr/MathExpression.h"
#include "mathexpr/SMTDefExcepData.h"
#include "mathexpr/ValType.h"

#include <string>
#include <vector>

namespace mathexpr {

/// The names that the compiled expression reads, in the order of first use. Empty if there is no program. The assigned name is
/// included only if the expression also reads it.
MATHEXPR_API std::vector<std::wstring> getUsedNames(const MathExpression& expression);

/// All variable names, in the order of definition.
MATHEXPR_API std::vector<std::wstring> getVariableNames(const MathExpression& expression);

/// The names whose values the host's service supplied, in that order. The service is not called again for such a name until
/// the variable is removed.
MATHEXPR_API std::vector<std::wstring> getHostNames(const MathExpression& expression);

/// Reads a variable.
/// @param value  not written unless true is returned
/// @return false if there is no such variable, or name is null
MATHEXPR_API bool getVariable(const MathExpression& expression, const wchar_t* name, VALTYPE& value);

/// Sets a variable. An existing variable is changed in place: a compiled program uses the new value from its next evaluation.
/// A new variable can be used by texts compiled afterwards.
/// @param name  null is an empty name
///
/// The function refuses the names that an assignment refuses: a number (code 13), a constant (14), and a name that contains
/// ".", ",", "[" or "]" (15). It also refuses names that no text can assign to: the empty name (12), and a name that contains
/// a blank, "(", ")", "=" or an operator symbol (15). In the exception, itemName is the name, and with code 15 conflictItemName
/// is the offending part of it.
///
/// @return false, with nothing changed, while a call on the object waits for the host
/// @throws DefinitionException  if the name cannot be a variable; nothing has changed
/// @throws std::bad_alloc
MATHEXPR_API bool setVariable(MathExpression& expression, const wchar_t* name, const VALTYPE& value);

/// Removes a variable. A compiled program that reads it becomes empty: evaluate returns false until the next setExpression.
/// Other programs are kept. A pending assignment to the name defines it anew.
/// @return false, with nothing changed, if there is no such variable, name is null, or a call on the object waits for the
///         host
MATHEXPR_API bool removeVariable(MathExpression& expression, const wchar_t* name);

/// The address of a variable's value, for reading and writing in place. It is valid until the variable is removed or the last
/// expression object that shares it is destroyed. Setting, assigning and compiling do not move the value.
/// @return null if there is no such variable, or name is null
MATHEXPR_API VALTYPE* getVariableAddress(MathExpression& expression, const wchar_t* name);

/// Drops a pending assignment. A refused assignment such as "pi=3" stays pending: each later evaluation that yields a value
/// tries it again, until it is dropped or a text with another assignment is compiled.
MATHEXPR_API void dropAssignment(MathExpression& expression) noexcept;

}
