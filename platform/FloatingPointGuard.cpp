// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// FloatingPointGuard.cpp - see FloatingPointGuard.h. Called only if the host has changed the control words.

#include "platform/FloatingPointGuard.h"

#include "platform/ThreadSlot.h"

namespace {

using platform::FloatingPointGuard;
using platform::FloatingPointWords;

/// The guard that holds the host's words; null if the host has not changed them, and while host code runs.
PLATFORM_THREAD_SLOT(const FloatingPointGuard*, innermost);

#if defined(__x86_64__) || defined(_M_X64)

constexpr FloatingPointWords librarysWords{0x1F80, 0x037F};

void set(const FloatingPointWords& words) noexcept
{
#if !defined(_MSC_VER)
    constexpr std::uint16_t everyExceptionMasked = 0x3F;
    if ((words.x87 & everyExceptionMasked) != everyExceptionMasked)
    {
        // Exceptions recorded while masked must not trap when they are unmasked.
        __asm__ __volatile__("fnclex");
    }
    __asm__ __volatile__("fldcw %0" : : "m"(words.x87));
#endif
    _mm_setcsr(words.mxcsr);
}

/// The instruction that masks an x87 exception would raise it if it is pending.
void clearX87() noexcept
{
#if !defined(_MSC_VER)
    __asm__ __volatile__("fnclex");
#endif
}

void setLibrarysWords() noexcept
{
    clearX87();
    set(librarysWords);
}

#elif defined(__aarch64__)

void set(const FloatingPointWords& words) noexcept
{
    __asm__ __volatile__("msr fpcr, %0" : : "r"(words.fpcr));
}

void clearX87() noexcept {}

void setLibrarysWords() noexcept
{
    set({0});
}

#elif defined(__wasm__)

void set(const FloatingPointWords&) noexcept {}

void clearX87() noexcept {}

void setLibrarysWords() noexcept {}

#else

void set(const FloatingPointWords& words) noexcept
{
    std::fesetenv(&words.environment);
}

void clearX87() noexcept {}

void setLibrarysWords() noexcept
{
    std::fesetenv(FE_DFL_ENV);
}

#endif

}

void platform::FloatingPointGuard::enter() noexcept
{
    setLibrarysWords();
    outer = innermost.get();
    innermost.set(this);
}

void platform::FloatingPointGuard::leave() noexcept
{
    innermost.set(outer);
    set(host);
}

platform::HostFloatingPoint::HostFloatingPoint() noexcept
    : librarys(FloatingPointWords::current()), guard(innermost.get())
{
    if (guard != nullptr)
    {
        innermost.set(nullptr);
        set(guard->host);
    }
}

platform::HostFloatingPoint::~HostFloatingPoint()
{
    if (!FloatingPointWords::current().areAs(librarys))
    {
        clearX87();
        set(librarys);
    }
    innermost.set(guard);
}
