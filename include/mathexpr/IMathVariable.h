// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// IMathVariable.h - a named value that can change between evaluations.
#pragma once

#include "mathexpr/IMathExprItemEvaluator.h"

/// A variable. evaluate writes its current value and ignores the arguments. Variables are never folded.
class IMathVariable : public IMathExprItemEvaluator
{
public:
    std::wstring getHelpString() const override { return {}; }
    std::wstring getDescription() const override { return {}; }
    bool isConstant() const override { return false; }
    bool evaluate(std::uint32_t nbArgs, const VALTYPE* args, VALTYPE& result, bool showMessages) const override = 0;

    /// Slot 5: unused; keeps later slots in place.
    virtual std::int32_t reservedSlot() const { return 0; }

    /// Slot 6: the variable's name.
    virtual std::wstring getSymbol() const = 0;

    /// Slot 7: the record with the value, valid for the variable's lifetime. New values are written through this pointer.
    virtual VALTYPE* getValuePtr() = 0;
};
