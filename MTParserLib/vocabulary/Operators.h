// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Operators.h - the sixteen operators.
//
// An operator that yields a number writes x alone and leaves type, flag, y and z of the result as they were; one that
// yields a point writes type, x, y and z. a and b are the left and the right operand.
#pragma once

#include "MTParserLib/vocabulary/BuiltInItem.h"

#include <cmath>

/// A binary operator that reads and writes x alone, whatever its operands are.
template <class Operator>
class NumberOperator : public BuiltInOperator<Operator>
{
public:
    static Message::Id apply(const VALTYPE& a, const VALTYPE& b, VALTYPE& result)
    {
        result.x = Operator::compute(a.x, b.x);
        return Message::None;
    }
};

struct AddOp final : BuiltInOperator<AddOp>
{
    static constexpr OperatorText text{L"+", L"x + y", L"Addition operator", 1};

    static double compute(double a, double b) { return a + b; }

    static Message::Id apply(const VALTYPE& a, const VALTYPE& b, VALTYPE& result)
    {
        if (isPoint(a) != isPoint(b))
        {
            return Message::NumberWithPoint;
        }
        if (isPoint(a))
        {
            setPoint(result, a.x + b.x, a.y + b.y, a.z + b.z);
        }
        else
        {
            result.x = compute(a.x, b.x);
        }
        return Message::None;
    }
};

struct MinusOp final : BuiltInOperator<MinusOp>
{
    static constexpr OperatorText text{L"-", L"x - y", L"Minus operator", 1};

    static double compute(double a, double b) { return a - b; }

    static Message::Id apply(const VALTYPE& a, const VALTYPE& b, VALTYPE& result)
    {
        if (isPoint(a) != isPoint(b))
        {
            return Message::NumberWithPoint;
        }
        if (isPoint(a))
        {
            setPoint(result, a.x - b.x, a.y - b.y, a.z - b.z);
        }
        else
        {
            result.x = compute(a.x, b.x);
        }
        return Message::None;
    }
};

struct MultOp final : BuiltInOperator<MultOp>
{
    static constexpr OperatorText text{L"*", L"x * y", L"Multiplication operator", 2};

    /// The dot product reads the result that it is to write.
    static constexpr bool readsResult = true;
    static double compute(double a, double b) { return a * b; }

    static Message::Id apply(const VALTYPE& a, const VALTYPE& b, VALTYPE& result)
    {
        if (isPoint(a) && isPoint(b))
        {
            // The dot product is added onto what the result holds: it is the product only where x was 0 on entry.
            result.x += a.x * b.x;
            result.x += a.y * b.y;
            result.x += a.z * b.z;
        }
        else if (isPoint(a))
        {
            setPoint(result, a.x * b.x, a.y * b.x, a.z * b.x);
        }
        else if (isPoint(b))
        {
            setPoint(result, a.x * b.x, a.x * b.y, a.x * b.z);
        }
        else
        {
            result.x = compute(a.x, b.x);
        }
        return Message::None;
    }
};

struct DivOp final : BuiltInOperator<DivOp>
{
    static constexpr OperatorText text{L"/", L"x / y", L"Division operator", 2};

    static bool isOutside(double, double b) { return b == 0.0; }
    static double compute(double a, double b) { return a / b; }

    static Message::Id apply(const VALTYPE& a, const VALTYPE& b, VALTYPE& result)
    {
        if (isPoint(b))
        {
            return Message::DivisionByPoint;
        }
        if (isOutside(a.x, b.x))
        {
            return Message::DivisionByZero;
        }
        if (isPoint(a))
        {
            setPoint(result, a.x / b.x, a.y / b.x, a.z / b.x);
        }
        else
        {
            result.x = compute(a.x, b.x);
        }
        return Message::None;
    }
};

struct ExpOp final : BuiltInOperator<ExpOp>
{
    static constexpr OperatorText text{L"^", L"x ^ y", L"Calculates x raised to the power of y", 3};

    /// 0 to any power is 0, so that neither 1 nor an infinity comes of it.
    static double compute(double a, double b) { return a != 0.0 ? std::pow(a, b) : 0.0; }

    static Message::Id apply(const VALTYPE& a, const VALTYPE& b, VALTYPE& result)
    {
        if (isPoint(a))
        {
            return Message::PowerOfPoint;
        }
        result.x = compute(a.x, b.x);
        return Message::None;
    }
};

