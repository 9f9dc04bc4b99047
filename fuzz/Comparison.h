// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Comparison.h - makes the same calls on the library and on the reference, and aborts if a host could observe a
// difference.
#pragma once

#include "tests/reference/EngineSession.h"
#include "tests/reference/ReferenceEvaluator.h"

#include <cstdint>
#include <string>
#include <vector>

class Comparison
{
public:
    explicit Comparison(bool silent);

    void setExpression(const std::wstring& text);
    void evaluate();
    void dropAssignment();
    void changeVariable(const std::wstring& name, const VALTYPE& value);

    /// Drops the pending assignment, and expects that the object then computes 1+1, whatever happened before.
    void expectUsable();

private:
    /// A call and the library's outcome, reported if a later call fails.
    struct Call
    {
        enum class Kind : std::uint8_t
        {
            SetExpression,
            Evaluate,
            DropAssignment,
            ChangeVariable,
        };

        Kind kind;
        std::wstring text;  // the expression, or the name of the variable
        VALTYPE value;
        reference::Outcome outcome;
    };

    static std::string describe(const Call& call);
    void compare(Call call, const reference::Outcome& ofReference);
    [[noreturn]] void fail(const std::string& expected) const;

    std::vector<Call> history;
    reference::EngineSession library;
    reference::Session reference;
};
