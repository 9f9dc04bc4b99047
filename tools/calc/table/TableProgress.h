// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TableProgress.h - a progress line on standard error, only if that is a terminal.
#pragma once

#include <chrono>
#include <cstdint>

class TableProgress
{
public:
    TableProgress();
    TableProgress(const TableProgress&) = delete;
    TableProgress& operator=(const TableProgress&) = delete;
    ~TableProgress() { clear(); }

    /// Shows the number of rows, at most a few times per second.
    void show(std::uint64_t nbRows);
    /// Removes the line, so that something else can be printed.
    void clear();

private:
    using Clock = std::chrono::steady_clock;

    const bool visible;
    bool shown = false;
    Clock::time_point last = Clock::now();
};
