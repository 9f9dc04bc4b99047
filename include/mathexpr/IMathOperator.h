// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// IMathOperator.h - a binary operator, or a unary operator written before its operand.
#pragma once

#include "mathexpr/IMathExprItemEvaluator.h"

/// An operator. evaluate gets the left and the right operand, or the only operand of a unary operator.
class IMathOperator : public IMathExprItemEvaluator
{
public:
    std::wstring getHelpString() const override = 0;
    std::wstring getDescription() const override = 0;
    bool isConstant() const override { return true; }
    bool evaluate(std::uint32_t nbArgs, const VALTYPE* args, VALTYPE& result, bool showMessages) const override = 0;

    /// Slot 5: 0 to 4; a higher number binds tighter. 5 belongs to function calls.
    virtual std::int32_t getPrecedence() const = 0;

    /// Slot 6: the symbol. A unary and a binary operator may share it.
    virtual std::wstring getSymbol() const = 0;

    /// Slot 7: true for a unary operator, written before its operand.
    virtual bool isUnaryOp() const { return false; }
};
