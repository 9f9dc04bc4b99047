// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// CoreMathTests.cpp - the core functions: results, written fields, refusals and exceptions.
#include "MTParserLib/vocabulary/CoreMath.h"

#include "Items.h"

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <limits>
#include <set>

namespace {

constexpr double shortPi = 3.14159265359;

const double arguments[] = {0.0,      -0.0, 1.0,        -1.0,         0.5,      -0.3,      30.0,
                            45.0,     90.0, 180.0,      -7.5,         720.0,    1e-10,     123456.0,
                            -98765.4, 1e22, 1.7976e308, 4.94066e-324, infinity, notANumber};

struct Definition
{
    const IMathFunction& item;
    std::function<double(double)> formula;
};

TEST(CoreMath, TruncatesWhatFitsAndTakesTheRestForTheSmallestInteger)
{
    constexpr std::int32_t smallest = std::numeric_limits<std::int32_t>::min();
    EXPECT_EQ(coremath::truncate(2147483647.9), 2147483647);
    EXPECT_EQ(coremath::truncate(2147483648.0), smallest);
    EXPECT_EQ(coremath::truncate(2147483648.5), smallest);
    EXPECT_EQ(coremath::truncate(2147483649.0), smallest);
    EXPECT_EQ(coremath::truncate(-2147483647.9), -2147483647);
    EXPECT_EQ(coremath::truncate(-2147483648.9), smallest);
    EXPECT_EQ(coremath::truncate(-2147483650.0), smallest);
    EXPECT_EQ(coremath::truncate(notANumber), smallest);
    EXPECT_EQ(coremath::truncate(-2.7), -2);
}

TEST(CoreMath, FunctionsOfOneNumberFollowTheirFormula)
{
    const SinFct sin;
    const SinhFct sinh;
    const CosFct cos;
    const CoshFct cosh;
    const TanFct tan;
    const TanhFct tanh;
    const ArcTanFct atan;
    const CeilFct ceil;
    const FloorFct floor;
    const ExpFct exp;
    const SqrFct sqr;
    const R2dFct r2d;
    const D2rFct d2r;
    const Definition definitions[] = {
        {sin, [](double x) { return std::sin(x * shortPi / 180.0); }},
        {sinh, [](double x) { return std::sinh(x * shortPi / 180.0); }},
        {cos, [](double x) { return std::cos(x * shortPi / 180.0); }},
        {cosh, [](double x) { return std::cosh(x * shortPi / 180.0); }},
        {tan, [](double x) { return std::tan(x * shortPi / 180.0); }},
        {tanh, [](double x) { return std::tanh(x * shortPi / 180.0); }},
        {atan, [](double x) { return std::atan(x) * 180.0 / shortPi; }},
        {ceil, [](double x) { return std::ceil(x); }},
        {floor, [](double x) { return std::floor(x); }},
        {exp, [](double x) { return std::exp(x); }},
        {sqr, [](double x) { return x * x; }},
        {r2d, [](double x) { return x * 180.0 / shortPi; }},
        {d2r, [](double x) { return x * shortPi / 180.0; }},
    };
    for (const auto& [item, formula] : definitions)
    {
        for (const double x : arguments)
        {
            SCOPED_TRACE(narrow(item.getSymbol()) + "(" + std::to_string(x) + ")");
            EXPECT_TRUE(yields(item, {number(x)}, withNumber(formula(opaque(x)))));
            EXPECT_TRUE(yields(item, {converted(x)}, withNumber(formula(opaque(x)))));
        }
    }
}

TEST(CoreMath, ShortPiShows)
{
    EXPECT_TRUE(yields(SinFct{}, {number(30)}, withNumber(0.5000000000000299)));
    EXPECT_TRUE(yields(ArcSinFct{}, {number(1)}, withNumber(89.99999999999407)));
    EXPECT_TRUE(yields(R2dFct{}, {number(1)}, withNumber(57.29577951307855)));
    VALTYPE result;
    const VALTYPE straight = number(180);
    SinFct{}.evaluate(1, &straight, result, false);
    EXPECT_NEAR(result.x, -2.07e-13, 0.005e-13) << "three digits are known";
    const VALTYPE right = number(90);
    TanFct{}.evaluate(1, &right, result, false);
    EXPECT_NEAR(result.x, -9.65e12, 0.01e12) << "just past the pole";
}

TEST(ArcFunctions, FollowTheirFormulaInTheirDomain)
{
    for (const double x : {-1.0, -0.5, -0.0, 0.0, 0.3, 1.0, notANumber})
    {
        SCOPED_TRACE(x);
        EXPECT_TRUE(yields(ArcSinFct{}, {number(x)}, withNumber(std::asin(opaque(x)) * 180.0 / shortPi)));
        EXPECT_TRUE(yields(ArcCosFct{}, {number(x)}, withNumber(std::acos(opaque(x)) * 180.0 / shortPi)));
    }
}

TEST(ArcFunctions, RefuseWhatIsOutside)
{
    for (const double x : {1.5, std::nextafter(1.0, 2.0), std::nextafter(-1.0, -2.0), infinity, -infinity})
    {
        EXPECT_TRUE(refuses(ArcSinFct{}, {number(x)}, 6));
        EXPECT_TRUE(refuses(ArcCosFct{}, {number(x)}, 6));
    }
}

TEST(SqrtFct, RefusesZeroToo)
{
    EXPECT_TRUE(yields(SqrtFct{}, {number(4)}, withNumber(2)));
    EXPECT_TRUE(yields(SqrtFct{}, {number(0.25)}, withNumber(0.5)));
    EXPECT_TRUE(yields(SqrtFct{}, {number(2)}, withNumber(std::sqrt(opaque(2)))));
    EXPECT_TRUE(yields(SqrtFct{}, {number(infinity)}, withNumber(infinity)));
    EXPECT_TRUE(yields(SqrtFct{}, {number(notANumber)}, withNumber(notANumber)));
    for (const double x : {0.0, -0.0, -1.0, -4.94066e-324, -infinity})
    {
        EXPECT_TRUE(refuses(SqrtFct{}, {number(x)}, 12));
    }
}

TEST(Logarithms, RefuseZeroAndBelow)
{
    EXPECT_TRUE(yields(Log10Fct{}, {number(100)}, withNumber(2)));
    EXPECT_TRUE(yields(LogFct{}, {number(1)}, withNumber(0)));
    for (const double x : {4.94066e-324, 0.5, 7.0, 1e300, infinity, notANumber})
    {
        EXPECT_TRUE(yields(LogFct{}, {number(x)}, withNumber(std::log(opaque(x)))));
        EXPECT_TRUE(yields(Log10Fct{}, {number(x)}, withNumber(std::log10(opaque(x)))));
    }
    for (const double x : {0.0, -0.0, -1.0, -infinity})
    {
        EXPECT_TRUE(refuses(LogFct{}, {number(x)}, 8));
        EXPECT_TRUE(refuses(Log10Fct{}, {number(x)}, 9));
    }
}

TEST(PowFct, HasNoSpecialCaseForZero)
{
    EXPECT_TRUE(yields(PowFct{}, {number(0), number(0)}, withNumber(1)));
    EXPECT_TRUE(yields(PowFct{}, {number(0), number(-1)}, withNumber(infinity)));
    EXPECT_TRUE(yields(PowFct{}, {number(2), number(0.5)}, withNumber(std::pow(opaque(2), opaque(0.5)))));
    EXPECT_TRUE(yields(PowFct{}, {number(2), point(3, 9, 9)}, withNumber(8)));
}

TEST(Exp10Fct, IsPowToTheLastBit)
{
    EXPECT_TRUE(yields(Exp10Fct{}, {number(2)}, withNumber(100)));
    for (const double x : arguments)
    {
        EXPECT_TRUE(yields(Exp10Fct{}, {number(x)}, withNumber(std::pow(opaque(10.0), opaque(x)))));
    }
    // For both arguments, the standard library's exp10 differs by one unit in the last place.
    EXPECT_TRUE(yields(Exp10Fct{}, {number(-48)}, withNumber(std::pow(opaque(10.0), -48))));
    EXPECT_TRUE(yields(Exp10Fct{}, {number(-49.25)}, withNumber(std::pow(opaque(10.0), -49.25))));
}

TEST(AbsFct, ClearsTheSignBit)
{
    EXPECT_TRUE(yields(AbsFct{}, {number(-2.5)}, withNumber(2.5)));
    EXPECT_TRUE(yields(AbsFct{}, {number(-0.0)}, withNumber(0.0)));
    EXPECT_TRUE(yields(AbsFct{}, {number(-infinity)}, withNumber(infinity)));
    const VALTYPE negativeNan = number(std::bit_cast<double>(std::uint64_t{0xFFF8000000000123U}));
    VALTYPE result = stale();
    ASSERT_TRUE(AbsFct{}.evaluate(1, &negativeNan, result, true));
    EXPECT_EQ(bitsOf(result.x), 0x7FF8000000000123U);
}

TEST(AbsFct, IsTheLengthOfAPoint)
{
    EXPECT_TRUE(yields(AbsFct{}, {point(3, 4, 0)}, withNumber(5)));
    EXPECT_TRUE(yields(AbsFct{}, {point(-3, 4, 12)}, withNumber(13)));
    EXPECT_TRUE(yields(AbsFct{}, {point(1e200, 0, 0)}, withNumber(infinity)));
}

TEST(RoundFct, RoundsHalvesAwayFromZero)
{
    EXPECT_TRUE(yields(RoundFct{}, {number(2.5)}, withNumber(3)));
    EXPECT_TRUE(yields(RoundFct{}, {number(-2.5)}, withNumber(-3)));
    EXPECT_TRUE(yields(RoundFct{}, {number(0.49999999999999994)}, withNumber(1)));
    EXPECT_TRUE(yields(RoundFct{}, {number(-0.49999999999999994)}, withNumber(-1)));
    EXPECT_TRUE(yields(RoundFct{}, {number(-0.0)}, withNumber(0.0)));
    EXPECT_TRUE(yields(RoundFct{}, {number(-0.4)}, withNumber(0.0)));
}

TEST(TruncFct, TruncatesTowardZero)
{
    EXPECT_TRUE(yields(TruncFct{}, {number(2.7)}, withNumber(2)));
    EXPECT_TRUE(yields(TruncFct{}, {number(-2.7)}, withNumber(-2)));
    EXPECT_TRUE(yields(TruncFct{}, {number(-0.9)}, withNumber(0.0)));
}

TEST(RoundFct, AcceptsTheRangeOf32Bits)
{
    EXPECT_TRUE(yields(RoundFct{}, {number(2147483647.0)}, withNumber(2147483647.0)));
    EXPECT_TRUE(yields(RoundFct{}, {number(-2147483648.0)}, withNumber(-2147483648.0)));
    EXPECT_TRUE(yields(RoundFct{}, {number(notANumber)}, withNumber(-2147483648.0)));
    EXPECT_TRUE(yields(TruncFct{}, {number(2147483647.0)}, withNumber(2147483647.0)));
    EXPECT_TRUE(yields(TruncFct{}, {number(-2147483648.0)}, withNumber(-2147483648.0)));
    EXPECT_TRUE(yields(TruncFct{}, {number(notANumber)}, withNumber(-2147483648.0)));
    for (const double x :
         {3e9, -3e9, std::nextafter(2147483647.0, 3e9), std::nextafter(-2147483648.0, -3e9), infinity, -infinity})
    {
        EXPECT_TRUE(refuses(RoundFct{}, {number(x)}, 7));
        EXPECT_TRUE(refuses(TruncFct{}, {number(x)}, 7));
    }
}

TEST(FactorialFct, MultipliesWhatTheResultHolds)
{
    EXPECT_TRUE(yields(FactorialFct{}, {number(5)}, number(0), number(0)));
    EXPECT_TRUE(yields(FactorialFct{}, {number(5)}, number(24), number(1)));
    EXPECT_TRUE(yields(FactorialFct{}, {number(5.9)}, number(240), number(10)));
    EXPECT_TRUE(yields(FactorialFct{}, {number(1)}, withNumber(stale().x)));
    EXPECT_TRUE(yields(FactorialFct{}, {number(2)}, withNumber(stale().x)));
    EXPECT_TRUE(yields(FactorialFct{}, {number(3)}, withNumber(stale().x * 2)));
    EXPECT_TRUE(yields(FactorialFct{}, {number(5)}, number(-0.0), number(-0.0)));
    // The factors are multiplied in descending order, which affects the last bits.
    double product = 0.1;
    for (double factor = 29; factor >= 2; --factor)
    {
        product *= factor;
    }
    EXPECT_TRUE(yields(FactorialFct{}, {number(30)}, number(product), number(0.1)));
}

TEST(FactorialFct, IsZeroWhereNothingIsToBeMultiplied)
{
    for (const double x :
         {0.0, 0.9, -0.9, -3.0, 2147483648.0, -2147483649.0, 3e9, -3e9, 1e300, infinity, -infinity, notANumber})
    {
        EXPECT_TRUE(yields(FactorialFct{}, {number(x)}, withNumber(0.0)));
    }
}

TEST(FactorialFct, StopsWhenTheProductCannotChange)
{
    const auto start = std::chrono::steady_clock::now();
    for (const double product : {0.0, -0.0, infinity, -infinity, notANumber})
    {
        EXPECT_TRUE(yields(FactorialFct{}, {number(2e9)}, number(product), number(product)));
    }
    EXPECT_TRUE(yields(FactorialFct{}, {number(2147483647.0)}, withNumber(infinity)));
    EXPECT_TRUE(yields(FactorialFct{}, {number(2e9)}, number(-infinity), number(-4.94066e-324)));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1))
        << "two thousand million multiplications take longer";
}

