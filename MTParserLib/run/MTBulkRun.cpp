// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTBulkRun.cpp - divides the rows into portions, and the portions into shares, one for each thread.
#include "MTParserLib/run/MTBulkRun.h"

#include "MTParserLib/run/MTBulkPlan.h"
#include "MTParserLib/tiles/MTTileSets.h"
#include "platform/FloatingPointGuard.h"
#include "platform/Threads.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <memory>
#include <optional>
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

void addTo(MTBulkTally& sum, const MTBulkTally& part) noexcept
{
    if (part.firstFailed < sum.firstFailed)
    {
        sum.firstFailed = part.firstFailed;
        sum.firstStatus = part.firstStatus;
    }
    sum.nbFailed += part.nbFailed;
}

/// The portions of one thread, which takes them from the front. Threads that have finished their own shares take from
/// the back what is left.
///
///     share of thread 2: portions 4 to 7       thread 2 takes 4, 5; thread 1 takes 7; thread 2 takes 6
///
/// So repeated calls evaluate most rows on the same processors, whose caches may still hold them.
class Share
{
public:
    void set(std::size_t first, std::size_t end) noexcept
    {
        front = first;
        back = end;
        nbPortions = end - first;
    }

    /// @param isOwner  whether the thread takes from its own share
    /// @return the index of a portion, if one is left
    std::optional<std::size_t> take(bool isOwner) noexcept
    {
        // No more portions are taken from both ends than there are, so the ends do not meet.
        if (nbTaken.fetch_add(1, std::memory_order_relaxed) >= nbPortions)
        {
            return std::nullopt;
        }
        return isOwner ? front++ : back.fetch_sub(1, std::memory_order_relaxed) - 1;
    }

private:
    std::size_t front = 0;
    std::atomic<std::size_t> back = 0;
    std::size_t nbPortions = 0;
    std::atomic<std::size_t> nbTaken = 0;
    [[maybe_unused]] std::array<std::uint64_t, 8> apart{};  // keeps the next share in another cache line
};

std::size_t portionsOf(std::size_t nbRows) noexcept
{
    return nbRows / portionRows + (nbRows % portionRows != 0 ? 1 : 0);
}

/// State shared by all threads.
class Rows
{
public:
    /// @param lead  number of first rows that form a block of their own, in the first portion
    Rows(std::size_t rows, std::size_t lead, platform::ArrayView<Share> all, std::uint32_t* rowStatus) noexcept
        : nbRows(rows), nbLead(lead), shares(all), status(rowStatus)
    {
        const std::size_t nbPortions = portionsOf(nbRows - nbLead);
        for (std::size_t j = 0; j < shares.size(); ++j)
        {
            shares[j].set(nbPortions * j / shares.size(), nbPortions * (j + 1) / shares.size());
        }
    }

    /// Evaluates the portions of a thread's share, then those that are left in the others.
    MTBulkTally evaluateShares(std::size_t thread, MTBulkWorker& worker)
    {
        const platform::FloatingPointGuard guard;
        MTBulkTally tally;
        Block block;
        block.fill(mathexpr::RowStatus::Done);
        for (std::size_t j = 0; j < shares.size(); ++j)
        {
            Share& share = shares[(thread + j) % shares.size()];
            while (const std::optional<std::size_t> portion = share.take(j == 0))
            {
                evaluatePortion(worker, *portion, block, tally);
            }
        }
        return tally;
    }

private:
    using Block = std::array<std::uint32_t, MTBulkWorker::blockRows>;

    /// @param block  all Done on entry and on return
    void evaluatePortion(MTBulkWorker& worker, std::size_t portion, Block& block, MTBulkTally& tally)
    {
        const std::size_t end = std::min(nbLead + (portion + 1) * portionRows, nbRows);
        for (std::size_t first = portion == 0 ? 0 : nbLead + portion * portionRows; first < end;)
        {
            const std::size_t count = first < nbLead ? nbLead : std::min(MTBulkWorker::blockRows, end - first);
            evaluateBlock(worker, first, count, block, tally);
            first += count;
        }
    }

    /// @param block  all Done on entry and on return
    void evaluateBlock(MTBulkWorker& worker, std::size_t first, std::size_t count, Block& block, MTBulkTally& tally)
    {
        const bool allDone = worker.evaluate(first, count, block.data());
        for (std::size_t j = 0; !allDone && j < count; ++j)
        {
            if (block[j] != mathexpr::RowStatus::Done)
            {
                addTo(tally, {1, first + j, block[j]});
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
    const platform::ArrayView<Share> shares;
    std::uint32_t* const status;
};

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
    if (nbOthers == 0)
    {
        Share all;
        return Rows(nbRows, nbLead, {&all, 1}, results.status).evaluateShares(0, plan.getWorker());
    }

    // All memory is allocated before the first row is evaluated.
    std::vector<std::unique_ptr<MTBulkWorker>> others(nbOthers);
    for (std::unique_ptr<MTBulkWorker>& other : others)
    {
        other = plan.makeWorker(columns);
        other->bind(columns, results);
    }
    std::vector<MTBulkTally> tallies(1 + nbOthers);
    std::vector<Share> shares(tallies.size());
    Rows rows(nbRows, nbLead, {shares.data(), shares.size()}, results.status);
    platform::runOnThreads(tallies.size(), [&](std::size_t thread) noexcept {
        tallies[thread] = rows.evaluateShares(thread, thread == 0 ? plan.getWorker() : *others[thread - 1]);
    });
    MTBulkTally all;
    for (const MTBulkTally& tally : tallies)
    {
        addTo(all, tally);
    }
    return all;
}
