// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// LineReader.h - the source of the prompt's lines.
#pragma once

#include <memory>
#include <optional>
#include <string>

class LineReader
{
public:
    virtual ~LineReader() = default;

    /// Shows the prompt and waits for a line, which is returned without its line end. Ctrl-C discards the typed text.
    /// An incomplete line at the end of the input counts as a line.
    /// @return nothing at the end of the input
    virtual std::optional<std::string> readLine() = 0;

    /// Proposes a line: Up, or Tab on an empty line, inserts it first. An empty line is no proposal.
    virtual void offer(const std::string& line) = 0;
};

/// Reads lines with the terminal's own editing.
std::unique_ptr<LineReader> makePlainReader();
