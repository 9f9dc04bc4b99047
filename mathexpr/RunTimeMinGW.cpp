// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// RunTimeMinGW.cpp - makes the C++ run-time library inside this DLL release everything when the DLL is unloaded. It
// replaces three of its parts: a thread's exception state, the memory of exceptions, and the initialisation of static
// local variables.
//
// The run-time library allocates thread-local slots and never frees them: a host that loads and unloads the library
// would run out of slots after about a thousand times. Here everything is released when the library is unloaded, and a
// thread's data when the thread ends. For the same reason nothing in the library is thread_local (see
// platform/ThreadSlot.h). These are functions of the C++ ABI; the linker prefers them to those of the run-time library.

#include "platform/KeptWhileLoaded.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include <cxxabi.h>
#include <unwind.h>
#include <windows.h>

namespace {

/// As defined by the C++ ABI.
struct ExceptionState
{
    void* caughtExceptions;
    unsigned int uncaughtExceptions;
};

/// The exception state of each thread. A fiber-local slot, because only these have a callback at the end of a thread.
class ExceptionStates
{
public:
    ExceptionStates() noexcept
        : index(FlsAlloc([](void* state) { std::free(state); })),
          release([](void* states) noexcept { FlsFree(static_cast<const ExceptionStates*>(states)->index); }, this)
    {}
    ExceptionStates(const ExceptionStates&) = delete;
    ExceptionStates& operator=(const ExceptionStates&) = delete;
    ~ExceptionStates() = default;

    abi::__cxa_eh_globals* ofThisThread() const noexcept
    {
        void* state = FlsGetValue(index);
        if (state == nullptr)
        {
            state = std::calloc(1, sizeof(ExceptionState));
            // not covered: an allocated slot accepts a value
            if (state == nullptr || !FlsSetValue(index, state))
            {
                // The run-time library would terminate the process here. Instead, all threads without memory share one
                // record, so that the exception that reports the lack of memory can still propagate.
                std::free(state);
                state = &spare;
            }
        }
        return static_cast<abi::__cxa_eh_globals*>(state);
    }

private:
    const DWORD index;
    const platform::OnUnload release;
    mutable ExceptionState spare{};
};

const ExceptionStates exceptionStates;

/// Held while a static local variable is initialised. Recursive: one variable's initialiser may initialise another.
class InitialisationLock
{
public:
    InitialisationLock() noexcept
        : deletion([](void* lock) noexcept { DeleteCriticalSection(&static_cast<InitialisationLock*>(lock)->section); },
                   this)
    {
        InitializeCriticalSection(&section);
    }
    InitialisationLock(const InitialisationLock&) = delete;
    InitialisationLock& operator=(const InitialisationLock&) = delete;
    ~InitialisationLock() = default;

    void acquire() noexcept { EnterCriticalSection(&section); }
    void release() noexcept { LeaveCriticalSection(&section); }

private:
    CRITICAL_SECTION section;
    const platform::OnUnload deletion;
};

InitialisationLock initialisation;

/// Per the ABI, the first byte of a variable's guard is set when it is initialised; compiled code reads it first.
std::uint8_t* initialisedFlag(abi::__guard* guard) noexcept
{
    return reinterpret_cast<std::uint8_t*>(guard);
}

}

namespace {

/// Precedes a thrown object, as defined by the C++ ABI and the run-time library; only its size is used here.
struct ExceptionHeader
{
    std::size_t referenceCount;
    void* type;
    void* destructor;
    void* unexpectedHandler;
    void* terminateHandler;
    void* next;
    int handlerCount;
    int handlerSwitchValue;
    const void* actionRecord;
    const void* languageSpecificData;
    std::uintptr_t landingPad;
    void* adjustedObject;
    _Unwind_Exception unwinding;
};

static_assert(sizeof(ExceptionHeader) == 160);

/// Memory for exceptions that are thrown after memory has run out. The reserve of the run-time library is unsuitable:
/// its mutex allocates memory when it is first locked.
class Reserve
{
public:
    void* take(std::size_t size) noexcept
    {
        for (Block& block : blocks)
        {
            // not covered: no exception of the library is larger
            if (size <= sizeof(block.bytes) && !block.taken.test_and_set(std::memory_order_acquire))
            {
                return block.bytes;
            }
        }
        return nullptr;
    }

    /// Returns whether the memory belonged to the reserve, and if so releases it.
    bool giveBack(void* memory) noexcept
    {
        for (Block& block : blocks)
        {
            if (memory == block.bytes)
            {
                block.taken.clear(std::memory_order_release);
                return true;
            }
        }
        return false;
    }

private:
    struct Block
    {
        alignas(ExceptionHeader) unsigned char bytes[1024] = {};
        std::atomic_flag taken = ATOMIC_FLAG_INIT;
    };

    Block blocks[16];
};

Reserve reserve;  // usable before any code runs: all members have constant initialisers

/// If the reserve is exhausted as well, waits until another thread's exception ends or memory is available.
void* zeroedMemory(std::size_t size) noexcept
{
    void* memory = std::malloc(size);
    while (memory == nullptr && (memory = reserve.take(size)) == nullptr)
    {
        Sleep(1);
        memory = std::malloc(size);
    }
    return std::memset(memory, 0, size);
}

void release(void* memory) noexcept
{
    if (!reserve.giveBack(memory))
    {
        std::free(memory);
    }
}

}

extern "C" void* abi::__cxa_allocate_exception(std::size_t size) noexcept
{
    return static_cast<unsigned char*>(zeroedMemory(sizeof(ExceptionHeader) + size)) + sizeof(ExceptionHeader);
}

extern "C" void abi::__cxa_free_exception(void* object) noexcept
{
    release(static_cast<unsigned char*>(object) - sizeof(ExceptionHeader));
}

// A record that refers to an exception elsewhere; it is no larger than the header of an exception. The library creates
// none. Without these two functions the linker would add those of the run-time library, and with them the functions
// that are replaced above.

// not covered: never called, see above
extern "C" abi::__cxa_dependent_exception* abi::__cxa_allocate_dependent_exception() noexcept
{
    return static_cast<__cxa_dependent_exception*>(zeroedMemory(sizeof(ExceptionHeader)));
}

// not covered: never called, see above
extern "C" void abi::__cxa_free_dependent_exception(__cxa_dependent_exception* exception) noexcept
{
    release(exception);
}

extern "C" abi::__cxa_eh_globals* abi::__cxa_get_globals() noexcept
{
    return exceptionStates.ofThisThread();
}

extern "C" abi::__cxa_eh_globals* abi::__cxa_get_globals_fast() noexcept
{
    return exceptionStates.ofThisThread();
}

extern "C" int abi::__cxa_guard_acquire(abi::__guard* guard)
{
    initialisation.acquire();
    if (*initialisedFlag(guard) != 0)
    {
        initialisation.release();
        return 0;
    }
    return 1;
}

extern "C" void abi::__cxa_guard_release(abi::__guard* guard) noexcept
{
    __atomic_store_n(initialisedFlag(guard), std::uint8_t{1}, __ATOMIC_RELEASE);
    initialisation.release();
}

extern "C" void abi::__cxa_guard_abort(abi::__guard*) noexcept
{
    initialisation.release();
}
