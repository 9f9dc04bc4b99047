// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// StateFolder.h - where the prompt keeps what outlives it: the history and the settings.
#pragma once

#include <string>
#include <string_view>

/// A file in $XDG_STATE_HOME/mathexpr, or else in $HOME/.local/state/mathexpr; on Windows in %LOCALAPPDATA%/mathexpr. Empty
/// where none of them names a place.
std::string stateFile(std::string_view name);
