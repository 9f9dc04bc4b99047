// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTBulkRun.h - evaluates a program for many rows: chooses the runner, distributes the rows over threads, counts
// failures.
#pragma once

#include "MTParserLib/program/MTParserProgram.h"
#include "MTParserLib/run/MTBulkArrays.h"
#include "MTParserLib/run/MTBulkWorker.h"
#include "MTParserLib/tiles/MTTileCode.h"
#include "platform/ArrayView.h"

#include <cstddef>
#include <cstdint>
#include <limits>

/// Rows per portion: large enough to hide the cost of taking a portion, and to keep threads off each other's cache
/// lines.
inline constexpr std::size_t portionRows = 16 * MTBulkWorker::blockRows;

const MTTileSet& widestTileSet() noexcept;

struct MTBulkTally
{
    std::size_t nbFailed = 0;
    /// Index of the first of them; the maximum if there is none.
    std::size_t firstFailed = std::numeric_limits<std::size_t>::max();
    std::uint32_t firstStatus = 0;  ///< Its RowStatus.
};

/// @param program    complete; must not change during the call; caches what the next call with such columns can use
/// @param columns    of variables that the program reads; they and the results have been checked
/// @param nbThreads  upper bound on the threads, including the calling one
/// @param set        the instruction set for tiles; null: evaluate row by row. Tests choose one; otherwise the
///                   processor's widest is the fastest.
/// @throws std::bad_alloc, before any row is evaluated; and what an item of the host throws
MTBulkTally runInBulk(MTParserProgram& program, platform::ArrayView<const MTBoundColumn> columns, std::size_t nbRows,
                      const mathexpr::BulkResults& results, std::uint32_t nbThreads,
                      const MTTileSet* set = &widestTileSet());
