// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTBoundFunction.cpp - see MTBoundFunction.h.
#include "MTParserLib/run/MTBoundFunction.h"

MTBoundFunction::MTBoundFunction(const MTParserProgram& program, platform::ArrayView<const VALTYPE* const> variables)
    : copy(program)
{
    for (const VALTYPE* variable : variables)
    {
        VALTYPE* const input = copy.addInput(*variable);
        arguments.push_back(input != nullptr ? &input->x : &unread);
    }
    bool hasCode = program.isConstant();
    if (hasCode)
    {
        code.buildConstant(copy.getRoot(), true);
    }
    else
    {
        hasCode = copy.settleKinds() && code.buildForDouble(program, copy.getFrame());
    }
    first = hasCode ? code.getSteps().data() : nullptr;
}

bool MTBoundFunction::callInFull(const double* given, double& result) noexcept
{
    const platform::FloatingPointGuard guard;
    if (first != nullptr)
    {
        return runCode(given, result);
    }
    copy.refresh();
    setArguments(given);
    if (copy.run() != Message::None)
    {
        return false;
    }
    result = copy.getRoot().x;
    return true;
}
