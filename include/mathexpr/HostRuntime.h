// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// HostRuntime.h - identifies the host's C++ run-time library to the library.
//
// The library's exceptions are caught by the host. With MinGW, the library and the host can each contain a C++ run-time library.
// Each of these counts the exceptions in flight. An exception thrown in the library and caught in the host would
// be counted up on one side and down on the other, and the host's std::uncaught_exceptions() would drift. The library
// therefore transfers its count to the host when an exception leaves it. On all other platforms the process has a single
// run-time library, and this class is empty.
//
// Hosts need no code for this: the constructors of the exported classes pass a HostRuntime by default.
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

    /// This run-time library's exception counts of the calling thread.
    abi::__cxa_eh_globals* exceptionState() const noexcept
    {
        return state();
    }

private:
    abi::__cxa_eh_globals* (*state)();
#endif
};

}
