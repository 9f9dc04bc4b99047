// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// IMathVariableFactory.h - makes the variables that an expression defines by naming them.
#pragma once

#include "mathexpr/IMathVariable.h"

/// Makes variables. The slot order is part of the interface.
class IMathVariableFactory
{
public:
    /// Slot 0.
    virtual ~IMathVariableFactory() = default;

    /// Slot 1: a new variable of that name (zero-terminated) whose value is the number 0; the caller owns it.
    virtual IMathVariable* create(const wchar_t* name) = 0;
};
