// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Settings.cpp - see Settings.h.
#include "tools/calc/settings/Settings.h"

#include <charconv>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace {

constexpr std::string_view digitsKey = "digits=";
constexpr std::string_view exact = "exact";

}

std::optional<std::uint32_t> digitsFrom(std::string_view text)
{
    if (text == exact)
    {
        return exactDigits;
    }
    std::uint32_t digits = 0;
    const char* const end = text.data() + text.size();
    const auto [parsedEnd, error] = std::from_chars(text.data(), end, digits);
    const bool isCount = error == std::errc() && parsedEnd == end && digits >= 1 && digits <= mostDigits;
    return isCount ? std::optional(digits) : std::nullopt;
}

std::string digitsText(std::uint32_t digits)
{
    return digits == exactDigits ? std::string(exact) : std::to_string(digits);
}

Settings readSettings(const std::string& file)
{
    Settings settings;
    std::ifstream stream(std::filesystem::path(std::u8string(file.begin(), file.end())));
    for (std::string line; std::getline(stream, line);)
    {
        if (line.starts_with(digitsKey))
        {
            settings.digits = digitsFrom(std::string_view(line).substr(digitsKey.size())).value_or(settings.digits);
        }
    }
    return settings;
}

std::string writeSettings(const std::string& file, const Settings& settings)
{
    if (file.empty())
    {
        return "there is no place to keep them";
    }
    const std::filesystem::path path(std::u8string(file.begin(), file.end()));
    std::error_code failure;
    std::filesystem::create_directories(path.parent_path(), failure);
    std::ofstream stream(path, std::ios::trunc);
    stream << digitsKey << digitsText(settings.digits) << '\n';
    return stream.flush() ? std::string() : file + " cannot be written";
}
