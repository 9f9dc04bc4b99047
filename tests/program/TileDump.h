// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TileDump.h - runs a program in tiles, and dumps its tile code.
//
//     * numbers                     one formula, and the kind of its operands
//     *, + numbers                  two formulas in one step; the second one reads the value of the first
//     end                           a step without a formula
//
// Operands: "number" and "point" are read from memory, "value" is the result of the previous step, "uniform" is the
// same in all rows.
#pragma once

#include "MTParserLib/MTParserRegistrar.h"
#include "MTParserLib/program/MTParserProgram.h"
#include "MTParserLib/run/MTBulkArrays.h"
#include "platform/ArrayView.h"

#include <cstddef>
#include <string>

/// The outcome of a run in tiles.
struct TileRun
{
    std::string steps;        // empty if the program runs row by row
    std::size_t nbTiles = 0;  // computed
};

TileRun runInTiles(MTParserProgram& program, platform::ArrayView<const MTBoundColumn> columns,
                   const MTParserRegistrar& registrar, std::size_t nbRows);
