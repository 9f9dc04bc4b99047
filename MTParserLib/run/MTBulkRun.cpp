// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTBulkRun.cpp - rows are shared out in portions; whichever thread is free takes the next one.
#include "MTParserLib/run/MTBulkRun.h"

#include "MTParserLib/run/MTRowProgram.h"
#include "MTParserLib/tiles/MTTileSets.h"
#include "MTParserLib/tiles/MTTileWorker.h"
#include "platform/FloatingPointGuard.h"
#include "platform/Threads.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <memory>
#include <vector>

namespace {

constexpr std::uint32_t mostThreads = 256;

/// The value of a program that needs not be run.
class ConstantWorker final : public MTBulkWorker
{
public:
    ConstantWorker(const VALTYPE& constant, const mathexpr::BulkResults& results) noexcept
        : value(constant), writer(results)
    {}

    bool evaluate(std::size_t firstRow, std::size_t nbRows, std::uint32_t* status) override
    {
        bool allDone = true;
        for (std::size_t j = 0; j < nbRows; ++j)
        {
            if (!writer.write(firstRow + j, value))
            {
                status[j] = mathexpr::RowStatus::OtherKind;
                writer.writeFailure(firstRow + j);
                allDone = false;
            }
        }
        return allDone;
    }

private:
    VALTYPE value;
    MTBulkWriter writer;
};

/// Whether nobody can tell in which order rows are evaluated, and on which thread.
bool isOrderHidden(const MTParserProgram& program)
{
    return std::all_of(program.steps.begin(), program.steps.end(), [](const MTProgramStep& step) {
        return step.nbArgs == 0 ? step.first != nullptr : step.item->isConstant() && !isHostItem(*step.kernels);
    });
}

/// What all threads share.
class Rows
{
public:
    Rows(std::size_t rows, std::uint32_t* rowStatus) noexcept : nbRows(rows), status(rowStatus) {}

    /// Evaluates portions until none is left.
    MTBulkTally evaluatePortions(MTBulkWorker& worker)
    {
        const platform::FloatingPointGuard guard;
        MTBulkTally tally;
        for (;;)
        {
            const std::size_t first = next.fetch_add(portionRows, std::memory_order_relaxed);
            if (first >= nbRows)
            {
                return tally;
            }
            const std::size_t end = first + std::min(portionRows, nbRows - first);
            for (std::size_t row = first; row < end; row += MTBulkWorker::blockRows)
            {
                evaluateBlock(worker, row, std::min(MTBulkWorker::blockRows, end - row), tally);
            }
        }
    }

private:
    void evaluateBlock(MTBulkWorker& worker, std::size_t first, std::size_t count, MTBulkTally& tally)
    {
        std::array<std::uint32_t, MTBulkWorker::blockRows> block;
        std::fill_n(block.begin(), count, mathexpr::RowStatus::Done);
        const bool allDone = worker.evaluate(first, count, block.data());
        for (std::size_t j = 0; !allDone && j < count; ++j)
        {
            if (block[j] != mathexpr::RowStatus::Done && tally.nbFailed++ == 0)
            {
                tally.firstFailed = first + j;
                tally.firstStatus = block[j];
            }
        }
        if (status != nullptr)
        {
            std::copy_n(block.begin(), count, status + first);
        }
    }

    const std::size_t nbRows;
    std::uint32_t* const status;
    std::atomic<std::size_t> next = 0;
};

void addTo(MTBulkTally& sum, const MTBulkTally& part) noexcept
{
    if (part.firstFailed < sum.firstFailed)
    {
        sum.firstFailed = part.firstFailed;
        sum.firstStatus = part.firstStatus;
    }
    sum.nbFailed += part.nbFailed;
}

std::size_t portionsOf(std::size_t nbRows) noexcept
{
    return nbRows / portionRows + (nbRows % portionRows != 0 ? 1 : 0);
}

}

const MTTileSet& widestTileSet() noexcept
{
    const auto sets = availableTileSets();
    return *sets[sets.size() - 1];
}

MTBulkTally runInBulk(const MTParserProgram& program, platform::ArrayView<const MTBoundColumn> columns,
                      std::size_t nbRows, const mathexpr::BulkResults& results, std::uint32_t nbThreads,
                      const MTTileSet* set)
{
    const bool isConstant = program.isConstant();
    const auto tiles =
        isConstant || set == nullptr ? nullptr : MTTileProgram::build(program, columns, results.kind, *set);
    const auto makeWorker = [&]() -> std::unique_ptr<MTBulkWorker> {
        if (isConstant)
        {
            return std::make_unique<ConstantWorker>(*program.root, results);
        }
        if (tiles)
        {
            return std::make_unique<MTTileWorker>(*tiles, program, columns, results);
        }
        return std::make_unique<MTRowProgram>(program, columns, results);
    };

    std::size_t nbWorkers = 1;
    if (nbThreads > 1 && nbRows > portionRows && isOrderHidden(program))
    {
        nbWorkers = std::min<std::size_t>({nbThreads, mostThreads, portionsOf(nbRows)});
    }
    Rows rows(nbRows, results.status);
    if (nbWorkers == 1)
    {
        return rows.evaluatePortions(*makeWorker());
    }

    // All memory is taken before a row is evaluated.
    std::vector<std::unique_ptr<MTBulkWorker>> workers(nbWorkers);
    std::generate(workers.begin(), workers.end(), makeWorker);
    std::vector<MTBulkTally> tallies(nbWorkers);
    platform::runOnThreads(
        nbWorkers, [&](std::size_t worker) noexcept { tallies[worker] = rows.evaluatePortions(*workers[worker]); });
    MTBulkTally all;
    for (const MTBulkTally& tally : tallies)
    {
        addTo(all, tally);
    }
    return all;
}
