// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TableReader.h - parses rows of a table: comma-separated values (RFC 4180), or with another separator.
//
// A cell in double quotes may contain separators, line ends and doubled quotes. Lines end with LF or CR LF. As the
// standard requires, blanks around a cell and outside its quotes are part of it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// A cell without the blanks and tabs around it.
std::string_view withoutBlanks(std::string_view cell);

/// Position of a cell in the text, without its quotes.
struct TableCell
{
    std::size_t begin;
    std::size_t end;
    bool hasQuotes;  ///< Whether it contains doubled quotes, each of which means one.
};

/// The first row of a text.
struct TableRow
{
    enum class Kind
    {
        Complete,
        Malformed,  ///< Complete, but with misplaced quotes.
        Short,      ///< The text ends in the row.
        QuoteOpen,  ///< The table ends in the row, within quotes.
    };

    std::vector<TableCell> cells;  ///< Set if the row is complete.
    std::size_t end = 0;           ///< After its line end.
    std::uint64_t lineCount = 0;

    /// @param isLast  whether the table ends here, so that the last row needs no line end
    Kind scan(std::string_view text, char separator, bool isLast);
};

class TableReader
{
public:
    enum class Outcome
    {
        Row,
        Malformed,  ///< A row with misplaced quotes.
        End,
    };

    /// @param wholeRows  only whole rows; must outlive what is read from it
    TableReader(std::string_view wholeRows, std::uint64_t firstLine, char givenSeparator)
        : rest(wholeRows), nextLine(firstLine), separator(givenSeparator)
    {}

    Outcome next();

    /// The cells of the last row, valid until the next row is read.
    const std::vector<std::string_view>& cells() const { return views; }
    /// The last row as it is in the table, without its line end.
    std::string_view rowText() const { return row; }
    /// Number of the last row's first line, from 1.
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
