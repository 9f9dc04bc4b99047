// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// IMathVariable.h - a named value that may change between evaluations, and the factory that makes one.
#pragma once

#include "mathexpr/IMathExprItemEvaluator.h"

/// A variable: evaluate writes its current value and ignores the arguments. It is never folded.
class IMathVariable : public IMathExprItemEvaluator
{
public:
    std::wstring getHelpString() const override { return {}; }
    std::wstring getDescription() const override { return {}; }
    bool isConstant() const override { return false; }
    bool evaluate(std::uint32_t nbArgs, const VALTYPE* args, VALTYPE& result, bool showMessages) const override = 0;

    /// Slot 5: called by nothing; it keeps the numbers of the slots after it.
    virtual std::int32_t reservedSlot() const { return 0; }

    /// Slot 6: the variable's name.
    virtual std::wstring getSymbol() const = 0;

    /// Slot 7: the record that holds the value, valid for the variable's lifetime. A new value is written through it in
    /// place.
    virtual VALTYPE* getValuePtr() = 0;
};
