// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTTileProgram.h - builds the tile code of a program (see MTTileCode.h), which all threads share.
//
//     sqrt(x)*[y,1,0]   x, y columns     0  sqrt   x               -> value
//                                        1  push   value           -> buffer 0
//                                        2  point  y, 1, 0         -> buffer 1
//                                        3  *      buffer 0, 1     -> buffer 2
//                                        4  end    buffer 2        -> result
//
// Kinds are known before the first row, because a column is of numbers or of points and no item turns one into the
// other by its value: each step is evaluated once, with 1 for whatever differs from row to row, since no item refuses
// 1. What is the same in all rows is computed in passing.
//
// A step runs by the kernel of its formula, or else by a function that computes its item for each row of the tile.
#pragma once

#include "MTParserLib/program/MTParserProgram.h"
#include "MTParserLib/run/MTBulkArrays.h"
#include "MTParserLib/tiles/MTTileCode.h"
#include "platform/ArrayView.h"

#include <cstdint>
#include <memory>
#include <vector>

/// An item that is called with records, row by row.
struct MTTileRecordCall
{
    struct Operand
    {
        VALTYPE record;  ///< Its value, or its head and the kind of what stands in the place.
        bool uniform;
        std::uint32_t place;
    };

    const MTItemKernels* item;
    std::vector<Operand> operands;
};

class MTTileProgram
{
public:
    /// @param program  complete, with a root that is not constant; has to stay as it is for the life of this object
    /// @param set      for whose kernels
    /// @return null where the program has to run row by row: where the host may tell, draw random numbers in between,
    ///         or where no row has a value
    static std::unique_ptr<const MTTileProgram>
    build(const MTParserProgram& program, platform::ArrayView<const MTBoundColumn> columns, const MTTileSet& set);

private:
    friend class MTTileWorker;
    class Builder;

    struct Place
    {
        std::size_t width;  // numbers for each row
        bool uniform;
        VALTYPE value;  // where it is uniform
    };

    explicit MTTileProgram(const MTTileSet& tileSet) : set(tileSet) {}

    const MTTileSet& set;
    std::vector<MTTileStep> steps;
    std::vector<std::unique_ptr<MTTileRecordCall>> recordCalls;
    std::vector<Place> places;  // the columns, the result, and then all others
    std::size_t mostArgs = 0;   // of the calls
    VALTYPE rootHead;           // all of it but the coordinates
};
