// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// UnitNames.cpp - a conversion's name contains its units, before and after the "2".
#include "mathexpr/editor/UnitNames.h"

#include "mathexpr/editor/NameMatch.h"

#include <algorithm>
#include <iterator>

namespace mathexpr::editor {
namespace {

// Angles are in degrees.
constexpr std::wstring_view takeAngles[] = {L"sin", L"sinh", L"cos", L"cosh", L"tan", L"tanh"};
constexpr std::wstring_view giveAngles[] = {L"asin", L"acos", L"atan"};

const VocabularyUnit* unitOfSymbol(std::wstring_view symbol) noexcept
{
    const auto* const unit = std::find_if(std::begin(vocabularyUnits), std::end(vocabularyUnits),
                                          [symbol](const VocabularyUnit& each) { return each.symbol == symbol; });
    return unit == std::end(vocabularyUnits) ? nullptr : unit;
}

template <std::size_t size>
const VocabularyUnit* degreeIf(const std::wstring_view (&functions)[size], std::wstring_view function) noexcept
{
    const bool isListed = std::find(std::begin(functions), std::end(functions), function) != std::end(functions);
    return isListed ? unitOfSymbol(L"d") : nullptr;
}

}

const VocabularyUnit* unitOfArgument(std::wstring_view function) noexcept
{
    const std::size_t middle = function.find(L'2');
    return middle == std::wstring_view::npos ? degreeIf(takeAngles, function)
                                             : unitOfSymbol(function.substr(0, middle));
}

const VocabularyUnit* unitOfResult(std::wstring_view function) noexcept
{
    const std::size_t middle = function.find(L'2');
    return middle == std::wstring_view::npos ? degreeIf(giveAngles, function)
                                             : unitOfSymbol(function.substr(middle + 1));
}

std::wstring_view nameOf(const VocabularyUnit* unit) noexcept
{
    return unit == nullptr ? std::wstring_view() : unit->singular;
}

bool isMeant(const VocabularyUnit& unit, std::wstring_view typed) noexcept
{
    const auto isCalled = [typed](const wchar_t* name) { return hasBeginning(name, typed); };
    const auto* const end = std::find(std::begin(unit.others), std::end(unit.others), nullptr);
    return isCalled(unit.singular) || isCalled(unit.plural) || std::any_of(std::begin(unit.others), end, isCalled);
}

}
