// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// SmallStack.h - runs code on a small stack, so that a recursion whose depth grows with the length of a text crashes.
#pragma once

#include "tests/support/Instrumented.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <stdexcept>

#include <pthread.h>

/// Stack size of the host's thread. Sanitizers need more for the same calls; 64-bit ARM allows no less than 128 KiB.
inline const std::size_t smallStack =
    std::max<std::size_t>(isInstrumented ? 512 * 1024 : 64 * 1024, static_cast<std::size_t>(PTHREAD_STACK_MIN));

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
