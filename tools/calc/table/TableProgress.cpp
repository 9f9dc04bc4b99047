// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TableProgress.cpp - removes the line by overwriting it with blanks, which works on every terminal.

#include "tools/calc/table/TableProgress.h"

#include "tools/calc/terminal/Terminal.h"

#include <iostream>
#include <string>

TableProgress::TableProgress() : visible(standardErrorIsTerminal()) {}

void TableProgress::show(std::uint64_t nbRows)
{
    const Clock::time_point now = Clock::now();
    if (visible && now - last >= std::chrono::milliseconds(200))
    {
        std::cerr << '\r' << std::to_string(nbRows) << " rows" << std::flush;
        shown = true;
        last = now;
    }
}

void TableProgress::clear()
{
    if (shown)
    {
        std::cerr << '\r' << std::string(30, ' ') << '\r' << std::flush;
        shown = false;
    }
}
