// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// RunStateTests.cpp - compares the slots' contents after each run with the reference.
//
// Items write only some fields of their result, and some read its previous content. So a run depends on earlier runs,
// even on those that were refused half-way. These tests evaluate one program repeatedly, with variables whose values
// often change and whose kinds occasionally change, and compare every outcome.
#include "ExpressionGenerator.h"
#include "LongRun.h"
#include "Settings.h"

#include "mathexpr/IMathFunction.h"
#include "mathexpr/Vocabulary.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace {

using reference::LongRun;
using reference::Random;

VALTYPE number(double x)
{
    VALTYPE value;
    value.x = x;
    return value;
}

VALTYPE point(double x, double y, double z)
{
    return {1, 0, 0, 0, x, y, z};
}

/// The initial value of each variable of the formulas below.
bool answerAny(const std::wstring& name, VALTYPE& value)
{
    value = name == L"p" ? point(1.0, 2.0, 3.0) : name == L"q" ? point(4.0, 5.0, 6.0) : number(2.0);
    return true;
}

/// The outcomes of the runs, one line each.
std::vector<std::string> outcomesWithDivisor(const std::wstring& text, const std::vector<double>& divisors)
{
    reference::EngineSession session(false, answerAny);
    EXPECT_TRUE(session.setExpression(text).returned);
    std::vector<std::string> outcomes;
    for (const double divisor : divisors)
    {
        session.changeVariable(L"w", number(divisor));
        outcomes.push_back(reference::describe(session.evaluate(VALTYPE{})));
    }
    return outcomes;
}

// The dot product is added to the slot's content, even in a run that a later item refuses.
TEST(RunState, ARefusedRunIsFinal)
{
    using Lines = std::vector<std::string>;
    EXPECT_EQ(outcomesWithDivisor(L"p*q/w", {1.0, 0.0, 1.0}), (Lines{"32", "false, message 10", "96"}));
    EXPECT_EQ(outcomesWithDivisor(L"p*q/w", {0.0, 0.0, 1.0}), (Lines{"false, message 10", "false, message 10", "96"}));
    EXPECT_EQ(outcomesWithDivisor(L"p*q/w", {1.0, 1.0, 0.0, 0.0, 2.0}),
              (Lines{"32", "64", "false, message 10", "false, message 10", "80"}));
    EXPECT_EQ(outcomesWithDivisor(L"sqrt(w)+p*q", {1.0, 0.0, 1.0}), (Lines{"33", "false, message 12", "65"}));
}

/// A text that uses an item with the first names as operands.
std::wstring textOf(const mathexpr::VocabularyItem& item, std::size_t nbArgs, const std::vector<std::wstring>& names)
{
    if (item.kind == mathexpr::VocabularyKind::Operator)
    {
        return item.unary ? item.symbol + names[0] : names[0] + item.symbol + names[1];
    }
    std::wstring text = item.symbol + std::wstring(L"(") + names[0];
    for (std::size_t j = 1; j < nbArgs; ++j)
    {
        text += L"," + names[j];
    }
    return text + L")";
}

/// Gives each variable a value whose kind is the variable's bit in kinds, with different values in every round.
void setKinds(LongRun& run, const std::vector<std::wstring>& names, std::size_t kinds, std::size_t round)
{
    for (std::size_t j = 0; j < names.size(); ++j)
    {
        const auto x = static_cast<double>(1 + j + 2 * round);
        run.change(names[j], (kinds >> j & 1U) != 0 ? point(x, 2.5 - x, static_cast<double>(round)) : number(x / 8.0));
    }
}

// Every operand of every item is a number in some runs and a point in others. Between them, runs are refused after the
// item.
TEST(RunState, EveryItemWithEveryKindInEveryPlace)
{
    const std::vector<std::wstring> names = {L"x", L"y", L"z", L"u"};
    mathexpr::VocabularyItem item;
    for (std::uint32_t index = 0; mathexpr::getVocabularyItem(index, item); ++index)
    {
        if (item.kind == mathexpr::VocabularyKind::Constant || !item.constant)
        {
            continue;
        }
        const bool anyNumber = item.nbArgs == NB_ARGS_UNDEFINED;
        for (std::size_t nbArgs = anyNumber ? 1 : item.nbArgs; nbArgs <= (anyNumber ? names.size() : item.nbArgs);
             ++nbArgs)
        {
            const std::wstring operation = textOf(item, nbArgs, names);
            const std::vector<std::wstring> used(names.begin(), names.begin() + static_cast<std::ptrdiff_t>(nbArgs));
            for (std::size_t pair = 0; pair < std::size_t{1} << 2 * nbArgs; ++pair)
            {
                LongRun run(pair % 3 == 0 ? operation : L"(" + operation + L")/w", pair % 2 == 0, answerAny);
                for (const std::size_t round : {0U, 1U, 2U})
                {
                    setKinds(run, used, round == 1 ? pair >> nbArgs : pair, round);
                    for (const double divisor : {1.0, 0.0, 1.0})
                    {
                        run.change(L"w", number(divisor));
                        run.evaluate();
                    }
                }
                ASSERT_EQ(run.difference(), "");
            }
        }
    }
}

