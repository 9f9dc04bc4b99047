// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTRowProgram.h - a copy of a program that evaluates row by row.
//
// It runs what tile code cannot: items of the host, random numbers, and tiles with a refused row. Before each row the
// slots are reset to their state after compilation, so that rows are independent.
#pragma once

#include "MTParserLib/program/MTProgramCopy.h"
#include "MTParserLib/run/MTBulkArrays.h"
#include "MTParserLib/run/MTBulkWorker.h"
#include "platform/ArrayView.h"

#include <vector>

class MTRowProgram final : public MTBulkWorker
{
public:
    /// @param program  complete; must not change during the life of this object
    MTRowProgram(const MTParserProgram& program, platform::ArrayView<const MTBoundColumn> columns);

    void bind(platform::ArrayView<const MTBoundColumn> bound, const mathexpr::BulkResults& results) override;

    /// @throws what an item of the host throws, except the exception with code 15
    bool evaluate(std::size_t firstRow, std::size_t nbRows, std::uint32_t* status) override;

private:
    struct Column
    {
        VALTYPE* variable;  ///< Null if no step reads it.
        mathexpr::BulkColumn source;
    };

    std::uint32_t evaluateRow(std::size_t row);

    MTProgramCopy copy;
    std::vector<Column> columns;
    MTBulkWriter writer;
};
