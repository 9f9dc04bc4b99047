// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Wrapped.cpp - see Wrapped.h.
#include "tools/calc/text/Wrapped.h"

#include "tools/calc/text/DisplayWidth.h"

#include <algorithm>

std::string wrapped(std::string_view text, std::size_t taken, std::size_t indentation, std::size_t columns)
{
    std::string lines;
    std::size_t column = taken;
    bool beginsLine = true;
    while (!text.empty())
    {
        const std::size_t end = std::min(text.find(' '), text.size());
        const std::string word(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        const std::size_t width = displayWidth(word);
        if (!beginsLine && column + 1 + width > columns)
        {
            lines += '\n' + std::string(indentation, ' ');
            column = indentation;
            beginsLine = true;
        }
        lines += (beginsLine ? "" : " ") + word;
        column += width + (beginsLine ? 0 : 1);
        beginsLine = false;
    }
    return lines;
}
