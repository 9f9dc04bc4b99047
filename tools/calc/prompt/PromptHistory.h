// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// PromptHistory.h - the lines of earlier sessions, in a file of the user: one per line, the newest last.
#pragma once

#include <string>
#include <vector>

class PromptHistory
{
public:
    /// $XDG_STATE_HOME/mathexpr/history, or the same below $HOME/.local/state; empty if neither variable names a
    /// folder.
    static std::string usualFile();

    /// Reads the file. Creates missing files and folders, readable by the user only.
    explicit PromptHistory(std::string file);
    PromptHistory(const PromptHistory&) = delete;
    PromptHistory& operator=(const PromptHistory&) = delete;
    ~PromptHistory();

    /// The lines, the oldest first: at most 1000, without ill-formed ones.
    const std::vector<std::string>& lines() const { return kept; }

    /// Appends a line at once, so that nothing is lost in a crash. Does nothing after an error.
    void add(const std::string& line);

    /// Why lines are not saved; empty if they are, and after the first call.
    std::string takeTrouble();

private:
    void open();
    void read();
    void shorten();
    void fail();

    std::string file;
    int descriptor = -1;
    std::vector<std::string> kept;
    std::string trouble;
};
