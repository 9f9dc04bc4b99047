// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TableBatch.h - rows of a table prepared for bulk evaluation: the cells that expressions read, as contiguous columns.
#pragma once

#include "mathexpr/ValType.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

/// A column of the table that an expression reads.
struct TableColumn
{
    std::size_t index;  ///< Of the cell in a row.
    std::wstring name;
};

class TableBatch
{
public:
    static constexpr std::size_t mostRows = 8192;

    explicit TableBatch(std::vector<TableColumn> columns);

    void clear();
    std::size_t size() const { return lines.size(); }
    bool isFull() const { return size() == mostRows || rowTexts.size() >= mostText; }

    /// Whether a row's values have the kinds of the columns, each of which holds either numbers or points.
    bool takes(const std::vector<VALTYPE>& values) const;

    /// @param values  one per column
    void add(std::uint64_t line, const std::vector<VALTYPE>& values);
    /// Adds a row that cannot be evaluated.
    void addBroken(std::uint64_t line, std::string complaint);
    /// Keeps the text of the row added last.
    void keepText(std::string_view text);

    std::uint64_t line(std::size_t row) const { return lines[row]; }
    /// Whether a row is malformed.
    bool isBroken(std::size_t row) const { return complaints.contains(row); }
    /// The error message for a broken row.
    const std::string& complaint(std::size_t row) const { return complaints.at(row); }
    std::string_view text(std::size_t row) const;
    /// The value of a row in a column.
    VALTYPE value(std::size_t row, std::size_t column) const;
    const std::vector<TableColumn>& columns() const { return tableColumns; }
    bool isOfPoints(std::size_t column) const { return columnValues[column].isPoint; }
    /// The numbers of a column, one or three per row.
    const double* numbers(std::size_t column) const { return columnValues[column].numbers.data(); }

private:
    static constexpr std::size_t mostText = std::size_t{16} << 20;

    struct Values
    {
        bool isPoint = false;
        std::vector<double> numbers;
    };

    std::vector<TableColumn> tableColumns;
    std::vector<Values> columnValues;
    bool kindsAreKnown = false;
    std::vector<std::uint64_t> lines;
    std::map<std::size_t, std::string> complaints;  // by row
    std::string rowTexts;
    std::vector<std::size_t> textEnds;
};
