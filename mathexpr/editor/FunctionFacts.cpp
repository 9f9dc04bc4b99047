// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// FunctionFacts.cpp - evaluates every function with sample arguments that are valid for most functions.
#include "mathexpr/editor/FunctionFacts.h"

#include "MTParserLib/MTParser.h"
#include "MTParserLib/compile/MTCompileErrors.h"
#include "mathexpr/SMTParsingExcepData.h"
#include "mathexpr/editor/UnitNames.h"
#include "platform/KeptWhileLoaded.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>

namespace mathexpr::editor {
namespace {

/// No fixed-count function has more; functions with any number of arguments are called with three.
constexpr std::uint32_t maxArguments = 4;
constexpr std::uint32_t argumentsOfAny = 3;

struct SampleArgument
{
    std::wstring_view text;
    VALTYPE value;
};

using SampleArguments = std::array<SampleArgument, maxArguments>;

/// Positive numbers; then numbers within the domain of the arc functions.
constexpr std::array<SampleArguments, 2> numberSamples{{
    {{{L"2", {0, 0, 0, 0, 2, 0, 0}},
      {L"3", {0, 0, 0, 0, 3, 0, 0}},
      {L"4", {0, 0, 0, 0, 4, 0, 0}},
      {L"5", {0, 0, 0, 0, 5, 0, 0}}}},
    {{{L"0.5", {0, 0, 0, 0, 0.5, 0, 0}},
      {L"3", {0, 0, 0, 0, 3, 0, 0}},
      {L"4", {0, 0, 0, 0, 4, 0, 0}},
      {L"5", {0, 0, 0, 0, 5, 0, 0}}}},
}};

/// Two intersecting lines.
constexpr SampleArguments pointSamples{{{L"[0,0,0]", {1, 0, 0, 0, 0, 0, 0}},
                                        {L"[2,2,0]", {1, 0, 0, 0, 2, 2, 0}},
                                        {L"[0,2,0]", {1, 0, 0, 0, 0, 2, 0}},
                                        {L"[2,0,0]", {1, 0, 0, 0, 2, 0, 0}}}};

struct SampleRun
{
    bool accepted;
    Message::Id refusal;
    VALTYPE result;
};

SampleRun runSample(const MTFunctionDefinition& function, const SampleArguments& arguments, std::uint32_t count)
{
    std::array<VALTYPE, maxArguments + 1> values;  // followed by the result
    std::transform(arguments.begin(), arguments.end(), values.begin(),
                   [](const SampleArgument& argument) { return argument.value; });
    SampleRun run{false, Message::None, {}};
    try
    {
        run.refusal = evaluateItem(*function.kernels, function.item, values.data(), count);
        run.result = values[count];
        run.accepted = run.refusal == Message::None;
    }
    catch (const ParsingException&)
    {
        run.refusal = Message::InvalidExpression;
    }
    return run;
}

/// The message of a function of one number for an argument outside its domain.
Message::Id domainOf(const MTFunctionDefinition& function)
{
    for (const double x : {-1.0, 0.0, 2.0, 3e9})
    {
        SampleArguments outside = numberSamples.front();
        outside.front().value.x = x;
        const Message::Id refusal = runSample(function, outside, 1).refusal;
        if (expectedInsteadOf(refusal) == Expected::InDomain)
        {
            return refusal;
        }
    }
    return Message::None;
}

/// The names in the brackets of a usage line; for the one function whose usage has none, the coordinates.
std::vector<std::wstring> parametersOf(const std::wstring& help)
{
    const std::size_t open = help.find(L'(');
    if (open == std::wstring::npos)
    {
        return {L"x", L"y", L"z"};
    }
    std::vector<std::wstring> names(1);
    for (const wchar_t character : help.substr(open + 1, help.find(L')') - open - 1))
    {
        if (character == L',')
        {
            names.emplace_back();
        }
        else if (character != L' ')
        {
            names.back() += character;
        }
    }
    return names;
}

std::wstring callOf(const FunctionFacts& facts)
{
    std::wstring call = facts.symbol;
    for (const std::wstring& argument : facts.arguments)
    {
        call += (call.size() == facts.symbol.size() ? L'(' : L',') + argument;
    }
    return call + L')';
}

FunctionFacts factsOf(const MTFunctionDefinition& function)
{
    FunctionFacts facts{std::wstring(function.symbol),
                        function.item->getHelpString(),
                        function.item->getDescription(),
                        function.nbArgs,
                        {},
                        ValueKind::Number,
                        ValueKind::Number,
                        Message::None,
                        {},
                        {},
                        unitOfArgument(function.symbol),
                        unitOfResult(function.symbol)};
    facts.description.erase(0, facts.description.find_first_not_of(L' '));
    facts.parameters = parametersOf(facts.help);
    const std::uint32_t count = function.nbArgs == NB_ARGS_UNDEFINED ? argumentsOfAny : function.nbArgs;
    const SampleArguments* used = &numberSamples.front();
    if (function.item->isConstant())  // must not draw a random number
    {
        facts.domain = count == 1 ? domainOf(function) : Message::None;
        const bool takesPoints = runSample(function, pointSamples, count).accepted;
        const auto* const numbers =
            std::find_if(numberSamples.begin(), numberSamples.end(),
                         [&](const SampleArguments& samples) { return runSample(function, samples, count).accepted; });
        const bool takesNumbers = numbers != numberSamples.end();
        facts.parameterKind = !takesNumbers ? ValueKind::Point : takesPoints ? ValueKind::Either : ValueKind::Number;
        used = takesNumbers ? numbers : &pointSamples;
        facts.resultKind = runSample(function, *used, count).result.type == 1 ? ValueKind::Point : ValueKind::Number;
    }
    std::transform(used->begin(), used->begin() + count, std::back_inserter(facts.arguments),
                   [](const SampleArgument& argument) { return std::wstring(argument.text); });
    facts.call = callOf(facts);
    return facts;
}

struct FactsTable
{
    FactsTable()
    {
        MTParser session(false, nullptr);
        const MTParserRegistrar& registrar = session.getRegistrar();
        for (std::size_t index = 0; index < registrar.getNbFunctions(); ++index)
        {
            const MTFunctionDefinition& function = registrar.getFunctionDefinition(index);
            if (function.nbArgs != 0)  // no expression can call it without arguments
            {
                all.push_back(factsOf(function));
            }
        }
        for (const FunctionFacts& facts : all)
        {
            bySymbol[facts.symbol].push_back(&facts);
        }
    }

    std::vector<FunctionFacts> all;
    std::map<std::wstring_view, std::vector<const FunctionFacts*>> bySymbol;
};

const FactsTable& factsTable()
{
    static platform::KeptWhileLoaded<std::unique_ptr<const FactsTable>> table(std::make_unique<const FactsTable>());
    return **table;
}

}

const std::vector<FunctionFacts>& allFunctions()
{
    return factsTable().all;
}

std::vector<const FunctionFacts*> overloadsOf(std::wstring_view symbol)
{
    const auto found = factsTable().bySymbol.find(symbol);
    return found == factsTable().bySymbol.end() ? std::vector<const FunctionFacts*>() : found->second;
}

std::size_t overloadWith(const std::vector<const FunctionFacts*>& overloads, std::uint32_t argument) noexcept
{
    const auto found = std::find_if(overloads.begin(), overloads.end(),
                                    [argument](const FunctionFacts* facts) { return facts->nbArgs > argument; });
    return found == overloads.end() ? overloads.size() - 1 : static_cast<std::size_t>(found - overloads.begin());
}

}
