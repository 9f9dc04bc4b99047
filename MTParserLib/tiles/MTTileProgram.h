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
// Kinds are known before the first row: a column holds either numbers or points, and no item changes kind depending on
// a value. To determine them, each step is evaluated once with 1 for everything that differs between rows; no item
// refuses 1. This also computes whatever is the same in all rows.
//
// A step runs by its formula's vector kernel, otherwise by a function that computes its item for each row of the tile.
#pragma once

#include "MTParserLib/program/MTParserProgram.h"
#include "MTParserLib/run/MTBulkArrays.h"
#include "MTParserLib/tiles/MTTileCode.h"
#include "platform/ArrayView.h"

#include <cstdint>
#include <memory>
#include <vector>

/// An item that is called row by row, with records.
struct MTTileRecordCall
{
    struct Operand
    {
        VALTYPE record;  ///< Its value, or its head, and the kind of the place's content.
        bool uniform;
        std::uint32_t place;
    };

    const MTItemKernels* item;
    std::vector<Operand> operands;
};

class MTTileProgram
{
public:
    /// @param program  complete, with a root that is not constant; must not change during the life of this object
    /// @param set      whose kernels to use
    /// @return null if the program must run row by row: the host could observe the order, random numbers are drawn, or
    ///         no row has a value
    static std::unique_ptr<const MTTileProgram>
    build(const MTParserProgram& program, platform::ArrayView<const MTBoundColumn> columns, const MTTileSet& set);

private:
    friend class MTTileWorker;
    class Builder;

    struct Place
    {
        std::size_t width;  // numbers per row
        bool uniform;
        VALTYPE value;  // if it is uniform
    };

    explicit MTTileProgram(const MTTileSet& tileSet) : set(tileSet) {}

    const MTTileSet& set;
    std::vector<MTTileStep> steps;
    std::vector<std::unique_ptr<MTTileRecordCall>> recordCalls;
    std::vector<Place> places;  // columns, then the result, then all others
    std::size_t mostArgs = 0;   // over all calls
    VALTYPE rootHead;           // the root's record without coordinates
};
