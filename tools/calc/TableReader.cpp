// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TableReader.cpp - scans the row at the beginning of a buffer; where the buffer ends within the row, more is read and
// the row is scanned again.

#include "tools/calc/TableReader.h"

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace {

constexpr std::size_t initialSize = std::size_t{1} << 20;

/// A row longer than this is taken for a quote that was never closed.
constexpr std::size_t longestRow = std::size_t{64} << 20;

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

}

std::string_view withoutBlanks(std::string_view cell)
{
    constexpr std::string_view blanks = " \t";
    const std::size_t first = cell.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view{}
                                           : cell.substr(first, cell.find_last_not_of(blanks) - first + 1);
}

TableReader::TableReader(TableSource& input, bool (*interrupted)())
    : source(input), isInterrupted(interrupted), buffer(initialSize)
{
    while (end < byteOrderMark.size() && !atEnd && reason.empty() && readMore())
    {}
    if (std::string_view(buffer.data(), end).starts_with(byteOrderMark))
    {
        begin = byteOrderMark.size();
    }
}

std::string_view TableReader::firstLine()
{
    const auto findEnd = [this] { return std::find(buffer.data() + begin, buffer.data() + end, '\n'); };
    while (findEnd() == buffer.data() + end && !atEnd && !isInterrupted() && readMore())
    {}
    return {buffer.data() + begin, static_cast<std::size_t>(findEnd() - (buffer.data() + begin))};
}

TableReader::Outcome TableReader::next()
{
    for (;;)
    {
        if (isInterrupted())
        {
            return Outcome::Interrupted;
        }
        if (begin == end && atEnd)
        {
            return Outcome::End;
        }
        const Scan scan = begin == end ? Scan::Short : scanRow();
        if (scan == Scan::Complete || scan == Scan::Malformed)
        {
            makeViews();
            rowBegin = begin;
            rowLine = nextLine;
            nextLine += linesInRow;
            begin = rowEnd;
            return scan == Scan::Complete ? Outcome::Row : Outcome::Malformed;
        }
        rowLine = nextLine;
        if (scan == Scan::QuoteOpen)
        {
            reason = "a quote is not closed";
            return Outcome::Unreadable;
        }
        if (!readMore())
        {
            return isInterrupted() ? Outcome::Interrupted : Outcome::Unreadable;
        }
    }
}

TableReader::Scan TableReader::scanRow()
{
    found.clear();
    linesInRow = 1;
    bool malformed = false;
    std::size_t at = begin;
    for (;;)
    {
        Cell cell{at, at, false};
        if (at < end && buffer[at] == '"')
        {
            cell.begin = ++at;
            for (;;)
            {
                for (; at < end && buffer[at] != '"'; ++at)
                {
                    linesInRow += buffer[at] == '\n' ? 1U : 0U;
                }
                if (at + 1 >= end && !atEnd)
                {
                    return Scan::Short;
                }
                if (at == end)
                {
                    return Scan::QuoteOpen;
                }
                if (at + 1 == end || buffer[at + 1] != '"')
                {
                    break;
                }
                cell.hasQuotes = true;
                at += 2;
            }
            cell.end = at++;
            const std::size_t after = at;
            while (at < end && buffer[at] != separator && buffer[at] != '\n')
            {
                ++at;
            }
            const std::string_view behind(buffer.data() + after, at - after);
            malformed = malformed || !(behind.empty() || behind == "\r");
        }
        else
        {
            while (at < end && buffer[at] != separator && buffer[at] != '\n')
            {
                ++at;
            }
            const bool beforeLineEnd = at < end ? buffer[at] == '\n' : atEnd;
            cell.end = beforeLineEnd && at > cell.begin && buffer[at - 1] == '\r' ? at - 1 : at;
        }
        if (at == end && !atEnd)
        {
            return Scan::Short;
        }
        found.push_back(cell);
        if (at == end || buffer[at++] == '\n')
        {
            rowEnd = at;
            return malformed ? Scan::Malformed : Scan::Complete;
        }
    }
}

bool TableReader::readMore()
{
    if (begin != 0)
    {
        std::copy(buffer.begin() + static_cast<std::ptrdiff_t>(begin),
                  buffer.begin() + static_cast<std::ptrdiff_t>(end), buffer.begin());
        end -= begin;
        begin = 0;
    }
    if (end == buffer.size())
    {
        if (buffer.size() >= longestRow)
        {
            reason = "the row is too long; a quote may be missing";
            return false;
        }
        buffer.resize(2 * buffer.size());
    }
    const auto count = source.read(buffer.data() + end, buffer.size() - end);
    if (!count)
    {
        reason = std::generic_category().message(errno);
        return false;
    }
    end += *count;
    atEnd = *count == 0;
    return true;
}

std::string_view TableReader::rowText() const
{
    std::string_view text(buffer.data() + rowBegin, begin - rowBegin);
    for (const char ending : {'\n', '\r'})
    {
        text.remove_suffix(text.ends_with(ending) ? 1 : 0);
    }
    return text;
}

void TableReader::makeViews()
{
    views.clear();
    unquoted.clear();
    unquoted.reserve(found.size());  // so that they stay where they are
    for (const Cell& cell : found)
    {
        const std::string_view raw(buffer.data() + cell.begin, cell.end - cell.begin);
        if (!cell.hasQuotes)
        {
            views.push_back(raw);
            continue;
        }
        std::string& text = unquoted.emplace_back();
        for (std::size_t at = 0; at < raw.size(); ++at)
        {
            text += raw[at];
            at += raw[at] == '"' ? 1U : 0U;
        }
        views.push_back(text);
    }
}
