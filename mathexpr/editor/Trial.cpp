// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Trial.cpp - the trial is both service and name source of a separate object, and replaces the host of the original
// object.
#include "mathexpr/editor/Trial.h"

#include "mathexpr/Diagnostics.h"
#include "mathexpr/EngineAccess.h"
#include "mathexpr/Limits.h"
#include "mathexpr/SMTDefExcepData.h"
#include "mathexpr/SMTParsingExcepData.h"
#include "mathexpr/ThreadMessageDisplay.h"
#include "mathexpr/Variables.h"
#include "platform/FloatingPointGuard.h"

#include <algorithm>

namespace mathexpr::editor {
namespace {

constexpr ProcessMessageDisplay noDisplay{[](void*, std::uint32_t, const wchar_t*) {}, nullptr};

/// Upper bound on names of unknown kind for which all combinations of number and point are tried.
constexpr std::size_t maxGuessed = 4;

VALTYPE standIn(ValueKind kind) noexcept
{
    VALTYPE value;
    value.type = kind == ValueKind::Point ? 1 : 0;
    value.x = 0.5;
    return value;
}

}

Trial::Trial(const MathExpression& givenOriginal, const KnownNames& givenNames, bool mayAsk) noexcept
    : original(givenOriginal), names(givenNames), mayAskHost(mayAsk)
{}

bool Trial::compile(const std::wstring& text)
{
    // A new object for each text, since names that a text looks up become variables of its object.
    object.emplace(false, static_cast<const IMathExprService*>(this), EngineAccess::hostOf(original));
    hasStandIns = false;
    unknownKinds.clear();
    const MTParser& parser = EngineAccess::parserOf(original);
    EngineAccess::parserOf(*object).setMaxInteger(parser.getMaxInteger());
    setLimits(*object, getLimits(original));
    setNameSource(*object, this);
    return succeeds([&] { return object->setExpression(text.c_str()); });
}

Trial::Verdict Trial::evaluate(const std::wstring& text, std::optional<VALTYPE>& value)
{
    return compile(text) ? evaluateCompiled(value) : verdictOfFailure();
}

Trial::Verdict Trial::evaluateCompiled(std::optional<VALTYPE>& value)
{
    if (drawsRandomNumbers())
    {
        return Verdict::Accepted;
    }
    VALTYPE computed;
    if (!succeeds([&] { return object->evaluate(computed); }))
    {
        return verdictOfFailure();
    }
    if (!hasStandIns)
    {
        value = computed;
    }
    return Verdict::Accepted;
}

Trial::Verdict Trial::judge(const std::wstring& text)
{
    if (!compile(text))
    {
        return verdictOfFailure();
    }
    std::optional<VALTYPE> value;
    Verdict verdict = evaluateCompiled(value);
    const std::size_t guessed = std::min(unknownKinds.size(), maxGuessed);
    for (std::size_t points = 1; verdict == Verdict::Refused && points >> guessed == 0; ++points)
    {
        for (std::size_t index = 0; index < guessed; ++index)
        {
            const bool isPoint = (points >> index & 1) != 0;
            setVariable(*object, unknownKinds[index].c_str(), standIn(isPoint ? ValueKind::Point : ValueKind::Number));
        }
        verdict = evaluateCompiled(value);
    }
    return verdict;
}

ExpressionDiagnostic Trial::diagnostic() const
{
    return getDiagnostic(*object);
}

/// @param work  returns whether it succeeded, or throws what the engine throws
template <class Work>
bool Trial::succeeds(Work work)
{
    const ThreadMessageDisplay muffled(&noDisplay);
    try
    {
        return work();
    }
    catch (const ParsingException&)
    {
        return false;
    }
}

bool Trial::drawsRandomNumbers() const
{
    const auto& steps = EngineAccess::parserOf(*object).getProgram().steps;
    return std::any_of(steps.begin(), steps.end(), [](const MTProgramStep& step) {
        return step.nbArgs != 0 && !step.item->isConstant();  // variables have no arguments
    });
}

Trial::Verdict Trial::verdictOfFailure() const
{
    const MTFailure& failure = EngineAccess::parserOf(*object).getFailure();
    const bool depends = failure.kind == ExpressionDiagnostic::Kind::None && failure.expected == Expected::InDomain;
    return depends ? Verdict::Undefined : Verdict::Refused;
}

bool Trial::lookupValue(const wchar_t* name, VALTYPE& value) const
{
    if (const MTVariableDefinition* const variable = names.registrar().findVariableDefinition(name))
    {
        value = *variable->item->getValuePtr();
        return true;
    }
    const IMathExprService* const service = mayAskHost ? EngineAccess::parserOf(original).getService() : nullptr;
    if (service != nullptr)
    {
        const platform::HostFloatingPoint hostsWords;
        if (service->lookupValue(name, value))
        {
            return true;
        }
    }
    const std::wstring_view wanted = name;
    if (wanted != anyNumber && wanted != anyPoint && !names.isNamedValue(wanted))
    {
        return false;
    }
    hasStandIns = true;
    const ValueKind kind = kindOf(wanted);
    if (kind != ValueKind::Number && kind != ValueKind::Point)
    {
        unknownKinds.emplace_back(wanted);
    }
    value = standIn(kind);
    return true;
}

ValueKind Trial::kindOf(std::wstring_view name) const
{
    if (name == anyNumber || name == anyPoint)
    {
        return name == anyPoint ? ValueKind::Point : ValueKind::Number;
    }
    const auto told = kinds.find(name);
    if (told != kinds.end())
    {
        return told->second;
    }
    const NameNotes* const indexed = names.findIndexed(name);
    return indexed == nullptr ? ValueKind::Unknown : indexed->kind;
}

/// Lists the variables, then the names that the host offers.
const wchar_t* Trial::getName(std::uint32_t index) const
{
    const std::size_t variableCount = names.registrar().getNbVariables();
    if (index < variableCount)
    {
        return names.registrar().getVariableDefinition(index).name.c_str();
    }
    const std::size_t offeredIndex = index - variableCount;
    return offeredIndex < names.hostNames().size() ? names.hostNames()[offeredIndex].c_str() : nullptr;
}

}
