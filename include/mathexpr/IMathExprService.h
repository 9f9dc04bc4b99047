// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// IMathExprService.h - how a host answers names that nothing in the library defines.
#pragma once

#include "mathexpr/ValType.h"

/// Implemented by the host and handed to the constructor of MathExpression, which keeps only the pointer: the host owns
/// the object and keeps it alive for as long as the expression object exists. The slot order is part of the interface.
class IMathExprService
{
public:
    /// Slot 0: never called by the library.
    virtual ~IMathExprService() = default;

    /// Slot 1: asked while an expression is compiled, for a name that is neither a constant nor a defined variable.
    /// @param name   the name exactly as written, zero-terminated, valid during the call only
    /// @param value  all zero on entry; to be filled with a number or a point
    /// @return true when the host knows the name: the name is then a variable with that value, and is not asked
    ///         for again by the same expression object
    ///
    /// An exception of the engine's (MTExceptions.h), of either kind, counts as a failure to compile: message 3 is
    /// shown and setExpression answers false, or, when silent, the exception is passed on with an entry added. The
    /// diagnostic tells of it. Anything else that is thrown passes out of setExpression unchanged.
    virtual bool lookupValue(const wchar_t* name, VALTYPE& value) const = 0;
};
