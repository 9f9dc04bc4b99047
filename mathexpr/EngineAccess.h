// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// EngineAccess.h - lets what stands beside the exported classes reach the engine behind them. Internal to this folder.
#pragma once

#include "MTParserLib/MTParser.h"
#include "mathexpr/CMathExpr.h"
#include "mathexpr/MathExpression.h"

#include <string>

namespace mathexpr {

struct EngineAccess
{
    static const MathExpression& expressionOf(const CMathExpr& calculator) noexcept { return calculator.expression; }

    static const HostRuntime& hostOf(const MathExpression& expression) noexcept { return expression.host; }
    static MTParser& parserOf(const MathExpression& expression) noexcept { return *expression.parser; }

    static void dropAssignment(MathExpression& expression) noexcept { expression.assignTarget.clear(); }
    static auto& automaticVariablesOf(MathExpression& expression) noexcept { return expression.automaticVariables; }

    /// Gives a variable a value, and defines it if there is none. Refused as an assignment is, by an exception.
    static void store(MathExpression& expression, const std::wstring& name, const VALTYPE& value)
    {
        expression.store(name, value);
    }
};

}
