// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// IMathExprItemEvaluator.h - the base class of operators, functions and variables.
#pragma once

#include "mathexpr/ValType.h"

#include <cstdint>
#include <string>

/// An operator, a function or a variable. The slot order is part of the interface.
class IMathExprItemEvaluator
{
public:
    /// Slot 0: items are created with new; their owner deletes them through this slot.
    virtual ~IMathExprItemEvaluator() = default;

    /// Slot 1: the usage shown to a user, such as "sin(x)".
    virtual std::wstring getHelpString() const = 0;

    /// Slot 2: a one-line description, such as "Sine".
    virtual std::wstring getDescription() const = 0;

    /// Slot 3: true if the result depends only on the arguments. A call with constant arguments is then evaluated once, at
    /// compile time.
    virtual bool isConstant() const = 0;

    /// Slot 4: computes the value.
    /// @param nbArgs        number of records in args
    /// @param args          the arguments in order, contiguous; read only
    /// @param result        the item writes the fields that it sets; the others keep their previous contents
    /// @param showMessages  whether the item may show the user why it refuses
    /// @return false if the item refuses its arguments
    /// @throws MTExceptions<SMTParsingExcepData> with code 15, from a function that gets a point instead of a number
    virtual bool evaluate(std::uint32_t nbArgs, const VALTYPE* args, VALTYPE& result, bool showMessages) const = 0;
};
