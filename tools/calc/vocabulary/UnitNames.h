// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// UnitNames.h - looks up the units of the vocabulary's conversions, by all that people call them.
#pragma once

#include "mathexpr/VocabularyUnits.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// As mathexpr::VocabularyUnit, in UTF-8.
struct UnitName
{
    mathexpr::VocabularyFamily family;
    std::string symbol;
    std::string singular;
    std::string plural;
    std::vector<std::string> others;
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
