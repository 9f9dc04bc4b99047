// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// HandleRegistry.cpp - see HandleRegistry.h. Empty in builds that do not check handles.
#include "mathexpr/c/HandleRegistry.h"

#if defined(MATHEXPR_CHECK_HANDLES)

#include "platform/KeptWhileLoaded.h"

#include <array>
#include <cstddef>
#include <mutex>
#include <new>
#include <unordered_set>
#include <utility>

namespace {

class Registry
{
public:
    Registry() = default;
    Registry(const Registry&) = delete;
    Registry& operator=(const Registry&) = delete;
    ~Registry()
    {
        for (void* const memory : retired)
        {
            ::operator delete(memory);
        }
    }

    void add(const void* handle)
    {
        const std::lock_guard lock(mutex);
        live.insert(handle);
    }

    bool isLive(const void* handle) noexcept
    {
        const std::lock_guard lock(mutex);
        return live.count(handle) != 0;
    }

    void retire(void* memory) noexcept
    {
        const std::lock_guard lock(mutex);
        live.erase(memory);
        ::operator delete(std::exchange(retired[next], memory));
        next = (next + 1) % retired.size();
    }

private:
    std::mutex mutex;
    std::unordered_set<const void*> live;
    std::array<void*, 256> retired{};
    std::size_t next = 0;
};

Registry& registry() noexcept
{
    static platform::KeptWhileLoaded<Registry> kept;
    return *kept;
}

}

void HandleRegistry::add(const void* handle)
{
    registry().add(handle);
}

bool HandleRegistry::isLive(const void* handle) noexcept
{
    return registry().isLive(handle);
}

void HandleRegistry::retire(void* memory) noexcept
{
    registry().retire(memory);
}

#endif
