// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// IMathFunction.h - an item that is called by name with arguments in round brackets.
#pragma once

#include "mathexpr/IMathExprItemEvaluator.h"

/// The argument count of a function that takes any number of arguments; evaluate reads the real count from nbArgs.
inline constexpr std::uint32_t NB_ARGS_UNDEFINED = 0xFFFFFFFF;

/// A function. Its symbol is slot 5 and its argument count slot 6, unlike an operator's.
class IMathFunction : public IMathExprItemEvaluator
{
public:
    std::wstring getHelpString() const override = 0;
    std::wstring getDescription() const override = 0;
    bool isConstant() const override { return true; }
    bool evaluate(std::uint32_t nbArgs, const VALTYPE* args, VALTYPE& result, bool showMessages) const override = 0;

    /// Slot 5: the name by which an expression calls the function. Overloads share it.
    virtual std::wstring getSymbol() const = 0;

    /// Slot 6: the exact number of arguments, or NB_ARGS_UNDEFINED.
    virtual std::uint32_t getNbArgs() const = 0;
};
