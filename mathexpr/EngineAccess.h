// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// EngineAccess.h - lets what stands beside the exported classes reach the engine behind them. Internal to this folder.
#pragma once

#include "MTParserLib/MTParser.h"
#include "mathexpr/CMathExpr.h"
#include "mathexpr/HostBoundary.h"
#include "mathexpr/MathExpression.h"

#include <string>

namespace mathexpr {

struct EngineAccess
{
    static const MathExpression& expressionOf(const CMathExpr& calculator) noexcept { return calculator.expression; }

    static const HostRuntime& hostOf(const MathExpression& expression) noexcept { return expression.host; }
    static MTParser& parserOf(const MathExpression& expression) noexcept { return *expression.parser; }

    /// The fast path: the first step of scalar code, which computes the whole evaluation; null where there is more to do.
    /// It is armed only once a pending assignment has been made, and compiling disarms it.
    static const MTScalarStep* fastPathOf(const MathExpression& expression) noexcept
    {
        // Some processors take longer to read the control word than for all the rest.
        const MTScalarStep* const armed = expression.program->choice.getArmed();
        return armed != nullptr && platform::computesAsTheLibrary() ? armed : nullptr;
    }
    /// Ends an evaluation on the fast path.
    /// @param slot  x of the result of the step that has refused its operands
    static void refuse(MathExpression& expression, const double* slot, Message::Id refusal)
    {
        atHostBoundary(expression.host, [&] {
            const MTReentryGuard guard(*expression.program);
            expression.parser->refuse(slot, refusal, !expression.silent);
        });
    }

    static void dropAssignment(MathExpression& expression) noexcept { expression.assignTarget.clear(); }
    static auto& automaticVariablesOf(MathExpression& expression) noexcept { return expression.automaticVariables; }

    /// Gives a variable a value, and defines it if there is none. Refused as an assignment is, by an exception.
    static void store(MathExpression& expression, const std::wstring& name, const VALTYPE& value)
    {
        expression.store(name, value);
    }
};

}
