// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTParserEmitter.cpp - the operand stack, and its conversion to steps.
#include "MTParserLib/compile/MTParserEmitter.h"

#include "MTParserLib/program/MTValueCopy.h"

#include <algorithm>
#include <cstddef>

namespace {

/// Evaluates a step that copies a variable.
Message::Id copyValue(const MTProgramStep& step, const MTFrame& frame, bool)
{
    copyRecent(frame.slots[step.result], frame[step.first]);
    return Message::None;
}

constexpr MTItemKernels copyingKernels{copyValue};

}

void MTParserEmitter::begin(bool readsInPlace) noexcept
{
    variablesInPlace = readsInPlace;
    waiting.clear();
    constants.clear();
    program.clear();
}

inline MTProgramStep& MTParserEmitter::pushResult(const IMathExprItemEvaluator& item, const MTItemKernels& kernels,
                                                  std::uint32_t position)
{
    push(Kind::Result, position, program.steps.size());
    MTProgramStep& step = program.steps.emplace_back();
    step.kernels = &kernels;
    step.item = &item;
    step.first = step.second = step.result = noPlace;
    step.position = position;
    return step;
}

inline MTPlace MTParserEmitter::addSlot()
{
    program.slots.emplace_back();
    return static_cast<MTPlace>(program.slots.size() - 1);
}

inline MTPlace MTParserEmitter::placeOf(const Operand& operand)
{
    if (operand.kind == Kind::Variable)
    {
        return static_cast<MTPlace>(operand.index);
    }
    const MTPlace slot = addSlot();
    if (operand.kind == Kind::Constant)
    {
        program.slots[slot] = constants[operand.index];
    }
    else
    {
        program.steps[operand.index].result = slot;
    }
    return slot;
}

void MTParserEmitter::emitCopy(const IMathExprItemEvaluator& variable, MTPlace input, std::uint32_t position)
{
    pushResult(variable, input != noPlace ? copyingKernels : virtualKernels, position).first = input;
}

MTEmission MTParserEmitter::emit(const IMathExprItemEvaluator& item, const MTItemKernels& kernels, std::uint32_t nbArgs,
                                 std::uint32_t position, bool isCall)
{
    auto operands = waiting.cend();
    std::uint32_t nbConstants = 0;
    for (std::uint32_t j = 0; j < nbArgs; ++j)
    {
        if (operands == waiting.cbegin() || operands[-1].kind == Kind::Placeholder)
        {
            return operandMissing(operands);
        }
        --operands;
        nbConstants += operands->kind == Kind::Constant ? 1U : 0U;
    }
    if (nbConstants == nbArgs && item.isConstant())
    {
        return fold(item, kernels, nbArgs, position, isCall);
    }

    const bool inPlace = kernels.readsInPlace;
    const MTPlace first = inPlace ? placeOf(operands[0]) : collectOperands(operands, nbArgs);
    const MTPlace second = !inPlace ? first + 1 : nbArgs > 1 ? placeOf(operands[1]) : noPlace;
    if (!popOperands(operands, isCall))
    {
        return operandMissing(operands);
    }
    constants.resize(constants.size() - nbConstants);
    MTProgramStep& step = pushResult(item, kernels, position);
    step.first = first;
    step.second = second;
    step.nbArgs = nbArgs;
    return MTEmission::Done;
}

/// Evaluates an item whose operands are constant, and replaces them by its result.
MTEmission MTParserEmitter::fold(const IMathExprItemEvaluator& item, const MTItemKernels& kernels, std::uint32_t nbArgs,
                                 std::uint32_t position, bool isCall)
{
    // The constants are its frame: its operands are adjacent on top of them. Its result is zero on entry. The item
    // is evaluated before the start of the call is looked for, since a refusal takes precedence over a missing
    // operand.
    constants.emplace_back();
    const auto result = static_cast<MTPlace>(constants.size() - 1);
    const MTPlace first = result - nbArgs;
    const MTProgramStep step{&kernels, &item, first, first + 1, result, nbArgs, position};
    refusal = step.evaluate({constants.data(), nullptr}, showMessages);
    if (refusal != Message::None)
    {
        return MTEmission::Refused;
    }
    const auto operands = waiting.cend() - static_cast<std::ptrdiff_t>(nbArgs);
    if (!popOperands(operands, isCall))
    {
        return operandMissing(operands);
    }
    constants[first] = constants[result];
    constants.resize(first + std::size_t{1});
    push(Kind::Constant, position, first);
    return MTEmission::Done;
}

/// Pops operands, and the placeholder below those of a call.
/// @return false if that is missing
inline bool MTParserEmitter::popOperands(Operands begin, bool isCall)
{
    if (isCall)
    {
        if (begin == waiting.cbegin() || begin[-1].kind != Kind::Placeholder)
        {
            return false;
        }
        --begin;
    }
    waiting.erase(begin, waiting.cend());
    return true;
}

MTEmission MTParserEmitter::operandMissing(Operands end)
{
    positionFound = end == waiting.cbegin() ? noRecord : end[-1].position;
    return MTEmission::OperandMissing;
}

/// Collects the operands of an item in adjacent slots.
/// @return the first of the slots
MTPlace MTParserEmitter::collectOperands(Operands begin, std::uint32_t nbArgs)
{
    const auto first = static_cast<MTPlace>(program.slots.size());
    program.slots.resize(program.slots.size() + nbArgs);
    for (std::uint32_t j = 0; j < nbArgs; ++j, ++begin)
    {
        bring(*begin, first + j);
    }
    return first;
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
        // All variables of such a program are read in place, so they have the order of the inputs.
        program.steps.push_back({&copyingKernels, program.usedVariables[operand.index - firstInput],
                                 static_cast<MTPlace>(operand.index), noPlace, slot, 0, operand.position});
        break;
    case Kind::Result:
        program.steps[operand.index].result = slot;
        break;
    case Kind::Placeholder:  // not covered: never popped as an operand
        break;
    }
}

bool MTParserEmitter::finish(bool shrinks)
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
    if (shrinks && program.isShort())
    {
        program.shrink();
    }
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

void MTParserEmitter::reserve(std::size_t count)
{
    waiting.reserve(count);
    constants.reserve(count);
    program.steps.reserve(count);
    program.slots.reserve(count);
}

void MTParserEmitter::releaseStacks() noexcept
{
    std::vector<Operand>().swap(waiting);
    std::vector<VALTYPE>().swap(constants);
}
