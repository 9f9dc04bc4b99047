// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// UnitNames.cpp - see UnitNames.h.
#include "tools/calc/vocabulary/UnitNames.h"

#include "tools/calc/text/Utf8.h"

#include <algorithm>
#include <iterator>

bool sameWord(std::string_view left, std::string_view right)
{
    const auto folded = [](char unit) {
        return unit >= 'A' && unit <= 'Z' ? static_cast<char>(unit - 'A' + 'a') : unit;
    };
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [folded](char one, char other) { return folded(one) == folded(other); });
}

const std::vector<UnitName>& unitNames()
{
    static const std::vector<UnitName> names = [] {
        std::vector<UnitName> all;
        for (const mathexpr::VocabularyUnit& unit : mathexpr::vocabularyUnits)
        {
            all.push_back({unit.family, toUtf8(unit.symbol), toUtf8(unit.singular), toUtf8(unit.plural), {}});
            const auto* const end = std::find(std::begin(unit.others), std::end(unit.others), nullptr);
            std::transform(std::begin(unit.others), end, std::back_inserter(all.back().others), toUtf8);
        }
        return all;
    }();
    return names;
}

const UnitName* unitCalled(std::string_view name)
{
    const auto isCalled = [name](const UnitName& unit) {
        return sameWord(unit.singular, name) || sameWord(unit.plural, name) ||
               std::any_of(unit.others.begin(), unit.others.end(),
                           [name](const std::string& other) { return sameWord(other, name); });
    };
    const auto found = std::find_if(unitNames().begin(), unitNames().end(), isCalled);
    return found == unitNames().end() ? nullptr : &*found;
}

const UnitName* unitOfSymbol(std::string_view symbol)
{
    const auto found = std::find_if(unitNames().begin(), unitNames().end(),
                                    [symbol](const UnitName& unit) { return unit.symbol == symbol; });
    return found == unitNames().end() ? nullptr : &*found;
}

std::optional<Conversion> conversionOf(const mathexpr::VocabularyItem& item)
{
    const std::string symbol = toUtf8(item.symbol);
    const std::size_t separator = symbol.find('2');
    if (item.kind != mathexpr::VocabularyKind::Function || separator == std::string::npos)
    {
        return std::nullopt;
    }
    const UnitName* const from = unitOfSymbol(symbol.substr(0, separator));
    const UnitName* const to = unitOfSymbol(symbol.substr(separator + 1));
    return from == nullptr || to == nullptr ? std::nullopt : std::optional(Conversion{from, to});
}

std::string conversionText(const Conversion& conversion)
{
    return conversion.from->singular + " to " + conversion.to->singular;
}
