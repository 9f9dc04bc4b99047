// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTParserEvaluator.cpp - one pass over the steps; each writes straight into the slot that consumes it. Scalar code
// runs in their place where it may.
#include "MTParserLib/run/MTParserEvaluator.h"

bool runProgram(MTParserProgram& program, bool showMessages, MTRunFailure& failure)
{
    if (program.rootIsConstant)
    {
        return true;
    }
    double value = 0.0;
    if (program.scalar.isReady(program) && program.scalar.run(value))
    {
        program.root->x = value;
        return true;
    }
    program.scalar.programRuns();
    auto step = program.steps.begin();
    const auto tell = [&](Message::Id refusal) { failure = MTRunFailure{step->position, step->nbArgs, refusal}; };
    try
    {
        for (; step != program.steps.end(); ++step)
        {
            const Message::Id refusal = step->evaluate(showMessages);
            if (refusal != Message::None)
            {
                tell(refusal);
                return false;
            }
        }
    }
    catch (...)
    {
        tell(Message::None);
        throw;
    }
    program.scalar.programRan();
    return true;
}
