// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Settings.h - the user's settings at the prompt, stored in a file of lines such as "digits=6".
#pragma once

#include "tools/calc/text/ValueText.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

struct Settings
{
    std::uint32_t digits = usualDigits;
};

/// A number of digits, from "6", "17" or "exact".
std::optional<std::uint32_t> digitsFrom(std::string_view text);
std::string digitsText(std::uint32_t digits);

/// Reads a file; missing and invalid settings have their defaults.
Settings readSettings(const std::string& file);

/// Writes the file, and creates its folder if necessary.
/// @return why it cannot be written; empty on success
std::string writeSettings(const std::string& file, const Settings& settings);
