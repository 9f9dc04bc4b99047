// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ThreadSlot.h - a small value per thread, initially all zero.
//
//     PLATFORM_THREAD_SLOT(int, depth);
//     depth.set(depth.get() + 1);
//
// With MinGW this replaces thread_local. For thread_local, the compiler's run-time library allocates a slot of the
// process and does not free it when the library is unloaded, so a host that reloads the library would run out of slots.
#pragma once

#include <type_traits>

#if defined(__MINGW32__)

#include "platform/KeptWhileLoaded.h"

#include <cstring>

#include <windows.h>

#define PLATFORM_THREAD_SLOT(Value, name) const platform::ThreadSlot<Value> name

namespace platform {

template <class Value>
class ThreadSlot
{
    static_assert(std::is_trivially_copyable_v<Value> && sizeof(Value) <= sizeof(void*));

public:
    ThreadSlot() noexcept
        : index(TlsAlloc()),
          release([](void* slot) noexcept { TlsFree(static_cast<const ThreadSlot*>(slot)->index); }, this)
    {}
    ThreadSlot(const ThreadSlot&) = delete;
    ThreadSlot& operator=(const ThreadSlot&) = delete;
    ~ThreadSlot() = default;

    Value get() const noexcept
    {
        void* const bits = TlsGetValue(index);
        Value value;
        std::memcpy(&value, &bits, sizeof(value));
        return value;
    }
    void set(Value value) const noexcept
    {
        void* bits = nullptr;
        std::memcpy(&bits, &value, sizeof(value));
        TlsSetValue(index, bits);
    }

private:
    const DWORD index;
    const OnUnload release;
};

}

#else

#if defined(__wasm__)  // a module has one thread, and its linker takes thread_local only where there may be more
#define PLATFORM_THREAD_SLOT(Value, name) platform::ThreadSlot<Value> name
#else
#define PLATFORM_THREAD_SLOT(Value, name) thread_local platform::ThreadSlot<Value> name
#endif

namespace platform {

template <class Value>
class ThreadSlot
{
    static_assert(std::is_trivially_copyable_v<Value>);

public:
    Value get() const noexcept { return held; }
    void set(Value value) noexcept { held = value; }

private:
    Value held{};
};

}

#endif
