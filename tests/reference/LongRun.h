// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// LongRun.h - one text evaluated over and over, by the library and by the reference, while its variables change.
#pragma once

#include "EngineSession.h"
#include "ReferenceEvaluator.h"

#include <string>

namespace reference {

class LongRun
{
public:
    /// Compiles the text on both sides.
    LongRun(const std::wstring& text, bool silent, const Host& host);

    /// Changes a variable on both sides; no evaluation knows of it before it runs.
    void change(const std::wstring& name, const VALTYPE& value);

    /// Evaluates on both sides, unless they have differed already.
    void evaluate();

    /// Everything up to the first difference; empty while there is none.
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
