// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTParserProgram.cpp - see MTParserProgram.h.
#include "MTParserLib/program/MTParserProgram.h"

#include "MTParserLib/run/MTBulkPlan.h"

#include <algorithm>
#include <array>

// NOLINTNEXTLINE(cert-err58-cpp): computed by the compiler
const MTItemKernels virtualKernels{[](const MTProgramStep& step, const MTFrame& frame, bool showMessages) {
    const VALTYPE* const args = step.nbArgs != 0 ? &frame.slots[step.first] : nullptr;
    const bool evaluated = step.item->evaluate(step.nbArgs, args, frame.slots[step.result], showMessages);
    return evaluated ? Message::None : Message::InvalidExpression;
}};

void setOnes(VALTYPE& record) noexcept
{
    record.x = 1.0;
    record.y = record.z = record.type != 0 ? 1.0 : 0.0;
}

Message::Id evaluateWithOnes(const MTProgramStep& step, const MTFrame& frame, VALTYPE& result)
{
    std::array<VALTYPE, 3> records;
    for (std::uint32_t j = 0; j < step.nbArgs; ++j)
    {
        records[j].type = frame[step.operand(j)].type;
        setOnes(records[j]);
    }
    const Message::Id refusal = evaluateItem(*step.kernels, step.item, records.data(), step.nbArgs);
    result = records[step.nbArgs];
    return refusal;
}

MTParserProgram::MTParserProgram() noexcept = default;

MTParserProgram::~MTParserProgram() = default;

void MTParserProgram::clear() noexcept
{
    bulkPlan.reset();
    steps.clear();
    slots.clear();
    usedVariables.clear();
    inputs.clear();
    scalar.clear();
    choice.clear();
}

bool MTParserProgram::isShort() const noexcept
{
    constexpr std::size_t mostSlots = 64;
    return slots.size() <= mostSlots;
}

void MTParserProgram::shrink()
{
    steps.shrink_to_fit();
    slots.shrink_to_fit();
    usedVariables.shrink_to_fit();
    inputs.shrink_to_fit();
}

MTPlace MTParserProgram::findInput(const VALTYPE& variable) const noexcept
{
    const auto found = std::find(inputs.begin(), inputs.end(), &variable);
    return found == inputs.end() ? noPlace : firstInput + static_cast<MTPlace>(found - inputs.begin());
}
