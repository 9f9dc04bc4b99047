// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Settings.h - environment variables for longer runs of the comparison.
#pragma once

#include <cstdint>
#include <cstdlib>

namespace reference {

inline std::uint64_t fromEnvironment(const char* variable, std::uint64_t otherwise)
{
    const char* text = std::getenv(variable);
    return text != nullptr ? std::strtoull(text, nullptr, 10) : otherwise;
}

inline std::uint64_t firstSeed()
{
    return fromEnvironment("MATHEXPR_DIFFERENTIAL_SEED", 1);
}
}
