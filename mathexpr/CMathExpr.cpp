// CMathExpr.cpp - one call around an expression object.
#include "mathexpr/CMathExpr.h"

CMathExpr::CMathExpr() : expression(false, nullptr) {}

CMathExpr::CMathExpr(const CMathExpr& other) = default;
CMathExpr& CMathExpr::operator=(const CMathExpr& other) = default;
CMathExpr::~CMathExpr() = default;

bool CMathExpr::Calculate(const wchar_t* text, VALTYPE& result, std::uint32_t maxInteger)
{
    expression.setMaxInteger(maxInteger);
    return expression.setExpression(text) && expression.evaluate(result);
}

void CMathExpr::dropAssignment() noexcept
{
    expression.dropAssignment();
}
