// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTBulkPlan.h - preparations of a bulk evaluation, cached with the program for the next call.
//
//     x*r+1, r=2    column x            plan: tile code for x, with the uniform 2; a worker with its memory
//                   column x again      the same plan, bound to other arrays
//                   r=3, or column p    another plan
//
// A plan refers to no array of the host: every call binds the worker to its arrays.
#pragma once

#include "MTParserLib/run/MTBulkWorker.h"
#include "MTParserLib/tiles/MTTileCode.h"
#include "MTParserLib/tiles/MTTileProgram.h"

#include <memory>
#include <vector>

class MTBulkPlan
{
public:
    /// @param program  complete; must not change during the life of this object
    /// @param columns  of variables that the program reads
    /// @param set      the instruction set for tiles; null: evaluate row by row
    MTBulkPlan(const MTParserProgram& program, platform::ArrayView<const MTBoundColumn> columns, const MTTileSet* set);

    /// Whether the plan fits these columns and the present values of all other variables.
    bool suits(platform::ArrayView<const MTBoundColumn> columns, const MTTileSet* set) const noexcept;

    /// The calling thread's worker; bind it before use.
    MTBulkWorker& getWorker() noexcept { return *worker; }
    /// Creates a worker for another thread.
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
