// MTParserEmitter.cpp - the stack of operands, and the steps that they become.
#include "MTParserLib/MTParserEmitter.h"

#include "MTParserLib/MTValueCopy.h"

#include <algorithm>

namespace {

/// Evaluates a variable that has to be copied.
bool copyValue(const MTProgramStep& step, bool)
{
    copyRecent(*step.destination, *step.first);
    return true;
}

MTProgramStep copyingStep(const IMathExprItemEvaluator* variable, const VALTYPE* value, std::uint32_t position)
{
    return {copyValue, variable, nullptr, value, nullptr, nullptr, 0, position};
}

}

void MTParserEmitter::begin(bool readsInPlace) noexcept
{
    variablesInPlace = readsInPlace;
    waiting.clear();
    program.clear();
}

MTParserEmitter::Operand& MTParserEmitter::push(Kind kind, std::uint32_t position)
{
    Operand& operand = waiting.emplace_back();
    operand.kind = kind;
    operand.position = position;
    return operand;
}

void MTParserEmitter::pushResult(const MTProgramStep& step)
{
    push(Kind::Result, step.position).step = program.steps.size();
    program.steps.push_back(step);
}

void MTParserEmitter::emitConstant(const VALTYPE& value, std::uint32_t position)
{
    push(Kind::Constant, position).value = value;
}

void MTParserEmitter::emitVariable(const IMathExprItemEvaluator& variable, const VALTYPE* valueInPlace,
                                   std::uint32_t position)
{
    if (variablesInPlace)
    {
        Operand& operand = push(Kind::Variable, position);
        operand.variable = &variable;
        operand.valueInPlace = valueInPlace;
    }
    else if (valueInPlace != nullptr)
    {
        pushResult(copyingStep(&variable, valueInPlace, position));
    }
    else
    {
        pushResult({virtualKernels.evaluate, &variable, nullptr, nullptr, nullptr, nullptr, 0, position});
    }
}

void MTParserEmitter::emitPlaceholder(std::uint32_t position)
{
    push(Kind::Placeholder, position);
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
    bool foldable = item.isConstant();
    std::size_t end = waiting.size();
    for (std::uint32_t j = 0; j < nbArgs; ++j)
    {
        if (end == 0 || waiting[end - 1].kind == Kind::Placeholder)
        {
            return operandMissing(end);
        }
        --end;
        foldable = foldable && waiting[end].kind == Kind::Constant;
    }

    VALTYPE folded;
    MTProgramStep step{kernels.evaluate, &item, kernels.numbers, nullptr, nullptr, &folded, nbArgs, position};
    const MTSlotArena::Mark slotsBefore = program.slots.mark();
    setOperands(step, waiting.data() + end, kernels);
    // The item meets an all-zero result, and is asked before the beginning of the call is looked for: its refusal wins.
    if (foldable && !kernels.evaluate(step, showMessages))
    {
        return {MTEmission::Outcome::Refused, position};
    }
    if (isCall)
    {
        if (end == 0 || waiting[end - 1].kind != Kind::Placeholder)
        {
            return operandMissing(end);
        }
        --end;
    }

    waiting.resize(end);
    if (foldable)
    {
        program.slots.release(slotsBefore);
        emitConstant(folded, position);
    }
    else
    {
        step.destination = nullptr;
        pushResult(step);
    }
    return {};
}

MTEmission MTParserEmitter::operandMissing(std::size_t end) const
{
    const std::uint32_t position = end == 0 ? MTEmission::noRecord : waiting[end - 1].position;
    return {MTEmission::Outcome::OperandMissing, position};
}

void MTParserEmitter::setOperands(MTProgramStep& step, const Operand* operands, const MTItemKernels& kernels)
{
    if (kernels.readsInPlace)
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
    VALTYPE* const slot = program.slots.allocate(1);
    bring(operand, *slot);
    return slot;
}

/// Sees to it that the operand stands in a slot when the program comes to its consumer.
void MTParserEmitter::bring(const Operand& operand, VALTYPE& slot)
{
    switch (operand.kind)
    {
    case Kind::Constant:
        slot = operand.value;
        break;
    case Kind::Variable:
        program.steps.push_back(copyingStep(operand.variable, operand.valueInPlace, operand.position));
        program.steps.back().destination = &slot;
        break;
    case Kind::Result:
        program.steps[operand.step].destination = &slot;
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
    VALTYPE* const root = program.slots.allocate(1);
    bring(*last, *root);
    // A result that nothing consumes has to go somewhere: its step may refuse its arguments all the same.
    for (auto other = std::next(last); other != waiting.rend(); ++other)
    {
        if (other->kind == Kind::Result)
        {
            bring(*other, *program.slots.allocate(1));
        }
    }
    program.rootIsConstant = last->kind == Kind::Constant;
    program.root = root;
    program.numbers.prepare(program);
    return true;
}
