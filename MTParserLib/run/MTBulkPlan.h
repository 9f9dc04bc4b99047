// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTBulkPlan.h - what bulk evaluation makes of a program before the first row, kept with the program for the next call.
//
//     x*r+1, r=2    column x            plan: tile code for x, with 2 in a place; a worker with its memory
//                   column x again      the same plan, bound to other arrays
//                   r=3, or column p    another plan
//
// A plan holds no array of the host's: a worker is bound to those of each call.
#pragma once

#include "MTParserLib/run/MTBulkWorker.h"
#include "MTParserLib/tiles/MTTileCode.h"
#include "MTParserLib/tiles/MTTileProgram.h"

#include <memory>
#include <vector>

class MTBulkPlan
{
public:
    /// @param program  complete; has to stay as it is for the life of this object
    /// @param columns  of variables that the program reads
    /// @param set      whose kernels compute tiles; null: every row is computed by itself
    MTBulkPlan(const MTParserProgram& program, platform::ArrayView<const MTBoundColumn> columns, const MTTileSet* set);

    /// Whether the plan is one for such columns and the present values of all other variables.
    bool suits(platform::ArrayView<const MTBoundColumn> columns, const MTTileSet* set) const noexcept;

    /// The worker of the thread that calls. It is to be bound.
    MTBulkWorker& getWorker() noexcept { return *worker; }
    /// A worker for another thread.
    std::unique_ptr<MTBulkWorker> makeWorker(platform::ArrayView<const MTBoundColumn> columns) const;

private:
    struct Column
    {
        const VALTYPE* variable;
        mathexpr::BulkKind kind;
    };

    struct Uniform
    {
        const VALTYPE* variable;
        VALTYPE value;
    };

    const MTParserProgram& program;
    const MTTileSet* const set;
    std::vector<Column> columns;
    std::vector<Uniform> uniforms;  // variables without a column
    std::unique_ptr<const MTTileProgram> tiles;
    std::unique_ptr<MTBulkWorker> worker;
};
