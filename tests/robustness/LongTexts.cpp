// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// LongTexts.cpp - the shapes of long texts.
#include "tests/robustness/LongTexts.h"

#include "mathexpr/SMTParsingExcepData.h"

#include <cwchar>

namespace {

constexpr auto compiles = LongText::compiles;

// clang-format off
constexpr LongText shapes[] = {
    // name                         head       opening   middle  closing  code                                   expected
    {"sum of numbers",              L"1",      L"+1",    L"",    L"",     compiles,                              {1, 1}},
    {"sum of variables",            L"x",      L"+x",    L"",    L"",     compiles,                              {1, 1}},
    {"brackets",                    L"",       L"(",     L"x",   L")",    compiles,                              {1, 0}},
    {"brackets, operator before",   L"",       L"1+(",   L"x",   L")",    compiles,                              {1, 1}},
    {"brackets, operator behind",   L"",       L"(",     L"x",   L"+1)",  compiles,                              {1, 1}},
    {"points in points",            L"",       L"[",     L"x",   L"]",    compiles,                              {1, 0}, true},
    {"calls",                       L"",       L"abs(",  L"x",   L")",    compiles,                              {1, 0}},
    {"calls of two arguments",      L"",       L"max(0,",L"x",   L")",    compiles,                              {1, 0}},
    {"signs",                       L"",       L"-",     L"x",   L"",     compiles,                              {1, 0}},
    {"negations",                   L"",       L"!",     L"x",   L"",     compiles,                              {1, 0}},
    {"arguments",                   L"sum(x",  L",x",    L")",   L"",     compiles,                              {1, 1}},
    {"a name, assigned to",         L"",       L"n",     L"=3",  L"",     compiles,                              {3, 0}},
    {"digits",                      L"",       L"0",     L"7",   L"",     compiles,                              {7, 0}},
    {"blanks",                      L"",       L" ",     L"x",   L" ",    compiles,                              {1, 0}},
    {"exponents",                   L"0",      L"e+0",   L"",    L"",     compiles,                              {0, 0}},
    {"an unknown name",             L"",       L"n",     L"",    L"",     mathexpr::ParsingError::UnknownName,             {1, 0}, false, true},
    {"an unknown function",         L"",       L"n",     L"(1)", L"",     mathexpr::ParsingError::UnknownFunction,         {1, 0}, false, true},
    {"separators",                  L"",       L",",     L"",    L"",     mathexpr::ParsingError::SeparatorOutsideBrackets, {0, 0}},
    {"separators in a call",        L"sum(x",  L",",     L")",   L"",     mathexpr::ParsingError::ArgumentEmpty,           {6, 0}},
    {"e+",                          L"",       L"e+",    L"",    L"",     mathexpr::ParsingError::OperatorMisplaced,       {1, 0}},
    {"brackets not closed",         L"",       L"(",     L"x",   L"",     mathexpr::ParsingError::BracketNotClosed,        {-1, 1}},
    {"brackets not opened",         L"x",      L")",     L"",    L"",     mathexpr::ParsingError::ClosingWithoutOpening,   {1, 0}},
    {"points not closed",           L"",       L"[",     L"",    L"",     mathexpr::ParsingError::BracketNotClosed,        {-1, 6}},
    {"points not opened",           L"",       L"]",     L"",    L"",     mathexpr::ParsingError::ClosingWithoutOpening,   {0, 0}},
    {"calls not closed",            L"",       L"abs(",  L"x",   L"",     mathexpr::ParsingError::BracketNotClosed,        {-1, 4}},
    {"sums not closed",             L"",       L"1+(",   L"x",   L"",     mathexpr::ParsingError::BracketNotClosed,        {-1, 3}},
    {"signs of nothing",            L"",       L"-",     L"",    L"",     mathexpr::ParsingError::OperandMissing,          {-1, 1}},
    {"a sum without its end",       L"",       L"x+",    L"",    L"",     mathexpr::ParsingError::OperandMissing,          {-1, 2}},
};
// clang-format on

}

std::size_t LongText::partsOf(std::size_t characters) const
{
    return characters / (std::wcslen(opening) + std::wcslen(closing)) / 2 * 2;
}

std::wstring LongText::make(std::size_t parts) const
{
    const std::size_t repeated = std::wcslen(opening) + std::wcslen(closing);
    std::wstring text(head);
    text.reserve(text.size() + std::wcslen(middle) + parts * repeated);
    for (std::size_t i = 0; i < parts; ++i)
    {
        text += opening;
    }
    text += middle;
    for (std::size_t i = 0; i < parts; ++i)
    {
        text += closing;
    }
    return text;
}

std::span<const LongText> longTexts()
{
    return shapes;
}
