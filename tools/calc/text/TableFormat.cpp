// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TableFormat.cpp - see TableFormat.h.
#include "tools/calc/text/TableFormat.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::string_view separators = ",;\t";

}

char guessSeparator(std::string_view headings)
{
    std::array<std::size_t, separators.size()> counts{};
    bool isQuoted = false;
    for (const char unit : headings)
    {
        isQuoted = isQuoted != (unit == '"');
        const std::size_t index = isQuoted ? std::string_view::npos : separators.find(unit);
        if (index != std::string_view::npos)
        {
            ++counts[index];
        }
    }
    return separators[static_cast<std::size_t>(std::ranges::max_element(counts) - counts.begin())];
}

std::optional<char> separatorFrom(std::string_view text)
{
    if (text == "tab" || text == "\t")
    {
        return '\t';
    }
    return text == "," || text == ";" ? std::optional(text.front()) : std::nullopt;
}

std::string separatorName(char separator)
{
    return separator == '\t' ? "tab" : '"' + std::string(1, separator) + '"';
}

void appendCell(std::string& row, std::string_view cell, char separator)
{
    if (cell.find_first_of("\"\r\n") == std::string_view::npos && cell.find(separator) == std::string_view::npos)
    {
        row += cell;
        return;
    }
    row += '"';
    for (const char unit : cell)
    {
        row.append(unit == '"' ? 2 : 1, unit);
    }
    row += '"';
}
