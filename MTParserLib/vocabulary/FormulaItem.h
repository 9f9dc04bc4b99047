// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// FormulaItem.h - implements items whose arithmetic is a single formula: checks the operands' kinds, computes or
// refuses, and writes the result.
//
// Such an item declares
//
//     Formula     a class of Formulas.h, or the item itself if its formula is for double only
//     refusal     the message if the formula refuses its operands; None if it never does
//     otherKinds  the message for operands of kinds without an overload of the formula; None if there are no such kinds
//     writes      what a number result writes besides x
//
// The base classes here and in the headers of the families declare them from their template arguments.
#pragma once

#include "MTParserLib/vocabulary/BuiltInItem.h"
#include "MTParserLib/vocabulary/Formulas.h"

#include <cmath>

template <>
struct formulas::Functions<double>
{
    static double squareRoot(double x) { return std::sqrt(x); }
    static double magnitude(double x) { return std::fabs(x); }
};

using PointValue = formulas::PointOf<double>;

/// Fields of the result that a number sets besides x. A point always sets type, y and z.
enum class NumberWrites
{
    X,            ///< None.
    Kind,         ///< The type.
    KindAndFlag,  ///< The type, and the second flag to 1.
};

inline PointValue pointOf(const VALTYPE& value)
{
    return {value.x, value.y, value.z};
}

template <NumberWrites writes>
void deliver(VALTYPE& result, double number)
{
    if constexpr (writes == NumberWrites::X)
    {
        result.x = number;
    }
    else
    {
        setNumber(result, number);
    }
    if constexpr (writes == NumberWrites::KindAndFlag)
    {
        result.flag = 1;
        result.reserved = 0;
    }
}

template <NumberWrites writes>
void deliver(VALTYPE& result, PointValue point)
{
    setPoint(result, point.x, point.y, point.z);
}

/// Applies an item to numbers (double) and points (PointValue).
template <class Item, class... Operands>
Message::Id applyFormula(VALTYPE& result, Operands... operands)
{
    using Formula = typename Item::Formula;
    if constexpr (formulas::addsOnto<Formula, Operands...>)
    {
        result.x = Formula::onto(result.x, operands...);
    }
    else if constexpr (formulas::takesOperands<Formula, Operands...>)
    {
        if constexpr (formulas::mayRefuse<Formula, Operands...>)
        {
            if (Formula::refuses(operands...))
            {
                return Item::refusal;
            }
        }
        deliver<Item::writes>(result, Formula::of(operands...));
    }
    else
    {
        return Item::otherKinds;
    }
    return Message::None;
}

/// Applies an item to an operand, depending on its kind.
template <class Item>
Message::Id applyByKind(const VALTYPE& a, VALTYPE& result)
{
    return isPoint(a) ? applyFormula<Item>(result, pointOf(a)) : applyFormula<Item>(result, a.x);
}

/// Applies an item to operands, depending on their kinds.
template <class Item>
Message::Id applyByKind(const VALTYPE& a, const VALTYPE& b, VALTYPE& result)
{
    if (isPoint(a))
    {
        return isPoint(b) ? applyFormula<Item>(result, pointOf(a), pointOf(b))
                          : applyFormula<Item>(result, pointOf(a), b.x);
    }
    return isPoint(b) ? applyFormula<Item>(result, a.x, pointOf(b)) : applyFormula<Item>(result, a.x, b.x);
}
