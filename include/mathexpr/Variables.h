// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Variables.h - the variables of an expression object: listed, read, set and removed without compiling again.
//
//     mathexpr::setVariable(expression, L"width", VALTYPE());
//     expression.setExpression(L"width*height");
//     VALTYPE* width = mathexpr::getVariableAddress(expression, L"width");
//     for (width->x = 1; width->x <= 10; ++width->x)
//         expression.evaluate(area);
//
// Names are compared without regard to the case of the letters A to Z, as the language compares them, and are answered
// as they were written when the variable was defined. Constants are not variables. Copies of a CMathExpr share their
// variables (see expressionOf in CMathExpr.h).
//
// Threads: as the expression object itself. While a call on the object waits for the host (in its service or its
// message display), setVariable and removeVariable answer false and change nothing.
#pragma once

#include "mathexpr/CMathExpr.h"
#include "mathexpr/Export.h"
#include "mathexpr/MathExpression.h"
#include "mathexpr/SMTDefExcepData.h"
#include "mathexpr/ValType.h"

#include <string>
#include <vector>

namespace mathexpr {

/// The names that the compiled expression reads, in the order of their first use. Empty when there is no program. The
/// name that the expression assigns to is not among them unless it is read too.
MATHEXPR_API std::vector<std::wstring> getUsedNames(const MathExpression& expression);

/// All names that have a value, in the order in which they were defined.
MATHEXPR_API std::vector<std::wstring> getVariableNames(const MathExpression& expression);

/// The names that the host's service has answered, in the order in which it was asked. The host is not asked again for
/// any of them until it is removed.
MATHEXPR_API std::vector<std::wstring> getHostNames(const MathExpression& expression);

/// Reads a value.
/// @param value  untouched unless true is returned
/// @return false when there is no such variable, or name is null
MATHEXPR_API bool getVariable(const MathExpression& expression, const wchar_t* name, VALTYPE& value);

/// Gives a variable a value, in place where it exists, so that a compiled program computes with it from the next
/// evaluation on. A new variable may be used by the next text that is compiled.
/// @param name  null is an empty name
///
/// Refused are the names that an assignment refuses: a number (code 13), a constant (14), one that holds ".", ",",
/// "[" or "]" (15). Beyond those, names that no text can assign to: the empty one (12), and one that holds a blank,
/// "(", ")", "=" or the symbol of an operator (15). The exception names the given name as itemName, and with code 15
/// what in it stands in the way as conflictItemName.
///
/// @return false, with nothing changed, while a call on the object waits for the host
/// @throws DefinitionException  the name cannot be a variable; nothing has changed
/// @throws std::bad_alloc
MATHEXPR_API bool setVariable(MathExpression& expression, const wchar_t* name, const VALTYPE& value);

/// Forgets a variable. A compiled program that reads it becomes empty: evaluate answers false until the next
/// setExpression. A program that does not read it stays, and a pending assignment to the name defines it anew.
/// @return false, with nothing changed, when there is no such variable, name is null, or a call on the object waits for
///         the host
MATHEXPR_API bool removeVariable(MathExpression& expression, const wchar_t* name);

/// Where the value is held, for reading and for writing in place. The address stays valid until the variable is removed
/// or the last expression object that shares it is destroyed; setting, assigning and compiling again do not move it.
/// @return null when there is no such variable, or name is null
MATHEXPR_API VALTYPE* getVariableAddress(MathExpression& expression, const wchar_t* name);

/// Forgets the name that a text such as "a=2" waits to assign. An assignment that failed, such as "pi=3", otherwise
/// stays pending and is made by the next successful evaluate, whatever its text.
MATHEXPR_API void dropAssignment(MathExpression& expression) noexcept;

}
