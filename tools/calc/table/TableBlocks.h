// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TableBlocks.h - reads a table in blocks of whole rows, which threads can compute independently. Memory does not grow
// with the table.
#pragma once

#include "tools/calc/table/TableReader.h"
#include "tools/calc/table/TableSource.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// A block of whole rows. The last row of the table may lack its line end.
class TableBlock
{
public:
    std::string_view rows() const { return {buffer.data(), size}; }
    /// The line of the first row, from 1.
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
        Unreadable,  ///< There may be more rows, but they cannot be read or separated; trouble() explains why.
        Interrupted,
    };

    /// Skips a byte order mark at the beginning.
    /// @param source       must outlive the blocks
    /// @param interrupted  polled while waiting for bytes
    TableBlocks(TableSource& source, bool (*interrupted)());

    /// The first line that has not been returned, without its line end; valid until the next block.
    std::string_view firstLine();

    /// Sets the separator of cells; initially a comma.
    void setSeparator(char newSeparator) { separator = newSeparator; }

    /// Returns a block of one row.
    Outcome nextRow(TableBlock& block) { return next(block, true); }
    Outcome next(TableBlock& block) { return next(block, false); }

    /// Number of the first line that has not been returned.
    std::uint64_t line() const { return nextLine; }
    /// Why there are no more rows.
    const std::string& trouble() const { return reason; }

private:
    Outcome next(TableBlock& block, bool oneRow);
    /// The end of the last whole row that has been read, or of the first one; 0 if there is none.
    std::size_t endOfRows(bool oneRow);
    bool readMore();

    TableSource& source;
    bool (*isInterrupted)();
    char separator = ',';
    std::vector<char> pending;  // read, but not returned yet: its first bytes
    std::size_t size = 0;
    bool atEnd = false;  // of the source
    std::uint64_t nextLine = 1;
    TableRow scanned;
    std::string reason;
};
