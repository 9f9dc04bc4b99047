// MTParserEmitter.cpp - one walk over the operands of each emitted record, from the last to the first.
#include "MTParserLib/MTParserEmitter.h"

#include "MTParserLib/MTValueCopy.h"

#include <algorithm>

namespace {

/// Evaluates a variable that is read in place: its value is what the step has for arguments.
bool copyValue(const IMathExprItemEvaluator*, std::uint32_t, const VALTYPE* value, VALTYPE& result, bool)
{
    copyRecent(result, *value);
    return true;
}

}

void MTParserEmitter::clear() noexcept
{
    records.clear();
    program.clear();
}

MTParserEmitter::Record& MTParserEmitter::append(Kind kind, const MTProgramStep& step, std::size_t firstRecord)
{
    return records.emplace_back(Record{step, firstRecord, kind, VALTYPE{}});
}

void MTParserEmitter::emitConstant(const VALTYPE& value, std::uint32_t position)
{
    append(Kind::Constant, {nullptr, nullptr, nullptr, nullptr, nullptr, 0, position}, records.size()).value = value;
}

void MTParserEmitter::emitVariable(const IMathExprItemEvaluator& variable, const VALTYPE* valueInPlace,
                                   std::uint32_t position)
{
    const MTEvaluate evaluate = valueInPlace != nullptr ? copyValue : evaluateVirtually;
    append(Kind::Item, {evaluate, &variable, nullptr, valueInPlace, nullptr, 0, position}, records.size());
}

void MTParserEmitter::emitPlaceholder(std::uint32_t position)
{
    append(Kind::Placeholder, {nullptr, nullptr, nullptr, nullptr, nullptr, 0, position}, records.size());
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
        end = operand.firstRecord;
    }

    // The item meets an all-zero result, and is asked before the beginning of the call is looked for: its refusal wins.
    VALTYPE folded;
    if (foldable && !kernels.evaluate(&item, nbArgs, args, folded, showMessages))
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
        append(Kind::Item, {kernels.evaluate, &item, kernels.numbers, args, nullptr, nbArgs, position}, end);
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
    VALTYPE* const root = program.slots.allocate(1);
    for (Record& record : records)
    {
        // A constant stands in the slot of its consumer already, and one without a consumer is of no use to anybody.
        if (record.kind != Kind::Item)
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
    program.numbers.prepare(program);
    program.root = root;
    return true;
}
