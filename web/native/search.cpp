// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// search.cpp - exports the calculator's vocabulary search and notes; items are identified by their index.
#include "mathexpr.h"
#include "tools/calc/vocabulary/ItemNotes.h"
#include "tools/calc/vocabulary/VocabularyItems.h"
#include "tools/calc/vocabulary/VocabularySearch.h"

#include <algorithm>
#include <cstdint>
#include <new>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace {

using mathexpr::VocabularyItem;

// Results of the last call, which remain valid until the next one.
std::vector<std::uint32_t> foundItems;
std::string notes;

/// A unique key: overloads share a symbol, as do the two operators "-".
auto keyOf(const VocabularyItem& item)
{
    return std::tuple(item.kind, std::wstring_view(item.symbol), item.nbArgs);
}

/// Index in the vocabulary.
std::uint32_t indexOf(const VocabularyItem& item)
{
    const std::vector<VocabularyItem>& items = vocabularyItems();
    const auto at = std::find_if(items.begin(), items.end(),
                                 [&](const VocabularyItem& candidate) { return keyOf(candidate) == keyOf(item); });
    return static_cast<std::uint32_t>(at - items.begin());
}

void addLine(const std::string& line)
{
    notes += line;
    notes += '\n';
}

}

extern "C"
{

    /// Searches for words in UTF-8.
    /// @param count  receives the number of results
    /// @return indices of the items; null if memory runs out
    const std::uint32_t* web_find(const char* words, std::size_t length, std::size_t* count)
    try
    {
        foundItems.clear();
        for (const FoundGroup& group : searchVocabulary({words, length}))
        {
            for (const VocabularyItem& item : group.items)
            {
                foundItems.push_back(indexOf(item));
            }
        }
        *count = foundItems.size();
        static constexpr std::uint32_t none = 0;
        return foundItems.empty() ? &none : foundItems.data();
    }
    catch (const std::bad_alloc&)
    {
        return nullptr;
    }

    /// Returns the notes of an item in UTF-8: one line with its units, one with its domain, and one per example.
    /// @param length  receives the length of the text
    /// @return the text; null if memory runs out or no item has the index
    const char* web_notes(std::uint32_t index, std::size_t* length)
    try
    {
        const std::vector<VocabularyItem>& items = vocabularyItems();
        if (index >= items.size())
        {
            return nullptr;
        }
        notes.clear();
        const ItemNotes found = notesOf(items[index]);
        addLine(found.units);
        addLine(found.domain);
        std::for_each(found.examples.begin(), found.examples.end(), addLine);
        *length = notes.size();
        return notes.data();
    }
    catch (const std::bad_alloc&)
    {
        return nullptr;
    }
}