TEST(Extremes, OfTwo)
{
    EXPECT_TRUE(yields(MinFct{}, {number(1), number(2)}, withNumber(1)));
    EXPECT_TRUE(yields(MinFct{}, {number(2), number(1)}, withNumber(1)));
    EXPECT_TRUE(yields(MaxFct{}, {number(1), number(2)}, withNumber(2)));
    EXPECT_TRUE(yields(MaxFct{}, {number(2), number(1)}, withNumber(2)));
    EXPECT_TRUE(yields(MaxFct{}, {number(1), point(7, 0, 0)}, withNumber(7)));
}

TEST(Extremes, TheSecondWinsWhereNeitherIsBeyond)
{
    for (const IMathFunction* item :
         {static_cast<const IMathFunction*>(new MinFct), static_cast<const IMathFunction*>(new MaxFct)})
    {
        EXPECT_TRUE(yields(*item, {number(0.0), number(-0.0)}, withNumber(-0.0)));
        EXPECT_TRUE(yields(*item, {number(-0.0), number(0.0)}, withNumber(0.0)));
        EXPECT_TRUE(yields(*item, {number(notANumber), number(1)}, withNumber(1)));
        EXPECT_TRUE(yields(*item, {number(1), number(notANumber)}, withNumber(notANumber)));
        delete item;
    }
}

