// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// IMathExprNameSource.h - lists the names that a host knows, so that a misspelt one can be recognised.
#pragma once

#include <cstdint>

namespace mathexpr {

class NameIndex;

/// Implemented by the host in addition to IMathExprService. The host owns the object. The slot order is part of the interface.
class IMathExprNameSource
{
public:
    /// Slot 0: never called by the library.
    virtual ~IMathExprNameSource() = default;

    /// Slot 1: called with 0, 1, 2 and so on until it returns null, to find corrections of an unknown name and completions.
    /// @return a name, zero-terminated and valid until the next call; null after the last one
    virtual const wchar_t* getName(std::uint32_t index) const = 0;

    /// Slot 2: an index of further names, which the library searches instead of enumerating it; null for none.
    virtual const NameIndex* getIndex() const { return nullptr; }
};

}
