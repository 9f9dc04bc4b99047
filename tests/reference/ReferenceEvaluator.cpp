// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ReferenceEvaluator.cpp - the reference's expression object: compile, run record by record, assign once.
#include "ReferenceEvaluator.h"

#include "ReferenceCompiler.h"

#include <bit>
#include <charconv>
#include <cmath>

namespace reference {
namespace {

/// Runs a call, and records its exceptions in the outcome.
template <class Call>
Outcome observed(bool silent, Messages& messages, Call call)
{
    Outcome outcome;
    try
    {
        outcome.returned = call(outcome);
    }
    catch (const Refusal&)
    {
        outcome.returned = false;
    }
    catch (const Failure& failure)
    {
        if (silent || failure.message == 0)
        {
            outcome.raised = failure.raised;
        }
        else
        {
            messages.refuse(failure.message);
        }
    }
    outcome.messages = messages.numbers;
    return outcome;
}

/// Bit for bit, except that all NaNs are equal.
bool sameNumber(double left, double right)
{
    return (std::isnan(left) && std::isnan(right)) ||
           std::bit_cast<std::uint64_t>(left) == std::bit_cast<std::uint64_t>(right);
}

bool sameValue(const VALTYPE& left, const VALTYPE& right)
{
    return left.type == right.type && left.flag == right.flag && left.reserved == right.reserved &&
           left.padding == right.padding && sameNumber(left.x, right.x) && sameNumber(left.y, right.y) &&
           sameNumber(left.z, right.z);
}

std::string shortest(double number)
{
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    return std::isnan(number) ? "nan" : std::string(digits, end);
}
}

Session::Session(bool silentSession, Host answers) : silent(silentSession), host(std::move(answers)) {}

Session::~Session() = default;

void Session::setMaxInteger(std::uint32_t limit)
{
    maxInteger = limit;
}

Outcome Session::setExpression(const std::wstring& text)
{
    Messages messages;
    messages.shown = !silent;
    program.clear();
    return observed(silent, messages, [&](Outcome& outcome) {
        Surroundings surroundings{host, maxInteger, variables, assignTarget, messages, outcome.asked};
        program = compile(withoutBlanks(text), surroundings);
        return true;
    });
}

Outcome Session::evaluate(const VALTYPE& result)
{
    Messages messages;
    messages.shown = !silent;
    VALTYPE value = result;
    Outcome outcome = observed(silent, messages, [&](Outcome&) {
        if (program.empty())
        {
            return false;
        }
        const Record& root = *program.back();
        if (!root.constant)
        {
            for (const auto& record : program)
            {
                if (record->variable != nullptr)
                {
                    *record->destination = *record->variable;
                }
                else if (!record->item->evaluate(record->args, *record->destination, messages))
                {
                    return false;
                }
            }
        }
        if (!assignTarget.empty())
        {
            auto variable = variables.find(folded(assignTarget));
            if (variable == variables.end())
            {
                try
                {
                    requireVariableName(assignTarget);
                }
                catch (const Failure& refused)
                {
                    return messages.refuse(refused.message);
                }
                variable = variables.emplace(folded(assignTarget), std::make_unique<VALTYPE>()).first;
            }
            *variable->second = root.value;
            assignTarget.clear();
        }
        value = root.value;
        return true;
    });
    outcome.value = value;
    return outcome;
}

void Session::dropAssignment()
{
    assignTarget.clear();
}

Outcome Session::calculate(const std::wstring& text, const VALTYPE& result, std::uint32_t limit)
{
    setMaxInteger(limit);
    Outcome compiled = setExpression(text);
    if (!compiled.returned)
    {
        compiled.value = result;
        return compiled;
    }
    return evaluate(result);
}

bool Session::changeVariable(const std::wstring& name, const VALTYPE& value)
{
    const auto found = variables.find(folded(name));
    if (found == variables.end())
    {
        return false;
    }
    *found->second = value;
    return true;
}

bool sameOutcome(const Outcome& left, const Outcome& right)
{
    return left.returned == right.returned && sameValue(left.value, right.value) && left.messages == right.messages &&
           left.raised == right.raised && left.asked == right.asked;
}

std::string describe(const VALTYPE& value)
{
    std::string line = shortest(value.x);
    if (value.type != 0)
    {
        line = "[" + line + "," + shortest(value.y) + "," + shortest(value.z) + "]";
    }
    return value.flag != 0 ? line + " flag" : line;
}

std::string describe(const Outcome& outcome)
{
    std::string line = outcome.returned ? describe(outcome.value) : "false";
    if (outcome.raised)
    {
        const Raised& raised = *outcome.raised;
        const bool parsing = raised.kind == Raised::Kind::Parsing;
        const bool definition = raised.kind == Raised::Kind::Definition;
        line = std::string("raised ") + (parsing ? "parsing" : definition ? "definition" : "host");
        line += " " + std::to_string(raised.exID);
        line += parsing ? " at " + std::to_string(raised.pos) : "";
        line += raised.itemName.empty() ? "" : " " + printable(raised.itemName);
        line += raised.conflictItemName.empty() ? "" : " against " + printable(raised.conflictItemName);
        line += raised.nbArgs == 0 ? "" : " nbArgs " + std::to_string(raised.nbArgs);
    }
    for (const std::uint32_t message : outcome.messages)
    {
        line += ", message " + std::to_string(message);
    }
    for (const std::wstring& name : outcome.asked)
    {
        line += ", asked " + printable(name);
    }
    return line;
}

std::string printable(const std::wstring& text)
{
    std::string line;
    for (const wchar_t ch : text)
    {
        if (ch >= L' ' && ch <= L'~')
        {
            line += static_cast<char>(ch);
        }
        else
        {
            char digits[16];
            const auto code = static_cast<std::uint32_t>(ch);
            const auto end = std::to_chars(digits, digits + sizeof digits, code, 16).ptr;
            line += "\\u{" + std::string(digits, end) + "}";
        }
    }
    return line;
}
}
