// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Vocabulary.cpp - implements the vocabulary of mathexpr.h.
#include "mathexpr/Vocabulary.h"

#include "mathexpr/c/Boundary.h"
#include "mathexpr/c/Encoding.h"
#include "mathexpr/c/Structures.h"
#include "platform/KeptWhileLoaded.h"

#include <vector>

namespace {

template <class Encoding>
struct ItemTexts
{
    typename Encoding::Text symbol;
    typename Encoding::Text help;
    typename Encoding::Text description;
};

/// The texts of all items, converted once per process.
template <class Encoding>
const std::vector<ItemTexts<Encoding>>& vocabularyTexts()
{
    static platform::KeptWhileLoaded<std::vector<ItemTexts<Encoding>>> texts([] {
        std::vector<ItemTexts<Encoding>> converted;
        mathexpr::VocabularyItem item;
        for (std::uint32_t index = 0; mathexpr::getVocabularyItem(index, item); ++index)
        {
            converted.push_back(
                {Encoding::encode(item.symbol), Encoding::encode(item.help), Encoding::encode(item.description)});
        }
        return converted;
    }());
    return *texts;
}

template <class Encoding>
mathexpr_status getItem(std::uint32_t index, typename Encoding::Item* item) noexcept
{
    if (item == nullptr)
    {
        return MATHEXPR_NULL_ARGUMENT;
    }
    if (!hasPlausibleSize(item))
    {
        return MATHEXPR_BAD_SIZE;
    }
    return atBoundary([=] {
        mathexpr::VocabularyItem own;
        if (!mathexpr::getVocabularyItem(index, own))
        {
            return MATHEXPR_NOT_FOUND;
        }
        const ItemTexts<Encoding>& texts = vocabularyTexts<Encoding>()[index];
        typename Encoding::Item known{};
        known.kind = static_cast<std::uint32_t>(own.kind);
        known.family = static_cast<std::uint32_t>(own.family);
        known.arg_count = own.nbArgs;
        known.precedence = own.precedence;
        known.unary = own.unary ? 1 : 0;
        known.constant = own.constant ? 1 : 0;
        known.value = own.value;
        known.symbol = texts.symbol.c_str();
        known.help = texts.help.c_str();
        known.description = texts.description.c_str();
        writeStructure(known, item);
        return MATHEXPR_OK;
    });
}

}

mathexpr_status mathexpr_get_vocabulary_item_utf8(uint32_t index, mathexpr_vocabulary_item_utf8* item) noexcept
{
    return getItem<Utf8>(index, item);
}

mathexpr_status mathexpr_get_vocabulary_item_utf16(uint32_t index, mathexpr_vocabulary_item_utf16* item) noexcept
{
    return getItem<Utf16>(index, item);
}
