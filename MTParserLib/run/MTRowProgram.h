// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTRowProgram.h - a copy of a program that evaluates rows one after the other.
//
// It runs what tile code cannot: items of the host's, random numbers, and tiles with a row that is refused. The slots
// are set before each row to what they are in a program that has just been compiled, so that no row shows in the next.
#pragma once

#include "MTParserLib/program/MTProgramCopy.h"
#include "MTParserLib/run/MTBulkArrays.h"
#include "MTParserLib/run/MTBulkWorker.h"
#include "platform/ArrayView.h"

#include <vector>

class MTRowProgram final : public MTBulkWorker
{
public:
    /// @param program  complete; has to stay as it is for the life of this object
    MTRowProgram(const MTParserProgram& program, platform::ArrayView<const MTBoundColumn> columns);

    void bind(platform::ArrayView<const MTBoundColumn> bound, const mathexpr::BulkResults& results) override;

    /// @throws what an item of the host throws, but for the exception with code 15
    bool evaluate(std::size_t firstRow, std::size_t nbRows, std::uint32_t* status) override;

private:
    struct Column
    {
        VALTYPE* variable;  ///< Null where no step reads it.
        mathexpr::BulkColumn source;
    };

    std::uint32_t evaluateRow(std::size_t row);

    MTProgramCopy copy;
    std::vector<Column> columns;
    MTBulkWriter writer;
};
