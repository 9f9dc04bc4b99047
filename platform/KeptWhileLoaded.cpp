// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// KeptWhileLoaded.cpp - see KeptWhileLoaded.h. On Windows, StartUpWindows.cpp is notified when the library is unloaded;
// elsewhere this file detects it.

#include "platform/KeptWhileLoaded.h"

#include <atomic>
#include <cstdlib>

namespace {

std::atomic<const platform::OnUnload*> newest{nullptr};  // usable before any code runs

#if defined(__ELF__)

std::atomic<bool> processEnds{false};

void setProcessEnds() noexcept  // not covered: the counters have been written by then
{
    processEnds = true;
}

/// Distinguishes the end of the process from dlclose. At the end of a process, handlers that were registered after main
/// began run before the libraries that it was linked with are finalised. dlclose finalises the library first, which
/// calls finalise(), and then runs the handlers. A static object of the library would not work: it is constructed
/// before main, so it is destroyed when the library is finalised.
void noteProcessEnd() noexcept
{
    std::atexit(setProcessEnds);
}

__attribute__((destructor)) void finalise() noexcept
{
    if (!processEnds)  // not covered: at the end of the process the counters have been written
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
