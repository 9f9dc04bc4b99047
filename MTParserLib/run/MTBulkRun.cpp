// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTBulkRun.cpp - divides the rows into portions; each thread claims the next portion when it is free.
#include "MTParserLib/run/MTBulkRun.h"

#include "MTParserLib/run/MTBulkPlan.h"
#include "MTParserLib/tiles/MTTileSets.h"
#include "platform/FloatingPointGuard.h"
#include "platform/Threads.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <memory>
#include <vector>

namespace {

constexpr std::uint32_t mostThreads = 256;

/// Whether the order in which rows are evaluated, and their threads, cannot be observed.
bool isOrderHidden(const MTParserProgram& program)
{
    return std::all_of(program.steps.begin(), program.steps.end(), [](const MTProgramStep& step) {
        return step.nbArgs == 0 ? step.isCopy() : step.item->isConstant() && !isHostItem(*step.kernels);
    });
}

/// State shared by all threads.
class Rows
{
public:
    /// @param lead  number of first rows that form a block of their own
    Rows(std::size_t rows, std::size_t lead, std::uint32_t* rowStatus) noexcept
        : nbRows(rows), nbLead(lead), status(rowStatus)
    {}

    /// Evaluates portions until none is left.
    MTBulkTally evaluatePortions(MTBulkWorker& worker)
    {
        const platform::FloatingPointGuard guard;
        MTBulkTally tally;
        Block block;
        block.fill(mathexpr::RowStatus::Done);
        for (;;)
        {
            const std::size_t portion = next.fetch_add(portionRows, std::memory_order_relaxed);
            std::size_t first = portion == 0 ? 0 : portion + nbLead;
            if (first >= nbRows)
            {
                return tally;
            }
            const std::size_t end = std::min(portion + nbLead + portionRows, nbRows);
            while (first < end)
            {
                const std::size_t count = first < nbLead ? nbLead : std::min(MTBulkWorker::blockRows, end - first);
                evaluateBlock(worker, first, count, block, tally);
                first += count;
            }
        }
    }

private:
    using Block = std::array<std::uint32_t, MTBulkWorker::blockRows>;

    /// @param block  all Done on entry and on return
    void evaluateBlock(MTBulkWorker& worker, std::size_t first, std::size_t count, Block& block, MTBulkTally& tally)
    {
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
        if (!allDone)
        {
            block.fill(mathexpr::RowStatus::Done);
        }
    }

    const std::size_t nbRows;
    const std::size_t nbLead;
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

/// The program's cached plan if it fits, otherwise a new one that replaces it.
MTBulkPlan& planOf(MTParserProgram& program, platform::ArrayView<const MTBoundColumn> columns, const MTTileSet* set)
{
    std::unique_ptr<MTBulkPlan>& kept = program.bulkPlan;
    if (kept == nullptr || !kept->suits(columns, set))
    {
        kept.reset();
        kept = std::make_unique<MTBulkPlan>(program, columns, set);
    }
    return *kept;
}

}

const MTTileSet& widestTileSet() noexcept
{
    const auto sets = availableTileSets();
    return *sets[sets.size() - 1];
}

MTBulkTally runInBulk(MTParserProgram& program, platform::ArrayView<const MTBoundColumn> columns, std::size_t nbRows,
                      const mathexpr::BulkResults& results, std::uint32_t nbThreads, const MTTileSet* set)
{
    MTBulkPlan& plan = planOf(program, columns, set);
    plan.getWorker().bind(columns, results);
    std::size_t nbOthers = 0;
    if (nbThreads > 1 && nbRows > portionRows && isOrderHidden(program))
    {
        nbOthers = std::min<std::size_t>({nbThreads, mostThreads, portionsOf(nbRows)}) - 1;
    }
    // A separate block pays off only with many rows.
    const std::size_t nbLead = nbRows > MTBulkWorker::blockRows ? plan.getWorker().getLeadRows() : 0;
    Rows rows(nbRows, nbLead, results.status);
    if (nbOthers == 0)
    {
        return rows.evaluatePortions(plan.getWorker());
    }

    // All memory is allocated before the first row is evaluated.
    std::vector<std::unique_ptr<MTBulkWorker>> others(nbOthers);
    for (std::unique_ptr<MTBulkWorker>& other : others)
    {
        other = plan.makeWorker(columns);
        other->bind(columns, results);
    }
    std::vector<MTBulkTally> tallies(1 + nbOthers);
    platform::runOnThreads(tallies.size(), [&](std::size_t worker) noexcept {
        tallies[worker] = rows.evaluatePortions(worker == 0 ? plan.getWorker() : *others[worker - 1]);
    });
    MTBulkTally all;
    for (const MTBulkTally& tally : tallies)
    {
        addTo(all, tally);
    }
    return all;
}
