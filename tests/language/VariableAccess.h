// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// VariableAccess.h - changes a variable of an expression object in place, between two evaluations of one program.
//
// Compiling an assignment would replace the program; only a change in place shows items that read the previous content
// of their result. The engine's session is private to the expression object. An explicit instantiation may name a
// private member, which gives access here.
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
