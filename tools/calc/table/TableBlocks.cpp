// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TableBlocks.cpp - in blocks without quotes, rows end at line ends; blocks with quotes are scanned.
#include "tools/calc/table/TableBlocks.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <system_error>
#include <utility>

namespace {

/// Large enough to hide the cost per block, small enough for a cache.
constexpr std::size_t usualSize = std::size_t{1} << 19;

/// A longer row is treated as an unclosed quote.
constexpr std::size_t longestRow = std::size_t{64} << 20;

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

}

TableBlocks::TableBlocks(TableSource& input, bool (*interrupted)())
    : source(input), isInterrupted(interrupted), pending(usualSize)
{
    while (size < byteOrderMark.size() && !atEnd && reason.empty() && readMore())
    {}
    if (std::string_view(pending.data(), size).starts_with(byteOrderMark))
    {
        size -= byteOrderMark.size();
        std::memmove(pending.data(), pending.data() + byteOrderMark.size(), size);
    }
}

std::string_view TableBlocks::firstLine()
{
    const auto findEnd = [this] { return std::find(pending.data(), pending.data() + size, '\n'); };
    while (findEnd() == pending.data() + size && !atEnd && readMore())
    {}
    return {pending.data(), static_cast<std::size_t>(findEnd() - pending.data())};
}

TableBlocks::Outcome TableBlocks::next(TableBlock& block, bool oneRow)
{
    std::size_t end = oneRow ? endOfRows(true) : 0;
    for (std::size_t wanted = usualSize; end == 0; wanted = 2 * size)
    {
        while (!atEnd && size < wanted && reason.empty() && readMore())
        {}
        end = endOfRows(oneRow);
        if (end == 0 && isInterrupted())
        {
            return Outcome::Interrupted;
        }
        if (end == 0 && size >= longestRow && reason.empty())
        {
            reason = "the row is too long; a quote may be missing";
        }
        if (end == 0 && (atEnd || !reason.empty()))
        {
            return size == 0 && reason.empty() ? Outcome::End : Outcome::Unreadable;
        }
    }
    // The rest becomes the beginning of the next block's buffer.
    block.buffer.resize(std::max(pending.size(), usualSize));
    std::memcpy(block.buffer.data(), pending.data() + end, size - end);
    std::swap(block.buffer, pending);
    block.size = end;
    block.line = nextLine;
    size -= end;
    const std::string_view rows = block.rows();
    nextLine += static_cast<std::uint64_t>(std::count(rows.begin(), rows.end(), '\n'));
    return Outcome::Block;
}

std::size_t TableBlocks::endOfRows(bool oneRow)
{
    const std::string_view text(pending.data(), size);
    if (!oneRow && text.find('"') == std::string_view::npos)
    {
        return atEnd ? size : text.rfind('\n') + 1;  // 0 if there is none
    }
    std::size_t end = 0;
    while (end < size)
    {
        const TableRow::Kind kind = scanned.scan(text.substr(end), separator, atEnd);
        if (kind == TableRow::Kind::Short || kind == TableRow::Kind::QuoteOpen)
        {
            reason = end == 0 && kind == TableRow::Kind::QuoteOpen ? "a quote is not closed" : reason;
            break;
        }
        end += scanned.end;
        if (oneRow)
        {
            break;
        }
    }
    return end;
}

bool TableBlocks::readMore()
{
    if (size == pending.size())
    {
        pending.resize(2 * pending.size());
    }
    while (!source.hasInput())
    {
        if (isInterrupted())
        {
            return false;
        }
    }
    const auto count = isInterrupted() ? std::nullopt : source.read(pending.data() + size, pending.size() - size);
    if (!count)
    {
        reason = isInterrupted() ? std::string() : std::generic_category().message(errno);
        return false;
    }
    size += *count;
    atEnd = *count == 0;
    return true;
}
