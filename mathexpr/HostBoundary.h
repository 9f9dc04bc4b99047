// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// HostBoundary.h - wraps every exported operation that computes.
//
//     return atHostBoundary(host, [&] { return ...; });
//
// Inside, the library's floating-point control words are in force; outside, the host's. The exceptions that leave are
// counted by the host's C++ run-time library (see mathexpr/HostRuntime.h).
#pragma once

#include "mathexpr/HostRuntime.h"

#include "platform/FloatingPointGuard.h"

#if defined(__MINGW32__) && !defined(MATHEXPR_STATIC)  // a statically linked host has the same run-time library

/// Transfers the count of exceptions to the host. Call in the handler of an exception that will be rethrown.
void handExceptionsOver(const mathexpr::HostRuntime& host) noexcept;

/// Transfers the count of exceptions that the host threw and the library caught back to the host.
void settleExceptions(const mathexpr::HostRuntime& host) noexcept;

/// Saves the library's count of exceptions, and restores it after catching an exception that the host's run-time
/// library may have counted.
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
