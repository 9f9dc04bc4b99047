// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// IMathFunction.h - an item that is called by name with arguments in round brackets.
#pragma once

#include "mathexpr/IMathExprItemEvaluator.h"

/// Argument count of a function that takes any number of arguments; evaluate gets the actual count in nbArgs.
inline constexpr std::uint32_t NB_ARGS_UNDEFINED = 0xFFFFFFFF;

/// A function. Unlike in IMathOperator, slot 5 is the symbol and slot 6 the argument count.
class IMathFunction : public IMathExprItemEvaluator
{
public:
    std::wstring getHelpString() const override = 0;
    std::wstring getDescription() const override = 0;
    bool isConstant() const override { return true; }
    bool evaluate(std::uint32_t nbArgs, const VALTYPE* args, VALTYPE& result, bool showMessages) const override = 0;

    /// Slot 5: the function's name. Overloads share it.
    virtual std::wstring getSymbol() const = 0;

    /// Slot 6: the exact number of arguments, or NB_ARGS_UNDEFINED.
    virtual std::uint32_t getNbArgs() const = 0;
};
