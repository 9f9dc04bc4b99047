// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// IMathOperator.h - an item written between its two operands, or before its one.
#pragma once

#include "mathexpr/IMathExprItemEvaluator.h"

/// An operator. evaluate receives the left operand and then the right one, or the single operand of a unary operator.
class IMathOperator : public IMathExprItemEvaluator
{
public:
    std::wstring getHelpString() const override = 0;
    std::wstring getDescription() const override = 0;
    bool isConstant() const override { return true; }
    bool evaluate(std::uint32_t nbArgs, const VALTYPE* args, VALTYPE& result, bool showMessages) const override = 0;

    /// Slot 5: 0 to 4; a higher number binds tighter. 5 belongs to function calls.
    virtual std::int32_t getPrecedence() const = 0;

    /// Slot 6: as written in an expression. Two operators may share a symbol when exactly one of them is unary.
    virtual std::wstring getSymbol() const = 0;

    /// Slot 7: true for an operator that takes the one operand written after it.
    virtual bool isUnaryOp() const { return false; }
};
