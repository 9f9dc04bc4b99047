// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TableProgress.h - one line on standard error that tells how far the work has come; only where a user sees it.
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

    /// Shows the number of rows, a few times a second at most.
    void show(std::uint64_t nbRows);
    /// Removes the line, so that something else can be written.
    void clear();

private:
    using Clock = std::chrono::steady_clock;

    const bool visible;
    bool shown = false;
    Clock::time_point last = Clock::now();
};
