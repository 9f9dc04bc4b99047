// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTParserEmitter.cpp - the stack of operands, and the steps that they become.
#include "MTParserLib/compile/MTParserEmitter.h"

#include "MTParserLib/program/MTValueCopy.h"

#include <algorithm>

namespace {

/// Evaluates a variable that has to be copied.
Message::Id copyValue(const MTProgramStep& step, bool)
{
    copyRecent(*step.destination, *step.first);
    return Message::None;
}

constexpr MTItemKernels copyingKernels{copyValue};

/// Takes what is above a height from a stack.
template <class Element>
void truncate(std::vector<Element>& stack, std::size_t height)
{
    stack.erase(stack.begin() + static_cast<std::ptrdiff_t>(height), stack.end());
}

MTProgramStep copyingStep(const IMathExprItemEvaluator* variable, const VALTYPE* value, std::uint32_t position)
{
    return {&copyingKernels, variable, value, nullptr, nullptr, 0, position};
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
    waiting.push_back({Kind::Result, step.position, {program.steps.size()}, nullptr});
    program.steps.push_back(step);
}

void MTParserEmitter::emitConstant(const VALTYPE& value, std::uint32_t position)
{
    waiting.push_back({Kind::Constant, position, {constants.size()}, nullptr});
    constants.push_back(value);
}

void MTParserEmitter::emitVariable(const IMathExprItemEvaluator& variable, const VALTYPE* valueInPlace,
                                   std::uint32_t position)
{
    if (variablesInPlace)
    {
        Operand operand{Kind::Variable, position, {}, valueInPlace};
        operand.variable = &variable;
        waiting.push_back(operand);
    }
    else if (valueInPlace != nullptr)
    {
        pushResult(copyingStep(&variable, valueInPlace, position));
    }
    else
    {
        pushResult({&virtualKernels, &variable, nullptr, nullptr, nullptr, 0, position});
    }
}

void MTParserEmitter::emitPlaceholder(std::uint32_t position)
{
    waiting.push_back({Kind::Placeholder, position, {}, nullptr});
}

MTEmission MTParserEmitter::emitOperator(const IMathExprItemEvaluator& item, const MTItemKernels& kernels,
                                         std::uint32_t nbArgs, std::uint32_t position)
{
    return emit(item, kernels, nbArgs, position, false);
}

MTEmission MTParserEmitter::emitCall(const IMathExprItemEvaluator& item, const MTItemKernels& kernels,
                                     std::uint32_t nbArgs, std::uint32_t position)
{
    return emit(item, kernels, nbArgs, position, true);
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

    VALTYPE folded;
    MTProgramStep step{&kernels, &item, nullptr, nullptr, nullptr, nbArgs, position};
    const MTSlotArena::Mark slotsBefore = program.slots.mark();
    setOperands(step, waiting.data() + end);
    truncate(constants, constants.size() - nbConstants);
    const bool foldable = nbConstants == nbArgs && item.isConstant();
    if (foldable)
    {
        // The item meets an all-zero result, and is asked before the beginning of the call is looked for: its refusal
        // wins.
        step.destination = &folded;
        const Message::Id refusal = step.evaluate(showMessages);
        if (refusal != Message::None)
        {
            return {MTEmission::Outcome::Refused, position, refusal};
        }
        program.slots.release(slotsBefore);
    }
    if (isCall)
    {
        if (end == 0 || waiting[end - 1].kind != Kind::Placeholder)  // not covered: it lies below all operands
        {
            return operandMissing(end);
        }
        --end;
    }

    truncate(waiting, end);
    if (foldable)
    {
        emitConstant(folded, position);
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
        step.second = step.nbArgs > 1 ? placeOf(operands[1]) : nullptr;
        return;
    }
    VALTYPE* const args = program.slots.allocate(step.nbArgs);
    for (std::uint32_t j = 0; j < step.nbArgs; ++j)
    {
        bring(operands[j], args[j]);
    }
    step.first = args;
    step.second = step.nbArgs > 1 ? args + 1 : nullptr;
}

const VALTYPE* MTParserEmitter::placeOf(const Operand& operand)
{
    if (operand.kind == Kind::Variable)
    {
        return operand.valueInPlace;
    }
    VALTYPE& slot = program.slots.allocateOne();
    bring(operand, slot);
    return &slot;
}

/// Sees to it that the operand stands in a slot when the program comes to its consumer.
void MTParserEmitter::bring(const Operand& operand, VALTYPE& slot)
{
    switch (operand.kind)
    {
    case Kind::Constant:
        slot = constants[operand.index];
        break;
    case Kind::Variable:
        program.steps.push_back(copyingStep(operand.variable, operand.valueInPlace, operand.position));
        program.steps.back().destination = &slot;
        break;
    case Kind::Result:
        program.steps[operand.index].destination = &slot;
        break;
    case Kind::Placeholder:  // not covered: nothing takes it for an operand
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
    VALTYPE& root = program.slots.allocateOne();
    bring(*last, root);
    // A result that nothing consumes has to go somewhere: its step may refuse its arguments all the same.
    for (auto other = std::next(last); other != waiting.rend(); ++other)
    {
        if (other->kind == Kind::Result)
        {
            bring(*other, program.slots.allocateOne());
        }
    }
    program.root = &root;
    const bool isConstant = last->kind == Kind::Constant;
    if (isConstant)
    {
        program.scalar.buildConstant(root);
    }
    else
    {
        program.scalar.reserve(program);
    }
    program.choice.begin(isConstant, program.inputs.size());  // last: before all memory is there, nothing is complete
    return true;
}
