// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// StateFolder.h - the folder in which the prompt keeps its history and settings.
#pragma once

#include <string>
#include <string_view>

/// A file in $XDG_STATE_HOME/mathexpr, otherwise in $HOME/.local/state/mathexpr; on Windows in %LOCALAPPDATA%/mathexpr.
/// Empty if none of these variables names a folder.
std::string stateFile(std::string_view name);
