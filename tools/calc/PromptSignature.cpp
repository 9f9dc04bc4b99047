// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// PromptSignature.cpp - parameters have the names of the vocabulary's usage line, and the kind that the examples show.
#include "tools/calc/PromptSignature.h"

#include "mathexpr/IMathFunction.h"
#include "tools/calc/CallExample.h"
#include "tools/calc/OpenBrackets.h"
#include "tools/calc/Utf8.h"

#include <algorithm>
#include <vector>

namespace {

/// The names in the brackets of a usage line; the coordinates for the one function whose line has none.
std::vector<std::string> parametersOf(const mathexpr::VocabularyItem& item)
{
    const std::string usage = toUtf8(item.help);
    const std::size_t open = usage.find('(');
    if (open == std::string::npos)
    {
        return {"x", "y", "z"};
    }
    std::vector<std::string> names(1);
    for (const char character : usage.substr(open + 1, usage.find(')') - open - 1))
    {
        if (character == ',')
        {
            names.emplace_back();
        }
        else if (character != ' ')
        {
            names.back() += character;
        }
    }
    return names;
}

/// The call to show: the overload that has the argument, else the last one.
std::optional<CallExample> shownCall(const OpenBracket& bracket)
{
    const std::optional<CallExample> fitting = callExample(bracket.symbol, bracket.argument);
    const std::vector<CallExample> overloads = fitting ? std::vector<CallExample>() : callExamples(bracket.symbol);
    return fitting || overloads.empty() ? fitting : std::optional(overloads.back());
}

}

std::optional<Signature> signatureAt(std::string_view text)
{
    const std::vector<OpenBracket> open = openBrackets(text);
    const auto innermost =
        std::find_if(open.rbegin(), open.rend(), [](const OpenBracket& bracket) { return !bracket.symbol.empty(); });
    const std::optional<CallExample> call = innermost == open.rend() ? std::nullopt : shownCall(*innermost);
    if (!call)
    {
        return std::nullopt;
    }
    const std::vector<std::string> parameters = parametersOf(*call->item);
    const bool repeats = parameters.back() == "...";
    const std::size_t current = repeats ? std::min(innermost->argument, parameters.size() - 1) : innermost->argument;

    Signature signature{innermost->isSquare ? "[" : innermost->symbol + "(", {}, {}};
    for (std::size_t index = 0; index < parameters.size(); ++index)
    {
        std::string& piece = index < current    ? signature.before
                             : index == current ? signature.current
                                                : signature.after;
        std::string& separated = index <= current ? signature.before : signature.after;
        separated += index == 0 ? "" : ", ";
        const bool isPoint = index < call->arguments.size() && call->arguments[index].starts_with('[');
        piece += (isPoint ? "point " : "") + parameters[index];
    }
    (current < parameters.size() ? signature.after : signature.before) += innermost->isSquare ? "]" : ")";
    return signature;
}
