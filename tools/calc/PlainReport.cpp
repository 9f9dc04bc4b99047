// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// PlainReport.cpp - values and failures as lines of text.

#include "tools/calc/PlainReport.h"

#include "tools/calc/DiagnosticText.h"
#include "tools/calc/Utf8.h"
#include "tools/calc/ValueText.h"

#include <iostream>

namespace {

std::string exceptionText(const RaisedException& exception)
{
    const bool parsing = exception.kind == RaisedException::Kind::Parsing;
    std::string text = parsing ? "Parsing" : "Definition";
    text += " exception " + std::to_string(exception.exID);
    if (parsing)
    {
        text += " at position " + std::to_string(exception.pos);
    }
    if (!exception.itemName.empty())
    {
        text += ": " + exception.itemName;
    }
    if (!exception.conflictItemName.empty())
    {
        text += " against " + exception.conflictItemName;
    }
    if (exception.nbArgs != 0)
    {
        text += " with " + std::to_string(exception.nbArgs) + (exception.nbArgs == 1 ? " argument" : " arguments");
    }
    return text + ".";
}

/// Where the expression failed, in lines of their own.
std::string whereText(const Answer& answer, const TerminalStyle& style)
{
    const auto expression = toWide(answer.expression);
    return expression && answer.diagnostic ? diagnosticText(*expression, *answer.diagnostic, style) : std::string();
}

}

void reportPlain(const Answer& answer, const std::string& origin, const TerminalStyle& style)
{
    for (const VALTYPE& value : answer.values)
    {
        std::cout << valueText(value) << '\n';
    }
    std::cout.flush();  // so that values and failures keep their order where both go to one place
    if (answer.failed && answer.trouble.empty())
    {
        const std::string before = origin.empty() ? origin : origin + ": ";
        std::cerr << style.failure(before + failureText(answer)) << '\n' << whereText(answer, style);
    }
}

std::string failureText(const Answer& answer)
{
    std::string text = answer.trouble;
    const auto addLine = [&text](const std::string& line) { text += (text.empty() ? "" : "\n") + line; };
    for (const ShownMessage& message : answer.messages)
    {
        addLine(message.text);
    }
    if (answer.exception)
    {
        addLine(exceptionText(*answer.exception));
    }
    if (text.empty())
    {
        text = "No value: an operator or a function refused its arguments, or the name cannot be assigned.";
    }
    return text;
}
