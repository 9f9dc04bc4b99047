// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Threads.h - runs the same work on several threads.
//
// ThreadsPosix.cpp uses the standard library. ThreadsWindows.cpp uses the system directly, since MinGW's run-time
// library does not release its data per thread when a host unloads the library.
#pragma once

#include <cstddef>
#include <type_traits>

namespace platform {

/// Calls work(context, 0) on this thread and work(context, 1), work(context, 2)... on others, and returns after all
/// calls have returned. If the system starts fewer threads, the last calls are omitted.
void runOnThreads(std::size_t nbThreads, void (*work)(void* context, std::size_t index) noexcept, void* context);

template <class Work>
void callWork(void* work, std::size_t index) noexcept
{
    (*static_cast<Work*>(work))(index);
}

/// The same for a callable with an index parameter, which must not throw.
template <class Work>
void runOnThreads(std::size_t nbThreads, Work work)
{
    static_assert(std::is_nothrow_invocable_v<Work, std::size_t>);
    runOnThreads(nbThreads, callWork<Work>, &work);
}

}
