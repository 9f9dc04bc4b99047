// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Calculator.h - computes expressions, one after the other, as the options ask.
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

/// Holds one expression object, or one one-shot calculator when there is a limit for whole numbers, so that variables
/// live from one expression to the next.
class Calculator
{
public:
    explicit Calculator(const Options& options);

    /// Gives the host service a name to answer, whose value an expression object of its own computes.
    /// @return what went wrong; empty when nothing did
    std::string defineHostName(const Options::HostName& hostName);

    /// Computes one expression, UTF-8. Nothing that the library throws comes out; a failure is in the answer.
    Answer compute(std::string_view expression);

    /// The expression object that computes, or the one inside the one-shot calculator.
    MathExpression& expression();

    /// What is known of the names that the host service answers.
    const mathexpr::IMathExprNameNotes& hostNotes() const { return hostNames; }

    /// What the next expression may name: the variables in the order in which they were defined, then the names of the
    /// host's that it has not been asked for yet.
    std::vector<NamedValue> namedValues();

    /// Gives a variable a value.
    void setVariable(const wchar_t* name, const VALTYPE& value);

private:
    /// Fills in the values; answer.failed names the stage under way until all is done, also for what is thrown.
    void run(const std::wstring& text, Answer& answer);

    void prepareObject();
    /// Where a one-shot calculation has failed.
    Answer::Stage stageOfOneShotFailure();
    std::optional<mathexpr::ExpressionDiagnostic> diagnose();
    void dropAssignment() noexcept;

    const Options& options;
    MessageRecorder messages;
    HostNames hostNames;
    std::optional<MathExpression> expressionObject;
    std::optional<CMathExpr> oneShot;  // with a limit for whole numbers; else the expression object
};
