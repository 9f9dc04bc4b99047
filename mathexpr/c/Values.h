// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Values.h - the value record of the C interface is the library's own, under another name.
#pragma once

#include "mathexpr/ValType.h"

#include <mathexpr.h>

#include <cstddef>
#include <cstring>

static_assert(sizeof(mathexpr_value) == sizeof(VALTYPE) && alignof(mathexpr_value) == alignof(VALTYPE));
static_assert(offsetof(mathexpr_value, type) == offsetof(VALTYPE, type) &&
              offsetof(mathexpr_value, flag) == offsetof(VALTYPE, flag) &&
              offsetof(mathexpr_value, x) == offsetof(VALTYPE, x) &&
              offsetof(mathexpr_value, y) == offsetof(VALTYPE, y) &&
              offsetof(mathexpr_value, z) == offsetof(VALTYPE, z));

inline bool isNumberOrPoint(const mathexpr_value& value) noexcept
{
    return value.type <= MATHEXPR_POINT && value.flag <= 1;
}

/// A record of one side as the other side's, for it to read and write.
inline VALTYPE& inPlace(mathexpr_value& value) noexcept
{
    return reinterpret_cast<VALTYPE&>(value);
}

inline mathexpr_value& inPlace(VALTYPE& value) noexcept
{
    return reinterpret_cast<mathexpr_value&>(value);
}

/// A copy of a value for the host. Assigned in place, it could be read before it is written: to a compiler that sees both, a
/// write to one type and a read of the other are of different memory.
inline mathexpr_value toHost(const VALTYPE& value) noexcept
{
    mathexpr_value copy;
    std::memcpy(&copy, &value, sizeof(copy));
    return copy;
}

/// What the library does not read becomes zero, as it is in its own values.
inline VALTYPE toLibrary(const mathexpr_value& value) noexcept
{
    VALTYPE own;
    own.type = value.type;
    own.flag = value.flag;
    own.x = value.x;
    own.y = value.y;
    own.z = value.z;
    return own;
}
