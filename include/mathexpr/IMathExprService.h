// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// IMathExprService.h - the host's lookup for names that the library does not know.
#pragma once

#include "mathexpr/ValType.h"

/// Implemented by the host and passed to the constructor of MathExpression, which keeps the pointer. The host owns the object
/// and keeps it alive as long as the expression object exists. The slot order is part of the interface.
class IMathExprService
{
public:
    /// Slot 0: never called by the library.
    virtual ~IMathExprService() = default;

    /// Slot 1: called while an expression is compiled, for a name that is neither a constant nor a defined variable.
    /// @param name   the name as written, zero-terminated, valid during the call only
    /// @param value  all zero on entry; receives a number or a point
    /// @return true if the host knows the name. The name becomes a variable with that value, and the same expression object
    ///         does not ask for it again.
    ///
    /// An engine exception (MTExceptions.h), of either kind, is a compile failure: message 3 is shown and setExpression
    /// returns false, or, when silent, the exception is rethrown with an entry added. The diagnostic describes it. All other
    /// exceptions propagate out of setExpression unchanged.
    virtual bool lookupValue(const wchar_t* name, VALTYPE& value) const = 0;
};
