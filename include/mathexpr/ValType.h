// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ValType.h - the value record: a number or a 3-D point.
//
// The record crosses the exported interface by reference, so its 32 bytes have fixed offsets: 0 (type), 1 (flag),
// 2 (reserved), 8 (x), 16 (y), 24 (z). Values are always copied whole: y and z are kept even if type says number.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

/// A number or a point. A new record is all zero: the number 0.
struct VALTYPE
{
    std::uint8_t type = 0;       ///< 0: a number, held in x; 1: a point, held in x, y and z.
    std::uint8_t flag = 0;       ///< 1 marks a converted value or a distance. Read by the operator "&" only.
    std::uint16_t reserved = 0;  ///< Always written as zero.
    std::uint32_t padding = 0;   ///< Named so that copies have no uninitialised bytes.
    double x = 0.0;              ///< The number, or the first coordinate.
    double y = 0.0;              ///< Second coordinate of a point.
    double z = 0.0;              ///< Third coordinate of a point.
};

static_assert(sizeof(VALTYPE) == 32 && alignof(VALTYPE) == 8, "VALTYPE crosses the exported interface");
static_assert(offsetof(VALTYPE, type) == 0 && offsetof(VALTYPE, flag) == 1 && offsetof(VALTYPE, reserved) == 2,
              "VALTYPE crosses the exported interface");
static_assert(offsetof(VALTYPE, x) == 8 && offsetof(VALTYPE, y) == 16 && offsetof(VALTYPE, z) == 24,
              "VALTYPE crosses the exported interface");
static_assert(std::is_trivially_copyable<VALTYPE>::value && std::is_standard_layout<VALTYPE>::value,
              "VALTYPE is copied as 32 bytes");
