// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// EngineAccess.h - gives the other sources of this folder access to the engine behind the exported classes. Internal.
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

    /// The fast path: the first step of scalar code that computes the whole evaluation; null if there is more to do. It
    /// is armed only after a pending assignment has been made; compiling disarms it.
    static const MTScalarStep* fastPathOf(const MathExpression& expression) noexcept
    {
        // Some processors take longer to read the control word than to do all the rest.
        const MTScalarStep* const armed = expression.program->choice.getArmed();
        return armed != nullptr && platform::computesAsTheLibrary() ? armed : nullptr;
    }
    /// Ends an evaluation on the fast path with a refusal.
    /// @param slot  x of the result of the step that refused its operands
    static void refuse(MathExpression& expression, const double* slot, Message::Id refusal)
    {
        atHostBoundary(expression.host, [&] {
            const MTReentryGuard guard(*expression.program);
            expression.parser->refuse(slot, refusal, !expression.silent);
        });
    }

    static void dropAssignment(MathExpression& expression) noexcept { expression.assignTarget.clear(); }
    static auto& automaticVariablesOf(MathExpression& expression) noexcept { return expression.automaticVariables; }

    /// Sets a variable, and defines it if it does not exist. Throws if an assignment to the name would be refused.
    static void store(MathExpression& expression, const std::wstring& name, const VALTYPE& value)
    {
        expression.store(name, value);
    }
};

}
