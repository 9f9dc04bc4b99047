// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// FirstUseTests.cpp - sixty-four threads use the library for the first time, all at the same moment. Shared data, such
// as the vocabulary, must be created once and be complete for every thread. Each race runs in a separate process.
#include "mathexpr/CMathExpr.h"
#include "mathexpr/Diagnostics.h"
#include "mathexpr/EditorServices.h"
#include "mathexpr/MathExpression.h"
#include "mathexpr/SMTParsingExcepData.h"
#include "mathexpr/Vocabulary.h"

#include <mathexpr.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

constexpr int nbThreads = 64;
constexpr int nbRaces = 8;

/// A first use of the library. @return whether the result was right
using FirstUse = bool (*)();

bool computes()
{
    CMathExpr calculator;
    VALTYPE sum;
    return calculator.Calculate(L"m2cm(1)+dist([0,0,0],[3,4,0])", sum, 10) && sum.x == 105.0;
}

bool listsTheVocabulary()
{
    mathexpr::VocabularyItem item;
    std::uint32_t count = 0;
    while (mathexpr::getVocabularyItem(count, item) && item.symbol != nullptr && *item.symbol != L'\0')
    {
        ++count;
    }
    return count > 250;
}

bool suggests()
{
    MathExpression expression(true, nullptr);
    try
    {
        expression.setExpression(L"sine(30)");
        return false;
    }
    catch (const mathexpr::ParsingException&)
    {
        return mathexpr::getDiagnostic(expression).suggestions.front() == L"sin";
    }
}

bool completes()
{
    const MathExpression expression(true, nullptr);
    return mathexpr::getCompletions(expression, L"2*sqr", 5).size() == 2;
}

bool computesThroughC()
{
    mathexpr_expression* expression = nullptr;
    mathexpr_value value{};
    return mathexpr_create_utf8(nullptr, &expression) == MATHEXPR_OK &&
           mathexpr_evaluate_text_utf8(expression, "2*sqr(3)", MATHEXPR_ZERO_TERMINATED, &value) == MATHEXPR_OK &&
           value.x == 18.0 && mathexpr_destroy(expression) == MATHEXPR_OK;
}

constexpr FirstUse uses[] = {computes, listsTheVocabulary, suggests, completes, computesThroughC};

/// Ends the process with 0 if all threads got right results.
[[noreturn]] void race()
{
    std::atomic<int> nbWaiting = 0;
    std::atomic<int> nbRight = 0;
    std::vector<std::thread> threads;
    for (int number = 0; number < nbThreads; ++number)
    {
        threads.emplace_back([&, use = uses[static_cast<std::size_t>(number) % std::size(uses)]] {
            for (++nbWaiting; nbWaiting < nbThreads;)
            {
                std::this_thread::yield();
            }
            nbRight += use() ? 1 : 0;
        });
    }
    for (std::thread& thread : threads)
    {
        thread.join();
    }
    std::fprintf(stderr, "%d right\n", nbRight.load());
    std::exit(nbRight == nbThreads ? 0 : 1);
}

TEST(FirstUse, IsRacedByManyThreads)
{
    GTEST_FLAG_SET(death_test_style, DEATH_TEST_STYLE);
    for (int number = 0; number < nbRaces; ++number)
    {
        EXPECT_EXIT(race(), testing::ExitedWithCode(0), "^64 right");
    }
}

}
