// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TableBatch.h - some rows of a table on their way through bulk evaluation: cells in, values and complaints out.
#pragma once

#include "mathexpr/BulkEvaluation.h"
#include "mathexpr/MathExpression.h"
#include "mathexpr/ValType.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The value of a cell: a number, read the same in every locale, or a point such as [1,2,3]; blanks around them do not
/// count. Nothing where it is neither.
std::optional<VALTYPE> cellValue(std::string_view cell);

/// A column of the table that the expression reads.
struct TableColumn
{
    std::size_t index;  ///< Among the cells of a row.
    std::wstring name;
};

class TableBatch
{
public:
    static constexpr std::size_t mostRows = 65536;

    explicit TableBatch(std::vector<TableColumn> columns);

    void clear();
    std::size_t size() const { return lines.size(); }
    bool isFull() const { return size() == mostRows; }

    /// Whether a row's values have the kinds that the columns have here: a column is of numbers or of points.
    bool takes(const std::vector<VALTYPE>& values) const;

    /// @param values  for each column
    void add(std::uint64_t line, const std::vector<VALTYPE>& values);
    /// A row that cannot be evaluated.
    void addBroken(std::uint64_t line, std::string complaint);

    void evaluate(MathExpression& expression, std::uint32_t nbThreads);

    std::uint64_t line(std::size_t row) const { return lines[row]; }
    /// What is wrong with a row's cells; empty where nothing is.
    const std::string& complaint(std::size_t row) const { return complaints[row]; }
    /// Whether the expression has no value for a row whose cells are in order.
    bool isRefused(std::size_t row) const { return status[row] != mathexpr::RowStatus::Done; }
    const VALTYPE& result(std::size_t row) const { return results[row]; }
    /// The values that a row has given to the columns.
    VALTYPE value(std::size_t row, std::size_t column) const;
    const std::vector<TableColumn>& columns() const { return tableColumns; }

private:
    struct Values
    {
        bool isPoint = false;
        std::vector<double> numbers;  // one or three for each row
    };

    std::vector<TableColumn> tableColumns;
    std::vector<Values> columnValues;
    bool kindsAreKnown = false;
    std::vector<std::uint64_t> lines;
    std::vector<std::string> complaints;
    std::vector<VALTYPE> results;
    std::vector<std::uint32_t> status;
};
