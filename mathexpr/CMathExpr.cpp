// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// CMathExpr.cpp - compiles and evaluates with an expression object in one call.
#include "mathexpr/CMathExpr.h"

#include "mathexpr/EngineAccess.h"
#include "mathexpr/HostBoundary.h"

#include <utility>

// Constructors compute nothing, but can run out of memory.

CMathExpr::CMathExpr(const mathexpr::HostRuntime& host)
try : expression(false, nullptr, host)
{}
catch (...)
{
    handExceptionsOver(host);
    throw;
}

CMathExpr::CMathExpr(const CMathExpr& other)
try : expression(other.expression)
{}
catch (...)
{
    handExceptionsOver(other.expression.host);
    throw;
}

CMathExpr& CMathExpr::operator=(const CMathExpr& other)
{
    atHostBoundary(expression.host, [&] { expression = other.expression; });
    return *this;
}

CMathExpr::~CMathExpr() = default;

bool CMathExpr::Calculate(const wchar_t* text, VALTYPE& result, std::uint32_t maxInteger)
{
    return atHostBoundary(expression.host, [&] {
        expression.setMaxInteger(maxInteger);
        return expression.setExpression(text) && expression.evaluate(result);
    });
}

MathExpression& mathexpr::expressionOf(CMathExpr& calculator) noexcept
{
    return const_cast<MathExpression&>(expressionOf(std::as_const(calculator)));
}

const MathExpression& mathexpr::expressionOf(const CMathExpr& calculator) noexcept
{
    return mathexpr::EngineAccess::expressionOf(calculator);
}
