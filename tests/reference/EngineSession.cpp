// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// EngineSession.cpp - calls the library and records what a host can observe.
#include "EngineSession.h"

#include "mathexpr/SMTDefExcepData.h"
#include "mathexpr/SMTParsingExcepData.h"
#include "mathexpr/Variables.h"
#include "tests/language/VariableAccess.h"

namespace reference {
namespace {

/// Wraps exceptions of the host's service, to distinguish them from the library's own.
struct ThrownByHost
{};

template <class Call>
Outcome observed(MessageRecorder& recorder, Call call)
{
    Outcome outcome;
    recorder.take();
    try
    {
        outcome.returned = call();
    }
    catch (const mathexpr::ParsingException& exception)
    {
        const SMTParsingExcepData& data = exception.entries.front().data;
        outcome.raised = Raised{Raised::Kind::Parsing, data.exID, data.pos, data.itemName, data.nbArgs, {}};
    }
    catch (const mathexpr::DefinitionException& exception)
    {
        const SMTDefExcepData& data = exception.entries.front().data;
        outcome.raised = Raised{Raised::Kind::Definition, data.exID, 0, data.itemName, 0, data.conflictItemName};
    }
    catch (const ThrownByHost&)
    {
        outcome.raised = Raised{Raised::Kind::Host, 0, 0, {}, 0, {}};
    }
    outcome.messages = recorder.take();
    return outcome;
}
}

EngineSession::EngineSession(bool silent, Host host)
    : service(std::move(host)), expression(silent, service.host ? &service : nullptr)
{}

bool EngineSession::Service::lookupValue(const wchar_t* name, VALTYPE& value) const
{
    asked.emplace_back(name);
    try
    {
        return host(name, value);
    }
    catch (...)
    {
        throw ThrownByHost();
    }
}

Outcome EngineSession::setExpression(const std::wstring& text)
{
    service.asked.clear();
    Outcome outcome = observed(recorder, [&] { return expression.setExpression(text.c_str()); });
    outcome.asked = service.asked;
    return outcome;
}

Outcome EngineSession::evaluate(const VALTYPE& result)
{
    VALTYPE value = result;
    service.asked.clear();
    Outcome outcome = observed(recorder, [&] { return expression.evaluate(value); });
    outcome.value = value;
    outcome.asked = service.asked;
    return outcome;
}

void EngineSession::dropAssignment()
{
    mathexpr::dropAssignment(expression);
}

bool EngineSession::changeVariable(const std::wstring& name, const VALTYPE& value)
{
    try
    {
        setVariable(expression, name, value);
        return true;
    }
    catch (const mathexpr::DefinitionException&)
    {
        return false;
    }
}

Outcome evaluateItem(const IMathExprItemEvaluator& item, const std::vector<VALTYPE>& args, const VALTYPE& result,
                     bool showMessages)
{
    MessageRecorder recorder;
    VALTYPE value = result;
    const auto nbArgs = static_cast<std::uint32_t>(args.size());
    Outcome outcome = observed(recorder, [&] { return item.evaluate(nbArgs, args.data(), value, showMessages); });
    outcome.value = value;
    return outcome;
}

Outcome EngineCalculator::calculate(const std::wstring& text, const VALTYPE& result, std::uint32_t limit,
                                    std::size_t copy)
{
    VALTYPE value = result;
    Outcome outcome = observed(recorder, [&] { return calculators[copy].Calculate(text.c_str(), value, limit); });
    outcome.value = value;
    return outcome;
}

void EngineCalculator::dropAssignment(std::size_t copy)
{
    mathexpr::dropAssignment(mathexpr::expressionOf(calculators[copy]));
}

void EngineCalculator::copy(std::size_t from)
{
    calculators.push_back(calculators[from]);
}

void EngineCalculator::assign(std::size_t from, std::size_t to)
{
    calculators[to] = calculators[from];
}

void EngineCalculator::destroy(std::size_t copy)
{
    calculators.erase(calculators.begin() + static_cast<std::ptrdiff_t>(copy));
}
}
