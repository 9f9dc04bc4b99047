// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MadeValues.h - values for tests to compute with and to compare with.
#pragma once

#include "mathexpr/ValType.h"

#include <cstdint>

/// @param flag  1 as a conversion or a distance yields it
inline VALTYPE number(double x, std::uint8_t flag = 0)
{
    return VALTYPE{0, flag, 0, 0, x, 0.0, 0.0};
}

inline VALTYPE point(double x, double y, double z)
{
    return VALTYPE{1, 0, 0, 0, x, y, z};
}
