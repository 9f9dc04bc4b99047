// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// HostBoundary.h - what every exported operation that computes goes through, on its way in and out.
//
//     return atHostBoundary(host, [&] { return ...; });
//
// It computes with the library's floating-point control words and gives the host its own back, and what it throws is
// counted by the host's C++ run-time library when it arrives there (see mathexpr/HostRuntime.h).
#pragma once

#include "mathexpr/HostRuntime.h"

#include "platform/FloatingPointGuard.h"

#if defined(__MINGW32__) && !defined(MATHEXPR_STATIC)  // there the host has the same run-time library

/// While the handler of an exception runs that will be thrown on: moves the count of exceptions to the host.
void handExceptionsOver(const mathexpr::HostRuntime& host) noexcept;

/// Moves the count of exceptions that the host has thrown, and that have ended here, back to the host.
void settleExceptions(const mathexpr::HostRuntime& host) noexcept;

/// The library's count of exceptions, to be what it was when one has been caught that the host's run-time library may
/// have counted up.
class ExceptionCount
{
public:
    ExceptionCount() noexcept;
    void restore() const noexcept;

private:
    unsigned int count;
};

template <class Work>
auto atHostBoundary(const mathexpr::HostRuntime& host, Work work)
{
    const platform::FloatingPointGuard guard;
    try
    {
        return work();
    }
    catch (...)
    {
        handExceptionsOver(host);
        throw;
    }
}

#else

inline void handExceptionsOver(const mathexpr::HostRuntime&) noexcept {}

inline void settleExceptions(const mathexpr::HostRuntime&) noexcept {}

struct ExceptionCount
{
    void restore() const noexcept {}
};

template <class Work>
auto atHostBoundary(const mathexpr::HostRuntime&, Work work)
{
    const platform::FloatingPointGuard guard;
    return work();
}

#endif
