// MTParserEmitter.cpp - one walk over the operands of each emitted record, from the last to the first.
#include "MTParserLib/MTParserEmitter.h"

using Kind = MTProgramRecord::Kind;

void MTParserEmitter::emitConstant(const VALTYPE& value, std::uint32_t position)
{
    MTProgramRecord& record = program.records.emplace_back();
    record.value = value;
    record.position = position;
    record.firstRecord = program.records.size() - 1;
    record.kind = Kind::Constant;
}

void MTParserEmitter::emitVariable(const IMathExprItemEvaluator& variable, std::uint32_t position)
{
    MTProgramRecord& record = program.records.emplace_back();
    record.item = &variable;
    record.position = position;
    record.firstRecord = program.records.size() - 1;
    record.kind = Kind::Item;
}

void MTParserEmitter::emitPlaceholder(std::uint32_t position)
{
    MTProgramRecord& record = program.records.emplace_back();
    record.position = position;
    record.firstRecord = program.records.size() - 1;
    record.kind = Kind::Placeholder;
}

MTEmission MTParserEmitter::emitOperator(const IMathExprItemEvaluator& item, std::uint32_t nbArgs,
                                         std::uint32_t position)
{
    return emit(item, nbArgs, position, false);
}

MTEmission MTParserEmitter::emitCall(const IMathExprItemEvaluator& item, std::uint32_t nbArgs, std::uint32_t position)
{
    return emit(item, nbArgs, position, true);
}

MTEmission MTParserEmitter::emit(const IMathExprItemEvaluator& item, std::uint32_t nbArgs, std::uint32_t position,
                                 bool isCall)
{
    std::vector<MTProgramRecord>& records = program.records;
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
        MTProgramRecord& operand = records[end - 1];
        operand.destination = &args[j];
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
    if (foldable && !item.evaluate(nbArgs, args, folded, showMessages))
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
        records.resize(end);
        program.slots.release(slotsBefore);
        emitConstant(folded, position);
        return {};
    }
    MTProgramRecord& record = records.emplace_back();
    record.item = &item;
    record.args = args;
    record.nbArgs = nbArgs;
    record.position = position;
    record.firstRecord = end;
    record.kind = Kind::Item;
    return {};
}

MTEmission MTParserEmitter::operandMissing(std::size_t end) const
{
    const std::uint32_t position = end == 0 ? MTEmission::noRecord : program.records[end - 1].position;
    return {MTEmission::Outcome::OperandMissing, position};
}
