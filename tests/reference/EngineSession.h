// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// EngineSession.h - the library with the calls of the reference's Session, so that both can run the same scripts.
#pragma once

#include "ReferenceEvaluator.h"

#include "mathexpr/CMathExpr.h"
#include "mathexpr/MathExpression.h"
#include "tests/support/MessageRecorder.h"

#include <vector>

namespace reference {

/// A MathExpression. Only one session or calculator may exist at a time, because each records the messages of the
/// process.
class EngineSession
{
public:
    explicit EngineSession(bool silent, Host host = {});

    Outcome setExpression(const std::wstring& text);
    Outcome evaluate(const VALTYPE& result);
    void dropAssignment();
    bool changeVariable(const std::wstring& name, const VALTYPE& value);

private:
    class Service final : public IMathExprService
    {
    public:
        explicit Service(Host answers) : host(std::move(answers)) {}
        bool lookupValue(const wchar_t* name, VALTYPE& value) const override;

        Host host;
        mutable std::vector<std::wstring> asked;
    };

    Service service;
    MessageRecorder recorder;
    MathExpression expression;
};

/// Calls an item as an evaluator would. The outcome's value is the result record after the call, even if the item
/// refused.
Outcome evaluateItem(const IMathExprItemEvaluator& item, const std::vector<VALTYPE>& args, const VALTYPE& result,
                     bool showMessages);

/// A CMathExpr, or several copies of one.
class EngineCalculator
{
public:
    Outcome calculate(const std::wstring& text, const VALTYPE& result, std::uint32_t limit, std::size_t copy = 0);
    void dropAssignment(std::size_t copy);

    std::size_t nbCopies() const { return calculators.size(); }
    void copy(std::size_t from);
    void assign(std::size_t from, std::size_t to);
    void destroy(std::size_t copy);

private:
    MessageRecorder recorder;
    std::vector<CMathExpr> calculators{1};
};
}
