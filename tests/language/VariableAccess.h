// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// VariableAccess.h - changes a variable of an expression object in place, between two evaluations of one program.
//
// Compiling an assignment would replace the program. Only a change in place reveals items that read the previous
// content of their result. The engine's session is a private member of the expression object; it is accessed here
// through an explicit instantiation, which may name private members.
#pragma once

#include "MTParserLib/MTParser.h"
#include "mathexpr/MathExpression.h"

#include <memory>
#include <string_view>

std::shared_ptr<MTParser>& parserOf(MathExpression& expression);

template <auto member>
struct ParserAccess
{
    friend std::shared_ptr<MTParser>& parserOf(MathExpression& expression) { return expression.*member; }
};

template struct ParserAccess<&MathExpression::parser>;

inline MTParserRegistrar& registrarOf(MathExpression& expression)
{
    return parserOf(expression)->getRegistrar();
}

/// Writes the value to the variable, which must exist.
inline void setVariable(MathExpression& expression, std::wstring_view name, const VALTYPE& value)
{
    *registrarOf(expression).getVariableValuePtr(name) = value;
}
