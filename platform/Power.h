// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Power.h - the C library's pow, and a faster computation of squares in WebAssembly, with the same bits.
//
// The web module uses musl's pow. Its error is less than 0.5131 units in the last place (ulp): at most 0.511 ulp from
// its exponential, and 2^-67.4 |y ln x| from its logarithm, which is 0.0021 ulp for y = 2 and x between 2^-32 and 2^32.
// If the exact square is further than 1/64 ulp from the middle between two doubles, pow can therefore return only the
// nearest double, which is the product x*x. The square of a power of two is exact, but the doubles below it are closer
// together; for those 64 powers pow is exact, too (PlatformMath.SquaresHaveTheBitsOfPow).
#pragma once

#include <cmath>
#include <cstdint>
#include <cstring>

namespace platform {

#if defined(__wasm__)

/// Whether x*x is what musl's pow returns. False for one number in 32, and for all outside 2^-32 <= |x| < 2^32.
inline bool isSquareByPow(double x) noexcept
{
    std::uint64_t bits = 0;
    std::memcpy(&bits, &x, sizeof bits);
    const std::uint64_t exponent = bits >> 52U & 0x7FFU;
    const std::uint64_t significand = (bits & 0xF'FFFF'FFFF'FFFFU) | 0x10'0000'0000'0000U;
    // The square has 105 or 106 bits. The bits that a double cannot hold, as a fraction of 2^64.
    const unsigned shift = significand < 6'369'051'672'525'773U ? 12 : 11;  // 2^52.5
    const std::uint64_t rest = significand * significand << shift;
    constexpr std::uint64_t middle = std::uint64_t{1} << 63U;
    constexpr std::uint64_t distance = std::uint64_t{1} << 58U;
    return exponent - (1023 - 32) < 64 && rest - (middle - distance) > 2 * distance;
}

#endif

inline double power(double x, double y) noexcept
{
#if defined(__wasm__)
    if (y == 2.0 && isSquareByPow(x))
    {
        return x * x;
    }
#endif
    return std::pow(x, y);
}

}
