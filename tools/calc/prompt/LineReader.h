// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// LineReader.h - where the lines of the prompt come from.
#pragma once

#include <memory>
#include <optional>
#include <string>

class LineReader
{
public:
    virtual ~LineReader() = default;

    /// Shows the prompt and waits for a line, which comes without its end. Ctrl-C drops what has been typed. A line that
    /// the end of the input cuts short counts as one.
    /// @return nothing at the end of the input
    virtual std::optional<std::string> readLine() = 0;

    /// A line that the user may want next: Up brings it first, and so does Tab on an empty line. An empty one is none.
    virtual void offer(const std::string& line) = 0;
};

/// Lines as the terminal itself lets them be typed.
std::unique_ptr<LineReader> makePlainReader();
