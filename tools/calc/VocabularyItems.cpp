// VocabularyItems.cpp - see VocabularyItems.h.
#include "tools/calc/VocabularyItems.h"

const std::vector<VocabularyItem>& vocabularyItems()
{
    static const std::vector<VocabularyItem> items = [] {
        std::vector<VocabularyItem> all;
        VocabularyItem item;
        for (std::uint32_t index = 0; getVocabularyItem(index, item); ++index)
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
        {VocabularyFamily::Constants, "constants"}, {VocabularyFamily::Operators, "operators"},
        {VocabularyFamily::CoreMath, "core"},       {VocabularyFamily::Geometry, "geometry"},
        {VocabularyFamily::Angle, "angle"},         {VocabularyFamily::Length, "length"},
        {VocabularyFamily::Area, "area"},           {VocabularyFamily::Volume, "volume"},
    };
    return names;
}
