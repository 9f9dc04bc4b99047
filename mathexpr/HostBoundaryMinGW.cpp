// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// HostBoundaryMinGW.cpp - transfers counts of exceptions between two C++ run-time libraries.
//
// The count is the second member of a record that the C++ ABI defines (__cxa_eh_globals: the stack of caught
// exceptions, then the number of uncaught ones). There is one record per thread and run-time library. Between two calls
// of the host, the library's own count is always 0.

#include "mathexpr/HostBoundary.h"

namespace {

struct ExceptionState
{
    void* caughtExceptions;
    unsigned int uncaughtExceptions;
};

ExceptionState& stateOf(abi::__cxa_eh_globals* globals) noexcept
{
    return *reinterpret_cast<ExceptionState*>(globals);
}

/// Leaves this count in the library and adds the rest to the host's count. The difference may wrap around below zero.
void moveCount(const mathexpr::HostRuntime& host, unsigned int remaining) noexcept
{
    ExceptionState& own = stateOf(abi::__cxa_get_globals());
    ExceptionState& hosts = stateOf(host.exceptionState());
    if (&own == &hosts)
    {
        return;
    }
    hosts.uncaughtExceptions += own.uncaughtExceptions - remaining;
    own.uncaughtExceptions = remaining;
}

}

void handExceptionsOver(const mathexpr::HostRuntime& host) noexcept
{
    // Rethrowing increments the count again.
    moveCount(host, static_cast<unsigned int>(-1));
}

void settleExceptions(const mathexpr::HostRuntime& host) noexcept
{
    moveCount(host, 0);
}

ExceptionCount::ExceptionCount() noexcept : count(stateOf(abi::__cxa_get_globals()).uncaughtExceptions) {}

void ExceptionCount::restore() const noexcept
{
    stateOf(abi::__cxa_get_globals()).uncaughtExceptions = count;
}
