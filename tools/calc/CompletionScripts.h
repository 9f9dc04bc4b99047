// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// CompletionScripts.h - scripts with which shells complete the options of the command line, made from the option
// parser's own table.
#pragma once

#include <string>

namespace CLI {
class App;
}

/// The shells that there is a script for.
inline constexpr const char* completionShells[] = {"bash", "zsh", "fish"};

/// The script for one of these shells; empty for any other name.
std::string completionScript(const CLI::App& app, const std::string& shell);
