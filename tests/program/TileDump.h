// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TileDump.h - runs a program in tiles, and dumps its tile code.
//
//     * numbers                     a formula, and its operands: "number" and "point" are in places, "value" is that of
//     *, + numbers                  the step before, "uniform" is the same in all rows; two formulas in one step, the
//     end                           second with the value; a step without a formula
#pragma once

#include "MTParserLib/MTParserRegistrar.h"
#include "MTParserLib/program/MTParserProgram.h"
#include "MTParserLib/run/MTBulkArrays.h"
#include "platform/ArrayView.h"

#include <cstddef>
#include <string>

/// What a run in tiles has done.
struct TileRun
{
    std::string steps;        // empty if the program runs row by row
    std::size_t nbTiles = 0;  // computed
};

TileRun runInTiles(MTParserProgram& program, platform::ArrayView<const MTBoundColumn> columns,
                   const MTParserRegistrar& registrar, std::size_t nbRows);
