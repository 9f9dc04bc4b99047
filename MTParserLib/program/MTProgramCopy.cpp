// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTProgramCopy.cpp - see MTProgramCopy.h.
#include "MTParserLib/program/MTProgramCopy.h"

#include "mathexpr/SMTParsingExcepData.h"

#include <algorithm>
#include <iterator>
#include <new>

namespace {

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
        return Message::InvalidExpression;  // the exception itself ran out of memory
    }
}

}

MTProgramCopy::MTProgramCopy(const MTParserProgram& original) : program(original), slots(original.slots)
{
    for (const VALTYPE* input : program.inputs)
    {
        variables.push_back(*input);
    }
    std::transform(variables.begin(), variables.end(), std::back_inserter(inputs),
                   [](const VALTYPE& variable) { return &variable; });
    frame = {slots.data(), inputs.data()};
    refresh();
}

VALTYPE* MTProgramCopy::addInput(const VALTYPE& variable) noexcept
{
    const MTPlace place = program.findInput(variable);
    if (place == noPlace)
    {
        return nullptr;
    }
    VALTYPE& own = variables[place - firstInput];
    own = VALTYPE{};
    return &own;
}

void MTProgramCopy::refresh() noexcept
{
    for (const MTProgramStep& step : program.steps)
    {
        slots[step.result] = VALTYPE{};
    }
}

Message::Id MTProgramCopy::run()
{
    if (program.isConstant())
    {
        return Message::None;
    }
    for (const MTProgramStep& step : program.steps)
    {
        const Message::Id refusal = attempt([&] { return step.evaluate(frame, false); });
        if (refusal != Message::None)
        {
            return refusal;
        }
    }
    return Message::None;
}

bool MTProgramCopy::settleKinds()
{
    return std::all_of(program.steps.begin(), program.steps.end(), [this](const MTProgramStep& step) {
        const auto withOnes = [&] { return evaluateWithOnes(step, frame, slots[step.result]); };
        return attempt([&] { return step.evaluate(frame, false); }) == Message::None ||
               (step.kernels->readsInPlace && attempt(withOnes) == Message::None);
    });
}
