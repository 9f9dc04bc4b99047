// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// FastEvaluation.cpp - mathexpr_evaluate, which jumps into scalar code wherever it can. It stands by itself, so that
// nothing of the slow path is compiled into it, whose registers would be saved in each call.
#include "mathexpr/c/Evaluation.h"

namespace {

/// The owner of scalar code that a call has jumped into.
struct FastEvaluation
{
    mathexpr_expression* const handle;
    mathexpr_status status;
};

constexpr MTScalarOwner fastEvaluationOwner{
    [](void* self, void* result) {
        auto& evaluation = *static_cast<FastEvaluation*>(self);
        evaluation.status = evaluateInFull(evaluation.handle, static_cast<mathexpr_value*>(result));
        return evaluation.status == MATHEXPR_OK;
    },
    [](void* self, const double* slot, Message::Id refusal) {
        auto& evaluation = *static_cast<FastEvaluation*>(self);
        evaluation.status = changeExpression(evaluation.handle, [=](mathexpr_expression& expression) {
            mathexpr::EngineAccess::refuse(*expression.plain, slot, refusal);
            return MATHEXPR_REFUSED;
        });
        return false;
    }};

}

mathexpr_status mathexpr_evaluate(mathexpr_expression* handle, mathexpr_value* value) noexcept
{
    // Most evaluations jump into scalar code, which calls nobody who could call back.
    if (handle != nullptr && value != nullptr && HandleRegistry::isLive(handle) && handle->isIdle())
    {
        const MathExpression& expression = *handle->plain;
        if (const MTScalarStep* const first = mathexpr::EngineAccess::fastPathOf(expression))
        {
            FastEvaluation evaluation{handle, MATHEXPR_OK};
            MTScalarCode::run(first, value, &fastEvaluationOwner, &evaluation);
            return evaluation.status;
        }
    }
    return evaluateInFull(handle, value);
}
