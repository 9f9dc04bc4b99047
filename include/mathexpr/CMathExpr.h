// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// CMathExpr.h - computes one text in one call.
#pragma once

#include "mathexpr/MathExpression.h"

#include <cstdint>

/// Wraps an expression object that is never silent and asks no host, so every error reaches the user in a message box.
class MATHEXPR_API CMathExpr
{
public:
    CMathExpr() : CMathExpr(mathexpr::HostRuntime()) {}

    /// As the constructor of MathExpression that takes a HostRuntime.
    explicit CMathExpr(const mathexpr::HostRuntime& host);

    /// A copy shares variables and program with its source. Either may be destroyed first, and an assignment lands in
    /// the object that was asked.
    CMathExpr(const CMathExpr& other);
    CMathExpr& operator=(const CMathExpr& other);

    virtual ~CMathExpr();

    /// Compiles and evaluates a text. Variables that it assigns stay for the next call.
    /// @param expression  zero-terminated; null is an empty text
    /// @param result      the value; untouched unless true is returned
    /// @param maxInteger  the greatest integer literal accepted; a literal with a decimal point is not tested
    /// @return false after the user has seen a message
    /// @throws MTExceptions<SMTParsingExcepData>  code 0, ")" before "("; code 15, a point where a
    ///         function needs a number
    /// @throws std::bad_alloc
    bool Calculate(const wchar_t* expression, VALTYPE& result, std::uint32_t maxInteger);

private:
    friend struct mathexpr::EngineAccess;

    MathExpression expression;
};

namespace mathexpr {

/// The expression object inside a calculator, for the functions of this namespace: its variables, limits and
/// diagnostic. Copies of the calculator share what these functions see.
MATHEXPR_API MathExpression& expressionOf(CMathExpr& calculator) noexcept;
MATHEXPR_API const MathExpression& expressionOf(const CMathExpr& calculator) noexcept;

}
