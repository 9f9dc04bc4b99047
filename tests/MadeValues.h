// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MadeValues.h - creates values for tests.
#pragma once

#include "mathexpr/ValType.h"

#include <cstdint>

/// @param flag  1 for a converted value or a distance
inline VALTYPE number(double x, std::uint8_t flag = 0)
{
    return VALTYPE{0, flag, 0, 0, x, 0.0, 0.0};
}

inline VALTYPE point(double x, double y, double z)
{
    return VALTYPE{1, 0, 0, 0, x, y, z};
}
