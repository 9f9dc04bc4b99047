// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TableBlocks.h - reads a table in blocks of whole rows, each of which can be computed on a thread of its own. Memory does
// not grow with the table.
#pragma once

#include "tools/calc/table/TableReader.h"
#include "tools/calc/table/TableSource.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Some rows, the last one with its line end or at the end of the table.
class TableBlock
{
public:
    std::string_view rows() const { return {buffer.data(), size}; }
    /// On which the first row begins, from 1.
    std::uint64_t firstLine() const { return line; }

private:
    friend class TableBlocks;

    std::vector<char> buffer;
    std::size_t size = 0;
    std::uint64_t line = 1;
};

class TableBlocks
{
public:
    enum class Outcome
    {
        Block,
        End,         ///< There are no more rows.
        Unreadable,  ///< There may be more rows, but they cannot be told apart or read: trouble says why.
        Interrupted,
    };

    /// A byte order mark at the begin of the table is skipped.
    /// @param source       outlives the blocks
    /// @param interrupted  asked while waiting for bytes
    TableBlocks(TableSource& source, bool (*interrupted)());

    /// The first line that has not been handed out, without its end; valid until a block is.
    std::string_view firstLine();

    /// Between cells, from now on; a comma at first.
    void setSeparator(char newSeparator) { separator = newSeparator; }

    /// A block of one row.
    Outcome nextRow(TableBlock& block) { return next(block, true); }
    Outcome next(TableBlock& block) { return next(block, false); }

    /// The first line that has not been handed out.
    std::uint64_t line() const { return nextLine; }
    /// Why there are no more rows.
    const std::string& trouble() const { return reason; }

private:
    Outcome next(TableBlock& block, bool oneRow);
    /// The end of the last whole row in what has been read, or of the first one; 0 where there is none.
    std::size_t endOfRows(bool oneRow);
    bool readMore();

    TableSource& source;
    bool (*isInterrupted)();
    char separator = ',';
    std::vector<char> pending;  // read and not handed out: its first bytes
    std::size_t size = 0;
    bool atEnd = false;  // of the source
    std::uint64_t nextLine = 1;
    TableRow scanned;
    std::string reason;
};
