// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// UnitNames.cpp - a conversion bears its units in its name, before and after the "2".
#include "mathexpr/editor/UnitNames.h"

#include "mathexpr/VocabularyUnits.h"

#include <algorithm>
#include <iterator>

namespace mathexpr::editor {
namespace {

// Angles are in degrees.
constexpr std::wstring_view takeAngles[] = {L"sin", L"sinh", L"cos", L"cosh", L"tan", L"tanh"};
constexpr std::wstring_view giveAngles[] = {L"asin", L"acos", L"atan"};

std::wstring_view nameOfUnit(std::wstring_view symbol) noexcept
{
    const auto* const unit = std::find_if(std::begin(vocabularyUnits), std::end(vocabularyUnits),
                                          [symbol](const VocabularyUnit& each) { return each.symbol == symbol; });
    return unit == std::end(vocabularyUnits) ? std::wstring_view() : unit->singular;
}

template <std::size_t size>
std::wstring_view degreeIf(const std::wstring_view (&functions)[size], std::wstring_view function) noexcept
{
    const bool isListed = std::find(std::begin(functions), std::end(functions), function) != std::end(functions);
    return isListed ? nameOfUnit(L"d") : std::wstring_view();
}

}

std::wstring_view unitOfArgument(std::wstring_view function) noexcept
{
    const std::size_t middle = function.find(L'2');
    return middle == std::wstring_view::npos ? degreeIf(takeAngles, function) : nameOfUnit(function.substr(0, middle));
}

std::wstring_view unitOfResult(std::wstring_view function) noexcept
{
    const std::size_t middle = function.find(L'2');
    return middle == std::wstring_view::npos ? degreeIf(giveAngles, function) : nameOfUnit(function.substr(middle + 1));
}

}
