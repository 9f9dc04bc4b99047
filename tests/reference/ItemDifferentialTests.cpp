// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ItemDifferentialTests.cpp - calls every operator and function of the library and of the reference with the same
// arguments and the same stale result, and compares all effects.
//
// Expressions cannot reach everything: no text calls fact with a stale product in its result, and few reach the
// tolerances of the line intersection. MATHEXPR_DIFFERENTIAL_CALLS is the number of calls per item,
// MATHEXPR_DIFFERENTIAL_SEED the seed.
#include "EngineSession.h"
#include "ExpressionGenerator.h"
#include "ReferenceEvaluator.h"
#include "ReferenceVocabulary.h"
#include "Settings.h"

#include "tests/language/VariableAccess.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdlib>

namespace {

using reference::ExpressionGenerator;
using reference::Item;
using reference::Outcome;
using reference::Random;

Outcome evaluateItem(const Item& item, const std::vector<VALTYPE>& args, const VALTYPE& result, bool showMessages)
{
    reference::Messages messages;
    messages.shown = showMessages;
    Outcome outcome;
    outcome.value = result;
    try
    {
        outcome.returned = item.evaluate(args, outcome.value, messages);
    }
    catch (const reference::Failure& failure)
    {
        outcome.raised = failure.raised;
    }
    outcome.messages = messages.numbers;
    return outcome;
}

/// Generates arguments and stale results.
class Arguments
{
public:
    explicit Arguments(std::uint64_t seed) : random(seed), generator(random) {}

    std::vector<VALTYPE> any(std::size_t count)
    {
        const bool alike = random.chance(60);
        const VALTYPE first = value();
        std::vector<VALTYPE> args;
        for (std::size_t i = 0; i < count; ++i)
        {
            args.push_back(i == 0 ? first : value());
            args.back().type = alike ? first.type : args.back().type;
            if (i > 0 && random.chance(15))
            {
                args.back() = nearTo(args[random.below(i)]);
            }
        }
        return args;
    }

    /// The four endpoints of two lines, which often meet at or near an endpoint, or are nearly parallel.
    std::vector<VALTYPE> lines()
    {
        static constexpr std::array<double, 6> scales = {1.0, 1000.0, 1e6, 1e-5, 1e-11, 1e9};
        const double scale = random.pick(scales);
        std::vector<VALTYPE> args(4);
        for (VALTYPE& end : args)
        {
            end.type = 1;
            end.x = coordinate() * scale;
            end.y = coordinate() * scale;
            end.z = random.chance(50) ? 0.0 : coordinate() * scale;
        }
        if (random.chance(60))
        {
            // The second line goes through, or nearly through, an endpoint of the first, or vice versa.
            const std::size_t line = random.below(2);
            const VALTYPE end = nearTo(args[2 * line + random.below(2)]);
            const std::size_t other = 2 - 2 * line;
            if (random.chance(50))
            {
                args[other] = end;
            }
            else
            {
                args[other + 1] = end;
                args[other + 1].x += end.x - args[other].x;
                args[other + 1].y += end.y - args[other].y;
            }
        }
        else if (random.chance(20))
        {
            const std::size_t line = 2 * random.below(2);
            args[line + 1] = nearTo(args[line]);
        }
        else if (random.chance(30))
        {
            VALTYPE parallel = nearTo(args[1]);
            parallel.x += args[2].x - args[0].x;
            parallel.y += args[2].y - args[0].y;
            args[3] = parallel;
        }
        return args;
    }

    /// A stale result. Its z is often that of an argument, since intersections compare it with endpoints.
    VALTYPE result(const std::vector<VALTYPE>& args)
    {
        VALTYPE made = value();
        made.reserved = random.chance(20) ? 7 : 0;
        if (!args.empty() && random.chance(50))
        {
            made.z = nearTo(random.pick(args)).z;
        }
        return made;
    }

    std::size_t count() { return 1 + random.below(6); }

    bool showMessages() { return random.chance(50); }

private:
    Random random;
    ExpressionGenerator generator;

    double coordinate() { return static_cast<double>(random.below(2000001)) / 250000.0 - 4.0; }

