// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// UnitNames.cpp - a conversion bears its units in its name, before and after the "2".
#include "mathexpr/editor/UnitNames.h"

#include <algorithm>
#include <iterator>

namespace mathexpr::editor {
namespace {

struct UnitName
{
    std::wstring_view symbol;  // as in the names of conversions
    std::wstring_view name;
};

// clang-format off
constexpr UnitName unitNames[] = {
    {L"d",    L"degree"},
    {L"r",    L"radian"},
    {L"c",    L"circle"},
    {L"g",    L"grad"},
    {L"q",    L"quadrant"},
    {L"m",    L"metre"},
    {L"cm",   L"centimetre"},
    {L"mm",   L"millimetre"},
    {L"km",   L"kilometre"},
    {L"f",    L"foot"},
    {L"i",    L"inch"},
    {L"y",    L"yard"},
    {L"mile", L"mile"},
    {L"su",   L"survey foot"},
    {L"sm",   L"square metre"},
    {L"scm",  L"square centimetre"},
    {L"smm",  L"square millimetre"},
    {L"skm",  L"square kilometre"},
    {L"sf",   L"square foot"},
    {L"si",   L"square inch"},
    {L"sy",   L"square yard"},
    {L"sa",   L"acre"},
    {L"vm",   L"cubic metre"},
    {L"vcm",  L"cubic centimetre"},
    {L"vmm",  L"cubic millimetre"},
    {L"vkm",  L"cubic kilometre"},
    {L"vf",   L"cubic foot"},
    {L"vi",   L"cubic inch"},
    {L"vy",   L"cubic yard"},
};

// Angles are in degrees.
constexpr std::wstring_view takeAngles[] = {L"sin", L"sinh", L"cos", L"cosh", L"tan", L"tanh"};
constexpr std::wstring_view giveAngles[] = {L"asin", L"acos", L"atan"};
// clang-format on

std::wstring_view nameOfUnit(std::wstring_view symbol) noexcept
{
    const auto* const unit = std::find_if(std::begin(unitNames), std::end(unitNames),
                                          [symbol](const UnitName& each) { return each.symbol == symbol; });
    return unit == std::end(unitNames) ? std::wstring_view() : unit->name;
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
