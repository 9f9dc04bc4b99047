// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// PlatformMathTests.cpp - the difference between the platform's sin, pow and so on and the true values (reference.py),
// in units in the last place.
//
// Arithmetic and square roots are correctly rounded on every platform. The other functions belong to the C library, or
// on Windows to msvcrt.dll, and may round differently on each system. The tests bound the difference.

#include "mathexpr/MathExpression.h"
#include "mathexpr/Variables.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <map>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

/// Supplies x and y.
class Arguments : public IMathExprService
{
public:
    bool lookupValue(const wchar_t* name, VALTYPE& value) const override
    {
        value.x = values[*name == L'x' ? 0 : 1];
        return true;
    }

    double values[2] = {};
};

double doubleOf(const std::string& digits)
{
    return std::bit_cast<double>(static_cast<std::uint64_t>(std::stoull(digits, nullptr, 16)));
}

/// Number of doubles between two finite ones.
std::uint64_t unitsBetween(double left, double right)
{
    const auto place = [](double value) {
        const auto magnitude = static_cast<std::int64_t>(std::bit_cast<std::uint64_t>(std::abs(value)));
        return std::signbit(value) ? -magnitude : magnitude;
    };
    return static_cast<std::uint64_t>(std::abs(place(left) - place(right)));
}

struct Distance
{
    std::uint64_t largest = 0;
    int nbNotNearest = 0;
    int nbValues = 0;
};

std::map<std::string, Distance> distances()
{
    std::map<std::string, Distance> found;
    Arguments host;
    std::ifstream file(MATHEXPR_PLATFORM_MATH_EXPECTED);
    for (std::string line; std::getline(file, line);)
    {
        std::istringstream input(line);
        std::string text;
        input >> text;
        std::vector<double> numbers;
        for (std::string digits; input >> digits;)
        {
            numbers.push_back(doubleOf(digits));
        }
        std::copy(numbers.begin(), numbers.end() - 1, host.values);
        MathExpression expression(true, &host);  // a new one, since it looks x up only once
        VALTYPE result;
        if (!expression.setExpression(std::wstring(text.begin(), text.end()).c_str()) || !expression.evaluate(result) ||
            !std::isfinite(result.x))
        {
            ADD_FAILURE() << line;
            continue;
        }
        Distance& distance = found[text];
        const std::uint64_t units = unitsBetween(result.x, numbers.back());
        distance.largest = std::max(distance.largest, units);
        distance.nbNotNearest += units == 0 ? 0 : 1;
        ++distance.nbValues;
    }
    return found;
}

struct Bound
{
    const char* text;
    std::uint64_t units;
};

// The error of a function may be 2 doubles. A subsequent multiplication by 180 and division by pi adds up to 2 more.
// clang-format off
constexpr Bound bounds[] = {
    {"sin(x)",   2},
    {"cos(x)",   2},
    {"tan(x)",   2},
    {"asin(x)",  4},
    {"acos(x)",  4},
    {"atan(x)",  4},
    {"sinh(x)",  2},
    {"cosh(x)",  2},
    {"tanh(x)",  2},
    {"exp(x)",   2},
    {"ln(x)",    2},
    {"log(x)",   2},
    {"exp10(x)", 2},
    {"pow(x,y)", 2},
    {"x^y",      2},
};
// clang-format on

TEST(PlatformMath, IsWithinAFewUnitsInTheLastPlaceOfTheTrueValue)
{
    const auto found = distances();
    EXPECT_EQ(found.size(), std::size(bounds));
    for (const auto& [text, units] : bounds)
    {
        const auto function = found.find(text);
        ASSERT_NE(function, found.end()) << text;
        const Distance& distance = function->second;
        std::printf("%-8s  of %d values %3d not the nearest double, at most %llu away\n", text, distance.nbValues,
                    distance.nbNotNearest, static_cast<unsigned long long>(distance.largest));
        EXPECT_GE(distance.nbValues, 250) << text;
        EXPECT_LE(distance.largest, units) << text;
    }
}

// The operator may compute a square without the platform's pow, but must return the same bits as the function "pow".
// The bits of a product differ for about one number in a thousand.
TEST(PlatformMath, SquaresHaveTheBitsOfPow)
{
    std::vector<double> numbers = {0.0, -0.0, 5e-324, -1e-200, 1e200, HUGE_VAL, -HUGE_VAL};
    for (int exponent = -40; exponent <= 40; ++exponent)
    {
        const double power = std::ldexp(1.0, exponent);
        numbers.insert(numbers.end(), {power, -power, std::nextafter(power, 0.0), std::nextafter(power, HUGE_VAL)});
    }
    std::mt19937_64 random(1);
    for (int count = 0; count < 200000; ++count)
    {
        const std::uint64_t bits = random();
        const std::uint64_t exponent = 1023 - 40 + bits % 80;
        numbers.push_back(std::bit_cast<double>((bits & 0x800F'FFFF'FFFF'FFFF) | exponent << 52U));
    }
    MathExpression square(true, nullptr);
    MathExpression power(true, nullptr);
    for (MathExpression* const expression : {&square, &power})
    {
        ASSERT_TRUE(mathexpr::setVariable(*expression, L"x", VALTYPE()));
    }
    ASSERT_TRUE(square.setExpression(L"x^2"));
    ASSERT_TRUE(power.setExpression(L"pow(x,2)"));
    const auto valueOf = [](MathExpression& expression, double number) {
        mathexpr::getVariableAddress(expression, L"x")->x = number;
        VALTYPE result;
        EXPECT_TRUE(expression.evaluate(result));
        return result.x;
    };
    int nbProducts = 0;
    for (const double number : numbers)
    {
        const double expected = valueOf(power, number);
        EXPECT_EQ(std::bit_cast<std::uint64_t>(valueOf(square, number)), std::bit_cast<std::uint64_t>(expected))
            << number;
        nbProducts += expected == number * number ? 1 : 0;
    }
    std::printf("x^2 is x*x for %d of %zu numbers\n", nbProducts, numbers.size());
}

}
