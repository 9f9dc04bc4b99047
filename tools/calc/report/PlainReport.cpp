// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// PlainReport.cpp - formats values and failures as lines of text.

#include "tools/calc/report/PlainReport.h"

#include "tools/calc/report/AnswerNotes.h"
#include "tools/calc/report/DiagnosticText.h"
#include "tools/calc/text/Displayable.h"
#include "tools/calc/text/Utf8.h"
#include "tools/calc/text/ValueText.h"
#include "tools/calc/text/Wrapped.h"
#include "tools/calc/units/UnitAnswer.h"

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
        text += ": " + displayable(exception.itemName);
    }
    if (!exception.conflictItemName.empty())
    {
        text += " against " + displayable(exception.conflictItemName);
    }
    if (exception.nbArgs != 0)
    {
        text += " with " + std::to_string(exception.nbArgs) + (exception.nbArgs == 1 ? " argument" : " arguments");
    }
    return text + ".";
}

/// Where the expression failed, on separate lines.
std::string whereText(const Answer& answer, const TerminalStyle& style)
{
    const auto expression = toWide(answer.expression);
    return expression && answer.diagnostic ? diagnosticText(*expression, *answer.diagnostic, style) : std::string();
}

/// A text with its location in front.
std::string after(const std::string& origin, const std::string& text)
{
    return origin.empty() ? text : origin + ": " + text;
}

void reportNotes(const Answer& answer, const std::string& origin, const TerminalStyle& style)
{
    if (style.isTerminal)
    {
        for (const std::string& note : notesOn(answer))
        {
            std::cerr << wrapped(after(origin, "Note: " + note), 0, 0, style.columns) << '\n';
        }
    }
}

/// The expression that answers a question about units.
void reportUnits(const Answer& answer, const TerminalStyle& style)
{
    const std::string line = style.isTerminal ? unitAnswer(answer.expression, style.digits) : std::string();
    if (!line.empty())
    {
        std::cerr << "  " << line << '\n';
    }
}

}

void reportPlain(const Answer& answer, const std::string& origin, const TerminalStyle& style)
{
    for (const VALTYPE& value : answer.values)
    {
        std::cout << valueText(value, style.digits) << '\n';
    }
    std::cout.flush();  // keeps values and failures in order if both go to the same place
    if (!answer.failed)
    {
        reportNotes(answer, origin, style);
        return;
    }
    const std::string word = style.isTerminal ? wordNote(answer.expression, style.atPrompt) : std::string();
    if (!word.empty())
    {
        std::cerr << word << '\n';
    }
    else if (answer.trouble.empty())
    {
        std::cerr << style.failure(wrapped(after(origin, failureText(answer)), 0, 0, style.columns)) << '\n'
                  << whereText(answer, style);
        reportUnits(answer, style);
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
