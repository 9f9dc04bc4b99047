// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTBulkWorker.h - evaluates rows on one thread, either in tiles (MTTileWorker.h) or row by row (MTRowProgram.h).
#pragma once

#include "MTParserLib/MTMessage.h"
#include "MTParserLib/run/MTBulkArrays.h"
#include "mathexpr/BulkArrays.h"
#include "platform/ArrayView.h"

#include <cstddef>
#include <cstdint>

// The status of a refused row is the message of the refusal.
static_assert(std::uint32_t{mathexpr::RowStatus::Done} == Message::None);
static_assert(std::uint32_t{mathexpr::RowStatus::ArgumentsRefused} == Message::InvalidExpression);

class MTBulkWorker
{
public:
    virtual ~MTBulkWorker() = default;

    /// Attaches the arrays of a call. Allocates all memory that the rows need.
    /// @param columns  of the same variables and kinds, in the same order, as those that the worker was created for
    virtual void bind(platform::ArrayView<const MTBoundColumn> columns, const mathexpr::BulkResults& results) = 0;

    /// Number of first rows to evaluate separately: unaligned arrays are read and written faster if the tiles start at a
    /// vector boundary.
    virtual std::size_t getLeadRows() const noexcept { return 0; }

    /// Evaluates at most blockRows rows and writes their results. Allocates nothing.
    /// @param status  receives a RowStatus per row; all 0 on entry
    /// @return whether all rows have a value
    virtual bool evaluate(std::size_t firstRow, std::size_t nbRows, std::uint32_t* status) = 0;

    /// Several operands fit in L1, and the cost per block is negligible.
    static constexpr std::size_t blockRows = 512;
};
