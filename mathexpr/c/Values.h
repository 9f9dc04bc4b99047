// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Values.h - converts between the value records of the C interface and of the library, which have the same layout.
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

/// Gives access to a record through the other interface's type.
inline VALTYPE& inPlace(mathexpr_value& value) noexcept
{
    return reinterpret_cast<VALTYPE&>(value);
}

inline mathexpr_value& inPlace(VALTYPE& value) noexcept
{
    return reinterpret_cast<mathexpr_value&>(value);
}

/// Copies a value for the host. Copying in place could be reordered: compilers assume that accesses through the two
/// types do not alias.
inline mathexpr_value toHost(const VALTYPE& value) noexcept
{
    mathexpr_value copy;
    std::memcpy(&copy, &value, sizeof(copy));
    return copy;
}

/// Copies a value for the library. Members that the library ignores become zero.
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