TEST(Extremes, OfThree)
{
    EXPECT_TRUE(yields(Min3Fct{}, {number(5), number(2), number(9)}, withNumber(2)));
    EXPECT_TRUE(yields(Min3Fct{}, {number(5), number(9), number(2)}, withNumber(2)));
    EXPECT_TRUE(yields(Min3Fct{}, {number(2), number(9), number(5)}, withNumber(2)));
    EXPECT_TRUE(yields(Max3Fct{}, {number(5), number(9), number(2)}, withNumber(9)));
    EXPECT_TRUE(yields(Max3Fct{}, {number(5), number(2), number(9)}, withNumber(9)));
    EXPECT_TRUE(yields(Max3Fct{}, {number(9), number(2), number(5)}, withNumber(9)));
}

TEST(Extremes, TheThirdWinsWhereItIsNotBeyond)
{
    EXPECT_TRUE(yields(Min3Fct{}, {number(0.0), number(1), number(-0.0)}, withNumber(-0.0)));
    EXPECT_TRUE(yields(Min3Fct{}, {number(1), number(2), number(notANumber)}, withNumber(notANumber)));
    EXPECT_TRUE(yields(Min3Fct{}, {number(1), number(notANumber), number(3)}, withNumber(3)));
    EXPECT_TRUE(yields(Max3Fct{}, {number(0.0), number(-1), number(-0.0)}, withNumber(-0.0)));
    EXPECT_TRUE(yields(Max3Fct{}, {number(1), number(2), number(notANumber)}, withNumber(notANumber)));
    EXPECT_TRUE(yields(Max3Fct{}, {number(1), number(notANumber), number(-3)}, withNumber(-3)));
}

