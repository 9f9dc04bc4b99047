// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTBoundFunction.cpp - see MTBoundFunction.h.
#include "MTParserLib/run/MTBoundFunction.h"

#include <algorithm>
#include <iterator>

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
    findReads();
}

void MTBoundFunction::findReads()
{
    copiesArguments = code.runsRecords();
    if (copiesArguments)
    {
        return;
    }
    std::vector<const double**> operands;
    for (std::size_t index = 0; index < arguments.size(); ++index)
    {
        operands.clear();
        code.findReads(arguments[index], operands);
        std::transform(operands.begin(), operands.end(), std::back_inserter(reads), [index](const double** operand) {
            return Read{operand, index};
        });
    }
}

/// Points the operands at the given arguments: at the caller's array if the previous call used the same one.
void MTBoundFunction::bind(const double* given) noexcept
{
    const bool isLast = given == last;
    last = given;
    if (isLast && !copiesArguments)
    {
        for (const Read& read : reads)
        {
            *read.operand = given + read.argument;
        }
        bound = given;
        return;
    }
    if (bound != &unread)
    {
        for (const Read& read : reads)
        {
            *read.operand = arguments[read.argument];
        }
        bound = &unread;
    }
    setArguments(given);
}

void MTBoundFunction::setArguments(const double* given) noexcept
{
    for (double* const argument : arguments)
    {
        // NOLINTNEXTLINE(clang-analyzer-core.NullDereference): given is null only if there are no arguments
        *argument = *given++;
    }
}

bool MTBoundFunction::callInFull(const double* given, double& result) noexcept
{
    const platform::FloatingPointGuard guard;
    if (first != nullptr)
    {
        bind(given);
        return runCode(result);
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
