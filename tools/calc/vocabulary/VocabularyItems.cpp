// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// VocabularyItems.cpp - see VocabularyItems.h.
#include "tools/calc/vocabulary/VocabularyItems.h"

const std::vector<mathexpr::VocabularyItem>& vocabularyItems()
{
    static const std::vector<mathexpr::VocabularyItem> items = [] {
        std::vector<mathexpr::VocabularyItem> all;
        mathexpr::VocabularyItem item;
        for (std::uint32_t index = 0; mathexpr::getVocabularyItem(index, item); ++index)
        {
            all.push_back(item);
        }
        return all;
    }();
    return items;
}

const std::vector<FamilyName>& familyNames()
{
    static const std::vector<FamilyName> names = {
        {mathexpr::VocabularyFamily::Constants, "constants"}, {mathexpr::VocabularyFamily::Operators, "operators"},
        {mathexpr::VocabularyFamily::CoreMath, "core"},       {mathexpr::VocabularyFamily::Geometry, "geometry"},
        {mathexpr::VocabularyFamily::Angle, "angle"},         {mathexpr::VocabularyFamily::Length, "length"},
        {mathexpr::VocabularyFamily::Area, "area"},           {mathexpr::VocabularyFamily::Volume, "volume"},
    };
    return names;
}
