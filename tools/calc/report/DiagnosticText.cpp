// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// DiagnosticText.cpp - see DiagnosticText.h.
#include "tools/calc/report/DiagnosticText.h"

#include "tools/calc/text/DisplayWidth.h"
#include "tools/calc/text/Displayable.h"
#include "tools/calc/text/Utf8.h"
#include "tools/calc/text/Wrapped.h"

#include <algorithm>

namespace {

constexpr const char* indent = "  ";

/// Upper bounds on the columns shown before the failure, and from its start on.
constexpr std::size_t mostBefore = 40;
constexpr std::size_t mostFrom = 36;

bool isControl(wchar_t character)
{
    return character < L' ' || (character >= 0x7F && character <= 0x9F) ||
           turnsDirection(static_cast<char32_t>(character));
}

/// A part of the text on one line, without control characters.
std::string printable(std::wstring_view text)
{
    std::wstring line(text);
    std::replace_if(line.begin(), line.end(), isControl, L' ');
    return toUtf8(line);
}

/// The width of one unit of the text in columns; each unit of a surrogate pair has one.
std::size_t widthOf(wchar_t unit)
{
    return displayWidth(printable({&unit, 1}));
}

/// Whether a cut before this unit would split a surrogate pair, or separate a combining mark.
bool belongsToPrevious(wchar_t unit)
{
    return (unit >= 0xDC00 && unit <= 0xDFFF) || widthOf(unit) == 0;
}

/// The first unit to show, so that the text before the failure takes at most `columns` columns.
std::size_t beginOfExcerpt(std::wstring_view text, std::size_t start, std::size_t columns)
{
    std::size_t first = start;
    for (std::size_t width = 0; first > 0; --first)
    {
        width += widthOf(text[first - 1]);
        if (width > columns)
        {
            break;
        }
    }
    while (first > 0 && first < start && belongsToPrevious(text[first]))
    {
        ++first;
    }
    return first;
}

/// The end of the text to show, so that the text from the failure on takes at most `columns` columns.
std::size_t endOfExcerpt(std::wstring_view text, std::size_t start, std::size_t columns)
{
    std::size_t end = start;
    for (std::size_t width = 0; end < text.size(); ++end)
    {
        width += widthOf(text[end]);
        if (width > columns)
        {
            break;
        }
    }
    while (end < text.size() && end > start + 1 && belongsToPrevious(text[end]))
    {
        --end;
    }
    return end;
}

std::string excerpt(std::wstring_view text, std::size_t start, std::size_t length, const TerminalStyle& style)
{
    constexpr std::string_view cut = "...";
    constexpr std::size_t least = 5;
    const std::size_t around = std::string_view(indent).size() + 2 * cut.size() + 1;  // the last column stays free
    const std::size_t room = style.columns > around ? style.columns - around : 0;
    const std::size_t before = std::clamp(room / 2, least, mostBefore);
    const std::size_t from = std::clamp(room - std::min(room, before), least, mostFrom);

    const std::size_t first = beginOfExcerpt(text, start, before);
    const std::size_t end = endOfExcerpt(text, start, from);
    const std::size_t markedEnd = std::min(start + length, end);
    const std::string shownBefore = std::string(first == 0 ? "" : cut) + printable(text.substr(first, start - first));
    const std::string marked = printable(text.substr(start, markedEnd - start));
    const std::string after = printable(text.substr(markedEnd, end - markedEnd));
    const std::size_t carets = std::max<std::size_t>(1, displayWidth(marked));
    std::string lines = indent + shownBefore + marked + after;
    lines += end == text.size() ? "" : cut;
    lines += '\n';
    lines += indent + std::string(displayWidth(shownBefore), ' ') + style.failure(std::string(carets, '^')) + '\n';
    return lines;
}

}

std::string diagnosticText(std::wstring_view expression, const mathexpr::ExpressionDiagnostic& diagnostic,
                           const TerminalStyle& style)
{
    std::string text;
    if (diagnostic.length != 0 && diagnostic.start + diagnostic.length <= expression.size())
    {
        text += excerpt(expression, diagnostic.start, diagnostic.length, style);
    }
    const std::size_t indentation = std::string_view(indent).size();
    for (const std::wstring& hint : diagnostic.hints)
    {
        text += indent + wrapped(printable(hint), indentation, indentation, style.columns) + '\n';
    }
    return text;
}

std::string correctedText(std::wstring_view expression, const mathexpr::ExpressionDiagnostic& diagnostic)
{
    std::wstring corrected(diagnostic.fix ? expression : std::wstring_view());
    if (diagnostic.fix)
    {
        corrected.replace(diagnostic.fix->start, diagnostic.fix->length, diagnostic.fix->replacement);
    }
    return toUtf8(corrected);
}