TEST(Extremes, OfAnyNumber)
{
    EXPECT_TRUE(yields(MinUndefFct{}, {number(4)}, withNumber(4)));
    EXPECT_TRUE(yields(MinUndefFct{}, {number(4), number(3), number(5), number(2), number(6)}, withNumber(2)));
    EXPECT_TRUE(yields(MaxUndefFct{}, {number(4)}, withNumber(4)));
    EXPECT_TRUE(yields(MaxUndefFct{}, {number(4), number(3), number(5), number(2), point(6, 8, 8)}, withNumber(6)));
    EXPECT_TRUE(yields(MaxUndefFct{}, {number(4), point(3, 8, 8)}, withNumber(4)));
    EXPECT_TRUE(yields(MinUndefFct{}, {number(4), point(5, -8, -8)}, withNumber(4)));
}

TEST(Extremes, OfAnyNumberKeepTheFirstWhereNoneIsBeyond)
{
    EXPECT_TRUE(yields(MinUndefFct{}, {number(0.0), number(-0.0)}, withNumber(0.0)));
    EXPECT_TRUE(yields(MaxUndefFct{}, {number(-0.0), number(0.0)}, withNumber(-0.0)));
    EXPECT_TRUE(yields(MinUndefFct{}, {number(notANumber), number(1)}, withNumber(notANumber)));
    EXPECT_TRUE(yields(MaxUndefFct{}, {number(1), number(notANumber), number(0)}, withNumber(1)));
}

