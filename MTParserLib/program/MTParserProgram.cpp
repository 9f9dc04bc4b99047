// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTParserProgram.cpp - the memory of a program.
#include "MTParserLib/program/MTParserProgram.h"

#include "MTParserLib/run/MTBulkPlan.h"

#include <algorithm>

// NOLINTNEXTLINE(cert-err58-cpp): computed by the compiler
const MTItemKernels virtualKernels{[](const MTProgramStep& step, bool showMessages) {
    const bool evaluated = step.item->evaluate(step.nbArgs, step.first, *step.destination, showMessages);
    return evaluated ? Message::None : Message::InvalidExpression;
}};

namespace {

constexpr std::size_t smallestChunk = 12;

VALTYPE oneOf(std::uint8_t type) noexcept
{
    return {type, 0, 0, 0, 1.0, 1.0, 1.0};
}

}

Message::Id evaluateWithOnes(const MTProgramStep& step, VALTYPE& result)
{
    const VALTYPE first = oneOf(step.first->type);
    const VALTYPE second = oneOf(step.nbArgs > 1 ? step.second->type : std::uint8_t{0});
    return MTProgramStep{step.kernels, step.item, &first, &second, &result, step.nbArgs, 0}.evaluate(false);
}

VALTYPE* MTSlotArena::allocateElsewhere(std::size_t count)
{
    Mark place = top;
    while (place.chunk < chunks.size() && chunks[place.chunk].size - place.used < count)
    {
        ++place.chunk;
        place.used = 0;
    }
    if (place.chunk == chunks.size())
    {
        const std::size_t doubled = chunks.empty() ? smallestChunk : 2 * chunks.back().size;
        const std::size_t size = std::max(count, doubled);
        chunks.push_back(Chunk{std::make_unique<VALTYPE[]>(size), size});
    }
    top = place;
    return allocate(count);
}

MTParserProgram::MTParserProgram() noexcept
{
    clear();
}

MTParserProgram::~MTParserProgram() = default;

void MTParserProgram::clear() noexcept
{
    bulkPlan.reset();
    steps.clear();
    usedVariables.clear();
    inputs.clear();
    scalar.clear();
    choice.clear();
    slots.release({});
    root = nullptr;
}
