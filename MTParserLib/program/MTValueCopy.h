// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTValueCopy.h - copies a value record of which single fields were written a moment ago.
//
// A processor hands a stored value straight on to a load of the same bytes, but not to a wider load that takes in bytes
// from elsewhere: that one waits until the store has reached the cache, some ten cycles. Compilers copy a record in
// wide pieces. Reading through volatile keeps each load as wide as the store that it meets.
#pragma once

#include "mathexpr/ValType.h"

#include <cstring>

/// Copies a whole record field by field.
inline void copyRecent(VALTYPE& to, const volatile VALTYPE& from) noexcept
{
    to.type = from.type;
    to.flag = from.flag;
    to.reserved = from.reserved;
    to.padding = from.padding;
    to.x = from.x;
    to.y = from.y;
    to.z = from.z;
}

/// Copies a record that stands long since, but for x, which has just been computed.
inline void copyWithX(VALTYPE& to, const VALTYPE& from, double x) noexcept
{
    std::memcpy(static_cast<void*>(&to), &from, offsetof(VALTYPE, x));
    to.x = x;
    std::memcpy(&to.y, &from.y, sizeof to.y + sizeof to.z);
}

/// Copies a record of which x, y and z have just been stored, one by one.
inline void copyWithCoordinates(VALTYPE& to, const VALTYPE& from) noexcept
{
    const volatile VALTYPE& recent = from;
    std::memcpy(static_cast<void*>(&to), &from, offsetof(VALTYPE, x));
    to.x = recent.x;
    to.y = recent.y;
    to.z = recent.z;
}
