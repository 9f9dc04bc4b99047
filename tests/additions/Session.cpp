// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Session.cpp - see Session.h.
#include "tests/additions/Session.h"

bool Host::lookupValue(const wchar_t* name, VALTYPE& value) const
{
    asked.emplace_back(name);
    const auto known = names.find(name);
    if (known == names.end())
    {
        return false;
    }
    value = known->second;
    return true;
}

Session::Session(bool silent) : expression(silent, &host) {}

Outcome Session::run(const wchar_t* text)
{
    Outcome outcome;
    shown.take();
    try
    {
        outcome.compiled = expression.setExpression(text);
        outcome.evaluated = outcome.compiled && expression.evaluate(outcome.value);
    }
    catch (const mathexpr::ParsingException& exception)
    {
        outcome.parsing = exception.entries.front().data;
    }
    catch (const mathexpr::DefinitionException& exception)
    {
        outcome.definition = exception.entries.front().data;
    }
    outcome.messages = shown.ids;
    outcome.messageTexts = shown.texts;
    return outcome;
}
