// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// FloatingPointGuard.h - computes with the library's own floating-point control words, whatever the host has set.
//
// A host may have unmasked floating-point exceptions, chosen another rounding direction or precision, or let denormal
// numbers be flushed to zero. An expression must neither trap nor round differently for that, and the host must find
// its words as they were, on every way out. A FloatingPointGuard stands at every entry point that computes, a
// HostFloatingPoint around every call back into the host.
//
// The guard reads the words and changes them only where they differ from the library's: every exception masked,
// rounding to nearest, denormal numbers kept.
#pragma once

#include <cstdint>

#if defined(__x86_64__) || defined(_M_X64)
#include <xmmintrin.h>
#elif !defined(__aarch64__)
#include <cfenv>
#endif

namespace platform {

#if defined(__x86_64__) || defined(_M_X64)

/// The control words of the calling thread.
struct FloatingPointWords
{
    std::uint32_t mxcsr;  ///< Of the SSE registers: control bits, and in the low six bits what has happened.
    std::uint16_t x87;    ///< Of the x87 registers.

    static FloatingPointWords current() noexcept
    {
        FloatingPointWords words;
        words.mxcsr = _mm_getcsr();
#if defined(_MSC_VER)  // there nothing computes with x87 registers
        words.x87 = 0x037F;
#else
        __asm__ __volatile__("fnstcw %0" : "=m"(words.x87));
#endif
        return words;
    }

    /// The precision of x87 registers is left alone: nothing computes with them, and Windows starts its threads with
    /// another one than Linux does.
    bool areTheLibrarys() const noexcept
    {
        return (mxcsr & ~0x3FU) == 0x1F80 && (x87 & 0x0C3F) == 0x003F;
    }

    bool areAs(const FloatingPointWords& other) const noexcept
    {
        return ((mxcsr ^ other.mxcsr) & ~0x3FU) == 0 && x87 == other.x87;
    }
};

/// Whether the calling thread computes as the library does, without a guard. Enough for work that calls nobody: what
/// the host has set for x87 registers matters only where the mathematical functions use them, as MinGW's do.
inline bool computesAsTheLibrary() noexcept
{
#if defined(__MINGW32__)
    return FloatingPointWords::current().areTheLibrarys();
#else
    return (_mm_getcsr() & ~0x3FU) == 0x1F80;
#endif
}

#elif defined(__aarch64__)

/// The control register of the calling thread: rounding direction, flush-to-zero, default NaN, and the exceptions that trap.
/// What has happened is in another register, FPSR, where it accumulates whatever the host has set. Reading that one would
/// wait for every computation before it.
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

#else

/// What the standard lets one read and set of the calling thread: the exceptions are held back together with the rest.
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

/// While one lives, the calling thread computes with the library's words. They nest.
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

/// While one lives, the words that the host had when it called are in force again. Where the host changes them
/// meanwhile, the change ends with this object's life.
class HostFloatingPoint
{
public:
    HostFloatingPoint() noexcept;
    HostFloatingPoint(const HostFloatingPoint&) = delete;
    HostFloatingPoint& operator=(const HostFloatingPoint&) = delete;
    ~HostFloatingPoint();

private:
    const FloatingPointWords librarys;
    const FloatingPointGuard* const guard;  // null: the host's words are the library's
};

}
