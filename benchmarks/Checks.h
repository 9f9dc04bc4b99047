// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Checks.h - inputs for the formulas, and the comparison of results with native code.
#pragma once

#include "benchmarks/Inputs.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <random>

/// Inputs within the domains of all formulas.
inline Inputs randomInputs(std::mt19937_64& generator)
{
    const auto draw = [&](double from, double to) {
        return std::uniform_real_distribution<double>(from, to)(generator);
    };
    Inputs inputs{};
    for (double* any : {&inputs.x, &inputs.y, &inputs.z, &inputs.p.x, &inputs.p.y, &inputs.p.z, &inputs.q.x,
                        &inputs.q.y, &inputs.q.z})
    {
        *any = draw(-180.0, 180.0);
    }
    for (double* positive : {&inputs.a, &inputs.b, &inputs.r})
    {
        *positive = draw(1.0, 10.0);
    }
    return inputs;
}

inline bool sameBits(double value, double expected)
{
    return std::bit_cast<std::uint64_t>(value) == std::bit_cast<std::uint64_t>(expected);
}

/// Whether a value that is not bit-exact still is a result of the same formula. The tolerance is far above an engine's
/// rounding errors and far below the difference from another formula.
inline bool isClose(double value, double expected)
{
    return std::fabs(value - expected) <= 1e-9 * std::fmax(1.0, std::fabs(expected));
}
