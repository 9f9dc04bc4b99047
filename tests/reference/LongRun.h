// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// LongRun.h - evaluates a text repeatedly with the library and with the reference, while its variables change.
#pragma once

#include "EngineSession.h"
#include "ReferenceEvaluator.h"

#include <string>

namespace reference {

class LongRun
{
public:
    /// Compiles the text with both.
    LongRun(const std::wstring& text, bool silent, const Host& host);

    /// Changes a variable of both; the next evaluation uses it.
    void change(const std::wstring& name, const VALTYPE& value);

    /// Evaluates with both, unless they have differed already.
    void evaluate();

    /// The history up to the first difference; empty if there is none.
    std::string difference() const;

private:
    std::wstring text;
    EngineSession engine;
    Session session;
    Outcome ofEngine;
    Outcome ofReference;
    std::string history;
};
}