struct UnaryMinusOp final : BuiltInOperator<UnaryMinusOp>
{
    static constexpr OperatorText text{L"-", L"-x", L"Unary minus operator", 4, true};

    static double compute(double a) { return -a; }

    static Message::Id apply(const VALTYPE& a, VALTYPE& result)
    {
        if (isPoint(a))
        {
            setPoint(result, -a.x, -a.y, -a.z);
        }
        else
        {
            result.x = compute(a.x);
        }
        return Message::None;
    }
};

struct ModuloOp final : NumberOperator<ModuloOp>
{
    static constexpr OperatorText text{L"%", L"x % y", L"Modulo; find remainder of the division of x by y", 2};
    static double compute(double a, double b) { return std::fmod(a, b); }
};

struct GreaterThanOp final : NumberOperator<GreaterThanOp>
{
    static constexpr OperatorText text{L">", L"x > y", L"Greater than logical operator.  Return 1 if true, 0 if false.",
                                       0};
    static double compute(double a, double b) { return a > b ? 1.0 : 0.0; }
};

struct LesserThanOp final : NumberOperator<LesserThanOp>
{
    static constexpr OperatorText text{L"<", L"x < y", L"Lesser than logical operator.  Return 1 if true, 0 if false.",
                                       0};
    static double compute(double a, double b) { return b > a ? 1.0 : 0.0; }
};

struct GreaterEqualThanOp final : NumberOperator<GreaterEqualThanOp>
{
    static constexpr OperatorText text{L">=", L"x >= y",
                                       L"Greater than or equal logical operator.  Return 1 if true, 0 if false.", 0};
    static double compute(double a, double b) { return a >= b ? 1.0 : 0.0; }
};

struct LesserEqualThanOp final : NumberOperator<LesserEqualThanOp>
{
    static constexpr OperatorText text{L"<=", L"x <= y",
                                       L"Lesser than or equal logical operator.  Return 1 if true, 0 if false.", 0};
    static double compute(double a, double b) { return b >= a ? 1.0 : 0.0; }
};

struct NotEqualOp final : NumberOperator<NotEqualOp>
{
    static constexpr OperatorText text{L"!=", L"x != y", L"Not equal logical operator.  Return 1 if true, 0 if false.",
                                       0};
    static double compute(double a, double b) { return a == b ? 0.0 : 1.0; }
};

struct EqualOp final : NumberOperator<EqualOp>
{
    static constexpr OperatorText text{L"==", L"x == y", L"Equal logical operator.  Return 1 if true, 0 if false.", 0};
    static double compute(double a, double b) { return a == b ? 1.0 : 0.0; }
};

struct AndOp final : BuiltInOperator<AndOp>
{
    static constexpr OperatorText text{L"&", L"x & y", L"And logical operator.  Return 1 if true, 0 if false.", 0};

    static Message::Id apply(const VALTYPE& a, const VALTYPE& b, VALTYPE& result)
    {
        if (a.flag != 0 && b.flag != 0)
        {
            result.flag = 1;
            result.x = a.x != 0.0 && b.x != 0.0 ? 1.0 : 0.0;
        }
        else if (isPoint(a) && isPoint(b))
        {
            setPoint(result, a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x);
        }
        // Anything else, two plain numbers too, succeeds and leaves the result as it was handed in.
        return Message::None;
    }
};

struct OrOp final : NumberOperator<OrOp>
{
    static constexpr OperatorText text{L"|", L"x | y", L"Or logical operator.  Return 1 if true, 0 if false.", 0};
    static double compute(double a, double b) { return a == 0.0 && b == 0.0 ? 0.0 : 1.0; }
};

struct NotOp final : BuiltInOperator<NotOp>
{
    // The second "return 1" is required as it stands, although the operator yields 0 there.
    static constexpr OperatorText text{L"!", L"!x", L"Not logical operator. Return 1 if x is 0, else return 1", 2,
                                       true};
    static double compute(double a) { return a == 0.0 ? 1.0 : 0.0; }

    static Message::Id apply(const VALTYPE& a, VALTYPE& result)
    {
        result.x = compute(a.x);
        return Message::None;
    }
};
