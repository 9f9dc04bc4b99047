// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// UnitNames.cpp - a row for each unit.
#include "tools/calc/units/UnitNames.h"

#include "tools/calc/Utf8.h"

#include <algorithm>

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
    using enum mathexpr::VocabularyFamily;
    // clang-format off
    static const std::vector<UnitName> names = {
    //   family   symbol  singular              plural                others
    //   -------- ------- --------------------- --------------------- ---------------------------------------------------
        {Angle,  "d",    "degree",             "degrees",            {"deg", "\u00B0"}},
        {Angle,  "r",    "radian",             "radians",            {"rad", "rads"}},
        {Angle,  "c",    "circle",             "circles",            {"turn", "turns", "revolution", "revolutions", "rev"}},
        {Angle,  "g",    "grad",               "grads",              {"gon", "gons", "gradian", "gradians"}},
        {Angle,  "q",    "quadrant",           "quadrants",          {"quad", "quads"}},
        {Length, "m",    "metre",              "metres",             {"m", "meter", "meters"}},
        {Length, "cm",   "centimetre",         "centimetres",        {"cm", "centimeter", "centimeters"}},
        {Length, "mm",   "millimetre",         "millimetres",        {"mm", "millimeter", "millimeters"}},
        {Length, "km",   "kilometre",          "kilometres",         {"km", "kilometer", "kilometers"}},
        {Length, "f",    "foot",               "feet",               {"ft", "'", "\u2032", "\u2019"}},
        {Length, "i",    "inch",               "inches",             {"in", "\"", "\u2033", "\u201D", "''"}},
        {Length, "y",    "yard",               "yards",              {"yd", "yds"}},
        {Length, "mile", "mile",               "miles",              {"mi"}},
        {Length, "su",   "survey foot",        "survey feet",        {"survey ft", "ftus", "sft"}},
        {Area,   "sm",   "square metre",       "square metres",      {"square meter", "square meters", "sq m", "sqm", "m2", "m\u00B2"}},
        {Area,   "scm",  "square centimetre",  "square centimetres", {"square centimeter", "square centimeters", "sq cm", "cm2", "cm\u00B2"}},
        {Area,   "smm",  "square millimetre",  "square millimetres", {"square millimeter", "square millimeters", "sq mm", "mm2", "mm\u00B2"}},
        {Area,   "skm",  "square kilometre",   "square kilometres",  {"square kilometer", "square kilometers", "sq km", "km2", "km\u00B2"}},
        {Area,   "sf",   "square foot",        "square feet",        {"sq ft", "sqft", "ft2", "ft\u00B2"}},
        {Area,   "si",   "square inch",        "square inches",      {"sq in", "sqin", "in2", "in\u00B2"}},
        {Area,   "sy",   "square yard",        "square yards",       {"sq yd", "sqyd", "yd2", "yd\u00B2"}},
        {Area,   "sa",   "acre",               "acres",              {"ac"}},
        {Volume, "vm",   "cubic metre",        "cubic metres",       {"cubic meter", "cubic meters", "cu m", "cbm", "m3", "m\u00B3"}},
        {Volume, "vcm",  "cubic centimetre",   "cubic centimetres",  {"cubic centimeter", "cubic centimeters", "cu cm", "cc", "ccm", "cm3", "cm\u00B3"}},
        {Volume, "vmm",  "cubic millimetre",   "cubic millimetres",  {"cubic millimeter", "cubic millimeters", "cu mm", "mm3", "mm\u00B3"}},
        {Volume, "vkm",  "cubic kilometre",    "cubic kilometres",   {"cubic kilometer", "cubic kilometers", "cu km", "km3", "km\u00B3"}},
        {Volume, "vf",   "cubic foot",         "cubic feet",         {"cu ft", "cuft", "ft3", "ft\u00B3"}},
        {Volume, "vi",   "cubic inch",         "cubic inches",       {"cu in", "cuin", "in3", "in\u00B3"}},
        {Volume, "vy",   "cubic yard",         "cubic yards",        {"cu yd", "cuyd", "yd3", "yd\u00B3"}},
    };
    // clang-format on
    return names;
}

const UnitName* unitCalled(std::string_view name)
{
    const auto isCalled = [name](const UnitName& unit) {
        return sameWord(unit.singular, name) || sameWord(unit.plural, name) ||
               std::ranges::any_of(unit.others, [name](std::string_view other) { return sameWord(other, name); });
    };
    const auto found = std::ranges::find_if(unitNames(), isCalled);
    return found == unitNames().end() ? nullptr : &*found;
}

const UnitName* unitOfSymbol(std::string_view symbol)
{
    const auto found = std::ranges::find(unitNames(), symbol, &UnitName::symbol);
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
    return std::string(conversion.from->singular) + " to " + std::string(conversion.to->singular);
}
