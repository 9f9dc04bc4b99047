// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTTileWorker.h - runs tile code on one thread.
//
// Whole tiles read packed columns in place and write packed results in place. Other columns and results, and the rows
// after the last whole tile, go through arrays of the worker. A tile with a refused row is evaluated again, row by row.
#pragma once

#include "MTParserLib/run/MTBulkWorker.h"
#include "MTParserLib/run/MTRowProgram.h"
#include "MTParserLib/tiles/MTTileProgram.h"

#include <vector>

/// What calls of items need in addition to kernels.
struct MTTileWorkerContext : MTTileContext
{
    VALTYPE* args;  ///< For the arguments of any call, and its result.
};

class MTTileWorker final : public MTBulkWorker
{
public:
    /// @param tileProgram  must outlive this object, as must the program that it was built from
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

    /// Memory aligned to a cache line.
    class Memory
    {
    public:
        /// Allocates memory, and discards the old content.
        void reserve(std::size_t count);
        double* allocate(std::size_t count) noexcept;

    private:
        std::vector<double> numbers;
        std::size_t nbAllocated = 0;
    };

    /// Number of rows of a column, or of the results, that are copied at a time.
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
    Memory buffers;  // including uniform places
    Memory copies;   // of columns and results
    std::vector<double*> places;
    std::vector<std::size_t> distances;  // numbers from one tile to the next, for columns and results
    double* ownResults = nullptr;
    bool resultsFit = false;  // whether the results accept the value's kind
    std::vector<VALTYPE> args;
    MTTileWorkerContext context{};
};
