// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TableWorker.h - computes blocks of a table, one after the other: rows in, text and complaints out. Workers share nothing
// that changes, so that each may have a thread of its own.
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

/// What all blocks have in common.
struct TableLayout
{
    char separator = ',';
    std::size_t headingCells = 0;      ///< Of the line of headings.
    std::size_t headings = 0;          ///< Without empty ones at its end.
    std::vector<TableColumn> columns;  ///< That expressions read.
};

struct TableResult
{
    std::string output;
    std::string complaints;  ///< A line for each broken row.
    std::uint64_t rowCount = 0;
    std::uint64_t brokenCount = 0;
    bool isLast = false;  ///< Whether a broken row ends the work.
};

class TableWorker
{
public:
    /// @param options  outlives the worker, as does the layout
    /// @param stages   one for each expression, that of --where first
    TableWorker(const Options& options, const TableLayout& layout, std::deque<TableStage> stages);
    TableWorker(const TableWorker&) = delete;
    TableWorker& operator=(const TableWorker&) = delete;
    /// Each stage has put itself in the place of the one before it for messages, which has to be undone in turn.
    ~TableWorker();

    const std::deque<TableStage>& stages() const { return tableStages; }

    /// @param rows       whole ones
    /// @param firstLine  on which they begin
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
