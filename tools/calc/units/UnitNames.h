// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// UnitNames.h - the units of the vocabulary's conversions, and all that people call them. The notes of the vocabulary, the
// search and the answers to questions such as "3 inch to mm" share this one table.
#pragma once

#include "mathexpr/Vocabulary.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct UnitName
{
    mathexpr::VocabularyFamily family;
    std::string_view symbol;    ///< As in the names of conversions, before and after the 2; no two units share one.
    std::string_view singular;  ///< UTF-8, as all names here.
    std::string_view plural;
    std::vector<std::string_view> others;  ///< Short forms and spellings; those with blanks too.
};

const std::vector<UnitName>& unitNames();

/// The unit that people call so, whatever the case of its letters; null where there is none.
const UnitName* unitCalled(std::string_view name);

/// The unit with that symbol; null where there is none.
const UnitName* unitOfSymbol(std::string_view symbol);

/// The units of a conversion function.
struct Conversion
{
    const UnitName* from;
    const UnitName* to;
};

/// Nothing where the item is no conversion between two of these units.
std::optional<Conversion> conversionOf(const mathexpr::VocabularyItem& item);

/// Such as "inch to millimetre".
std::string conversionText(const Conversion& conversion);

/// Whether two texts differ in the case of the letters A to Z alone.
bool sameWord(std::string_view left, std::string_view right);
