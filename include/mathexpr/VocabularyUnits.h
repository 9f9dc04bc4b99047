// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// VocabularyUnits.h - the units of the vocabulary's conversions and their common names, so that a host can find a conversion
// by them. A conversion's name contains the symbols of its units: "i2mm" converts from "i" to "mm".
//
//     for (const mathexpr::VocabularyUnit& unit : mathexpr::vocabularyUnits)
//         ...  // unit.symbol, unit.singular
#pragma once

#include "mathexpr/Vocabulary.h"

namespace mathexpr {

struct VocabularyUnit
{
    VocabularyFamily family;
    const wchar_t* symbol;  ///< Unique.
    const wchar_t* singular;
    const wchar_t* plural;
    const wchar_t* others[9];  ///< Abbreviations and other spellings; null after the last one.
};

// clang-format off
inline constexpr VocabularyUnit vocabularyUnits[] = {
//   family                    symbol    singular                plural                   others
//   ------------------------- --------- ----------------------- ------------------------ ----------------------------------
    {VocabularyFamily::Angle,  L"d",     L"degree",              L"degrees",              {L"deg", L"\u00B0"}},
    {VocabularyFamily::Angle,  L"r",     L"radian",              L"radians",              {L"rad", L"rads"}},
    {VocabularyFamily::Angle,  L"c",     L"circle",              L"circles",              {L"turn", L"turns", L"revolution", L"revolutions", L"rev"}},
    {VocabularyFamily::Angle,  L"g",     L"grad",                L"grads",                {L"gon", L"gons", L"gradian", L"gradians"}},
    {VocabularyFamily::Angle,  L"q",     L"quadrant",            L"quadrants",            {L"quad", L"quads"}},
    {VocabularyFamily::Length, L"m",     L"metre",               L"metres",               {L"m", L"meter", L"meters"}},
    {VocabularyFamily::Length, L"cm",    L"centimetre",          L"centimetres",          {L"cm", L"centimeter", L"centimeters"}},
    {VocabularyFamily::Length, L"mm",    L"millimetre",          L"millimetres",          {L"mm", L"millimeter", L"millimeters"}},
    {VocabularyFamily::Length, L"km",    L"kilometre",           L"kilometres",           {L"km", L"kilometer", L"kilometers"}},
    {VocabularyFamily::Length, L"f",     L"foot",                L"feet",                 {L"ft", L"'", L"\u2032", L"\u2019"}},
    {VocabularyFamily::Length, L"i",     L"inch",                L"inches",               {L"in", L"\"", L"\u2033", L"\u201D", L"''"}},
    {VocabularyFamily::Length, L"y",     L"yard",                L"yards",                {L"yd", L"yds"}},
    {VocabularyFamily::Length, L"mile",  L"mile",                L"miles",                {L"mi"}},
    {VocabularyFamily::Length, L"su",    L"survey foot",         L"survey feet",          {L"survey ft", L"ftus", L"sft"}},
    {VocabularyFamily::Area,   L"sm",    L"square metre",        L"square metres",        {L"square meter", L"square meters", L"square m", L"sq m", L"sqm", L"m2", L"m\u00B2"}},
    {VocabularyFamily::Area,   L"scm",   L"square centimetre",   L"square centimetres",   {L"square centimeter", L"square centimeters", L"square cm", L"sq cm", L"cm2", L"cm\u00B2"}},
    {VocabularyFamily::Area,   L"smm",   L"square millimetre",   L"square millimetres",   {L"square millimeter", L"square millimeters", L"square mm", L"sq mm", L"mm2", L"mm\u00B2"}},
    {VocabularyFamily::Area,   L"skm",   L"square kilometre",    L"square kilometres",    {L"square kilometer", L"square kilometers", L"square km", L"sq km", L"km2", L"km\u00B2"}},
    {VocabularyFamily::Area,   L"sf",    L"square foot",         L"square feet",          {L"square ft", L"sq ft", L"sqft", L"ft2", L"ft\u00B2"}},
    {VocabularyFamily::Area,   L"si",    L"square inch",         L"square inches",        {L"square in", L"sq in", L"sqin", L"in2", L"in\u00B2"}},
    {VocabularyFamily::Area,   L"sy",    L"square yard",         L"square yards",         {L"square yd", L"sq yd", L"sqyd", L"yd2", L"yd\u00B2"}},
    {VocabularyFamily::Area,   L"sa",    L"acre",                L"acres",                {L"ac"}},
    {VocabularyFamily::Volume, L"vm",    L"cubic metre",         L"cubic metres",         {L"cubic meter", L"cubic meters", L"cubic m", L"cu m", L"cbm", L"m3", L"m\u00B3"}},
    {VocabularyFamily::Volume, L"vcm",   L"cubic centimetre",    L"cubic centimetres",    {L"cubic centimeter", L"cubic centimeters", L"cubic cm", L"cu cm", L"cc", L"ccm", L"cm3", L"cm\u00B3"}},
    {VocabularyFamily::Volume, L"vmm",   L"cubic millimetre",    L"cubic millimetres",    {L"cubic millimeter", L"cubic millimeters", L"cubic mm", L"cu mm", L"mm3", L"mm\u00B3"}},
    {VocabularyFamily::Volume, L"vkm",   L"cubic kilometre",     L"cubic kilometres",     {L"cubic kilometer", L"cubic kilometers", L"cubic km", L"cu km", L"km3", L"km\u00B3"}},
    {VocabularyFamily::Volume, L"vf",    L"cubic foot",          L"cubic feet",           {L"cubic ft", L"cu ft", L"cuft", L"ft3", L"ft\u00B3"}},
    {VocabularyFamily::Volume, L"vi",    L"cubic inch",          L"cubic inches",         {L"cubic in", L"cu in", L"cuin", L"in3", L"in\u00B3"}},
    {VocabularyFamily::Volume, L"vy",    L"cubic yard",          L"cubic yards",          {L"cubic yd", L"cu yd", L"cuyd", L"yd3", L"yd\u00B3"}},
};
// clang-format on

}
