// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ThreadsPosix.cpp - Threads.h for Linux and other POSIX systems.

#include "platform/Threads.h"

#include <exception>
#include <thread>
#include <vector>

void platform::runOnThreads(std::size_t nbThreads, void (*work)(void* context, std::size_t index) noexcept,
                            void* context)
{
    std::vector<std::thread> others;
    try
    {
        for (std::size_t index = 1; index < nbThreads; ++index)
        {
            others.emplace_back(work, context, index);
        }
    }
    catch (const std::exception&)
    {
        // Continue with fewer threads, whether threads or memory ran out.
    }
    work(context, 0);
    for (std::thread& other : others)
    {
        other.join();
    }
}
