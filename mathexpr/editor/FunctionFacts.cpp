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

/// The maximum for functions with a fixed number of arguments. Functions with any number are called with three.
constexpr std::uint32_t maxArguments = 4;
constexpr std::uint32_t argumentsOfAny = 3;

using SampleTexts = std::array<const wchar_t*, maxArguments>;

constexpr SampleTexts positiveNumbers{L"2", L"3", L"4", L"5"};
constexpr SampleTexts numbersOfArcFunctions{L"0.5", L"3", L"4", L"5"};
constexpr SampleTexts pointsOfIntersectingLines{L"[0,0,0]", L"[2,2,0]", L"[0,2,0]", L"[2,0,0]"};

struct SampleArguments
{
    SampleArguments(const SampleTexts& texts, MTParser& session) : texts(texts)
    {
        std::transform(texts.begin(), texts.end(), values.begin(), [&session](const wchar_t* text) {
            std::wstring assignTarget;
            session.compile(text, false, assignTarget);
            return session.getProgram().getRoot();  // known when a constant text is compiled
        });
    }

    const SampleTexts& texts;
    std::array<VALTYPE, maxArguments> values;
};

struct Samples
{
    explicit Samples(MTParser& session)
        : numbers{{{positiveNumbers, session}, {numbersOfArcFunctions, session}}},
          points(pointsOfIntersectingLines, session)
    {}

    std::array<SampleArguments, 2> numbers;
    SampleArguments points;
};

struct SampleRun
{
    bool accepted;
    Message::Id refusal;
    VALTYPE result;
};

SampleRun runSample(const MTFunctionDefinition& function, const SampleArguments& arguments, std::uint32_t count)
{
    std::array<VALTYPE, maxArguments + 1> values;  // followed by the result
    std::copy(arguments.values.begin(), arguments.values.end(), values.begin());
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
/// @param arguments  valid arguments; the first one is replaced by values that may be outside the domain
Message::Id domainOf(const MTFunctionDefinition& function, SampleArguments arguments)
{
    for (const double x : {-1.0, 3e9})
    {
        arguments.values.front().x = x;
        const Message::Id refusal = runSample(function, arguments, function.nbArgs).refusal;
        if (expectedInsteadOf(refusal) == Expected::InDomain)
        {
            return refusal;
        }
    }
    return Message::None;
}

/// The names in the brackets of a usage line; the coordinates for the one function whose usage has no brackets.
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

FunctionFacts factsOf(const MTFunctionDefinition& function, const Samples& samples)
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
    const SampleArguments* used = samples.numbers.data();
    if (function.item->isConstant())  // must not draw a random number
    {
        facts.domain = count == 1 ? domainOf(function, samples.numbers.front()) : Message::None;
        const bool takesPoints = runSample(function, samples.points, count).accepted;
        const SampleArguments* const end = samples.numbers.data() + samples.numbers.size();
        const SampleArguments* const numbers =
            std::find_if(samples.numbers.data(), end,
                         [&](const SampleArguments& some) { return runSample(function, some, count).accepted; });
        const bool takesNumbers = numbers != end;
        facts.parameterKind = !takesNumbers ? ValueKind::Point : takesPoints ? ValueKind::Either : ValueKind::Number;
        used = takesNumbers ? numbers : &samples.points;
        facts.resultKind = runSample(function, *used, count).result.type == 1 ? ValueKind::Point : ValueKind::Number;
    }
    facts.arguments.assign(used->texts.begin(), used->texts.begin() + count);
    facts.call = callOf(facts);
    return facts;
}

struct FactsTable
{
    FactsTable()
    {
        MTParser session(false, nullptr);
        const Samples samples(session);
        const MTParserRegistrar& registrar = session.getRegistrar();
        for (std::size_t index = 0; index < registrar.getNbFunctions(); ++index)
        {
            const MTFunctionDefinition& function = registrar.getFunctionDefinition(index);
            if (function.nbArgs != 0)  // no expression can call it without arguments
            {
                all.push_back(factsOf(function, samples));
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
