// MTBulkRun.h - evaluates a program for many rows: picks the way, shares the rows out among threads, counts what
// failed.
#pragma once

#include "MTParserLib/MTBulkArrays.h"
#include "MTParserLib/MTParserProgram.h"

#include <cstddef>
#include <cstdint>
#include <span>

struct MTBulkTally
{
    std::size_t nbFailed = 0;
    std::size_t firstFailed = static_cast<std::size_t>(-1);  ///< Of these rows; beyond all rows where there is none.
    std::uint32_t firstStatus = 0;                           ///< Its RowStatus.
};

/// @param program    complete; has to stay as it is meanwhile
/// @param columns    of variables that the program reads; what they and the results hold has been checked
/// @param nbThreads  the most that may compute, the calling one among them
/// @throws std::bad_alloc, before any row is evaluated; and what an item of the host throws
MTBulkTally runInBulk(const MTParserProgram& program, std::span<const MTBoundColumn> columns, std::size_t nbRows,
                      const BulkResults& results, std::uint32_t nbThreads);
