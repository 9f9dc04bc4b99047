// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// CallExample.cpp - see CallExample.h.
#include "tools/calc/CallExample.h"

#include "mathexpr/IMathFunction.h"
#include "tools/calc/ItemNotes.h"
#include "tools/calc/Utf8.h"
#include "tools/calc/VocabularyItems.h"

#include <algorithm>

namespace {

/// The arguments of a call whose arguments are numbers and points.
std::vector<std::string> argumentsOf(std::string_view call)
{
    const std::size_t begin = call.find('(') + 1;
    std::vector<std::string> arguments(1);
    std::size_t depth = 0;
    for (const char character : call.substr(begin, call.size() - 1 - begin))
    {
        depth += character == '[' ? 1 : 0;
        depth -= character == ']' ? 1 : 0;
        if (character == ',' && depth == 0)
        {
            arguments.emplace_back();
        }
        else
        {
            arguments.back() += character;
        }
    }
    return arguments;
}

}

std::vector<CallExample> callExamples(std::string_view symbol)
{
    std::vector<CallExample> found;
    for (const mathexpr::VocabularyItem& item : vocabularyItems())
    {
        if (item.kind == mathexpr::VocabularyKind::Function && toUtf8(item.symbol) == symbol)
        {
            const std::vector<std::string> examples = notesOf(item).examples;
            if (!examples.empty())
            {
                found.push_back({&item, examples.front(), argumentsOf(examples.front())});
            }
        }
    }
    return found;
}

std::optional<CallExample> callExample(std::string_view symbol, std::size_t argument)
{
    const std::vector<CallExample> overloads = callExamples(symbol);
    const auto has = [argument](const CallExample& example) {
        return example.item->nbArgs == NB_ARGS_UNDEFINED || example.item->nbArgs > argument;
    };
    const auto found = std::find_if(overloads.begin(), overloads.end(), has);
    return found == overloads.end() ? std::nullopt : std::optional(*found);
}
