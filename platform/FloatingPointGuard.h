// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// FloatingPointGuard.h - computes with the library's floating-point control words, whatever the host has set.
//
// A host may have unmasked floating-point exceptions, changed the rounding direction or the precision, or enabled
// flushing of denormal numbers. An expression must not trap or round differently because of that, and the host's words
// must be restored whenever control returns to the host. Every entry point that computes has a FloatingPointGuard, and
// every call of the host has a HostFloatingPoint.
//
// The guard reads the words, and changes them only if they differ from the library's: all exceptions masked, round to
// nearest, denormals kept.
#pragma once

#include <cstdint>

#if defined(__x86_64__) || defined(_M_X64)
#include <xmmintrin.h>
#elif !defined(__aarch64__) && !defined(__wasm__)
#include <cfenv>
#endif

namespace platform {

#if defined(__x86_64__) || defined(_M_X64)

/// The control words of the calling thread.
struct FloatingPointWords
{
    std::uint32_t mxcsr;  ///< Of the SSE registers: control bits, and the exception flags in the low six bits.
    std::uint16_t x87;    ///< Of the x87 registers.

    static FloatingPointWords current() noexcept
    {
        FloatingPointWords words;
        words.mxcsr = _mm_getcsr();
#if defined(_MSC_VER)  // nothing computes with x87 registers there
        words.x87 = 0x037F;
#else
        __asm__ __volatile__("fnstcw %0" : "=m"(words.x87));
#endif
        return words;
    }

    /// Ignores the precision of x87 registers: nothing computes with them, and Windows starts threads with another
    /// precision than Linux.
    bool areTheLibrarys() const noexcept
    {
        return (mxcsr & ~0x3FU) == 0x1F80 && (x87 & 0x0C3F) == 0x003F;
    }

    bool areAs(const FloatingPointWords& other) const noexcept
    {
        return ((mxcsr ^ other.mxcsr) & ~0x3FU) == 0 && x87 == other.x87;
    }
};

/// Whether the calling thread computes as the library does, without a guard. Sufficient for work that never calls the
/// host: the host's x87 settings matter only if the mathematical functions use x87, as MinGW's do.
inline bool computesAsTheLibrary() noexcept
{
#if defined(__MINGW32__)
    return FloatingPointWords::current().areTheLibrarys();
#else
    return (_mm_getcsr() & ~0x3FU) == 0x1F80;
#endif
}

#elif defined(__aarch64__)

/// The control register of the calling thread: rounding direction, flush-to-zero, default NaN, and the unmasked
/// exceptions. The exception flags are in another register, FPSR, where they accumulate whatever the host has set;
/// reading it would wait for all pending computations.
struct FloatingPointWords
{
    std::uint64_t fpcr;

    static FloatingPointWords current() noexcept
    {
        FloatingPointWords words;
        __asm__ __volatile__("mrs %0, fpcr" : "=r"(words.fpcr));
        return words;
    }

    bool areTheLibrarys() const noexcept { return fpcr == 0; }
    bool areAs(const FloatingPointWords& other) const noexcept { return fpcr == other.fpcr; }
};

inline bool computesAsTheLibrary() noexcept
{
    return FloatingPointWords::current().areTheLibrarys();
}

#elif defined(__wasm__)

/// WebAssembly has no control words: it rounds to nearest, keeps denormals, and does not trap.
struct FloatingPointWords
{
    static constexpr FloatingPointWords current() noexcept { return {}; }
    static constexpr bool areTheLibrarys() noexcept { return true; }
    static constexpr bool areAs(const FloatingPointWords&) noexcept { return true; }
};

constexpr bool computesAsTheLibrary() noexcept
{
    return true;
}

#else

/// The standard library's floating-point environment, which it reads and sets as a whole, including the traps.
struct FloatingPointWords
{
    std::fenv_t environment;

    static FloatingPointWords current() noexcept
    {
        FloatingPointWords words;
        std::fegetenv(&words.environment);
        return words;
    }

    bool areTheLibrarys() const noexcept { return std::fegetround() == FE_TONEAREST; }
    bool areAs(const FloatingPointWords&) const noexcept { return areTheLibrarys(); }
};

inline bool computesAsTheLibrary() noexcept
{
    return FloatingPointWords::current().areTheLibrarys();
}

#endif

/// While an object of this class exists, its thread computes with the library's words. Guards nest.
class FloatingPointGuard
{
public:
    FloatingPointGuard() noexcept : host(FloatingPointWords::current()), changed(!host.areTheLibrarys())
    {
        if (changed)
        {
            enter();
        }
    }
    FloatingPointGuard(const FloatingPointGuard&) = delete;
    FloatingPointGuard& operator=(const FloatingPointGuard&) = delete;
    ~FloatingPointGuard()
    {
        if (changed)
        {
            leave();
        }
    }

private:
    friend class HostFloatingPoint;

    void enter() noexcept;
    void leave() noexcept;

    const FloatingPointWords host;
    const bool changed;
    const FloatingPointGuard* outer = nullptr;
};

/// While an object of this class exists, the words that the host had when it called the library are in force. Changes
/// that the host makes meanwhile end with the object.
class HostFloatingPoint
{
public:
    HostFloatingPoint() noexcept;
    HostFloatingPoint(const HostFloatingPoint&) = delete;
    HostFloatingPoint& operator=(const HostFloatingPoint&) = delete;
    ~HostFloatingPoint();

private:
    const FloatingPointWords librarys;
    const FloatingPointGuard* const guard;  // null: the host's words equal the library's
};

}
