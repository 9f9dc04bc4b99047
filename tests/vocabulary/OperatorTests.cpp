// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// OperatorTests.cpp - the sixteen operators: results, written fields, refusals.
#include "MTParserLib/vocabulary/Operators.h"

#include "Items.h"

#include <cmath>

namespace {

const VALTYPE a = point(1, 2, 3);
const VALTYPE b = point(4, 5, 6);

TEST(AddOp, Numbers)
{
    EXPECT_TRUE(yields(AddOp{}, {number(1.5), number(2)}, withX(3.5)));
    EXPECT_TRUE(yields(AddOp{}, {number(-0.0), number(-0.0)}, withX(-0.0)));
    EXPECT_TRUE(yields(AddOp{}, {number(infinity), number(-infinity)}, withX(notANumber)));
}

TEST(AddOp, Points)
{
    EXPECT_TRUE(yields(AddOp{}, {a, b}, withPoint(5, 7, 9)));
}

TEST(AddOp, RefusesNumberWithPoint)
{
    EXPECT_TRUE(refuses(AddOp{}, {a, number(1)}, 5));
    EXPECT_TRUE(refuses(AddOp{}, {number(1), a}, 5));
}

TEST(MinusOp, Numbers)
{
    EXPECT_TRUE(yields(MinusOp{}, {number(1.5), number(2)}, withX(-0.5)));
    EXPECT_TRUE(yields(MinusOp{}, {number(-0.0), number(0.0)}, withX(-0.0)));
}

TEST(MinusOp, Points)
{
    EXPECT_TRUE(yields(MinusOp{}, {a, point(4, 7, 9)}, withPoint(-3, -5, -6)));
}

TEST(MinusOp, RefusesNumberWithPoint)
{
    EXPECT_TRUE(refuses(MinusOp{}, {a, number(1)}, 5));
    EXPECT_TRUE(refuses(MinusOp{}, {number(1), a}, 5));
}

TEST(MultOp, Numbers)
{
    EXPECT_TRUE(yields(MultOp{}, {number(1.5), number(-2)}, withX(-3)));
    EXPECT_TRUE(yields(MultOp{}, {number(0), number(infinity)}, withX(notANumber)));
}

TEST(MultOp, ScalesPoints)
{
    EXPECT_TRUE(yields(MultOp{}, {a, number(2)}, withPoint(2, 4, 6)));
    EXPECT_TRUE(yields(MultOp{}, {number(2), a}, withPoint(2, 4, 6)));
    EXPECT_TRUE(yields(MultOp{}, {number(2), b}, withPoint(8, 10, 12)));
}

TEST(MultOp, ScalesByXAlone)
{
    VALTYPE two = number(2);
    two.y = 100;
    two.z = 1000;
    EXPECT_TRUE(yields(MultOp{}, {a, two}, withPoint(2, 4, 6)));
    EXPECT_TRUE(yields(MultOp{}, {two, a}, withPoint(2, 4, 6)));
}

TEST(MultOp, DotProductIsAddedOntoTheResult)
{
    EXPECT_TRUE(yields(MultOp{}, {a, b}, number(32), number(0)));
    EXPECT_TRUE(yields(MultOp{}, {a, b}, number(64), number(32)));
    EXPECT_TRUE(yields(MultOp{}, {a, b}, withX(1234.5678 + 4 + 10 + 18)));
}

TEST(MultOp, DotProductAddsInOrder)
{
    const VALTYPE ones = point(1, 1, 1);
    EXPECT_TRUE(yields(MultOp{}, {point(1e16, 1, 1), ones}, number(1e16), number(0)));
    EXPECT_TRUE(yields(MultOp{}, {point(1, 1, 1e16), ones}, number(1e16 + 2), number(0)));
}

TEST(DivOp, Numbers)
{
    EXPECT_TRUE(yields(DivOp{}, {number(1), number(-4)}, withX(-0.25)));
    EXPECT_TRUE(yields(DivOp{}, {number(1), number(infinity)}, withX(0)));
}

TEST(DivOp, PointByNumber)
{
    EXPECT_TRUE(yields(DivOp{}, {point(2, 4, 6), number(2)}, withPoint(1, 2, 3)));
}

TEST(DivOp, NanIsNotZero)
{
    EXPECT_TRUE(yields(DivOp{}, {number(1), number(notANumber)}, withX(notANumber)));
    EXPECT_TRUE(yields(DivOp{}, {a, number(notANumber)}, withPoint(notANumber, notANumber, notANumber)));
}

TEST(DivOp, RefusesZeroOfEitherSign)
{
    for (const double zero : {0.0, -0.0})
    {
        EXPECT_TRUE(refuses(DivOp{}, {number(1), number(zero)}, 10));
        EXPECT_TRUE(refuses(DivOp{}, {number(0), number(zero)}, 10));
        EXPECT_TRUE(refuses(DivOp{}, {a, number(zero)}, 10));
    }
}

TEST(DivOp, RefusesAPointAsDivisor)
{
    EXPECT_TRUE(refuses(DivOp{}, {number(1), a}, 11));
    EXPECT_TRUE(refuses(DivOp{}, {a, b}, 11));
    EXPECT_TRUE(refuses(DivOp{}, {a, point(0, 0, 0)}, 11));
}

TEST(ExpOp, IsPow)
{
    EXPECT_TRUE(yields(ExpOp{}, {number(2), number(10)}, withX(1024)));
    EXPECT_TRUE(yields(ExpOp{}, {number(2.5), number(0.1)}, withX(std::pow(opaque(2.5), opaque(0.1)))));
    EXPECT_TRUE(yields(ExpOp{}, {number(-8), number(1.0 / 3.0)}, withX(notANumber)));
    EXPECT_TRUE(yields(ExpOp{}, {number(notANumber), number(0)}, withX(1)));
    EXPECT_TRUE(yields(ExpOp{}, {number(notANumber), number(2)}, withX(notANumber)));
}

TEST(ExpOp, ZeroToAnyPowerIsZero)
{
    for (const double exponent : {0.0, -1.0, 2.0, infinity, -infinity, notANumber})
    {
        EXPECT_TRUE(yields(ExpOp{}, {number(0.0), number(exponent)}, withX(0.0)));
        EXPECT_TRUE(yields(ExpOp{}, {number(-0.0), number(exponent)}, withX(0.0)));
    }
}

TEST(ExpOp, ReadsXOfAPointAsExponent)
{
    EXPECT_TRUE(yields(ExpOp{}, {number(2), point(3, 4, 5)}, withX(8)));
}

TEST(ExpOp, RefusesAPointAsBase)
{
    EXPECT_TRUE(refuses(ExpOp{}, {a, number(2)}, 13));
    EXPECT_TRUE(refuses(ExpOp{}, {point(0, 0, 0), b}, 13));
}

TEST(UnaryMinusOp, FlipsTheSignBit)
{
    EXPECT_TRUE(yields(UnaryMinusOp{}, {number(2)}, withX(-2)));
    EXPECT_TRUE(yields(UnaryMinusOp{}, {number(0.0)}, withX(-0.0)));
    EXPECT_TRUE(yields(UnaryMinusOp{}, {number(-0.0)}, withX(0.0)));
}

TEST(UnaryMinusOp, FlipsTheSignOfNan)
{
    for (const std::uint64_t bits : {0x7FF8000000000123U, 0xFFF8000000000123U})
    {
        const VALTYPE argument = number(std::bit_cast<double>(bits));
        VALTYPE result = stale();
        ASSERT_TRUE(UnaryMinusOp{}.evaluate(1, &argument, result, true));
        EXPECT_EQ(bitsOf(result.x), bits ^ 0x8000000000000000U);
    }
}

TEST(UnaryMinusOp, Point)
{
    EXPECT_TRUE(yields(UnaryMinusOp{}, {point(1, -2, 0)}, withPoint(-1, 2, -0.0)));
}

TEST(ModuloOp, IsFmod)
{
    EXPECT_TRUE(yields(ModuloOp{}, {number(7.5), number(2)}, withX(1.5)));
    EXPECT_TRUE(yields(ModuloOp{}, {number(-7.5), number(2)}, withX(-1.5)));
    EXPECT_TRUE(yields(ModuloOp{}, {number(5), number(0)}, withX(notANumber)));
    EXPECT_TRUE(yields(ModuloOp{}, {number(5), number(infinity)}, withX(5)));
}

TEST(ModuloOp, ReadsXOfPoints)
{
    EXPECT_TRUE(yields(ModuloOp{}, {point(7, 1, 1), point(4, 0, 0)}, withX(3)));
}

struct Comparison
{
    const IMathOperator& item;
    double below, equal, above;  // results for 1 and 2, for 1 and 1, for 2 and 1
    double withNan;
};

TEST(Comparisons, CompareExactly)
{
    const GreaterThanOp greater;
    const LesserThanOp lesser;
    const GreaterEqualThanOp greaterEqual;
    const LesserEqualThanOp lesserEqual;
    const EqualOp equal;
    const NotEqualOp notEqual;
    const Comparison comparisons[] = {
        {greater, 0, 0, 1, 0},     {lesser, 1, 0, 0, 0}, {greaterEqual, 0, 1, 1, 0},
        {lesserEqual, 1, 1, 0, 0}, {equal, 0, 1, 0, 0},  {notEqual, 1, 0, 1, 1},
    };
    const double aboveOne = std::nextafter(1.0, 2.0);
    for (const auto& [item, below, same, above, withNan] : comparisons)
    {
        SCOPED_TRACE(narrow(item.getSymbol()));
        EXPECT_TRUE(yields(item, {number(1), number(aboveOne)}, withX(below)));
        EXPECT_TRUE(yields(item, {number(1), number(1)}, withX(same)));
        EXPECT_TRUE(yields(item, {number(0.0), number(-0.0)}, withX(same)));
        EXPECT_TRUE(yields(item, {number(aboveOne), number(1)}, withX(above)));
        EXPECT_TRUE(yields(item, {number(infinity), number(infinity)}, withX(same)));
        EXPECT_TRUE(yields(item, {number(notANumber), number(1)}, withX(withNan)));
        EXPECT_TRUE(yields(item, {number(1), number(notANumber)}, withX(withNan)));
        EXPECT_TRUE(yields(item, {number(notANumber), number(notANumber)}, withX(withNan)));
        EXPECT_TRUE(yields(item, {point(1, 9, 9), point(1, 5, 6)}, withX(same)));
        EXPECT_TRUE(yields(item, {point(1, 9, 9), number(2)}, withX(below)));
    }
}

VALTYPE withFlag(double x)
{
    VALTYPE value = withX(x);
    value.flag = 1;
    return value;
}

TEST(AndOp, IsLogicalWhereBothCarryTheFlag)
{
    EXPECT_TRUE(yields(AndOp{}, {converted(2), converted(3)}, withFlag(1)));
    EXPECT_TRUE(yields(AndOp{}, {converted(0), converted(3)}, withFlag(0)));
    EXPECT_TRUE(yields(AndOp{}, {converted(2), converted(-0.0)}, withFlag(0)));
    EXPECT_TRUE(yields(AndOp{}, {converted(notANumber), converted(notANumber)}, withFlag(1)));
}

TEST(AndOp, FlagsComeBeforePoints)
{
    VALTYPE first = a;
    VALTYPE second = b;
    first.flag = 1;
    second.flag = 1;
    EXPECT_TRUE(yields(AndOp{}, {first, second}, withFlag(1)));
}

TEST(AndOp, CrossProductOfPoints)
{
    EXPECT_TRUE(yields(AndOp{}, {point(1, 0, 0), point(0, 1, 0)}, withPoint(0, 0, 1)));
    EXPECT_TRUE(yields(AndOp{}, {point(2, 3, 5), point(7, 11, 13)}, withPoint(-16, 9, 1)));
    VALTYPE flagged = a;
    flagged.flag = 1;
    EXPECT_TRUE(yields(AndOp{}, {flagged, b}, withPoint(-3, 6, -3)));
}

TEST(AndOp, WritesNothingOtherwise)
{
    EXPECT_TRUE(yields(AndOp{}, {number(1), number(1)}, stale()));
    EXPECT_TRUE(yields(AndOp{}, {number(0), number(0)}, stale()));
    EXPECT_TRUE(yields(AndOp{}, {converted(1), number(1)}, stale()));
    EXPECT_TRUE(yields(AndOp{}, {number(1), converted(1)}, stale()));
    EXPECT_TRUE(yields(AndOp{}, {a, number(1)}, stale()));
    EXPECT_TRUE(yields(AndOp{}, {converted(1), a}, stale()));
}

TEST(OrOp, IsZeroForTwoZeros)
{
    EXPECT_TRUE(yields(OrOp{}, {number(0), number(-0.0)}, withX(0)));
    EXPECT_TRUE(yields(OrOp{}, {number(0), number(3)}, withX(1)));
    EXPECT_TRUE(yields(OrOp{}, {number(3), number(0)}, withX(1)));
    EXPECT_TRUE(yields(OrOp{}, {number(0), number(notANumber)}, withX(1)));
    EXPECT_TRUE(yields(OrOp{}, {point(0, 1, 1), point(0, 1, 1)}, withX(0)));
}

TEST(NotOp, IsOneForZero)
{
    EXPECT_TRUE(yields(NotOp{}, {number(0)}, withX(1)));
    EXPECT_TRUE(yields(NotOp{}, {number(-0.0)}, withX(1)));
    EXPECT_TRUE(yields(NotOp{}, {number(2)}, withX(0)));
    EXPECT_TRUE(yields(NotOp{}, {number(notANumber)}, withX(0)));
    EXPECT_TRUE(yields(NotOp{}, {point(0, 1, 1)}, withX(1)));
}

}
