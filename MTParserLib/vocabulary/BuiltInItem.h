// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// BuiltInItem.h - the base classes of the vocabulary.
//
// A class of the vocabulary has no data members. It declares its strings and numbers in a constant named text, and its
// arithmetic in a static member function apply, with one operand, two operands, or any number of arguments:
//
//     Message::Id apply(const VALTYPE& a, VALTYPE& result)
//     Message::Id apply(const VALTYPE& a, const VALTYPE& b, VALTYPE& result)
//     Message::Id apply(std::uint32_t nbArgs, const VALTYPE* args, VALTYPE& result)
//
// apply returns Message::None if result holds the value, otherwise the message that explains why the item refuses its
// arguments. It writes only the fields of result that the item sets, and none if it refuses. The base classes implement
// the item interfaces in terms of text and apply.
#pragma once

#include "MTParserLib/vocabulary/ItemForm.h"
#include "MTParserLib/vocabulary/Refusal.h"
#include "mathexpr/IMathFunction.h"
#include "mathexpr/IMathOperator.h"
#include "platform/ArrayView.h"

#include <cstdint>
#include <string>
#include <utility>

struct OperatorText
{
    const wchar_t* symbol;
    const wchar_t* help;
    const wchar_t* description;
    std::int32_t precedence;
    bool unary = false;
};

struct FunctionText
{
    const wchar_t* symbol;
    const wchar_t* help;
    const wchar_t* description;
    std::uint32_t nbArgs;    ///< NB_ARGS_UNDEFINED for any number.
    std::uint32_t line = 0;  ///< Reported in the exception for a point argument; 0 in a class that raises none.
};

template <class Item>
using ApplyToOne = decltype(Item::apply(std::declval<const VALTYPE&>(), std::declval<VALTYPE&>()));
template <class Item>
using ApplyToTwo =
    decltype(Item::apply(std::declval<const VALTYPE&>(), std::declval<const VALTYPE&>(), std::declval<VALTYPE&>()));

template <class Item>
inline constexpr bool TakesOneOperand = hasForm<ApplyToOne, Item>;
template <class Item>
inline constexpr bool TakesTwoOperands = hasForm<ApplyToTwo, Item>;

/// @param operand  maps the index of an operand to its record; records of more than two operands are adjacent
template <class Item, class Operand>
Message::Id applyTo(std::uint32_t nbArgs, Operand operand, VALTYPE& result)
{
    if constexpr (TakesOneOperand<Item>)
    {
        return Item::apply(operand(0), result);
    }
    else if constexpr (TakesTwoOperands<Item>)
    {
        return Item::apply(operand(0), operand(1), result);
    }
    else
    {
        return Item::apply(nbArgs, nbArgs != 0 ? &operand(0) : nullptr, result);
    }
}

/// Implements IMathExprItemEvaluator::evaluate.
template <class Item>
bool evaluateArgs(std::uint32_t nbArgs, const VALTYPE* args, VALTYPE& result, bool showMessages)
{
    const auto operand = [args](std::uint32_t index) -> const VALTYPE& { return args[index]; };
    return showRefusal(applyTo<Item>(nbArgs, operand, result), showMessages) == Message::None;
}

/// Implements the part of an operator that depends on its text alone.
class DescribedOperator : public IMathOperator
{
public:
    std::wstring getHelpString() const final { return describe().help; }
    std::wstring getDescription() const final { return describe().description; }
    std::int32_t getPrecedence() const final { return describe().precedence; }
    std::wstring getSymbol() const final { return describe().symbol; }
    bool isUnaryOp() const final { return describe().unary; }

protected:
    virtual const OperatorText& describe() const noexcept = 0;
};

/// Implements the part of a function that depends on its text alone.
class DescribedFunction : public IMathFunction
{
public:
    std::wstring getHelpString() const final { return describe().help; }
    std::wstring getDescription() const final { return describe().description; }
    std::wstring getSymbol() const final { return describe().symbol; }
    std::uint32_t getNbArgs() const final { return describe().nbArgs; }

protected:
    virtual const FunctionText& describe() const noexcept = 0;
};

/// Implements IMathOperator for a class with text and apply.
template <class Operator>
class BuiltInOperator : public DescribedOperator
{
public:
    static constexpr bool constant = true;

    bool isConstant() const final { return constant; }

    bool evaluate(std::uint32_t nbArgs, const VALTYPE* args, VALTYPE& result, bool showMessages) const final
    {
        return evaluateArgs<Operator>(nbArgs, args, result, showMessages);
    }

protected:
    const OperatorText& describe() const noexcept final { return Operator::text; }
};

/// Implements IMathFunction for a class with text and apply.
template <class Function>
class BuiltInFunction : public DescribedFunction
{
public:
    /// Redefined by a function whose result depends on more than its arguments.
    static constexpr bool constant = true;

    bool isConstant() const final { return Function::constant; }

    bool evaluate(std::uint32_t nbArgs, const VALTYPE* args, VALTYPE& result, bool showMessages) const final
    {
        return evaluateArgs<Function>(nbArgs, args, result, showMessages);
    }

protected:
    const FunctionText& describe() const noexcept final { return Function::text; }
};

inline bool isPoint(const VALTYPE& value)
{
    return value.type != 0;
}

/// Sets type and x; leaves y and z.
inline void setNumber(VALTYPE& result, double x)
{
    result.type = 0;
    result.x = x;
}

/// Sets type, x, y and z; leaves the second flag.
inline void setPoint(VALTYPE& result, double x, double y, double z)
{
    result.type = 1;
    result.x = x;
    result.y = y;
    result.z = z;
}
