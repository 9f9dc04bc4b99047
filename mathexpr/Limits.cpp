// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Limits.cpp - see Limits.h.
#include "mathexpr/Limits.h"

#include "mathexpr/EngineAccess.h"

namespace mathexpr {

bool setLimits(MathExpression& expression, const ExpressionLimits& limits) noexcept
{
    const MTReentryGuard guard(EngineAccess::parserOf(expression).getProgram());
    if (!guard.hasEntered())
    {
        return false;
    }
    EngineAccess::parserOf(expression).setLimits({limits.maxTextLength, limits.maxRecords, limits.maxNesting});
    return true;
}

ExpressionLimits getLimits(const MathExpression& expression) noexcept
{
    const MTLimits& limits = EngineAccess::parserOf(expression).getLimits();
    return {limits.textLength, limits.records, limits.nesting};
}

}
