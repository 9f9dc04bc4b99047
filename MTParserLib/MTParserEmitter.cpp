// MTParserEmitter.cpp - one walk over the operands of each emitted record, from the last to the first.
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

const VALTYPE* secondOf(const VALTYPE* args, std::uint32_t nbArgs) noexcept
{
    return nbArgs > 1 ? args + 1 : nullptr;
}

}

void MTParserEmitter::clear() noexcept
{
    records.clear();
    callsHost = false;
    program.clear();
}

MTParserEmitter::Record& MTParserEmitter::append(Kind kind, const MTProgramStep& step, std::size_t firstRecord)
{
    return records.emplace_back(Record{step, step.first, firstRecord, kind, VALTYPE{}});
}

void MTParserEmitter::emitConstant(const VALTYPE& value, std::uint32_t position)
{
    append(Kind::Constant, {nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0, position}, records.size()).value =
        value;
}

void MTParserEmitter::emitVariable(const IMathExprItemEvaluator& variable, const VALTYPE* valueInPlace,
                                   std::uint32_t position)
{
    const bool inPlace = valueInPlace != nullptr;
    callsHost = callsHost || !inPlace;
    append(inPlace ? Kind::Variable : Kind::Item,
           {inPlace ? copyValue : virtualKernels.evaluate, &variable, nullptr, valueInPlace, nullptr, nullptr, 0,
            position},
           records.size());
}

void MTParserEmitter::emitPlaceholder(std::uint32_t position)
{
    append(Kind::Placeholder, {nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0, position}, records.size());
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
    const MTSlotArena::Mark slotsBefore = program.slots.mark();
    VALTYPE* const args = program.slots.allocate(nbArgs);
    VALTYPE folded;
    MTProgramStep step{kernels.evaluate,       &item,   kernels.numbers, args,
                       secondOf(args, nbArgs), &folded, nbArgs,          position};
    callsHost = callsHost || kernels.evaluate == virtualKernels.evaluate;

    bool foldable = item.isConstant();
    std::size_t end = records.size();
    for (std::uint32_t j = nbArgs; j-- > 0;)
    {
        if (end == 0 || records[end - 1].kind == Kind::Placeholder)
        {
            return operandMissing(end);
        }
        Record& operand = records[end - 1];
        operand.step.destination = &args[j];
        if (operand.kind == Kind::Constant)
        {
            args[j] = operand.value;
        }
        else
        {
            foldable = false;
        }
        if (operand.kind == Kind::Variable && kernels.readsInPlace)
        {
            (j == 0 ? step.first : step.second) = operand.step.first;
            operand.kind = Kind::VariableRead;
        }
        end = operand.firstRecord;
    }

    // The item meets an all-zero result, and is asked before the beginning of the call is looked for: its refusal wins.
    if (foldable && !kernels.evaluate(step, showMessages))
    {
        return {MTEmission::Outcome::Refused, position};
    }
    if (isCall)
    {
        if (end == 0 || records[end - 1].kind != Kind::Placeholder)
        {
            return operandMissing(end);
        }
        --end;
    }

    if (foldable)
    {
        records.erase(records.begin() + static_cast<std::ptrdiff_t>(end), records.end());
        program.slots.release(slotsBefore);
        emitConstant(folded, position);
    }
    else
    {
        step.destination = nullptr;
        append(Kind::Item, step, end).slots = args;
    }
    return {};
}

MTEmission MTParserEmitter::operandMissing(std::size_t end) const
{
    const std::uint32_t position = end == 0 ? MTEmission::noRecord : records[end - 1].step.position;
    return {MTEmission::Outcome::OperandMissing, position};
}

bool MTParserEmitter::finish()
{
    const auto last = std::find_if(records.rbegin(), records.rend(),
                                   [](const Record& record) { return record.kind != Kind::Placeholder; });
    if (last == records.rend())
    {
        return false;
    }
    if (callsHost)
    {
        copyAllVariables();
    }
    VALTYPE* const root = program.slots.allocate(1);
    for (Record& record : records)
    {
        // What stands in its place already is no step, and a constant without a consumer is of no use to anybody.
        if (record.kind != Kind::Item && record.kind != Kind::Variable)
        {
            continue;
        }
        if (record.step.destination == nullptr)
        {
            record.step.destination = &record == &*last ? root : program.slots.allocate(1);
        }
        program.steps.push_back(record.step);
    }
    *root = last->value;
    program.rootIsConstant = last->kind == Kind::Constant;
    program.root = root;
    program.numbers.prepare(program);
    return true;
}

void MTParserEmitter::copyAllVariables() noexcept
{
    for (Record& record : records)
    {
        if (record.kind == Kind::VariableRead)
        {
            record.kind = Kind::Variable;
        }
        else if (record.kind == Kind::Item)
        {
            record.step.first = record.slots;
            record.step.second = secondOf(record.slots, record.step.nbArgs);
        }
    }
}
