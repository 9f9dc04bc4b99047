// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Settings.h - what the user has chosen at the prompt, kept in a file of lines such as "digits=6".
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

/// "6", "17" or "exact" as a number of digits.
std::optional<std::uint32_t> digitsFrom(std::string_view text);
std::string digitsText(std::uint32_t digits);

/// What a file says; what it lacks, and what makes no sense, is as usual.
Settings readSettings(const std::string& file);

/// Writes the file, and its folder where there is none.
/// @return why it cannot be written; empty where it was
std::string writeSettings(const std::string& file, const Settings& settings);
