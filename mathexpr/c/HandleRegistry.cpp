// HandleRegistry.cpp - see HandleRegistry.h. Part of libraries that check handles only.
#include "mathexpr/c/HandleRegistry.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <new>
#include <unordered_set>
#include <utility>

namespace {

/// Held for the few instructions that a look-up takes.
class Lock
{
public:
    explicit Lock(std::atomic_flag& flag) noexcept : locked(flag)
    {
        while (locked.test_and_set(std::memory_order_acquire))
        {}
    }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;
    ~Lock() { locked.clear(std::memory_order_release); }

private:
    std::atomic_flag& locked;
};

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
        const Lock lock(flag);
        live.insert(handle);
    }

    bool isLive(const void* handle) noexcept
    {
        const Lock lock(flag);
        return live.count(handle) != 0;
    }

    void retire(void* memory) noexcept
    {
        const Lock lock(flag);
        live.erase(memory);
        ::operator delete(std::exchange(retired[next], memory));
        next = (next + 1) % retired.size();
    }

private:
    std::atomic_flag flag;
    std::unordered_set<const void*> live;
    std::array<void*, 256> retired{};
    std::size_t next = 0;
};

Registry registry;

}

void HandleRegistry::add(const void* handle)
{
    registry.add(handle);
}

bool HandleRegistry::isLive(const void* handle) noexcept
{
    return registry.isLive(handle);
}

void HandleRegistry::retire(void* memory) noexcept
{
    registry.retire(memory);
}
