// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TableReader.h - takes rows of a table apart: comma-separated values (RFC 4180), or with another separator.
//
// A cell in double quotes may hold separators, line ends and, doubled, quotes. Lines end with LF or CR LF. Blanks around a
// cell that stand outside its quotes belong to it, as the standard has it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// A cell without the blanks and tabs around it.
std::string_view withoutBlanks(std::string_view cell);

/// Where a cell stands in the text, without its quotes.
struct TableCell
{
    std::size_t begin;
    std::size_t end;
    bool hasQuotes;  ///< Doubled ones, which stand for one.
};

/// The first row of a text.
struct TableRow
{
    enum class Kind
    {
        Complete,
        Malformed,  ///< Complete, but its quotes are not in order.
        Short,      ///< The text ends within the row.
        QuoteOpen,  ///< So it does for good, within quotes.
    };

    std::vector<TableCell> cells;  ///< Of a row that is complete.
    std::size_t end = 0;           ///< Behind its line end.
    std::uint64_t lineCount = 0;

    /// @param isLast  whether the text ends where the table does, so that a row needs no line end
    Kind scan(std::string_view text, char separator, bool isLast);
};

class TableReader
{
public:
    enum class Outcome
    {
        Row,
        Malformed,  ///< A row, but its quotes are not in order.
        End,
    };

    /// @param wholeRows  nothing else; outlives what is read from it
    TableReader(std::string_view wholeRows, std::uint64_t firstLine, char givenSeparator)
        : rest(wholeRows), nextLine(firstLine), separator(givenSeparator)
    {}

    Outcome next();

    /// The cells of the last row, valid until the next one is read.
    const std::vector<std::string_view>& cells() const { return views; }
    /// The last row as it stands in the table, without its line end.
    std::string_view rowText() const { return row; }
    /// The line on which it begins, from 1.
    std::uint64_t line() const { return rowLine; }

private:
    void makeViews();

    std::string_view rest;
    std::string_view row;
    std::uint64_t nextLine;
    std::uint64_t rowLine = 0;
    char separator;
    TableRow scanned;
    std::vector<std::string_view> views;
    std::vector<std::string> unquoted;
};
