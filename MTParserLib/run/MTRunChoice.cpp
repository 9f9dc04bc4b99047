// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTRunChoice.cpp - see MTRunChoice.h.
#include "MTParserLib/run/MTRunChoice.h"

#include "MTParserLib/program/MTParserProgram.h"
#include "MTParserLib/run/MTScalarSteps.h"

#include <algorithm>

namespace {

bool haveHeads(const std::vector<const VALTYPE*>& inputs, const std::vector<std::uint16_t>& heads)
{
    return std::equal(inputs.begin(), inputs.end(), heads.begin(),
                      [](const VALTYPE* input, std::uint16_t head) { return scalarkernels::headOf(*input) == head; });
}

}

MTRunState MTRunChoice::choose(MTParserProgram& program)
{
    if (state == MTRunState::Constant || state == MTRunState::Fresh)
    {
        return state;
    }
    if (!haveHeads(program.inputs, inputHeads))
    {
        state = MTRunState::Fresh;
    }
    else if (state == MTRunState::Settled)
    {
        state = program.scalar.build(program) ? MTRunState::Scalar : MTRunState::Interpreted;
    }
    return state;
}

void MTRunChoice::settle(const MTParserProgram& program)
{
    if (state != MTRunState::Fresh)
    {
        return;
    }
    state = MTRunState::Settled;
    std::transform(program.inputs.begin(), program.inputs.end(), inputHeads.begin(),
                   [](const VALTYPE* input) { return scalarkernels::headOf(*input); });
}

void MTRunChoice::arm(const MTParserProgram& program) noexcept
{
    const bool hasCode = state == MTRunState::Scalar || state == MTRunState::Constant;
    armed = hasCode ? program.scalar.getSteps().data() : nullptr;
}
