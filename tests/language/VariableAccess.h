// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// VariableAccess.h - changes a variable of an expression object in place, between two evaluations of one program.
//
// A host cannot do that (compiling an assignment would replace the program), while items that keep what their result
// record held show themselves only there. The engine's session is private to the expression object; an explicit
// instantiation may name a private member, and hands it out here.
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

/// Writes the value where the variable holds it. The variable has to exist.
inline void setVariable(MathExpression& expression, std::wstring_view name, const VALTYPE& value)
{
    *registrarOf(expression).getVariableValuePtr(name) = value;
}
