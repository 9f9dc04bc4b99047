// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// FastEvaluation.cpp - mathexpr_evaluate, which jumps into scalar code whenever it can. It is a separate source file so
// that the compiler cannot inline the slow path: every call would then save the registers that the slow path needs.
#include "mathexpr/c/Evaluation.h"

namespace {

/// The owner of scalar code during a call.
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
    // Most evaluations jump into scalar code, which never calls the host.
    if (handle != nullptr && value != nullptr && HandleRegistry::isLive(handle) && handle->isIdle())
    {
        const MathExpression& expression = *handle->plain;
        if (const MTScalarStep* const first = mathexpr::EngineAccess::fastPathOf(expression))
        {
            FastEvaluation evaluation{handle, MATHEXPR_OK};
            return MTScalarCode::run(first, value, &fastEvaluationOwner, &evaluation) ? MATHEXPR_OK : evaluation.status;
        }
    }
    return evaluateInFull(handle, value);
}
