// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// UnitNames.h - finds the units of the vocabulary's conversions by any of their names.
#pragma once

#include "mathexpr/VocabularyUnits.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// mathexpr::VocabularyUnit in UTF-8.
struct UnitName
{
    mathexpr::VocabularyFamily family;
    std::string symbol;
    std::string singular;
    std::string plural;
    std::vector<std::string> others;
};

const std::vector<UnitName>& unitNames();

/// The unit with that name, ignoring case; null if there is none.
const UnitName* unitCalled(std::string_view name);

/// The unit with that symbol; null if there is none.
const UnitName* unitOfSymbol(std::string_view symbol);

/// The units of a conversion function.
struct Conversion
{
    const UnitName* from;
    const UnitName* to;
};

/// Nothing if the item is not a conversion between two of these units.
std::optional<Conversion> conversionOf(const mathexpr::VocabularyItem& item);

/// A text such as "inch to millimetre".
std::string conversionText(const Conversion& conversion);

/// Whether two texts are equal, ignoring the case of A to Z.
bool sameWord(std::string_view left, std::string_view right);
