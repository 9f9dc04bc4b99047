// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ThreadMessageDisplay.h - replaces, for calls of one thread, the way in which messages are shown to the user.
#pragma once

#include "mathexpr/MessageDisplay.h"

/// While one lives, messages of the calling thread go to its display instead of the process's. They nest.
class ThreadMessageDisplay
{
public:
    /// @param display  null, or without a function: the process's
    explicit ThreadMessageDisplay(const mathexpr::ProcessMessageDisplay* display) noexcept;
    ThreadMessageDisplay(const ThreadMessageDisplay&) = delete;
    ThreadMessageDisplay& operator=(const ThreadMessageDisplay&) = delete;
    ~ThreadMessageDisplay();

private:
    const mathexpr::ProcessMessageDisplay* const before;
};
