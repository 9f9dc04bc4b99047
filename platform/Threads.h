// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Threads.h - runs one piece of work on several threads at once.
//
// ThreadsPosix.cpp does it with the standard library, ThreadsWindows.cpp with the system itself: what the run-time
// library of MinGW keeps for a thread of its own would outlive the library in a host that unloads it.
#pragma once

#include <cstddef>
#include <type_traits>

namespace platform {

/// Calls work(context, 0) on this thread and work(context, 1), work(context, 2)... on others, and returns when all
/// calls have. Where the system starts no more threads, the last calls are not made.
void runOnThreads(std::size_t nbThreads, void (*work)(void* context, std::size_t index) noexcept, void* context);

template <class Work>
void callWork(void* work, std::size_t index) noexcept
{
    (*static_cast<Work*>(work))(index);
}

/// The same for what can be called with an index. It does not throw.
template <class Work>
void runOnThreads(std::size_t nbThreads, Work work)
{
    static_assert(std::is_nothrow_invocable_v<Work, std::size_t>);
    runOnThreads(nbThreads, callWork<Work>, &work);
}

}
