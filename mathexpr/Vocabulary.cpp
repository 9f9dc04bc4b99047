// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Vocabulary.cpp - combines the engine's lists of constants and items into the list of Vocabulary.h.
#include "mathexpr/Vocabulary.h"

#include "MTParserLib/MTParserDefFuncs.h"

#include <cstddef>

namespace mathexpr {
namespace {

VocabularyItem itemOf(const VocabularyConstant& constant) noexcept
{
    return {VocabularyKind::Constant,
            VocabularyFamily::Constants,
            L"",
            constant.symbol,
            L"",
            L"",
            0,
            0,
            false,
            true,
            constant.value};
}

VocabularyItem itemOf(const VocabularyEntry& entry) noexcept
{
    return {entry.isOperator ? VocabularyKind::Operator : VocabularyKind::Function,
            entry.family,
            entry.className,
            entry.symbol,
            entry.help,
            entry.description,
            entry.nbArgs,
            entry.precedence,
            entry.isUnary,
            entry.isConstant,
            0.0};
}

}

bool getVocabularyItem(std::uint32_t index, VocabularyItem& item) noexcept
{
    const auto constants = getConstants();
    const auto entries = getVocabulary();
    if (index < constants.size())
    {
        item = itemOf(constants[index]);
        return true;
    }
    const std::size_t entry = index - constants.size();
    if (entry < entries.size())
    {
        item = itemOf(entries[entry]);
        return true;
    }
    return false;
}

}
