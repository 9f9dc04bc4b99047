// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// IMathExprItemEvaluator.h - the root of everything that an expression can name and that computes a value.
#pragma once

#include "mathexpr/ValType.h"

#include <cstdint>
#include <string>

/// An operator, a function or a variable. The slot order is part of the interface.
class IMathExprItemEvaluator
{
public:
    /// Slot 0: items are made with new and deleted through this slot by whoever owns them.
    virtual ~IMathExprItemEvaluator() = default;

    /// Slot 1: the usage shown to a user, such as "sin(x)".
    virtual std::wstring getHelpString() const = 0;

    /// Slot 2: one line that tells what the item does, such as "Sine".
    virtual std::wstring getDescription() const = 0;

    /// Slot 3: true when the result depends on the arguments alone, so that a call with constant arguments may be
    /// computed once, while the expression is compiled.
    virtual bool isConstant() const = 0;

    /// Slot 4: computes the value.
    /// @param nbArgs        number of records in args
    /// @param args          the arguments, contiguous, the first one first; read only
    /// @param result        written only in the fields that the item means to set; the others keep what they held
    ///                      on entry
    /// @param showMessages  whether the item may tell the user itself why it refuses
    /// @return false when the item refuses its arguments
    /// @throws MTExceptions<SMTParsingExcepData> with code 15 from a function that is given a point for a number
    virtual bool evaluate(std::uint32_t nbArgs, const VALTYPE* args, VALTYPE& result, bool showMessages) const = 0;
};
