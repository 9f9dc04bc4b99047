// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// CMathExpr.h - compiles and evaluates a text in one call.
#pragma once

#include "mathexpr/MathExpression.h"

#include <cstdint>

/// An expression object that shows its failures in message boxes, without a service for names.
class MATHEXPR_API CMathExpr
{
public:
    CMathExpr() : CMathExpr(mathexpr::HostRuntime()) {}

    /// See the constructor of MathExpression that takes a HostRuntime.
    explicit CMathExpr(const mathexpr::HostRuntime& host);

    /// A copy shares variables and program with its source. Either may be destroyed first. An assignment is made by the
    /// object that evaluates it.
    CMathExpr(const CMathExpr& other);
    CMathExpr& operator=(const CMathExpr& other);

    virtual ~CMathExpr();

    /// Compiles and evaluates a text. Variables that it assigns are kept for later calls.
    /// @param expression  zero-terminated; null is an empty text
    /// @param result      the value; untouched unless true is returned
    /// @param maxInteger  greatest accepted integer literal; literals with a decimal point are not checked
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

/// The expression object of a calculator, for use with the functions of this namespace (variables, limits, diagnostic).
/// Copies of the calculator share that state.
MATHEXPR_API MathExpression& expressionOf(CMathExpr& calculator) noexcept;
MATHEXPR_API const MathExpression& expressionOf(const CMathExpr& calculator) noexcept;

}
