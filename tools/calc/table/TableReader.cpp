// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TableReader.cpp - see TableReader.h.

#include "tools/calc/table/TableReader.h"

std::string_view withoutBlanks(std::string_view cell)
{
    const auto isBlank = [](char unit) { return unit == ' ' || unit == '\t'; };
    while (!cell.empty() && isBlank(cell.front()))
    {
        cell.remove_prefix(1);
    }
    while (!cell.empty() && isBlank(cell.back()))
    {
        cell.remove_suffix(1);
    }
    return cell;
}

TableRow::Kind TableRow::scan(std::string_view text, char separator, bool isLast)
{
    cells.clear();
    lineCount = 1;
    bool malformed = false;
    std::size_t at = 0;
    const auto findCellEnd = [&] {
        while (at < text.size() && text[at] != separator && text[at] != '\n')
        {
            ++at;
        }
    };
    for (;;)
    {
        TableCell cell{at, at, false};
        if (at < text.size() && text[at] == '"')
        {
            cell.begin = ++at;
            for (;;)
            {
                for (; at < text.size() && text[at] != '"'; ++at)
                {
                    lineCount += text[at] == '\n' ? 1U : 0U;
                }
                if (at + 1 >= text.size() && !isLast)
                {
                    return Kind::Short;
                }
                if (at == text.size())
                {
                    return Kind::QuoteOpen;
                }
                if (at + 1 == text.size() || text[at + 1] != '"')
                {
                    break;
                }
                cell.hasQuotes = true;
                at += 2;
            }
            cell.end = at++;
            const std::size_t after = at;
            findCellEnd();
            const std::string_view behind = text.substr(after, at - after);
            malformed = malformed || !(behind.empty() || behind == "\r");
        }
        else
        {
            findCellEnd();
            const bool beforeLineEnd = at < text.size() ? text[at] == '\n' : isLast;
            cell.end = beforeLineEnd && at > cell.begin && text[at - 1] == '\r' ? at - 1 : at;
        }
        if (at == text.size() && !isLast)
        {
            return Kind::Short;
        }
        cells.push_back(cell);
        if (at == text.size() || text[at++] == '\n')
        {
            end = at;
            return malformed ? Kind::Malformed : Kind::Complete;
        }
    }
}

TableReader::Outcome TableReader::next()
{
    if (rest.empty())
    {
        return Outcome::End;
    }
    const TableRow::Kind kind = scanned.scan(rest, separator, true);
    row = rest.substr(0, scanned.end);
    makeViews();
    for (const char ending : {'\n', '\r'})
    {
        row.remove_suffix(row.ends_with(ending) ? 1 : 0);
    }
    rest.remove_prefix(scanned.end);
    rowLine = nextLine;
    nextLine += scanned.lineCount;
    return kind == TableRow::Kind::Complete ? Outcome::Row : Outcome::Malformed;
}

void TableReader::makeViews()
{
    views.clear();
    unquoted.clear();
    for (const TableCell& cell : scanned.cells)
    {
        const std::string_view raw = row.substr(cell.begin, cell.end - cell.begin);
        if (!cell.hasQuotes)
        {
            views.push_back(raw);
            continue;
        }
        unquoted.reserve(scanned.cells.size());  // reallocation would invalidate the views
        std::string& text = unquoted.emplace_back();
        for (std::size_t at = 0; at < raw.size(); ++at)
        {
            text += raw[at];
            at += raw[at] == '"' ? 1U : 0U;
        }
        views.push_back(text);
    }
}
