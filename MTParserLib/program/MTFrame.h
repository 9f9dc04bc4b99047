// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTFrame.h - the value records that the steps of a program read and write. Steps identify them by number (place).
//
//     x*2+y     slots   0: the constant 2   1: x*2   2: the root
//               inputs  firstInput: x   firstInput + 1: y
//               *  firstInput, 0      -> 1
//               +  1, firstInput + 1  -> 2
//
// Steps contain no address. Runs with separate frames therefore share no mutable state.
#pragma once

#include "mathexpr/ValType.h"

#include <cstdint>
#include <limits>

using MTPlace = std::uint32_t;

/// Places below firstInput are slots, which hold constants and results. Places from firstInput on are inputs, the
/// values of variables.
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
