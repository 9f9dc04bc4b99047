// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// InputLine.cpp - see InputLine.h.
#include "tools/calc/text/InputLine.h"

std::string_view expressionOfLine(std::string_view line, std::size_t number)
{
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (number == 1 && line.starts_with(byteOrderMark))
    {
        line.remove_prefix(byteOrderMark.size());
    }
    if (line.ends_with('\r'))
    {
        line.remove_suffix(1);
    }
    return line;
}

bool isBlank(std::string_view line)
{
    return line.find_first_not_of(" \t\r\f\v") == std::string_view::npos;
}

bool isComment(std::string_view line)
{
    const std::size_t first = line.find_first_not_of(" \t");
    return first != std::string_view::npos && line[first] == '#';
}
