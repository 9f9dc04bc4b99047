// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// PromptProbe.cpp - every expression has an object of its own, for one that assigns would change what the next one sees.
#include "tools/calc/PromptProbe.h"

#include "mathexpr/Diagnostics.h"
#include "mathexpr/SMTDefExcepData.h"
#include "mathexpr/SMTParsingExcepData.h"
#include "mathexpr/Variables.h"
#include "tools/calc/Utf8.h"

#include <utility>

namespace {

/// Gives the object the names of the session, but for those of the host's that no expression can hold.
void define(MathExpression& object, const std::vector<NamedValue>& names)
{
    for (const NamedValue& named : names)
    {
        try
        {
            mathexpr::setVariable(object, named.name.c_str(), named.value);
        }
        catch (const mathexpr::DefinitionException&)
        {
            continue;
        }
    }
}

template <class Evaluate>
Verdict judgeWith(MathExpression& object, const std::vector<NamedValue>& names, const Evaluate& evaluate)
{
    define(object, names);
    try
    {
        if (evaluate())
        {
            return Verdict::Accepted;
        }
    }
    catch (const mathexpr::ParsingException&)
    {
        return Verdict::Refused;
    }
    catch (const mathexpr::DefinitionException&)
    {
        return Verdict::Refused;
    }
    const mathexpr::ExpressionDiagnostic diagnostic = mathexpr::getDiagnostic(object);
    const bool depends = diagnostic.kind == mathexpr::ExpressionDiagnostic::Kind::None &&
                         diagnostic.expected == mathexpr::Expected::InDomain;
    return depends ? Verdict::Undefined : Verdict::Refused;
}

}

PromptProbe::PromptProbe(std::vector<NamedValue> givenNames, std::optional<std::uint32_t> givenMaxInteger)
    : names(std::move(givenNames)), maxInteger(givenMaxInteger)
{}

Verdict PromptProbe::judge(const std::string& expression) const
{
    const auto text = toWide(expression);
    if (!text)
    {
        return Verdict::Refused;
    }
    VALTYPE value;
    if (maxInteger)
    {
        CMathExpr calculator;
        return judgeWith(mathexpr::expressionOf(calculator), names,
                         [&] { return calculator.Calculate(text->c_str(), value, *maxInteger); });
    }
    MathExpression object(true, nullptr);
    return judgeWith(object, names, [&] { return object.setExpression(text->c_str()) && object.evaluate(value); });
}