TEST(SumFct, AddsInOrder)
{
    EXPECT_TRUE(yields(SumFct{}, {number(5)}, withNumber(5)));
    EXPECT_TRUE(yields(SumFct{}, {number(-0.0)}, withNumber(0.0)));
    EXPECT_TRUE(yields(SumFct{}, {number(1e16), number(1), number(1)}, withNumber(1e16)));
    EXPECT_TRUE(yields(SumFct{}, {number(1), number(1), number(1e16)}, withNumber(1e16 + 2)));
    EXPECT_TRUE(yields(SumFct{}, {number(1), point(2, 9, 9)}, withNumber(3)));
}

TEST(AvgFct, DividesTheSumByTheCount)
{
    EXPECT_TRUE(yields(AvgFct{}, {number(1), number(2), number(3), number(4)}, withNumber(2.5)));
    EXPECT_TRUE(yields(AvgFct{}, {number(1), number(1), number(0)}, withNumber(opaque(2) / 3.0)));
    EXPECT_TRUE(yields(AvgFct{}, {number(-0.0)}, withNumber(0.0)));
}

TEST(AnyNumber, NothingAtAllIsHandled)
{
    EXPECT_TRUE(yields(SumFct{}, {}, withNumber(0.0)));
    EXPECT_TRUE(yields(AvgFct{}, {}, withNumber(notANumber)));
    EXPECT_TRUE(yields(MinUndefFct{}, {}, withNumber(notANumber)));
    EXPECT_TRUE(yields(MaxUndefFct{}, {}, withNumber(notANumber)));
}

double nextDraw()
{
    return (std::rand() % 32768) / 32767.0;
}

