// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// VariableAccess.h - changes a variable of an expression object in place, between two evaluations of one program.
//
// A host cannot do that (compiling an assignment would replace the program), while items that keep what their result
// record held show themselves only there. The registrar is private to the expression object; an explicit instantiation
// may name a private member, and hands it out here.
#pragma once

#include "MTParserLib/MTParserRegistrar.h"
#include "mathexpr/MathExpression.h"

#include <memory>
#include <string_view>

std::shared_ptr<MTParserRegistrar>& registrarOf(MathExpression& expression);

template <auto member>
struct RegistrarAccess
{
    friend std::shared_ptr<MTParserRegistrar>& registrarOf(MathExpression& expression) { return expression.*member; }
};

template struct RegistrarAccess<&MathExpression::registrar>;

/// Writes the value where the variable holds it. The variable has to exist.
inline void setVariable(MathExpression& expression, std::wstring_view name, const VALTYPE& value)
{
    *registrarOf(expression)->getVariableValuePtr(name) = value;
}
