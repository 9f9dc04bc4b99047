// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TerminalStyle.cpp - uses control sequences that all colour terminals support.
#include "tools/calc/terminal/TerminalStyle.h"

#include <cstdlib>

namespace {

std::string_view variable(const char* name)
{
    const char* const value = std::getenv(name);  // NOLINT(concurrency-mt-unsafe): nothing changes it
    return value == nullptr ? std::string_view() : value;
}

}

std::string TerminalStyle::failure(std::string_view text) const
{
    const std::string plain(text);
    return coloured ? "\x1b[31m" + plain + "\x1b[0m" : plain;
}

bool coloursWelcome()
{
    const std::string_view terminal = variable("TERM");
    return variable("NO_COLOR").empty() && !terminal.empty() && terminal != "dumb";
}
