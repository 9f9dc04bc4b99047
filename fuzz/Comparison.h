// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Comparison.h - plays calls on the library and on the reference, and stops the process where a host could tell them
// apart.
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

    /// Whatever happened: its assignment dropped, the object computes 1+1.
    void expectUsable();

private:
    /// A call and what the library answered, to be told when a later one goes wrong.
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
        std::wstring text;  // of the expression, or the variable's name
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
