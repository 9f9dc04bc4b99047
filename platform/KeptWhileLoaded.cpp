// KeptWhileLoaded.cpp - see KeptWhileLoaded.h. On Windows StartUpWindows.cpp is told when the library is unloaded;
// elsewhere this file finds out.

#include "platform/KeptWhileLoaded.h"

#include <atomic>

namespace {

std::atomic<const platform::OnUnload*> newest{nullptr};  // ready before any code runs

}

platform::OnUnload::OnUnload(Action toRun, void* itsContext) noexcept
    : action(toRun), context(itsContext), next(newest.load(std::memory_order_relaxed))
{
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

#if defined(__ELF__)

namespace {

bool processEnds = false;

/// A process that ends runs the destructors of static objects before it finalises its libraries. dlclose finalises the
/// library, which calls finalise() first, and destroys its static objects after that.
struct ProcessEnd
{
    ~ProcessEnd()  // not covered: what has been counted is written already
    {
        processEnds = true;
    }
};

const ProcessEnd processEnd;

__attribute__((destructor)) void finalise() noexcept
{
    if (!processEnds)  // not covered: at the end of the process, what has been counted is written already
    {
        platform::runUnloadActions();
    }
}

}

#endif
