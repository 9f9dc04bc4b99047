// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// CompletionScripts.h - scripts with which shells complete the options of the command line, made from the option
// parser's own table.
#pragma once

#include <string>
#include <vector>

struct CompletedOption
{
    std::string name;  ///< Without its hyphens.
    std::string description;
    std::string valueName;  ///< Empty for one that takes no value.
    bool repeatable;
};

/// The shells that there is a script for.
inline constexpr const char* completionShells[] = {"bash", "zsh", "fish"};

/// The script for one of these shells; empty for any other name.
std::string completionScript(const std::vector<CompletedOption>& options, const std::string& shell);
