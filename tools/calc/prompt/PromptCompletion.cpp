// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// PromptCompletion.cpp - selects from the library's proposals. A function is proposed with its opening bracket only;
// its arguments are typed after it, guided by the signature.
#include "tools/calc/prompt/PromptCompletion.h"

#include "tools/calc/prompt/PromptCommands.h"
#include "tools/calc/text/Utf8.h"

#include <algorithm>
#include <iterator>
#include <limits>

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

/// The candidates that begin with the typed text; if there are none, those that begin with it ignoring case.
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

std::vector<mathexpr::CompletionItem> itemsAt(const MathExpression& expression,
                                              const mathexpr::IMathExprNameNotes* notes, const std::wstring& text,
                                              std::size_t cursor)
{
    mathexpr::CompletionOptions options;
    options.maxCount = std::numeric_limits<std::uint32_t>::max();
    options.notes = notes;
    return mathexpr::getCompletions(expression, text.c_str(), static_cast<std::uint32_t>(cursor), options);
}

/// The inserted text of an item, without a function's arguments.
std::string candidateOf(const mathexpr::CompletionItem& item)
{
    const std::size_t bracket = item.kind == mathexpr::TokenKind::Function ? 1 : 0;
    return toUtf8(item.edit.replacement.substr(0, item.name.size() + bracket));
}

Completion completeExpression(const MathExpression& expression, const mathexpr::IMathExprNameNotes* notes,
                              const std::wstring& before, const std::wstring& behind)
{
    const std::vector<mathexpr::CompletionItem> items = itemsAt(expression, notes, before + behind, before.size());
    if (items.empty())
    {
        return {};
    }
    const mathexpr::TextSpan replaced = items.front().edit.span;
    const std::wstring rest = behind.substr(0, replaced.start + replaced.length - before.size());
    if (rest.find(L' ') != std::wstring::npos)  // the language joins words across blanks, users do not
    {
        return {};
    }
    const std::string typed = toUtf8(before.substr(replaced.start));
    std::vector<std::string> all;
    std::ranges::transform(items, std::back_inserter(all), candidateOf);
    std::vector<std::string> begun = beginningWith(typed, all);
    return {typed.size(), toUtf8(rest).size(), begun.empty() ? std::move(all) : std::move(begun)};
}

/// All completions of a command's word that the command accepts.
std::vector<std::string> wordsFor(const CommandWord& word, const MathExpression& expression,
                                  const mathexpr::IMathExprNameNotes* notes)
{
    std::vector<std::string> words = possibleWords(word);
    if (word.command == PromptCommand::Help)
    {
        std::ranges::transform(itemsAt(expression, notes, {}, 0), std::back_inserter(words),
                               [](const mathexpr::CompletionItem& item) { return toUtf8(item.name); });
    }
    return words;
}

}

Completion complete(const MathExpression& expression, const mathexpr::IMathExprNameNotes* notes,
                    std::string_view before, std::string_view behind)
{
    if (isCommand(before))
    {
        const CommandWord word = commandWordAt(before);
        return {word.typed.size(), 0, beginningWith(word.typed, wordsFor(word, expression, notes))};
    }
    const auto typed = toWide(before);
    const auto rest = toWide(behind);
    return typed && rest ? completeExpression(expression, notes, *typed, *rest) : Completion();
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