    /// A value from the generator, often with a magnitude that expressions seldom reach.
    VALTYPE value()
    {
        VALTYPE made = generator.value();
        if (random.chance(10))
        {
            made.x = random.chance(50) ? 0.0 : -0.0;  // equal, but distinguishable
        }
        else if (random.chance(50))
        {
            made.x = std::ldexp(coordinate() + 1e-7, static_cast<int>(random.below(80)) - 40);
        }
        return made;
    }

    VALTYPE nearTo(VALTYPE value)
    {
        static constexpr std::array<double, 9> distances = {0.0,    1e-12,  9.9e-12, 1e-11, 1.01e-11,
                                                            -1e-11, -5e-11, 1e-9,    1e-7};
        for (double* part : {&value.x, &value.y, &value.z})
        {
            const double distance = random.pick(distances);
            *part += random.chance(60) ? *part * distance : distance;
        }
        return value;
    }
};

std::string describe(const std::vector<VALTYPE>& args)
{
    std::string line;
    for (const VALTYPE& arg : args)
    {
        line += (line.empty() ? "" : ", ") + reference::describe(arg);
    }
    return line;
}

class ItemDifferential : public testing::Test
{
protected:
    MathExpression expression{true, nullptr};
    const MTParserRegistrar& registrar = registrarOf(expression);
    const std::uint64_t calls = reference::fromEnvironment("MATHEXPR_DIFFERENTIAL_CALLS", 1000);
    const std::uint64_t seed = reference::firstSeed();

    /// Stops an item's calls at the first difference.
    void compare(const IMathExprItemEvaluator& ofLibrary, const Item& ofReference, std::size_t index)
    {
        Arguments arguments(seed * 1000 + index);
        for (std::uint64_t call = 0; call < calls; ++call)
        {
            const bool any = ofReference.nbArgs == reference::anyNumberOfArguments;
            const std::vector<VALTYPE> args = ofReference.symbol == L"ill" && call % 8 != 0
                                                  ? arguments.lines()
                                                  : arguments.any(any ? arguments.count() : ofReference.nbArgs);
            const VALTYPE result = arguments.result(args);
            const bool show = arguments.showMessages();
            std::srand(static_cast<unsigned>(call));
            const Outcome engine = reference::evaluateItem(ofLibrary, args, result, show);
            std::srand(static_cast<unsigned>(call));
            const Outcome other = evaluateItem(ofReference, args, result, show);
            ASSERT_TRUE(sameOutcome(engine, other))
                << reference::printable(ofReference.symbol) << " of " << describe(args) << " onto "
                << reference::describe(result) << ", call " << call << "\nlibrary:   " << reference::describe(engine)
                << "\nreference: " << reference::describe(other);
        }
    }
};

TEST_F(ItemDifferential, Operators)
{
    ASSERT_EQ(registrar.getNbOperators(), reference::operators().size());
    for (std::size_t i = 0; i < registrar.getNbOperators(); ++i)
    {
        const IMathOperator& item = registrar.getOperator(i);
        const Item* other = reference::findOperator(item.getSymbol(), item.isUnaryOp());
        ASSERT_NE(other, nullptr) << reference::printable(item.getSymbol());
        EXPECT_EQ(item.getPrecedence(), other->precedence);
        EXPECT_EQ(item.isConstant(), other->constant);
        compare(item, *other, i);
    }
}

TEST_F(ItemDifferential, Functions)
{
    ASSERT_EQ(registrar.getNbFunctions(), reference::functions().size());
    for (std::size_t i = 0; i < registrar.getNbFunctions(); ++i)
    {
        const IMathFunction& item = registrar.getFunction(i);
        const Item* other = nullptr;
        for (const Item& candidate : reference::functions())
        {
            other = candidate.symbol == item.getSymbol() && candidate.nbArgs == item.getNbArgs() ? &candidate : other;
        }
        ASSERT_NE(other, nullptr) << reference::printable(item.getSymbol());
        EXPECT_EQ(item.isConstant(), other->constant);
        compare(item, *other, i);
    }
}
}
