// BuiltInItem.h - what every class of the vocabulary is made of.
//
// A class of the vocabulary has no data. It states its strings and numbers in a constant named text and its arithmetic
// in a static member function apply, which does what IMathExprItemEvaluator::evaluate promises and can also be called
// without an object. It takes one operand, two operands, or any number of arguments:
//
//     bool apply(const VALTYPE& a, VALTYPE& result, bool showMessages)
//     bool apply(const VALTYPE& a, const VALTYPE& b, VALTYPE& result, bool showMessages)
//     bool apply(std::uint32_t nbArgs, const VALTYPE* args, VALTYPE& result, bool showMessages)
//
// The bases below answer the item interfaces from these two. apply writes only the fields of result that the item means
// to set.
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
    std::uint32_t line = 0;  ///< Carried by the exception for a point argument; 0 in a class that raises none.
};

template <class Item>
using ApplyToOne = decltype(Item::apply(std::declval<const VALTYPE&>(), std::declval<VALTYPE&>(), false));
template <class Item>
using ApplyToTwo = decltype(Item::apply(std::declval<const VALTYPE&>(), std::declval<const VALTYPE&>(),
                                        std::declval<VALTYPE&>(), false));

template <class Item>
inline constexpr bool TakesOneOperand = hasForm<ApplyToOne, Item>;
template <class Item>
inline constexpr bool TakesTwoOperands = hasForm<ApplyToTwo, Item>;

/// Hands an item the operands that stand side by side.
template <class Item>
bool applyToArgs(std::uint32_t nbArgs, const VALTYPE* args, VALTYPE& result, bool showMessages)
{
    if constexpr (TakesOneOperand<Item>)
    {
        return Item::apply(args[0], result, showMessages);
    }
    else if constexpr (TakesTwoOperands<Item>)
    {
        return Item::apply(args[0], args[1], result, showMessages);
    }
    else
    {
        return Item::apply(nbArgs, args, result, showMessages);
    }
}

/// Answers IMathOperator for a class with text and apply.
template <class Operator>
class BuiltInOperator : public IMathOperator
{
public:
    std::wstring getHelpString() const final { return Operator::text.help; }
    std::wstring getDescription() const final { return Operator::text.description; }
    bool isConstant() const final { return true; }
    std::int32_t getPrecedence() const final { return Operator::text.precedence; }
    std::wstring getSymbol() const final { return Operator::text.symbol; }
    bool isUnaryOp() const final { return Operator::text.unary; }

    bool evaluate(std::uint32_t nbArgs, const VALTYPE* args, VALTYPE& result, bool showMessages) const final
    {
        return applyToArgs<Operator>(nbArgs, args, result, showMessages);
    }
};

/// Answers IMathFunction for a class with text and apply.
template <class Function>
class BuiltInFunction : public IMathFunction
{
public:
    /// Hidden by a function whose result does not depend on the arguments alone.
    static constexpr bool constant = true;

    std::wstring getHelpString() const final { return Function::text.help; }
    std::wstring getDescription() const final { return Function::text.description; }
    bool isConstant() const final { return Function::constant; }
    std::wstring getSymbol() const final { return Function::text.symbol; }
    std::uint32_t getNbArgs() const final { return Function::text.nbArgs; }

    bool evaluate(std::uint32_t nbArgs, const VALTYPE* args, VALTYPE& result, bool showMessages) const final
    {
        return applyToArgs<Function>(nbArgs, args, result, showMessages);
    }
};

inline bool isPoint(const VALTYPE& value)
{
    return value.type != 0;
}

/// Makes result a number; y and z stay.
inline void setNumber(VALTYPE& result, double x)
{
    result.type = 0;
    result.x = x;
}

/// Makes result a point; the second flag stays.
inline void setPoint(VALTYPE& result, double x, double y, double z)
{
    result.type = 1;
    result.x = x;
    result.y = y;
    result.z = z;
}
