// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// HostWords.h - floating-point control words of hosts: for each architecture, how to set them and the values to test.
#pragma once

#include "platform/FloatingPointGuard.h"

#include <cstdint>
#include <ostream>

#if defined(__x86_64__) || defined(_M_X64)
#define HOST_WORDS_KNOWN

/// Control words, without exception flags.
struct Words
{
    std::uint32_t mxcsr;
    std::uint16_t x87;

    static Words current()
    {
        const auto words = platform::FloatingPointWords::current();
        return {words.mxcsr & ~0x3FU, words.x87};
    }

    void set() const
    {
#if !defined(_MSC_VER)
        __asm__ __volatile__("fnclex\n\tfldcw %0" : : "m"(x87));
#endif
        _mm_setcsr(mxcsr);
    }

    bool operator==(const Words&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const Words& words)
{
    return out << std::hex << words.mxcsr << '/' << words.x87 << std::dec;
}

constexpr Words librarys{0x1F80, 0x037F};
constexpr Words fromCallback{0x1F00, 0x037E};

// Exceptions: invalid, denormal, division by zero, overflow, underflow, precision, from bit 0 of the x87 word and from
// bit 7 of the other. A set bit masks the exception.
constexpr Words hosts[] = {
    {0x1F80, 0x037F},  // the library's own
    {0x1F80, 0x027F},  // 53 bits of precision in x87 registers
    {0x1900, 0x0372},  // invalid, division by zero, overflow unmasked
    {0x0000, 0x0340},  // everything unmasked
    {0x5F80, 0x0B7F},  // rounds up
    {0x7F80, 0x0C7F},  // rounds to zero, 24 bits of precision
    {0x9FC0, 0x037F},  // denormal numbers flushed to zero, and taken for zero
    {0xC000, 0x0B40},  // everything unmasked, flushed to zero, rounds up and down
};
constexpr Words roundsUp = hosts[4];
constexpr Words flushesToZero = hosts[6];

#elif defined(__aarch64__)
#define HOST_WORDS_KNOWN

/// The control register.
struct Words
{
    std::uint64_t fpcr;

    static Words current() { return {platform::FloatingPointWords::current().fpcr}; }
    void set() const { __asm__ __volatile__("msr fpcr, %0" : : "r"(fpcr)); }
    bool operator==(const Words&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const Words& words)
{
    return out << std::hex << words.fpcr << std::dec;
}

constexpr Words librarys{0};
constexpr Words fromCallback{0x0080'0000};  // rounds down

// Bits 8 to 12 enable traps for invalid, division by zero, overflow, underflow and inexact, bit 15 for denormal
// operands. Processors without traps, and QEMU, read them as zero. Bits 22 and 23: rounding; 24: flush to zero; 25:
// default NaN.
constexpr Words hosts[] = {
    {0},            // the library's own
    {0x0000'0700},  // invalid, division by zero, overflow trap
    {0x0000'9F00},  // everything traps
    {0x0040'0000},  // rounds up
    {0x00C0'0000},  // rounds to zero
    {0x0100'0000},  // denormal numbers flushed to zero, and taken for zero
    {0x0200'0000},  // a NaN loses its sign and payload
    {0x0380'9F00},  // everything traps, flushed to zero, default NaN, rounds down
};
constexpr Words roundsUp = hosts[3];
constexpr Words flushesToZero = hosts[5];
constexpr Words losesPayloads = hosts[6];

#endif
