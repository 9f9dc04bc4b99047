// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TableReader.h - reads a table of comma-separated values (RFC 4180), or with another separator, row by row, in memory that
// does not grow with it.
//
// A cell in double quotes may hold commas, line ends and, doubled, quotes. Lines end with LF or CR LF; a byte order
// mark before the first cell is skipped. Blanks around a cell that stand outside its quotes belong to it, as the
// standard has it.
#pragma once

#include "tools/calc/TableSource.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// A cell without the blanks and tabs around it.
std::string_view withoutBlanks(std::string_view cell);

class TableReader
{
public:
    enum class Outcome
    {
        Row,
        Malformed,   ///< A row, but its quotes are not in order.
        End,         ///< There are no more rows.
        Unreadable,  ///< There may be more rows, but they cannot be told apart or read: trouble says why.
        Interrupted,
    };

    /// @param source       outlives the reader
    /// @param interrupted  asked between rows, and where reading fails
    TableReader(TableSource& source, bool (*interrupted)());

    /// The first line that has not been read yet, without its end; valid until a row is read.
    std::string_view firstLine();

    /// Between cells, from the next row on; a comma at first.
    void setSeparator(char newSeparator) { separator = newSeparator; }

    Outcome next();

    /// The cells of the last row, valid until the next one is read.
    const std::vector<std::string_view>& cells() const { return views; }
    /// The last row as it stands in the table, without its line end; valid until the next one is read.
    std::string_view rowText() const;
    /// The line on which it begins, from 1.
    std::uint64_t line() const { return rowLine; }
    /// Why there are no more rows.
    const std::string& trouble() const { return reason; }

private:
    enum class Scan
    {
        Complete,
        Malformed,
        Short,
        QuoteOpen,
    };

    struct Cell
    {
        std::size_t begin;
        std::size_t end;
        bool hasQuotes;  // doubled ones, which stand for one
    };

    Scan scanRow();
    bool readMore();
    void makeViews();

    TableSource& source;
    bool (*isInterrupted)();
    char separator = ',';
    std::vector<char> buffer;
    std::size_t begin = 0;  // of what is not yet handed out
    std::size_t end = 0;    // of what has been read
    bool atEnd = false;     // of the source
    std::size_t rowBegin = 0;
    std::size_t rowEnd = 0;
    std::uint64_t rowLine = 0;
    std::uint64_t nextLine = 1;
    std::uint64_t linesInRow = 0;
    std::vector<Cell> found;
    std::vector<std::string_view> views;
    std::vector<std::string> unquoted;
    std::string reason;
};
