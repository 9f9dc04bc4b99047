// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Calculator.h - computes a sequence of expressions, according to the options.
#pragma once

#include "mathexpr/CMathExpr.h"
#include "mathexpr/MathExpression.h"
#include "mathexpr/Variables.h"
#include "tools/calc/answer/Answer.h"
#include "tools/calc/answer/HostNames.h"
#include "tools/calc/answer/MessageRecorder.h"
#include "tools/calc/answer/NamedValue.h"
#include "tools/calc/options/Options.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Owns an expression object, or a one-shot calculator if there is a limit on integers. Variables persist from one
/// expression to the next.
class Calculator
{
public:
    explicit Calculator(const Options& options);

    /// Defines a name that the host service supplies; a separate expression object computes its value.
    /// @return an error message; empty on success
    std::string defineHostName(const Options::HostName& hostName);

    /// Computes an expression in UTF-8. Does not throw: failures are in the answer.
    Answer compute(std::string_view expression);

    /// The expression object, or the one inside the one-shot calculator.
    MathExpression& expression();

    /// Notes on the names of the host service.
    const mathexpr::IMathExprNameNotes& hostNotes() const { return hostNames; }

    /// Names that the next expression can use: variables in the order of definition, then names of the host that
    /// have not been looked up yet.
    std::vector<NamedValue> namedValues();

    /// Sets a variable.
    void setVariable(const wchar_t* name, const VALTYPE& value);

private:
    /// Fills in the values. Keeps answer.failed at the current stage, also when an exception propagates, and resets it
    /// on success.
    void run(const std::wstring& text, Answer& answer);

    void prepareObject();
    /// The stage at which a one-shot calculation failed.
    Answer::Stage stageOfOneShotFailure();
    std::optional<mathexpr::ExpressionDiagnostic> diagnose();
    void dropAssignment() noexcept;

    const Options& options;
    MessageRecorder messages;
    HostNames hostNames;
    std::optional<MathExpression> expressionObject;
    std::optional<CMathExpr> oneShot;  // only with a limit on integers
};
