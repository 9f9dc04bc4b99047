// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTTileWorker.h - runs tile code on one thread.
//
// Whole tiles read columns where they are, if their rows are packed, and write results where they go, if these are.
// What is not packed, and the rows that are left after the last whole tile, goes through arrays of the worker's own. A
// tile with a row that is refused is evaluated again, row by row.
#pragma once

#include "MTParserLib/run/MTBulkWorker.h"
#include "MTParserLib/run/MTRowProgram.h"
#include "MTParserLib/tiles/MTTileProgram.h"

#include <vector>

/// What calls of items need, beside what kernels do.
struct MTTileWorkerContext : MTTileContext
{
    VALTYPE* args;  ///< As many as any call takes, and its result.
};

/// Evaluates an item by itself.
/// @param args  behind them stands a record for the result
Message::Id evaluateTileItem(const MTItemKernels& item, VALTYPE* args, std::size_t nbArgs);

class MTTileWorker final : public MTBulkWorker
{
public:
    /// @param tileProgram  outlives this object, as does the program that it was built from
    MTTileWorker(const MTTileProgram& tileProgram, const MTParserProgram& source,
                 platform::ArrayView<const MTBoundColumn> boundColumns);

    void bind(platform::ArrayView<const MTBoundColumn> bound, const mathexpr::BulkResults& results) override;
    std::size_t getLeadRows() const noexcept override;
    bool evaluate(std::size_t firstRow, std::size_t nbRows, std::uint32_t* status) override;

private:
    struct Column
    {
        mathexpr::BulkColumn source;
        std::size_t width;
        bool packed;
        double* copy;
    };

    /// Memory from the beginning of a line of the cache on.
    class Memory
    {
    public:
        /// Gives up what was allocated.
        void reserve(std::size_t count);
        double* allocate(std::size_t count) noexcept;

    private:
        std::vector<double> numbers;
        std::size_t nbAllocated = 0;
    };

    /// How many rows of a column, or of the results, are moved at a time.
    std::size_t movedRows(bool packed) const noexcept { return packed ? tileRows : blockRows; }

    bool evaluateTiles(std::size_t firstRow, std::size_t nbTiles, std::uint32_t* status);
    bool evaluateRest(std::size_t firstRow, std::size_t nbRows, std::uint32_t* status);
    void copyRows(const Column& column, std::size_t firstRow, std::size_t nbRows, std::size_t nbPadded) noexcept;
    void writeRows(std::size_t firstRow, std::size_t nbRows, const double* values) const noexcept;

    const MTTileProgram& program;
    MTRowProgram rows;
    MTBulkWriter writer;
    const std::size_t tileRows;
    std::vector<Column> columns;
    Memory buffers;  // and uniform places
    Memory copies;   // of columns and results
    std::vector<double*> places;
    std::vector<std::size_t> distances;  // of the columns and the results, from a tile to the next
    double* ownResults = nullptr;
    bool resultsFit = false;  // the kind of the value
    std::vector<VALTYPE> args;
    MTTileWorkerContext context{};
};