TEST(RandFct, DrawsFromTheStandardGenerator)
{
    std::srand(7);
    std::vector<double> expected;
    for (int i = 0; i < 6; ++i)
    {
        expected.push_back(nextDraw());
    }
    std::srand(7);
    VALTYPE result = stale();
    for (std::size_t i = 0; i < 3; ++i)
    {
        ASSERT_TRUE(RandFct{}.evaluate(0, nullptr, result, true));
        EXPECT_TRUE(sameRecord(result, withNumber(expected[i])));
    }
    const VALTYPE range[] = {number(-5), number(20)};
    ASSERT_TRUE(RandMinMaxFct{}.evaluate(2, range, result, true));
    EXPECT_TRUE(sameRecord(result, withNumber(-5 + expected[3] * 25)));
    const VALTYPE reversed[] = {number(20), number(-5)};
    ASSERT_TRUE(RandMinMaxFct{}.evaluate(2, reversed, result, true));
    EXPECT_TRUE(sameRecord(result, withNumber(20 + expected[4] * -25)));
    const VALTYPE withPointAsMax[] = {number(0), point(10, 1, 1)};
    ASSERT_TRUE(RandMinMaxFct{}.evaluate(2, withPointAsMax, result, true));
    EXPECT_TRUE(sameRecord(result, withNumber(0 + expected[5] * 10)));
}

TEST(RandFct, ReachesAllOfItsRangeAndNothingElse)
{
    std::srand(1);
    std::set<double> drawn;
    VALTYPE result;
    for (int i = 0; i < 1000000; ++i)
    {
        RandFct{}.evaluate(0, nullptr, result, true);
        drawn.insert(result.x * 32767.0);
    }
    EXPECT_EQ(*drawn.begin(), 0.0);
    EXPECT_EQ(*drawn.rbegin(), 32767.0);
    EXPECT_EQ(drawn.size(), 32768U);
}

TEST(RandFct, AloneIsNotConstant)
{
    EXPECT_FALSE(RandFct{}.isConstant());
    EXPECT_FALSE(RandMinMaxFct{}.isConstant());
}

TEST(PointArgument, IsCheckedBeforeTheDomain)
{
    EXPECT_TRUE(raises(ArcSinFct{}, {point(2, 0, 0)}, ArcSinFct::text.line));
    EXPECT_TRUE(raises(ArcCosFct{}, {point(2, 0, 0)}, ArcCosFct::text.line));
    EXPECT_TRUE(raises(SqrtFct{}, {point(0, 0, 0)}, SqrtFct::text.line));
    EXPECT_TRUE(raises(LogFct{}, {point(0, 0, 0)}, LogFct::text.line));
    EXPECT_TRUE(raises(Log10Fct{}, {point(0, 0, 0)}, Log10Fct::text.line));
    EXPECT_TRUE(raises(RoundFct{}, {point(3e9, 0, 0)}, RoundFct::text.line));
    EXPECT_TRUE(raises(TruncFct{}, {point(3e9, 0, 0)}, TruncFct::text.line));
    EXPECT_TRUE(raises(FactorialFct{}, {point(0, 0, 0)}, FactorialFct::text.line));
}

TEST(PointArgument, OnlyTheFirstCounts)
{
    const VALTYPE p = point(1, 2, 3);
    EXPECT_TRUE(raises(MinFct{}, {p, number(0)}, MinFct::text.line));
    EXPECT_TRUE(yields(MinFct{}, {number(0), p}, withNumber(0)));
    EXPECT_TRUE(raises(Max3Fct{}, {p, number(0), number(0)}, Max3Fct::text.line));
    EXPECT_TRUE(yields(Max3Fct{}, {number(0), p, p}, withNumber(1)));
    EXPECT_TRUE(raises(SumFct{}, {p}, SumFct::text.line));
    EXPECT_TRUE(raises(RandMinMaxFct{}, {p, number(1)}, RandMinMaxFct::text.line));
    EXPECT_TRUE(raises(PowFct{}, {p, number(1)}, PowFct::text.line));
}

}
