// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTProgramCopy.cpp - copies a program by giving each place that its steps name a place of the copy's own. Places that
// stand side by side still do so.
#include "MTParserLib/program/MTProgramCopy.h"

#include "mathexpr/SMTParsingExcepData.h"

#include <algorithm>
#include <functional>
#include <new>

namespace {

/// The places that the steps of a program name, in ascending order.
std::vector<const VALTYPE*> placesOf(const MTParserProgram& program)
{
    std::vector<const VALTYPE*> places;
    for (const MTProgramStep& step : program.steps)
    {
        for (std::uint32_t j = 0; j < step.nbArgs; ++j)
        {
            places.push_back(&step.operand(j));
        }
        if (step.isCopy())
        {
            places.push_back(step.first);
        }
        places.push_back(step.destination);
    }
    places.push_back(program.root);
    std::sort(places.begin(), places.end(), std::less<>());
    places.erase(std::unique(places.begin(), places.end()), places.end());
    return places;
}

/// Evaluates an item; an exception counts as a refusal.
template <class Evaluation>
Message::Id attempt(Evaluation evaluate)
{
    try
    {
        return evaluate();
    }
    catch (const mathexpr::ParsingException&)
    {
        return Message::InvalidExpression;
    }
    catch (const std::bad_alloc&)
    {
        return Message::InvalidExpression;  // there was no memory left to raise that exception
    }
}

}

MTProgramCopy::MTProgramCopy(const MTParserProgram& program) : steps(program.steps), originals(placesOf(program))
{
    slots.resize(originals.size());
    for (const VALTYPE* place : originals)
    {
        fresh.push_back(*place);
    }
    for (MTProgramStep& step : steps)
    {
        const std::size_t destination = indexOf(step.destination);
        fresh[destination] = VALTYPE{};
        step.destination = &slots[destination];
        if (step.nbArgs > 0 || step.isCopy())
        {
            step.first = &slots[indexOf(step.first)];
        }
        if (step.nbArgs > 1)
        {
            step.second = &slots[indexOf(step.second)];
        }
    }
    root = &slots[indexOf(program.root)];
    refresh();
}

std::size_t MTProgramCopy::indexOf(const VALTYPE* place) const noexcept
{
    const auto found = std::lower_bound(originals.begin(), originals.end(), place, std::less<>());
    return static_cast<std::size_t>(found - originals.begin());
}

VALTYPE* MTProgramCopy::addInput(const VALTYPE& variable)
{
    if (!std::binary_search(originals.begin(), originals.end(), &variable, std::less<>()))
    {
        return nullptr;
    }
    const std::size_t index = indexOf(&variable);
    fresh[index] = slots[index] = VALTYPE{};
    return &slots[index];
}

void MTProgramCopy::refresh() noexcept
{
    std::copy(fresh.begin(), fresh.end(), slots.begin());
}

Message::Id MTProgramCopy::run()
{
    for (const MTProgramStep& step : steps)
    {
        const Message::Id refusal = attempt([&] { return step.evaluate(false); });
        if (refusal != Message::None)
        {
            return refusal;
        }
    }
    return Message::None;
}

bool MTProgramCopy::settleKinds()
{
    return std::all_of(steps.begin(), steps.end(), [](const MTProgramStep& step) {
        const auto withOnes = [&] { return evaluateWithOnes(step, *step.destination); };
        return attempt([&] { return step.evaluate(false); }) == Message::None ||
               (step.kernels->readsInPlace && attempt(withOnes) == Message::None);
    });
}
