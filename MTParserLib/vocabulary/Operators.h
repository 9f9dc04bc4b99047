// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Operators.h - the sixteen operators.
//
// An operator that yields a number writes only x, and leaves type, flag, y and z of the result; one that yields a point
// writes type, x, y and z. a and b are the left and the right operand.
#pragma once

#include "MTParserLib/vocabulary/FormulaItem.h"
#include "platform/Power.h"

#include <cmath>

/// An operator that reads and writes only x, whatever the kinds of its operands.
template <class Operator, class FormulaOfNumbers>
class NumberOperator : public BuiltInOperator<Operator>
{
public:
    using Formula = FormulaOfNumbers;
    static constexpr NumberWrites writes = NumberWrites::X;

    static Message::Id apply(const VALTYPE& a, const VALTYPE& b, VALTYPE& result)
    {
        return applyFormula<Operator>(result, a.x, b.x);
    }
};

/// A binary operator of numbers and of points.
template <class Operator, class FormulaOfKinds, Message::Id otherKindsMessage = Message::None,
          Message::Id refusalMessage = Message::None>
class KindOperator : public BuiltInOperator<Operator>
{
public:
    using Formula = FormulaOfKinds;
    static constexpr NumberWrites writes = NumberWrites::X;
    static constexpr Message::Id otherKinds = otherKindsMessage;
    static constexpr Message::Id refusal = refusalMessage;

    static Message::Id apply(const VALTYPE& a, const VALTYPE& b, VALTYPE& result)
    {
        return applyByKind<Operator>(a, b, result);
    }
};

struct AddOp final : KindOperator<AddOp, formulas::Add, Message::NumberWithPoint>
{
    static constexpr OperatorText text{L"+", L"x + y", L"Addition operator", 1};
};

struct MinusOp final : KindOperator<MinusOp, formulas::Minus, Message::NumberWithPoint>
{
    static constexpr OperatorText text{L"-", L"x - y", L"Minus operator", 1};
};

struct MultOp final : KindOperator<MultOp, formulas::Mult>
{
    static constexpr OperatorText text{L"*", L"x * y", L"Multiplication operator", 2};
};

struct DivOp final : KindOperator<DivOp, formulas::Div, Message::DivisionByPoint, Message::DivisionByZero>
{
    static constexpr OperatorText text{L"/", L"x / y", L"Division operator", 2};
};

struct ExpOp final : BuiltInOperator<ExpOp>
{
    static constexpr OperatorText text{L"^", L"x ^ y", L"Calculates x raised to the power of y", 3};

    using Formula = ExpOp;
    static constexpr NumberWrites writes = NumberWrites::X;

    /// 0 to any power is 0, unlike std::pow, which returns 1 or infinity.
    static double of(double a, double b) { return a != 0.0 ? platform::power(a, b) : 0.0; }

    static Message::Id apply(const VALTYPE& a, const VALTYPE& b, VALTYPE& result)
    {
        return isPoint(a) ? Message::PowerOfPoint : applyFormula<ExpOp>(result, a.x, b.x);
    }
};

struct UnaryMinusOp final : BuiltInOperator<UnaryMinusOp>
{
    static constexpr OperatorText text{L"-", L"-x", L"Unary minus operator", 4, true};

    using Formula = formulas::Negate;
    static constexpr NumberWrites writes = NumberWrites::X;

    static Message::Id apply(const VALTYPE& a, VALTYPE& result) { return applyByKind<UnaryMinusOp>(a, result); }
};

struct ModuloOp final : NumberOperator<ModuloOp, ModuloOp>
{
    static constexpr OperatorText text{L"%", L"x % y", L"Modulo; find remainder of the division of x by y", 2};
    static double of(double a, double b) { return std::fmod(a, b); }
};

struct GreaterThanOp final : NumberOperator<GreaterThanOp, formulas::Greater>
{
    static constexpr OperatorText text{L">", L"x > y", L"Greater than logical operator.  Return 1 if true, 0 if false.",
                                       0};
};

struct LesserThanOp final : NumberOperator<LesserThanOp, formulas::Lesser>
{
    static constexpr OperatorText text{L"<", L"x < y", L"Lesser than logical operator.  Return 1 if true, 0 if false.",
                                       0};
};

struct GreaterEqualThanOp final : NumberOperator<GreaterEqualThanOp, formulas::GreaterEqual>
{
    static constexpr OperatorText text{L">=", L"x >= y",
                                       L"Greater than or equal logical operator.  Return 1 if true, 0 if false.", 0};
};

struct LesserEqualThanOp final : NumberOperator<LesserEqualThanOp, formulas::LesserEqual>
{
    static constexpr OperatorText text{L"<=", L"x <= y",
                                       L"Lesser than or equal logical operator.  Return 1 if true, 0 if false.", 0};
};

struct NotEqualOp final : NumberOperator<NotEqualOp, formulas::NotEqual>
{
    static constexpr OperatorText text{L"!=", L"x != y", L"Not equal logical operator.  Return 1 if true, 0 if false.",
                                       0};
};

struct EqualOp final : NumberOperator<EqualOp, formulas::Equal>
{
    static constexpr OperatorText text{L"==", L"x == y", L"Equal logical operator.  Return 1 if true, 0 if false.", 0};
};

struct AndOp final : BuiltInOperator<AndOp>
{
    static constexpr OperatorText text{L"&", L"x & y", L"And logical operator.  Return 1 if true, 0 if false.", 0};
    /// For two points that are not both flagged.
    using Formula = formulas::Cross;

    static Message::Id apply(const VALTYPE& a, const VALTYPE& b, VALTYPE& result)
    {
        if (a.flag != 0 && b.flag != 0)
        {
            result.flag = 1;
            result.x = a.x != 0.0 && b.x != 0.0 ? 1.0 : 0.0;
        }
        else if (isPoint(a) && isPoint(b))
        {
            deliver<NumberWrites::X>(result, Formula::of(pointOf(a), pointOf(b)));
        }
        // All other operands, also two plain numbers: success, with the result unchanged.
        return Message::None;
    }
};

struct OrOp final : NumberOperator<OrOp, formulas::Or>
{
    static constexpr OperatorText text{L"|", L"x | y", L"Or logical operator.  Return 1 if true, 0 if false.", 0};
};

struct NotOp final : BuiltInOperator<NotOp>
{
    // The second "return 1" is part of the interface, although the operator yields 0 there.
    static constexpr OperatorText text{L"!", L"!x", L"Not logical operator. Return 1 if x is 0, else return 1", 2,
                                       true};
    using Formula = formulas::Not;
    static constexpr NumberWrites writes = NumberWrites::X;

    static Message::Id apply(const VALTYPE& a, VALTYPE& result) { return applyFormula<NotOp>(result, a.x); }
};
