// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// IMathExprNameSource.h - how a host tells which names it would answer, so that a misspelt one can be recognised.
#pragma once

#include <cstdint>

namespace mathexpr {

/// Implemented beside IMathExprService, by the host, which owns the object. The slot order is part of the interface.
class IMathExprNameSource
{
public:
    /// Slot 0: never called by the library.
    virtual ~IMathExprNameSource() = default;

    /// Slot 1: called with 0, 1, 2 and so on until it answers null, while the diagnostic of a text is made whose correction
    /// may need one of the names.
    /// @return a name, zero-terminated and valid until the next call; null when there are no more
    virtual const wchar_t* getName(std::uint32_t index) const = 0;
};

}
