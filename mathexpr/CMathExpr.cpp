// CMathExpr.cpp - one call around an expression object.
#include "mathexpr/CMathExpr.h"

#include "mathexpr/HostBoundary.h"

CMathExpr::CMathExpr(const HostRuntime& host) : expression(false, nullptr, host) {}

CMathExpr::CMathExpr(const CMathExpr& other) = default;
CMathExpr& CMathExpr::operator=(const CMathExpr& other) = default;
CMathExpr::~CMathExpr() = default;

bool CMathExpr::Calculate(const wchar_t* text, VALTYPE& result, std::uint32_t maxInteger)
{
    return atHostBoundary(expression.host, [&] {
        expression.setMaxInteger(maxInteger);
        return expression.setExpression(text) && expression.evaluate(result);
    });
}

void CMathExpr::dropAssignment() noexcept
{
    expression.dropAssignment();
}
