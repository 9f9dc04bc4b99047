// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TableWorker.h - computes blocks of a table one after the other: rows in, text and error messages out. Workers share
// no mutable state, so each may have its own thread.
#pragma once

#include "tools/calc/options/Options.h"
#include "tools/calc/table/TableBatch.h"
#include "tools/calc/table/TableReader.h"
#include "tools/calc/table/TableStage.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

/// Properties that all blocks share.
struct TableLayout
{
    char separator = ',';
    std::size_t headingCells = 0;      ///< Number of cells in the line of headings.
    std::size_t headings = 0;          ///< Number of headings without empty ones at the end.
    std::vector<TableColumn> columns;  ///< The columns that expressions read.
};

struct TableResult
{
    std::string output;
    std::string complaints;  ///< One line per broken row.
    std::uint64_t rowCount = 0;
    std::uint64_t brokenCount = 0;
    bool isLast = false;  ///< Whether a broken row ended the work.
};

class TableWorker
{
public:
    /// @param options  must outlive the worker, as must the layout
    /// @param stages   one per expression, that of --where first
    TableWorker(const Options& options, const TableLayout& layout, std::deque<TableStage> stages);
    TableWorker(const TableWorker&) = delete;
    TableWorker& operator=(const TableWorker&) = delete;
    /// Each stage has replaced the message display of the one before it, so they are destroyed in reverse order.
    ~TableWorker();

    const std::deque<TableStage>& stages() const { return tableStages; }

    /// @param rows       whole rows
    /// @param firstLine  their first line
    TableResult compute(std::string_view rows, std::uint64_t firstLine);

private:
    std::string textOfRow(const TableReader& reader) const;
    std::string readRow(const std::vector<std::string_view>& cells);
    void finishBatch(TableResult& result);
    bool isKept(std::size_t row) const;
    std::string complaintOf(std::size_t row) const;
    std::size_t firstResult() const { return options.table->where ? 1 : 0; }
    void writeRow(std::string& output, std::size_t row, bool isBroken) const;
    void writeJson(std::string& output, std::size_t row, bool isBroken) const;
    void writeValue(std::string& output, const VALTYPE& value) const;

    const Options& options;
    const TableLayout& layout;
    std::deque<TableStage> tableStages;
    TableBatch batch;
    std::vector<VALTYPE> values;
};
