// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Variables.cpp - see Variables.h.
#include "mathexpr/Variables.h"

#include "mathexpr/EngineAccess.h"
#include "mathexpr/HostBoundary.h"

#include <string_view>

namespace mathexpr {
namespace {

constexpr const wchar_t* variablesFile = L"mathexpr/Variables";

std::wstring_view textOf(const wchar_t* name) noexcept
{
    return name == nullptr ? std::wstring_view{} : std::wstring_view(name);
}

/// Refuses names that the registrar would accept but no expression can contain. The registrar refuses the others.
void checkWritable(const MTParserRegistrar& registrar, std::wstring_view name)
{
    for (std::size_t at = 0; at < name.size(); ++at)
    {
        std::wstring_view obstacle;
        if (std::wstring_view(L" ()=").find(name[at]) != std::wstring_view::npos)
        {
            obstacle = name.substr(at, 1);
        }
        else
        {
            registrar.isOperatorSymbol(name.substr(at), obstacle);
        }
        if (!obstacle.empty())
        {
            throw DefinitionException(__LINE__, 0, variablesFile,
                                      SMTDefExcepData{DefinitionError::VariableContainsSyntaxCharacter,
                                                      std::wstring(name), std::wstring(obstacle)});
        }
    }
}

template <class Wanted>
std::vector<std::wstring> namesOf(const MTParserRegistrar& registrar, Wanted isWanted)
{
    std::vector<std::wstring> names;
    for (std::size_t index = 0; index < registrar.getNbVariables(); ++index)
    {
        const MTVariableDefinition& variable = registrar.getVariableDefinition(index);
        if (isWanted(variable))
        {
            names.push_back(variable.name);
        }
    }
    return names;
}

}

std::vector<std::wstring> getUsedNames(const MathExpression& expression)
{
    return atHostBoundary(EngineAccess::hostOf(expression), [&] {
        std::vector<std::wstring> names;
        if (EngineAccess::parserOf(expression).getProgram().isComplete())
        {
            for (const IMathVariable* variable : EngineAccess::parserOf(expression).getProgram().usedVariables)
            {
                names.push_back(variable->getSymbol());
            }
        }
        return names;
    });
}

std::vector<std::wstring> getVariableNames(const MathExpression& expression)
{
    return atHostBoundary(EngineAccess::hostOf(expression), [&] {
        return namesOf(EngineAccess::parserOf(expression).getRegistrar(),
                       [](const MTVariableDefinition&) { return true; });
    });
}

std::vector<std::wstring> getHostNames(const MathExpression& expression)
{
    return atHostBoundary(EngineAccess::hostOf(expression), [&] {
        return namesOf(EngineAccess::parserOf(expression).getRegistrar(),
                       [](const MTVariableDefinition& variable) { return variable.answeredByHost; });
    });
}

bool getVariable(const MathExpression& expression, const wchar_t* name, VALTYPE& value)
{
    IMathVariable* variable = EngineAccess::parserOf(expression).getRegistrar().findVariable(textOf(name));
    if (variable == nullptr)
    {
        return false;
    }
    value = *variable->getValuePtr();
    return true;
}

bool setVariable(MathExpression& expression, const wchar_t* name, const VALTYPE& value)
{
    const MTReentryGuard guard(EngineAccess::parserOf(expression).getProgram());
    if (!guard.hasEntered())
    {
        return false;
    }
    return atHostBoundary(EngineAccess::hostOf(expression), [&] {
        const std::wstring_view text = textOf(name);
        checkWritable(EngineAccess::parserOf(expression).getRegistrar(), text);
        EngineAccess::store(expression, std::wstring(text), value);
        return true;
    });
}

bool removeVariable(MathExpression& expression, const wchar_t* name)
{
    const MTReentryGuard guard(EngineAccess::parserOf(expression).getProgram());
    return guard.hasEntered() && atHostBoundary(EngineAccess::hostOf(expression), [&] {
               return EngineAccess::parserOf(expression).removeVariable(textOf(name));
           });
}

VALTYPE* getVariableAddress(MathExpression& expression, const wchar_t* name)
{
    IMathVariable* variable = EngineAccess::parserOf(expression).getRegistrar().findVariable(textOf(name));
    return variable == nullptr ? nullptr : variable->getValuePtr();
}

void dropAssignment(MathExpression& expression) noexcept
{
    EngineAccess::dropAssignment(expression);
}

}
