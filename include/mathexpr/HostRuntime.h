// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// HostRuntime.h - tells the library which C++ run-time library its host uses.
//
// Exceptions leave the library and are caught by the host. Where both have a run-time library of their own, as modules
// made by MinGW have that need no DLL of the compiler's, each of them counts the exceptions that are under way: one
// thrown here and caught there would be counted up on one side and down on the other, and std::uncaught_exceptions()
// would drift in the host with every one of them. The library therefore moves its count to the host's as an exception
// leaves. On every other platform the run-time library is one for the whole process, and there is nothing to tell.
//
// Hosts need not know of this: the constructors of the exported classes tell it for them.
#pragma once

#if defined(__MINGW32__)
#include <cxxabi.h>
#endif

namespace mathexpr {

/// The run-time library of the module that constructs it.
class HostRuntime
{
public:
#if defined(__MINGW32__)
    HostRuntime() noexcept : state(&abi::__cxa_get_globals) {}

    /// Where this run-time library counts the calling thread's exceptions.
    abi::__cxa_eh_globals* exceptionState() const noexcept
    {
        return state();
    }

private:
    abi::__cxa_eh_globals* (*state)();
#endif
};

}
