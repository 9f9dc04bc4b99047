// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// LongRun.cpp - see LongRun.h.
#include "LongRun.h"

namespace reference {

LongRun::LongRun(const std::wstring& expression, bool silent, const Host& host)
    : text(expression), engine(silent, host), session(silent, host), ofEngine(engine.setExpression(text)),
      ofReference(session.setExpression(text))
{}

void LongRun::change(const std::wstring& name, const VALTYPE& value)
{
    engine.changeVariable(name, value);
    session.changeVariable(name, value);
    history += "\n  " + printable(name) + " = " + describe(value);
}

void LongRun::evaluate()
{
    if (!sameOutcome(ofEngine, ofReference))
    {
        return;
    }
    ofEngine = engine.evaluate(VALTYPE{});
    ofReference = session.evaluate(VALTYPE{});
    history += "\n  " + describe(ofReference);
}

std::string LongRun::difference() const
{
    return sameOutcome(ofEngine, ofReference) ? "" : printable(text) + history + "\nlibrary: " + describe(ofEngine);
}
}
