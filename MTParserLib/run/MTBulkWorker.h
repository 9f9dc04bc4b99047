// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTBulkWorker.h - what evaluates rows on one thread. There are two kinds: tiles (MTTileWorker.h) and single rows
// (MTRowProgram.h).
#pragma once

#include "MTParserLib/MTMessage.h"
#include "MTParserLib/run/MTBulkArrays.h"
#include "mathexpr/BulkArrays.h"
#include "platform/ArrayView.h"

#include <cstddef>
#include <cstdint>

// A row that is refused has the message of the refusal as its status.
static_assert(std::uint32_t{mathexpr::RowStatus::Done} == Message::None);
static_assert(std::uint32_t{mathexpr::RowStatus::ArgumentsRefused} == Message::InvalidExpression);

class MTBulkWorker
{
public:
    virtual ~MTBulkWorker() = default;

    /// Points at the arrays of a call, before its rows are evaluated. All memory that rows need is taken here.
    /// @param columns  of the same variables and kinds, in the same order, as those that the worker was made for
    virtual void bind(platform::ArrayView<const MTBoundColumn> columns, const mathexpr::BulkResults& results) = 0;

    /// How many of the first rows are best evaluated by themselves: arrays that begin in the middle of a vector are read
    /// and written faster from there on.
    virtual std::size_t getLeadRows() const noexcept { return 0; }

    /// Evaluates some rows, at most blockRows, and writes their results. Nothing is allocated.
    /// @param status  a RowStatus for each of these rows, all 0 on entry
    /// @return whether all rows have a value
    virtual bool evaluate(std::size_t firstRow, std::size_t nbRows, std::uint32_t* status) = 0;

    /// Few enough that the numbers of several operands stay in the processor's nearest cache, and so many that the
    /// work for a block itself does not show.
    static constexpr std::size_t blockRows = 512;
};
