// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTRowProgram.cpp - copies a program by giving each place that its steps name a place of this object's own.
#include "MTParserLib/run/MTRowProgram.h"

#include "mathexpr/SMTParsingExcepData.h"

#include <algorithm>
#include <functional>
#include <new>

/// Finds for every place that the steps of a program name the one that stands for it. Places that stand side by side
/// still do so.
class MTRowProgram::Relocation
{
public:
    explicit Relocation(const MTParserProgram& program)
    {
        for (const MTProgramStep& step : program.steps)
        {
            for (std::uint32_t j = 0; j < step.nbArgs; ++j)
            {
                places.push_back(&step.operand(j));
            }
            if (isCopy(step))
            {
                places.push_back(step.first);
            }
            places.push_back(step.destination);
        }
        places.push_back(program.root);
        std::sort(places.begin(), places.end(), std::less<>());
        places.erase(std::unique(places.begin(), places.end()), places.end());
    }

    /// Whether a step copies a variable, which is its first operand then.
    static bool isCopy(const MTProgramStep& step) noexcept { return step.nbArgs == 0 && step.first != nullptr; }

    const std::vector<const VALTYPE*>& all() const noexcept { return places; }

    bool has(const VALTYPE* place) const noexcept
    {
        return std::binary_search(places.begin(), places.end(), place, std::less<>());
    }

    std::size_t indexOf(const VALTYPE* place) const noexcept
    {
        const auto found = std::lower_bound(places.begin(), places.end(), place, std::less<>());
        return static_cast<std::size_t>(found - places.begin());
    }

private:
    std::vector<const VALTYPE*> places;
};

MTRowProgram::MTRowProgram(const MTParserProgram& program, platform::ArrayView<const MTBoundColumn> bound,
                           const mathexpr::BulkResults& results)
    : steps(program.steps), writer(results)
{
    const Relocation relocation(program);
    for (const VALTYPE* place : relocation.all())
    {
        fresh.push_back(*place);
    }
    slots = fresh;

    const auto relocated = [&](const VALTYPE* place) { return &slots[relocation.indexOf(place)]; };
    for (MTProgramStep& step : steps)
    {
        fresh[relocation.indexOf(step.destination)] = VALTYPE{};
        step.destination = relocated(step.destination);
        if (step.nbArgs > 0 || Relocation::isCopy(step))
        {
            step.first = relocated(step.first);
        }
        if (step.nbArgs > 1)
        {
            step.second = relocated(step.second);
        }
    }
    root = relocated(program.root);

    for (const MTBoundColumn& column : bound)
    {
        if (relocation.has(column.variable))
        {
            fresh[relocation.indexOf(column.variable)] = VALTYPE{};
            columns.push_back({relocated(column.variable), column.column});
        }
    }
}

bool MTRowProgram::evaluate(std::size_t firstRow, std::size_t nbRows, std::uint32_t* status)
{
    bool allDone = true;
    for (std::size_t j = 0; j < nbRows; ++j)
    {
        status[j] = evaluateRow(firstRow + j);
        if (status[j] != mathexpr::RowStatus::Done)
        {
            writer.writeFailure(firstRow + j);
            allDone = false;
        }
    }
    return allDone;
}

std::uint32_t MTRowProgram::evaluateRow(std::size_t row)
{
    std::copy(fresh.begin(), fresh.end(), slots.begin());
    for (const Column& column : columns)
    {
        readRow(column.source, row, *column.variable);
    }
    const std::uint32_t status = runSteps();
    if (status == mathexpr::RowStatus::Done && !writer.write(row, *root))
    {
        return mathexpr::RowStatus::OtherKind;
    }
    return status;
}

std::uint32_t MTRowProgram::runSteps()
{
    try
    {
        for (const MTProgramStep& step : steps)
        {
            const Message::Id refusal = step.evaluate(false);
            if (refusal != Message::None)
            {
                return refusal;
            }
        }
    }
    catch (const mathexpr::ParsingException&)
    {
        return mathexpr::RowStatus::ArgumentsRefused;
    }
    catch (const std::bad_alloc&)
    {
        return mathexpr::RowStatus::ArgumentsRefused;  // there was no memory left to raise that exception
    }
    return mathexpr::RowStatus::Done;
}
