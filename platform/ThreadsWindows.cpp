// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ThreadsWindows.cpp - Threads.h for Windows.

#include "platform/Threads.h"

#include <memory>
#include <new>

#include <windows.h>

namespace {

struct Call
{
    void (*work)(void* context, std::size_t index) noexcept;
    void* context;
    std::size_t index;
    HANDLE thread;
};

DWORD WINAPI make(void* parameter)
{
    const Call& call = *static_cast<const Call*>(parameter);
    call.work(call.context, call.index);
    return 0;
}

}

void platform::runOnThreads(std::size_t nbThreads, void (*work)(void* context, std::size_t index) noexcept,
                            void* context)
{
    const std::unique_ptr<Call[]> calls(new (std::nothrow) Call[nbThreads]);
    std::size_t nbStarted = 1;
    for (; calls && nbStarted < nbThreads; ++nbStarted)
    {
        Call& call = calls[nbStarted];
        call = Call{work, context, nbStarted, nullptr};
        call.thread = CreateThread(nullptr, 0, make, &call, 0, nullptr);
        if (call.thread == nullptr)
        {
            break;  // continue with fewer threads
        }
    }
    work(context, 0);
    for (std::size_t index = 1; index < nbStarted; ++index)
    {
        WaitForSingleObject(calls[index].thread, INFINITE);
        CloseHandle(calls[index].thread);
    }
}
