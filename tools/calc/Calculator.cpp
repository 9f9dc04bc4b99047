// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Calculator.cpp - the tool as a host: calls the exported classes and collects their results.

#include "tools/calc/Calculator.h"

#include "mathexpr/BulkEvaluation.h"
#include "mathexpr/Diagnostics.h"
#include "mathexpr/SMTDefExcepData.h"
#include "mathexpr/SMTParsingExcepData.h"
#include "mathexpr/Variables.h"
#include "tools/calc/report/PlainReport.h"
#include "tools/calc/text/Utf8.h"

#include <new>
#include <utility>

namespace {

constexpr const char* notText = "not valid UTF-8, or a zero character in it";

RaisedException describe(const mathexpr::ParsingException& exception)
{
    const auto& newest = exception.entries.front();
    return {RaisedException::Kind::Parsing,
            newest.data.exID,
            newest.data.pos,
            toUtf8(newest.data.itemName),
            newest.data.nbArgs,
            {},
            toUtf8(newest.file),
            newest.line,
            exception.entries.size()};
}

RaisedException describe(const mathexpr::DefinitionException& exception)
{
    const auto& newest = exception.entries.front();
    return {RaisedException::Kind::Definition,    newest.data.exID,    0,           toUtf8(newest.data.itemName), 0,
            toUtf8(newest.data.conflictItemName), toUtf8(newest.file), newest.line, exception.entries.size()};
}

/// Calls work, and records its exceptions in the answer.
template <class Work>
void guarded(Answer& answer, Work work)
{
    try
    {
        work();
    }
    catch (const mathexpr::ParsingException& exception)
    {
        answer.exception = describe(exception);
    }
    catch (const mathexpr::DefinitionException& exception)
    {
        answer.exception = describe(exception);
    }
    catch (const std::bad_alloc&)
    {
        answer.trouble = "not enough memory";
    }
}

}

Calculator::Calculator(const Options& givenOptions) : options(givenOptions) {}

std::string Calculator::defineHostName(const Options::HostName& hostName)
{
    const auto name = toWide(hostName.name);
    const auto text = toWide(hostName.expression);
    if (!name || !text)
    {
        return notText;
    }
    MathExpression object(false, nullptr);
    VALTYPE value;
    bool computed = false;
    Answer answer;
    guarded(answer, [&] { computed = object.setExpression(text->c_str()) && object.evaluate(value); });
    answer.messages = messages.takeMessages();
    if (computed)
    {
        hostNames.define(*name, value);
        return {};
    }
    return failureText(answer);
}

Answer Calculator::compute(std::string_view expression)
{
    Answer answer;
    answer.expression = expression;
    answer.failed = Answer::Stage::Compile;
    const auto text = toWide(expression);
    if (!text)
    {
        answer.trouble = notText;
        return answer;
    }
    guarded(answer, [&] { run(*text, answer); });
    answer.messages = messages.takeMessages();
    answer.asked = hostNames.takeAsked();
    if (answer.failed)
    {
        answer.diagnostic = diagnose();
        dropAssignment();
        if (options.maxInteger)
        {
            answer.failed = stageOfOneShotFailure();
        }
    }
    return answer;
}

MathExpression& Calculator::expression()
{
    prepareObject();
    return oneShot ? mathexpr::expressionOf(*oneShot) : *expressionObject;
}

std::vector<NamedValue> Calculator::namedValues()
{
    const MathExpression& known = expression();
    std::vector<NamedValue> named;
    for (const std::wstring& name : mathexpr::getVariableNames(known))
    {
        VALTYPE value;
        mathexpr::getVariable(known, name.c_str(), value);
        named.push_back({name, value});
    }
    for (std::uint32_t index = 0; !oneShot && hostNames.getName(index) != nullptr; ++index)
    {
        VALTYPE value;
        const std::wstring name = hostNames.getName(index);
        if (!mathexpr::getVariable(known, name.c_str(), value))
        {
            named.push_back({name, hostNames.valueOf(name)});
        }
    }
    return named;
}

void Calculator::setVariable(const wchar_t* name, const VALTYPE& value)
{
    mathexpr::setVariable(expression(), name, value);
}

void Calculator::run(const std::wstring& text, Answer& answer)
{
    prepareObject();
    if (expressionObject && !expressionObject->setExpression(text.c_str()))
    {
        return;
    }
    answer.failed = Answer::Stage::Evaluate;
    for (std::uint32_t i = 0; i < options.repeat; ++i)
    {
        VALTYPE value;
        if (!(oneShot ? oneShot->Calculate(text.c_str(), value, *options.maxInteger)
                      : expressionObject->evaluate(value)))
        {
            return;
        }
        answer.values.push_back(value);
    }
    answer.failed.reset();
}

void Calculator::prepareObject()
{
    if (options.maxInteger && (!oneShot || options.fresh))
    {
        oneShot.emplace();
    }
    else if (!options.maxInteger && (!expressionObject || options.fresh))
    {
        expressionObject.emplace(options.silent, &hostNames);
        mathexpr::setNameSource(*expressionObject, &hostNames);
    }
}

std::optional<mathexpr::ExpressionDiagnostic> Calculator::diagnose()
{
    if (!oneShot && !expressionObject)
    {
        return std::nullopt;
    }
    const MathExpression& failed = oneShot ? mathexpr::expressionOf(*oneShot) : *expressionObject;
    return mathexpr::hasFailed(failed) ? std::optional(mathexpr::getDiagnostic(failed)) : std::nullopt;
}

// A one-shot calculation does not report the failed stage. But a text that compiled has left a program, which a bulk
// evaluation of zero rows detects.
Answer::Stage Calculator::stageOfOneShotFailure()
{
    VALTYPE unused;
    mathexpr::BulkOutcome outcome;
    const bool isCompiled =
        mathexpr::evaluateBulk(mathexpr::expressionOf(*oneShot), nullptr, 0, 0, {&unused}, 1, outcome);
    return isCompiled ? Answer::Stage::Evaluate : Answer::Stage::Compile;
}

// Otherwise the next successful expression would carry out the failed assignment.
void Calculator::dropAssignment() noexcept
{
    if (oneShot)
    {
        mathexpr::dropAssignment(mathexpr::expressionOf(*oneShot));
    }
    if (expressionObject)
    {
        mathexpr::dropAssignment(*expressionObject);
    }
}
