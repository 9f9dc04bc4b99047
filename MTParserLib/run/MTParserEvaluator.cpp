// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTParserEvaluator.cpp - one pass over the steps, each of which writes to its consumer's slot; or scalar code, where
// it may run instead.
#include "MTParserLib/run/MTParserEvaluator.h"

#include "MTParserLib/vocabulary/Refusal.h"

#include <algorithm>

namespace {

bool interpret(MTParserProgram& program, bool showMessages, MTRunFailure& failure)
{
    auto step = program.steps.begin();
    const auto tell = [&](Message::Id refusal) { failure = MTRunFailure{step->position, step->nbArgs, refusal}; };
    try
    {
        for (; step != program.steps.end(); ++step)
        {
            const Message::Id refusal = step->evaluate(program.frame, showMessages);
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
    program.choice.settle(program);
    return true;
}

/// A run of scalar code that stores the value in the program's root.
struct ScalarRun
{
    MTParserProgram& program;
    const bool showMessages;
    MTRunFailure& failure;

    bool run()
    {
        static constexpr MTScalarOwner owner{nullptr, refuse};  // the kinds have just been compared
        VALTYPE value;
        const bool done = MTScalarCode::run(program.scalar.getSteps().data(), &value, &owner, this);
        if (done)
        {
            program.slots.back() = value;
        }
        return done;
    }

    static bool refuse(void* self, const double* slot, Message::Id refusal)
    {
        const ScalarRun& run = *static_cast<const ScalarRun*>(self);
        showRefusal(refusal, run.showMessages);
        run.failure = failureAt(run.program, slot, refusal);
        return false;
    }
};

}

MTRunFailure failureAt(const MTParserProgram& program, const double* slot, Message::Id refusal) noexcept
{
    const auto step = std::find_if(program.steps.begin(), program.steps.end(),
                                   [&](const MTProgramStep& each) { return &program.slots[each.result].x == slot; });
    return {step->position, step->nbArgs, refusal};
}

bool runProgram(MTParserProgram& program, bool showMessages, MTRunFailure& failure)
{
    switch (program.choice.choose(program))
    {
    case MTRunState::Constant:
        return true;
    case MTRunState::Scalar:
        return ScalarRun{program, showMessages, failure}.run();
    default:
        return interpret(program, showMessages, failure);
    }
}