// Only one input at a time changes its kind.
TEST(RunState, EachOfManyInputsMayChange)
{
    const std::vector<std::wstring> names = {L"x", L"y", L"z", L"u", L"v", L"w"};
    for (const wchar_t* text : {L"x+y+z+u+v+w", L"x*y*z*u*v*w", L"[x,y,z]*[u,v,w]"})
    {
        LongRun run(text, true, answerAny);
        for (const std::wstring& name : names)
        {
            for (const VALTYPE& value : {number(3.0), VALTYPE{0, 1, 0, 0, 2.0, 0.0, 0.0}, point(1.0, 2.0, 3.0)})
            {
                run.change(name, value);
                run.evaluate();
                run.evaluate();
                run.evaluate();
            }
            run.change(name, number(1.5));
            run.evaluate();
            run.evaluate();
            run.evaluate();
        }
        EXPECT_EQ(run.difference(), "");
    }
}

const std::array<std::wstring, 6> variables = {L"x", L"y", L"z", L"w", L"p", L"q"};

std::wstring leaf(Random& random)
{
    if (random.chance(70))
    {
        return random.pick(variables);
    }
    return random.chance(15) ? L"[1,2.5,-3]" : std::to_wstring(random.below(4)) + L".5";
}

/// A formula of points and numbers, mostly of items that read their slots.
std::wstring formula(Random& random, std::size_t depth)
{
    static const std::array<std::wstring, 12> binary = {L"+", L"-", L"*", L"/", L"*", L"+",
                                                        L"*", L"&", L"^", L"%", L">", L"|"};
    static const std::array<std::wstring, 12> unary = {L"-",   L"-",    L"-",   L"!",   L"sqrt",   L"sin",
                                                       L"abs", L"fact", L"m2m", L"m2f", L"sf2skm", L"d2d"};
    static const std::array<std::wstring, 7> ofTwo = {L"min", L"max", L"pow", L"dist", L"nor", L"vec", L"vec1"};
    static const std::array<std::wstring, 5> ofMore = {L"min", L"sum", L"max", L"avg", L"point"};
    if (depth == 0 || random.chance(12))
    {
        return leaf(random);
    }
    const auto operand = [&] { return formula(random, depth - 1); };
    const auto operands = [&](std::size_t count) {
        std::wstring all = operand();
        for (std::size_t j = 1; j < count; ++j)
        {
            all += L"," + operand();
        }
        return all;
    };
    const std::size_t kind = random.below(100);
    if (kind < 50)
    {
        return L"(" + operand() + random.pick(binary) + operand() + L")";
    }
    if (kind < 70)
    {
        return L"(" + random.pick(unary) + L"(" + operand() + L"))";
    }
    if (kind < 84)
    {
        return random.pick(ofTwo) + L"(" + operands(2) + L")";
    }
    if (kind < 92)
    {
        return L"[" + operands(3) + L"]";
    }
    return kind < 97 ? random.pick(ofMore) + L"(" + operands(3 + random.below(2)) + L")" : L"ill(" + operands(4) + L")";
}

double someNumber(Random& random)
{
    static constexpr std::array<double, 9> numbers = {0.0, 0.0, 1.0, 2.5, -3.0, 4.0, 9.0, 0.3048, 30.0};
    return random.pick(numbers);
}

/// Inverts a type or flag.
std::uint8_t otherOf(std::uint8_t value)
{
    return value == 0 ? 1 : 0;
}

// Kinds and flags change so seldom that most runs have the kinds of the previous run.
TEST(RunState, OfRandomPrograms)
{
    const std::uint64_t first = reference::firstSeed();
    const std::uint64_t count = reference::fromEnvironment("MATHEXPR_DIFFERENTIAL_COUNT", 6000);
    for (std::uint64_t seed = first; seed < first + count; ++seed)
    {
        Random random(seed);
        LongRun run(formula(random, 1 + seed % 4), random.chance(50), answerAny);
        std::array<VALTYPE, variables.size()> values;
        for (std::size_t j = 0; j < variables.size(); ++j)
        {
            answerAny(variables[j], values[j]);
        }
        for (int evaluation = 0; evaluation < 24; ++evaluation)
        {
            for (std::size_t j = 0; j < variables.size(); ++j)
            {
                if (random.chance(35))
                {
                    VALTYPE& value = values[j];
                    value.type = random.chance(7) ? otherOf(value.type) : value.type;
                    value.flag = random.chance(4) ? otherOf(value.flag) : value.flag;
                    value.x = someNumber(random);
                    value.y = someNumber(random);
                    value.z = someNumber(random);
                    run.change(variables[j], value);
                }
            }
            run.evaluate();
        }
        ASSERT_EQ(run.difference(), "") << "seed " << seed;
    }
}

// Two sets of kinds alternate; code prepared for one must not run for the other.
TEST(RunState, OfKindsThatAlternate)
{
    const std::uint64_t first = reference::firstSeed();
    const std::uint64_t count = reference::fromEnvironment("MATHEXPR_DIFFERENTIAL_COUNT", 4000) / 4;
    for (std::uint64_t seed = first; seed < first + count; ++seed)
    {
        Random random(seed);
        LongRun run(formula(random, 1 + seed % 3), random.chance(50), answerAny);
        const std::array<std::size_t, 2> kinds = {random.below(64), random.below(64)};
        const std::size_t period = 1 + random.below(4);
        for (std::size_t evaluation = 0; evaluation < 24; ++evaluation)
        {
            const std::size_t set = kinds[evaluation / period % 2];
            for (std::size_t j = 0; j < variables.size(); ++j)
            {
                VALTYPE value = point(someNumber(random), someNumber(random), someNumber(random));
                value.type = (set >> j & 1U) != 0 ? 1 : 0;
                run.change(variables[j], value);
            }
            run.evaluate();
        }
        ASSERT_EQ(run.difference(), "") << "seed " << seed;
    }
}

}
