// MTBulkWorker.h - what evaluates rows on one thread. There are two kinds: blocks (MTBlockProgram.h) and single rows
// (MTRowProgram.h).
#pragma once

#include "MTParserLib/vocabulary/Refusal.h"
#include "mathexpr/BulkArrays.h"

#include <cstddef>
#include <cstdint>

/// The status of a row that an item has just refused on this thread.
inline std::uint32_t refusalStatus() noexcept
{
    const std::uint32_t reason = takeRefusal();
    return reason != 0 ? reason : static_cast<std::uint32_t>(RowStatus::ArgumentsRefused);
}

class MTBulkWorker
{
public:
    virtual ~MTBulkWorker() = default;

    /// Evaluates some rows, at most blockRows, and writes their results. Nothing is allocated.
    /// @param status  a RowStatus for each of these rows, all 0 on entry
    /// @return whether all rows have a value
    virtual bool evaluate(std::size_t firstRow, std::size_t nbRows, std::uint32_t* status) = 0;

    /// Few enough that the numbers of several operands stay in the processor's nearest cache, and so many that the
    /// work for a block itself does not show.
    static constexpr std::size_t blockRows = 512;
};
