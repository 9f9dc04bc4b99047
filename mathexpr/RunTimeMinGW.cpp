// RunTimeMinGW.cpp - keeps the C++ run-time library inside this DLL from leaving anything behind when the DLL is
// unloaded. It takes the place of two of its parts: a thread's exceptions, and the initialisation of static local
// variables.
//
// The run-time library's own take slots for thread-local values and never give them back: a host that loads and unloads
// the library would run out of slots after a thousand times. Here everything is released when the library is unloaded,
// and what belongs to a thread when the thread ends. For the same reason nothing in the library is thread_local (see
// platform/ThreadSlot.h). The functions are those of the C++ ABI, and the linker prefers them to the library's.

#include <cstdint>
#include <cstdlib>
#include <exception>

#include <cxxabi.h>
#include <windows.h>

namespace {

/// As the C++ ABI lays it down.
struct ExceptionState
{
    void* caughtExceptions;
    unsigned int uncaughtExceptions;
};

/// The exceptions of each thread. A fiber-local slot, because only such a one tells when a thread ends.
class ExceptionStates
{
public:
    ExceptionStates() noexcept : index(FlsAlloc([](void* state) { std::free(state); })) {}
    ExceptionStates(const ExceptionStates&) = delete;
    ExceptionStates& operator=(const ExceptionStates&) = delete;
    ~ExceptionStates() { FlsFree(index); }

    abi::__cxa_eh_globals* ofThisThread() const noexcept
    {
        void* state = FlsGetValue(index);
        if (state == nullptr)
        {
            state = std::calloc(1, sizeof(ExceptionState));
            if (state == nullptr || !FlsSetValue(index, state))
            {
                // The run-time library would end the process here. With one record for all threads that have no memory
                // left for their own, the exception that tells of it can still leave.
                std::free(state);
                state = &spare;
            }
        }
        return static_cast<abi::__cxa_eh_globals*>(state);
    }

private:
    const DWORD index;
    mutable ExceptionState spare{};
};

const ExceptionStates exceptionStates;

/// Held while a static local variable is initialised. Variables may initialise others on the same thread.
class InitialisationLock
{
public:
    InitialisationLock() noexcept { InitializeCriticalSection(&section); }
    InitialisationLock(const InitialisationLock&) = delete;
    InitialisationLock& operator=(const InitialisationLock&) = delete;
    ~InitialisationLock() { DeleteCriticalSection(&section); }

    void acquire() noexcept { EnterCriticalSection(&section); }
    void release() noexcept { LeaveCriticalSection(&section); }

private:
    CRITICAL_SECTION section;
};

InitialisationLock initialisation;

/// The ABI: the first byte of a variable's guard tells that it is initialised; compiled code reads it first.
std::uint8_t* initialisedFlag(abi::__guard* guard) noexcept
{
    return reinterpret_cast<std::uint8_t*>(guard);
}

}

// The run-time library's own function for giving back what it set aside for throwing when memory is short. It has no
// header.
namespace __gnu_cxx {
void __freeres();
}

namespace {

struct ReleaseAtTheEnd
{
    ~ReleaseAtTheEnd() { __gnu_cxx::__freeres(); }
};

const ReleaseAtTheEnd releaseAtTheEnd;

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
