// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTBulkRun.h - evaluates a program for many rows: picks the way, shares the rows out among threads, counts what
// failed.
#pragma once

#include "MTParserLib/program/MTParserProgram.h"
#include "MTParserLib/run/MTBulkArrays.h"
#include "MTParserLib/run/MTBulkWorker.h"
#include "MTParserLib/tiles/MTTileCode.h"
#include "platform/ArrayView.h"

#include <cstddef>
#include <cstdint>
#include <limits>

/// How many rows a thread takes at a time: so many that taking them does not show, and no two threads write to the same
/// place of the cache.
inline constexpr std::size_t portionRows = 16 * MTBulkWorker::blockRows;

const MTTileSet& widestTileSet() noexcept;

struct MTBulkTally
{
    std::size_t nbFailed = 0;
    /// Of these rows; beyond all rows where there is none.
    std::size_t firstFailed = std::numeric_limits<std::size_t>::max();
    std::uint32_t firstStatus = 0;  ///< Its RowStatus.
};

/// @param program    complete; has to stay as it is meanwhile, and keeps what the next call with such columns can use
/// @param columns    of variables that the program reads; what they and the results hold has been checked
/// @param nbThreads  the most that may compute, the calling one among them
/// @param set        whose kernels compute tiles; null: every row is computed by itself. Tests choose; the processor's
///                   widest is the fastest.
/// @throws std::bad_alloc, before any row is evaluated; and what an item of the host throws
MTBulkTally runInBulk(MTParserProgram& program, platform::ArrayView<const MTBoundColumn> columns, std::size_t nbRows,
                      const mathexpr::BulkResults& results, std::uint32_t nbThreads,
                      const MTTileSet* set = &widestTileSet());
