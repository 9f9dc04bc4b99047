// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ThreadMessageDisplay.h - replaces the message display for the calls of one thread.
#pragma once

#include "mathexpr/MessageDisplay.h"

/// While an object of this class exists, messages of its thread go to its display instead of the process's. Objects
/// nest.
class ThreadMessageDisplay
{
public:
    /// @param display  null, or without a function: the process's display
    explicit ThreadMessageDisplay(const mathexpr::ProcessMessageDisplay* display) noexcept;
    ThreadMessageDisplay(const ThreadMessageDisplay&) = delete;
    ThreadMessageDisplay& operator=(const ThreadMessageDisplay&) = delete;
    ~ThreadMessageDisplay();

private:
    const mathexpr::ProcessMessageDisplay* const before;
};
