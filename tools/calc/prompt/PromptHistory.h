// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// PromptHistory.h - the lines typed in earlier sessions, in a file of the user's own: one a line, the newest last.
#pragma once

#include <string>
#include <vector>

class PromptHistory
{
public:
    /// $XDG_STATE_HOME/mathexpr/history, or the same below $HOME/.local/state; empty where neither names a place.
    static std::string usualFile();

    /// Reads the file; makes it and its folder, for the user alone, where they are missing.
    explicit PromptHistory(std::string file);
    PromptHistory(const PromptHistory&) = delete;
    PromptHistory& operator=(const PromptHistory&) = delete;
    ~PromptHistory();

    /// The oldest first, at most 1000; without what is no text.
    const std::vector<std::string>& lines() const { return kept; }

    /// Adds a line at once, so that nothing is lost, whatever happens next. Does nothing once there was trouble.
    void add(const std::string& line);

    /// Why lines are not kept; empty where they are. Told once.
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
