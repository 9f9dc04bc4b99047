// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTParserEmitter.cpp - the operand stack, and its conversion to steps.
#include "MTParserLib/compile/MTParserEmitter.h"

#include "MTParserLib/program/MTValueCopy.h"

#include <algorithm>

namespace {

/// Evaluates a step that copies a variable.
Message::Id copyValue(const MTProgramStep& step, const MTFrame& frame, bool)
{
    copyRecent(frame.slots[step.result], frame[step.first]);
    return Message::None;
}

constexpr MTItemKernels copyingKernels{copyValue};

/// Pops everything above a height.
template <class Element>
void truncate(std::vector<Element>& stack, std::size_t height)
{
    stack.erase(stack.begin() + static_cast<std::ptrdiff_t>(height), stack.end());
}

MTProgramStep copyingStep(const IMathExprItemEvaluator* variable, MTPlace input, std::uint32_t position)
{
    return {&copyingKernels, variable, input, noPlace, noPlace, 0, position};
}

}

void MTParserEmitter::begin(bool readsInPlace) noexcept
{
    variablesInPlace = readsInPlace;
    waiting.clear();
    constants.clear();
    program.clear();
}

void MTParserEmitter::pushResult(const MTProgramStep& step)
{
    waiting.push_back({Kind::Result, step.position, {program.steps.size()}, noPlace});
    program.steps.push_back(step);
}

void MTParserEmitter::emitConstant(const VALTYPE& value, std::uint32_t position)
{
    waiting.push_back({Kind::Constant, position, {constants.size()}, noPlace});
    constants.push_back(value);
}

void MTParserEmitter::emitVariable(const IMathExprItemEvaluator& variable, MTPlace input, std::uint32_t position)
{
    if (variablesInPlace)
    {
        Operand operand{Kind::Variable, position, {}, input};
        operand.variable = &variable;
        waiting.push_back(operand);
    }
    else if (input != noPlace)
    {
        pushResult(copyingStep(&variable, input, position));
    }
    else
    {
        pushResult({&virtualKernels, &variable, noPlace, noPlace, noPlace, 0, position});
    }
}

void MTParserEmitter::emitPlaceholder(std::uint32_t position)
{
    waiting.push_back({Kind::Placeholder, position, {}, noPlace});
}

MTEmission MTParserEmitter::emit(const IMathExprItemEvaluator& item, const MTItemKernels& kernels, std::uint32_t nbArgs,
                                 std::uint32_t position, bool isCall)
{
    std::uint32_t nbConstants = 0;
    std::size_t end = waiting.size();
    for (std::uint32_t j = 0; j < nbArgs; ++j)
    {
        if (end == 0 || waiting[end - 1].kind == Kind::Placeholder)
        {
            return operandMissing(end);
        }
        --end;
        nbConstants += waiting[end].kind == Kind::Constant ? 1U : 0U;
    }

    const Operand* const operands = waiting.data() + end;
    MTProgramStep step{&kernels, &item, noPlace, noPlace, noPlace, nbArgs, position};
    const bool foldable = nbConstants == nbArgs && item.isConstant();
    if (foldable)
    {
        // The constants are its frame: its operands are adjacent on top of them. Its result is zero on entry. The item
        // is evaluated before the start of the call is looked for, since a refusal takes precedence over a missing
        // operand.
        constants.emplace_back();
        step.result = static_cast<MTPlace>(constants.size() - 1);
        step.first = step.result - nbArgs;
        step.second = step.first + 1;
        const Message::Id refusal = step.evaluate({constants.data(), nullptr}, showMessages);
        if (refusal != Message::None)
        {
            return {MTEmission::Outcome::Refused, position, refusal};
        }
        constants[step.first] = constants[step.result];
    }
    else
    {
        setOperands(step, operands);
    }
    if (isCall)
    {
        if (end == 0 || waiting[end - 1].kind != Kind::Placeholder)  // not covered: there is one below all operands
        {
            return operandMissing(end);
        }
        --end;
    }

    truncate(waiting, end);
    truncate(constants, constants.size() - nbConstants);
    if (foldable)
    {
        waiting.push_back({Kind::Constant, position, {step.first}, noPlace});
    }
    else
    {
        pushResult(step);
    }
    return {};
}

MTEmission MTParserEmitter::operandMissing(std::size_t end) const
{
    const std::uint32_t position = end == 0 ? MTEmission::noRecord : waiting[end - 1].position;
    return {MTEmission::Outcome::OperandMissing, position, Message::None};
}

void MTParserEmitter::setOperands(MTProgramStep& step, const Operand* operands)
{
    if (step.kernels->readsInPlace)
    {
        step.first = placeOf(operands[0]);
        step.second = step.nbArgs > 1 ? placeOf(operands[1]) : noPlace;
        return;
    }
    step.first = static_cast<MTPlace>(program.slots.size());
    step.second = step.first + 1;
    program.slots.resize(program.slots.size() + step.nbArgs);
    for (std::uint32_t j = 0; j < step.nbArgs; ++j)
    {
        bring(operands[j], step.first + j);
    }
}

MTPlace MTParserEmitter::addSlot()
{
    program.slots.emplace_back();
    return static_cast<MTPlace>(program.slots.size() - 1);
}

MTPlace MTParserEmitter::placeOf(const Operand& operand)
{
    if (operand.kind == Kind::Variable)
    {
        return operand.input;
    }
    const MTPlace slot = addSlot();
    bring(operand, slot);
    return slot;
}

/// Makes sure that the operand is in a slot when its consumer runs.
void MTParserEmitter::bring(const Operand& operand, MTPlace slot)
{
    switch (operand.kind)
    {
    case Kind::Constant:
        program.slots[slot] = constants[operand.index];
        break;
    case Kind::Variable:
        program.steps.push_back(copyingStep(operand.variable, operand.input, operand.position));
        program.steps.back().result = slot;
        break;
    case Kind::Result:
        program.steps[operand.index].result = slot;
        break;
    case Kind::Placeholder:  // not covered: never popped as an operand
        break;
    }
}

bool MTParserEmitter::finish()
{
    const auto last = std::find_if(waiting.rbegin(), waiting.rend(),
                                   [](const Operand& operand) { return operand.kind != Kind::Placeholder; });
    if (last == waiting.rend())
    {
        return false;
    }
    // An unconsumed result needs a slot, since its step may still refuse its arguments.
    for (auto other = std::next(last); other != waiting.rend(); ++other)
    {
        if (other->kind == Kind::Result)
        {
            bring(*other, addSlot());
        }
    }
    bring(*last, addSlot());
    program.frame = {program.slots.data(), program.inputs.data()};
    const bool isConstant = last->kind == Kind::Constant;
    if (isConstant)
    {
        program.scalar.buildConstant(program.getRoot());
    }
    else
    {
        program.scalar.reserve(program);
    }
    // Last, so that running out of memory never leaves a complete program.
    program.choice.begin(isConstant, program.inputs.size());
    return true;
}
