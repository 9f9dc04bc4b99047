// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTFrame.h - the value records that the steps of a program read and write, each known by its number, its place.
//
//     x*2+y     slots   0: the constant 2   1: x*2   2: the root
//               inputs  firstInput: x   firstInput + 1: y
//               *  firstInput, 0      -> 1
//               +  1, firstInput + 1  -> 2
//
// Steps name no address. So whoever runs a program with a frame of their own shares nothing that changes.
#pragma once

#include "mathexpr/ValType.h"

#include <cstdint>
#include <limits>

using MTPlace = std::uint32_t;

/// Places below are those of slots, which hold constants and results. From here on they are those of inputs, which are
/// the values of variables.
inline constexpr MTPlace firstInput = MTPlace{1} << 31U;
inline constexpr MTPlace noPlace = std::numeric_limits<MTPlace>::max();

struct MTFrame
{
    VALTYPE* slots;
    const VALTYPE* const* inputs;

    const VALTYPE& operator[](MTPlace place) const noexcept
    {
        return place < firstInput ? slots[place] : *inputs[place - firstInput];
    }
};
