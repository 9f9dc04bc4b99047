// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// SmallStack.h - runs code on a small stack, so that a recursion as deep as a text is long would crash.
#pragma once

#include "tests/support/Instrumented.h"

#include <cstddef>
#include <stdexcept>

#include <pthread.h>

/// Stack size of the host's thread. Sanitizers need more for the same calls.
inline constexpr std::size_t smallStack = isInstrumented ? 512 * 1024 : 64 * 1024;

/// Runs code on a thread with a small stack, and waits for it.
template <class Code>
void onSmallStack(Code code)
{
    pthread_attr_t attributes;
    pthread_t thread{};
    pthread_attr_init(&attributes);
    const bool started =
        pthread_attr_setstacksize(&attributes, smallStack) == 0 && pthread_create(
                                                                       &thread, &attributes,
                                                                       [](void* given) -> void* {
                                                                           (*static_cast<Code*>(given))();
                                                                           return nullptr;
                                                                       },
                                                                       &code) == 0;
    pthread_attr_destroy(&attributes);
    if (!started)
    {
        throw std::runtime_error("no thread with a small stack");
    }
    pthread_join(thread, nullptr);
}
