// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTValueCopy.h - copies value records whose fields have just been written one by one.
//
// A processor forwards a recent store to a load of the same bytes, but not to a wider load that includes other bytes:
// that load stalls about ten cycles, until the store has reached the cache. Compilers copy a record with wide loads.
// Reading through volatile keeps every load as wide as the store before it.
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

/// Copies a record written long ago, except x, which has just been computed.
inline void copyWithX(VALTYPE& to, const VALTYPE& from, double x) noexcept
{
    std::memcpy(static_cast<void*>(&to), &from, offsetof(VALTYPE, x));
    to.x = x;
    std::memcpy(&to.y, &from.y, sizeof to.y + sizeof to.z);
}

/// Copies a record whose x, y and z have just been stored one by one.
inline void copyWithCoordinates(VALTYPE& to, const VALTYPE& from) noexcept
{
    const volatile VALTYPE& recent = from;
    std::memcpy(static_cast<void*>(&to), &from, offsetof(VALTYPE, x));
    to.x = recent.x;
    to.y = recent.y;
    to.z = recent.z;
}
