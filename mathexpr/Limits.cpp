// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Limits.cpp - see Limits.h.
#include "mathexpr/Limits.h"

#include "MTParserLib/MTParserCompiler.h"
#include "MTParserLib/program/MTParserProgram.h"
#include "mathexpr/EngineAccess.h"

namespace mathexpr {

bool setLimits(MathExpression& expression, const ExpressionLimits& limits) noexcept
{
    const MTProgramClaim claim(EngineAccess::programOf(expression));
    if (!claim.isGranted())
    {
        return false;
    }
    EngineAccess::compilerOf(expression).setLimits({limits.maxTextLength, limits.maxRecords, limits.maxNesting});
    return true;
}

ExpressionLimits getLimits(const MathExpression& expression) noexcept
{
    const MTLimits& limits = EngineAccess::compilerOf(expression).getLimits();
    return {limits.textLength, limits.records, limits.nesting};
}

}
