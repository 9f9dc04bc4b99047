// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// IMathVariableFactory.h - creates a variable for a name that a text uses and nothing defines.
#pragma once

#include "mathexpr/IMathVariable.h"

/// Creates variables. The slot order is part of the interface.
class IMathVariableFactory
{
public:
    /// Slot 0.
    virtual ~IMathVariableFactory() = default;

    /// Slot 1: creates a variable with the given zero-terminated name and the value 0; the caller owns it.
    virtual IMathVariable* create(const wchar_t* name) = 0;
};
