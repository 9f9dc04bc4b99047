// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// HintNumbers.h - numbers of the hint sentences in MathExprRes/Messages.table.
#pragma once

#include <cstdint>

namespace mathexpr::Hint {

enum Id : std::uint32_t
{
    ExpectedValue = 101,
    ExpectedInBracket = 102,
    ExpectedOutside = 103,
    TakesOne = 104,
    TakesSeveral = 105,
    TakesAny = 106,
    DidYouMean = 107,
    ListComma = 108,
    ListOr = 109,
    NeedsNumber = 110,
    PowerOfTen = 111,
    TwoReadings = 112,
    DecimalPoint = 113,
    Multiplication = 114,
    Exponent = 115,
    Percent = 116,
    NameIsConstant = 117,
    NameIsNumber = 118,
    NameHolds = 119,
};

}
