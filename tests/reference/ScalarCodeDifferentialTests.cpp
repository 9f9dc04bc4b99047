// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ScalarCodeDifferentialTests.cpp - long runs of a program whose variables change from numbers to points and back.
//
// Scalar code runs only while the variables keep their kinds. Formulas that it supports are evaluated many times, with
// occasional refusals (a zero divisor, a root of a negative number) and points. After every step the value, the content
// of the slots, and every message are compared with the reference.
#include "tests/reference/LongRun.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <random>
#include <string>

namespace {

const std::array<std::wstring, 4> names = {L"x", L"y", L"z", L"w"};

class Chance
{
public:
    explicit Chance(std::uint64_t seed) : engine(seed) {}
    std::size_t below(std::size_t bound) { return static_cast<std::size_t>(engine() % bound); }
    bool percent(std::size_t share) { return below(100) < share; }

private:
    std::mt19937_64 engine;
};

/// A formula of items that scalar code supports, occasionally with one that it does not.
std::wstring formula(Chance& chance, std::size_t depth)
{
    static const std::array<std::wstring, 14> binary = {L"+", L"-", L"*", L"/", L"+", L"-",  L"*",
                                                        L"/", L"*", L"^", L"%", L">", L"==", L"|"};
    static const std::array<std::wstring, 9> unary = {L"sqrt",   L"sin",   L"abs", L"ln", L"m2f",
                                                      L"sf2skm", L"round", L"d2r", L"-"};
    static const std::array<std::wstring, 4> pairs = {L"min", L"max", L"pow", L"min"};
    static const std::array<std::wstring, 6> others = {L"fact(", L"m2m(", L"avg(", L"dist(x,", L"sum(1,", L"min(1,2,"};
    if (depth == 0 || chance.percent(12))
    {
        return chance.percent(65) ? names[chance.below(names.size())] : std::to_wstring(chance.below(5)) + L".5";
    }
    const std::size_t kind = chance.below(100);
    if (kind < 65)
    {
        return L"(" + formula(chance, depth - 1) + binary[chance.below(binary.size())] + formula(chance, depth - 1) +
               L")";
    }
    if (kind < 82)
    {
        return unary[chance.below(unary.size())] + L"(" + formula(chance, depth - 1) + L")";
    }
    if (kind < 98)
    {
        return pairs[chance.below(pairs.size())] + L"(" + formula(chance, depth - 1) + L"," +
               formula(chance, depth - 1) + L")";
    }
    return others[chance.below(others.size())] + formula(chance, depth - 1) + L")";
}

VALTYPE someValue(Chance& chance)
{
    static const std::array<double, 9> numbers = {0.0, -0.0, 1.0, 2.5, -3.0, 1e9, 1e-9, 0.3048, 30.0};
    VALTYPE value;
    value.type = chance.percent(6) ? 1 : 0;
    value.flag = chance.percent(10) ? 1 : 0;
    value.x = numbers[chance.below(numbers.size())];
    value.y = chance.percent(50) ? 0.0 : numbers[chance.below(numbers.size())];
    value.z = chance.percent(50) ? 0.0 : numbers[chance.below(numbers.size())];
    return value;
}

/// Evaluates a formula many times with both; returns the first difference, or nothing.
/// @param firstType  1 if all variables are initially points
std::string firstDifference(std::uint64_t seed, const std::wstring& text, std::uint8_t firstType = 0)
{
    Chance chance(seed);
    const auto host = [firstType](const std::wstring& name, VALTYPE& value) {
        value.type = firstType;
        value.x = static_cast<double>(name.front() - L'v');
        return true;
    };
    reference::LongRun run(text, chance.percent(50), host);
    for (int evaluation = 0; evaluation < 40; ++evaluation)
    {
        if (evaluation > 2 && chance.percent(70))
        {
            run.change(names[chance.below(names.size())], someValue(chance));
        }
        run.evaluate();
    }
    return run.difference();
}

TEST(ScalarCode, FollowsThePrograms)
{
    for (std::uint64_t seed = 1; seed <= 10000; ++seed)
    {
        Chance chance(seed);
        const std::wstring text = formula(chance, 1 + seed % 6);
        const std::string difference = firstDifference(seed, text);
        ASSERT_EQ(difference, "") << "seed " << seed;
    }
}

// A product of numbers stays in its slot; a later dot product in that slot is added to it.
TEST(ScalarCode, StoresProductsForTheDotProductsThatFollow)
{
    for (const wchar_t* text :
         {L"x*y", L"(x*y)*z", L"(x+y)*z", L"z*(x+y)", L"x*y+z", L"z-x*y", L"(x*y)*(z*w)", L"sqrt(x*y)"})
    {
        for (std::uint64_t seed = 1; seed <= 300; ++seed)
        {
            ASSERT_EQ(firstDifference(seed, text), "");
        }
    }
}

// The product of two points is a number. When the variable becomes a number too, only the constant's slot holds a
// point.
TEST(ScalarCode, DoesNotTakeAConstantPointForANumber)
{
    for (const wchar_t* text : {L"[2,3,4]*x", L"x*[2,3,4]", L"1+[2,3,4]*x", L"(x*[2,3,4]-5)/2"})
    {
        for (std::uint64_t seed = 1; seed <= 300; ++seed)
        {
            ASSERT_EQ(firstDifference(seed, text, 1), "");
        }
    }
}

TEST(ScalarCode, ComputesResultsWithoutAConsumer)
{
    for (const wchar_t* text : {L"(x+1,y+2)", L"(x*y,z*w,x+w)*2", L"z+(x*y,w)", L"(x+1,y*z-w,x*w)", L"x/(y+1,z*w)"})
    {
        for (std::uint64_t seed = 1; seed <= 50; ++seed)
        {
            ASSERT_EQ(firstDifference(seed, text), "");
        }
    }
}

// Without optimisation, scalar code has at most 128 steps.
TEST(ScalarCode, SpillsAnyNumberOfResultsThatWait)
{
    for (const std::size_t depth : {1U, 2U, 40U, 64U, 128U, 300U})
    {
        std::wstring text = L"x+y";
        for (std::size_t j = 0; j < depth; ++j)
        {
            text = L"x*w-(" + text + L")";
        }
        for (std::uint64_t seed = 1; seed <= 5; ++seed)
        {
            ASSERT_EQ(firstDifference(seed, text), "") << depth;
        }
    }
}

}
