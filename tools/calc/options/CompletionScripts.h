// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// CompletionScripts.h - generates shell completion scripts for the command line from the option parser's table.
#pragma once

#include <string>
#include <vector>

struct CompletedOption
{
    std::string name;  ///< Without hyphens.
    std::string description;
    std::string valueName;  ///< Empty for an option without a value.
    bool repeatable;
};

/// The supported shells.
inline constexpr const char* completionShells[] = {"bash", "zsh", "fish"};

/// The script for a supported shell; empty for any other name.
std::string completionScript(const std::vector<CompletedOption>& options, const std::string& shell);
