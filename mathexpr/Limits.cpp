// Limits.cpp - see Limits.h.
#include "mathexpr/Limits.h"

#include "MTParserLib/MTParserCompiler.h"
#include "MTParserLib/program/MTParserProgram.h"
#include "mathexpr/EngineAccess.h"

bool setLimits(MathExpression& expression, const ExpressionLimits& limits) noexcept
{
    const MTProgramClaim claim(EngineAccess::programOf(expression));
    if (!claim.isGranted())
    {
        return false;
    }
    EngineAccess::compilerOf(expression).setLimits({limits.textLength, limits.records, limits.nesting});
    return true;
}

bool setLimits(CMathExpr& calculator, const ExpressionLimits& limits) noexcept
{
    return setLimits(EngineAccess::expressionOf(calculator), limits);
}

ExpressionLimits getLimits(const MathExpression& expression) noexcept
{
    const MTLimits& limits = EngineAccess::compilerOf(expression).getLimits();
    return {limits.textLength, limits.records, limits.nesting};
}

ExpressionLimits getLimits(const CMathExpr& calculator) noexcept
{
    return getLimits(EngineAccess::expressionOf(calculator));
}
