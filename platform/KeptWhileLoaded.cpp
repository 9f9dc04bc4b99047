// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// KeptWhileLoaded.cpp - see KeptWhileLoaded.h. On Windows StartUpWindows.cpp is told when the library is unloaded;
// elsewhere this file finds out.

#include "platform/KeptWhileLoaded.h"

#include <atomic>
#include <cstdlib>

namespace {

std::atomic<const platform::OnUnload*> newest{nullptr};  // ready before any code runs

#if defined(__ELF__)

std::atomic<bool> processEnds{false};

void setProcessEnds() noexcept  // not covered: what has been counted is written already
{
    processEnds = true;
}

/// A process that ends runs what main has registered here before it finalises the libraries that it was linked with.
/// dlclose finalises the library, which calls finalise() first, and runs this after it. Static objects of the library
/// would not do: they are made before main, and so destroyed when the library is finalised.
void noteProcessEnd() noexcept
{
    std::atexit(setProcessEnds);
}

__attribute__((destructor)) void finalise() noexcept
{
    if (!processEnds)  // not covered: at the end of the process, what has been counted is written already
    {
        platform::runUnloadActions();
    }
}

#else

void noteProcessEnd() noexcept {}

#endif

}

platform::OnUnload::OnUnload(Action toRun, void* itsContext) noexcept
    : action(toRun), context(itsContext), next(newest.load(std::memory_order_relaxed))
{
    noteProcessEnd();
    while (!newest.compare_exchange_weak(next, this, std::memory_order_release, std::memory_order_relaxed))
    {}
}

void platform::runUnloadActions() noexcept
{
    for (const OnUnload* each = newest.exchange(nullptr, std::memory_order_acquire); each != nullptr; each = each->next)
    {
        each->action(each->context);
    }
}
