// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// VocabularySearch.cpp - weighs every word of the query against every item; an item must match all words.
#include "tools/calc/vocabulary/VocabularySearch.h"

#include "tools/calc/text/Utf8.h"
#include "tools/calc/vocabulary/ItemNotes.h"
#include "tools/calc/vocabulary/UnitNames.h"
#include "tools/calc/vocabulary/VocabularyItems.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

namespace {

constexpr std::string_view separators = " \t,;:.()";

std::vector<std::string_view> wordsOf(std::string_view text)
{
    std::vector<std::string_view> words;
    while (!text.empty())
    {
        const std::size_t end = std::min(text.find_first_of(separators), text.size());
        if (end != 0)
        {
            words.push_back(text.substr(0, end));
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return words;
}

/// How well a word matches a text; only the order of the numbers matters.
int weightIn(std::string_view text, std::string_view word)
{
    int weight = 0;
    for (const std::string_view other : wordsOf(text))
    {
        weight = std::max(weight, sameWord(other, word) ? 3 : sameWord(other.substr(0, word.size()), word) ? 2 : 0);
    }
    return weight;
}

bool isCalled(const UnitName& unit, std::string_view word)
{
    return unitCalled(word) == &unit;
}

/// The weight of a word for an item; 0 if it does not match.
int weightOf(const mathexpr::VocabularyItem& item, std::string_view word)
{
    const std::string symbol = toUtf8(item.symbol);
    if (symbol == word)
    {
        return 5;
    }
    if (sameWord(symbol, word))
    {
        return 4;
    }
    const auto units = conversionOf(item);
    if (units && (isCalled(*units->from, word) || isCalled(*units->to, word)))
    {
        return 4;
    }
    const ItemNotes notes = notesOf(item);
    const std::string units2 = units ? units->from->plural + ' ' + units->to->plural : "";
    int weight = 0;
    for (const std::string& text :
         {notes.units, units2, std::string(familyTitle(item.family)), toUtf8(item.description)})
    {
        weight = std::max(weight, weightIn(text, word));
    }
    const bool beginsSymbol = sameWord(std::string_view(symbol).substr(0, word.size()), word);
    return std::max(weight, beginsSymbol ? 1 : 0);
}

std::vector<FoundGroup> conversionsOf(const UnitName& unit)
{
    FoundGroup from{"From " + unit.singular, {}};
    FoundGroup to{"To " + unit.singular, {}};
    for (const mathexpr::VocabularyItem& item : vocabularyItems())
    {
        const auto units = conversionOf(item);
        if (units && units->from != units->to && (units->from == &unit || units->to == &unit))
        {
            (units->from == &unit ? from : to).items.push_back(item);
        }
    }
    return {from, to};
}

/// The conversion named by a query such as "inch to mm".
std::vector<FoundGroup> conversionBetween(std::string_view question)
{
    for (const std::string_view preposition : {" to ", " in ", " into "})
    {
        const std::size_t at = question.find(preposition);
        const UnitName* const from = at == std::string_view::npos ? nullptr : unitCalled(question.substr(0, at));
        const UnitName* const to = from == nullptr ? nullptr : unitCalled(question.substr(at + preposition.size()));
        for (const mathexpr::VocabularyItem& item : vocabularyItems())
        {
            const auto units = conversionOf(item);
            if (to != nullptr && units && units->from == from && units->to == to)
            {
                return {{"From " + conversionText(*units), {item}}};
            }
        }
    }
    return {};
}

}

std::vector<FoundGroup> searchVocabulary(std::string_view words)
{
    const std::size_t begin = std::min(words.find_first_not_of(" \t"), words.size());
    const std::string_view question = words.substr(begin, words.find_last_not_of(" \t") + 1 - begin);
    if (const UnitName* const unit = unitCalled(question))
    {
        return conversionsOf(*unit);
    }
    if (std::vector<FoundGroup> between = conversionBetween(question); !between.empty())
    {
        return between;
    }
    std::vector<std::string_view> wanted = wordsOf(question);
    std::erase_if(wanted, [](std::string_view word) { return word == "to" || word == "from"; });
    std::vector<std::pair<int, mathexpr::VocabularyItem>> found;
    for (const mathexpr::VocabularyItem& item : vocabularyItems())
    {
        int sum = 0;
        const bool fitsAll = std::all_of(wanted.begin(), wanted.end(), [&](std::string_view word) {
            const int weight = weightOf(item, word);
            sum += weight;
            return weight != 0;
        });
        if (fitsAll && !wanted.empty())
        {
            found.emplace_back(sum, item);
        }
    }
    std::stable_sort(found.begin(), found.end(),
                     [](const auto& left, const auto& right) { return left.first > right.first; });
    if (found.empty())
    {
        return {};
    }
    FoundGroup group{"Found", {}};
    std::transform(found.begin(), found.end(), std::back_inserter(group.items),
                   [](const auto& weighed) { return weighed.second; });
    return {group};
}
