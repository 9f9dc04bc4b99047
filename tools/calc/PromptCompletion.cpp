// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// PromptCompletion.cpp - see PromptCompletion.h.
#include "tools/calc/PromptCompletion.h"

#include "mathexpr/IMathFunction.h"
#include "tools/calc/CallExample.h"
#include "tools/calc/OpenBrackets.h"
#include "tools/calc/PromptCommands.h"
#include "tools/calc/Utf8.h"
#include "tools/calc/VocabularyItems.h"

#include <algorithm>
#include <iterator>
#include <set>

namespace {

char lowerCase(char unit)
{
    return unit >= 'A' && unit <= 'Z' ? static_cast<char>(unit - 'A' + 'a') : unit;
}

bool beginsAlike(std::string_view text, std::string_view beginning)
{
    return text.size() >= beginning.size() &&
           std::equal(beginning.begin(), beginning.end(), text.begin(),
                      [](char left, char right) { return lowerCase(left) == lowerCase(right); });
}

/// Those that begin with what has been typed; where none does, those that begin so but for the case of letters.
std::vector<std::string> beginningWith(std::string_view typed, const std::vector<std::string>& candidates)
{
    std::vector<std::string> exact;
    std::vector<std::string> alike;
    for (const std::string& candidate : candidates)
    {
        if (candidate.starts_with(typed))
        {
            exact.push_back(candidate);
        }
        else if (beginsAlike(candidate, typed))
        {
            alike.push_back(candidate);
        }
    }
    return exact.empty() ? alike : exact;
}

/// What makes a whole expression of a text with open brackets: the missing arguments, and what closes them.
std::string closingOf(std::string_view text)
{
    std::vector<OpenBracket> open = openBrackets(text);
    std::string closing;
    for (; !open.empty(); open.pop_back())
    {
        const OpenBracket& bracket = open.back();
        const std::vector<CallExample> overloads = callExamples(bracket.symbol);
        const bool anyNumber = std::any_of(overloads.begin(), overloads.end(), [](const CallExample& example) {
            return example.item->nbArgs == NB_ARGS_UNDEFINED;
        });
        const std::optional<CallExample> call = callExample(bracket.symbol, bracket.argument);
        const std::size_t nbArguments = call && !anyNumber ? call->arguments.size() : 0;
        for (std::size_t missing = bracket.argument + 1; missing < nbArguments; ++missing)
        {
            closing += ',' + call->arguments[missing];
        }
        closing += ')';
    }
    return closing;
}

/// Whether any value at all can stand after the text.
bool takesValue(const std::string& text, const std::string& closing, const PromptProbe& probe)
{
    constexpr const char* values[] = {"1", "0.5", "0", "-2", "[1,2,3]", "[4,6,8]"};
    return std::any_of(std::begin(values), std::end(values),
                       [&](const char* value) { return probe.judge(text + value + closing) == Verdict::Accepted; });
}

struct Candidate
{
    std::string offered;
    std::string tried;
};

std::vector<Candidate> namesToOffer(const std::vector<NamedValue>& names)
{
    std::vector<Candidate> candidates;
    std::ranges::transform(names, std::back_inserter(candidates), [](const NamedValue& named) {
        return Candidate{toUtf8(named.name), toUtf8(named.name)};
    });
    for (const mathexpr::VocabularyItem& item : vocabularyItems())
    {
        if (item.kind == mathexpr::VocabularyKind::Constant)
        {
            candidates.push_back({toUtf8(item.symbol), toUtf8(item.symbol)});
        }
    }
    return candidates;
}

std::vector<Candidate> functionsToOffer(bool withBracket)
{
    std::vector<Candidate> candidates;
    std::set<std::wstring_view> seen;
    for (const mathexpr::VocabularyItem& item : vocabularyItems())
    {
        if (item.kind == mathexpr::VocabularyKind::Function && seen.insert(item.symbol).second)
        {
            const std::string symbol = toUtf8(item.symbol);
            const std::vector<CallExample> overloads = callExamples(symbol);
            if (!overloads.empty())
            {
                candidates.push_back({symbol + (withBracket ? "(" : ""), overloads.front().text});
            }
        }
    }
    return candidates;
}

Completion completeName(std::string_view before, std::string_view after, const std::vector<NamedValue>& names,
                        std::optional<std::uint32_t> maxInteger)
{
    const std::size_t begin = beginOfLastName(before);
    const std::string_view typed = before.substr(begin);
    const std::string_view text = before.substr(0, begin);
    const std::size_t lastNotBlank = text.find_last_not_of(' ');
    const bool goesOnAfterBlank = lastNotBlank != std::string_view::npos && isOfName(text[lastNotBlank]);
    const bool isInside = !after.empty() && isOfName(after.front());
    const std::string closing = closingOf(text);
    const PromptProbe probe(names, maxInteger);
    if (goesOnAfterBlank || isInside || !takesValue(std::string(text), closing, probe))
    {
        return {};
    }

    // In front of a bracket or, after blanks, of a name, only a function is no mistake.
    const std::size_t next = std::min(after.find_first_not_of(' '), after.size());
    const char follower = next == after.size() ? '\0' : after[next];
    const bool functionsOnly = follower == '(' || follower == '[' || (follower != '\0' && isOfName(follower));
    std::vector<Candidate> all = functionsOnly ? std::vector<Candidate>() : namesToOffer(names);
    std::ranges::move(functionsToOffer(follower != '('), std::back_inserter(all));

    std::vector<std::string> accepted;
    for (const Candidate& candidate : all)
    {
        const bool isNew = std::find(accepted.begin(), accepted.end(), candidate.offered) == accepted.end();
        if (isNew && beginsAlike(candidate.offered, typed) &&
            probe.judge(std::string(text) + candidate.tried + closing) != Verdict::Refused)
        {
            accepted.push_back(candidate.offered);
        }
    }
    return {typed.size(), beginningWith(typed, accepted)};
}

}

Completion complete(std::string_view before, std::string_view after, const std::vector<NamedValue>& names,
                    std::optional<std::uint32_t> maxInteger)
{
    if (!isCommand(before))
    {
        return completeName(before, after, names, maxInteger);
    }
    const CommandWord word = commandWordAt(before);
    return {word.typed.size(), beginningWith(word.typed, possibleWords(word, names))};
}

std::string commonBeginning(const std::vector<std::string>& candidates)
{
    if (candidates.empty())
    {
        return {};
    }
    std::string common = candidates.front();
    for (const std::string& candidate : candidates)
    {
        const auto differing = std::mismatch(common.begin(), common.end(), candidate.begin(), candidate.end()).first;
        common.erase(differing, common.end());
    }
    const auto isContinuation = [](char unit) { return (static_cast<unsigned char>(unit) & 0xC0) == 0x80; };
    const bool tearsCharacter = std::any_of(candidates.begin(), candidates.end(), [&](const std::string& candidate) {
        return candidate.size() > common.size() && isContinuation(candidate[common.size()]);
    });
    while (tearsCharacter && !common.empty() && isContinuation(common.back()))
    {
        common.pop_back();
    }
    if (tearsCharacter && !common.empty())
    {
        common.pop_back();
    }
    return common;
}
