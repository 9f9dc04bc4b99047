// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// EndOfProcessTests.cpp - code that computes while the process ends: the destructor of a global, an atexit handler, and
// a thread that outlives main. Each runs in a separate process, which reports the outcome on standard error.
#include "mathexpr/BulkEvaluation.h"
#include "mathexpr/CMathExpr.h"
#include "mathexpr/Diagnostics.h"
#include "mathexpr/MathExpression.h"
#include "mathexpr/SMTParsingExcepData.h"
#include "mathexpr/Variables.h"

#include <mathexpr.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <thread>

#include <gtest/gtest.h>

namespace {

/// Uses everything that the library creates on first use. @return whether all results were right
using Work = bool (*)();

bool computeThroughClasses()
{
    MathExpression expression(true, nullptr);
    mathexpr::setVariable(expression, L"x", VALTYPE());
    const double xs[] = {1.0, 4.0, 9.0};
    double roots[3] = {};
    mathexpr::BulkResults results;
    results.data = roots;
    const mathexpr::BulkColumn columns[] = {{L"x", xs}};
    mathexpr::BulkOutcome outcome;
    bool right = expression.setExpression(L"sqrt(x)") &&
                 mathexpr::evaluateBulk(expression, columns, 1, 3, results, 0, outcome) && roots[2] == 3.0;
    try
    {
        expression.setExpression(L"sine(30)");
        right = false;
    }
    catch (const mathexpr::ParsingException&)
    {
        right = right && mathexpr::getDiagnostic(expression).suggestions.front() == L"sin";
    }
    CMathExpr calculator;
    VALTYPE sum;
    return right && calculator.Calculate(L"[1,2,0]+[3,4,0]", sum, 10) && sum.y == 6.0;
}

bool computeThroughC()
{
    mathexpr_expression* expression = nullptr;
    if (mathexpr_create_utf8(nullptr, &expression) != MATHEXPR_OK)
    {
        return false;
    }
    mathexpr_value value{};
    bool right = mathexpr_evaluate_text_utf8(expression, "2*sqr(3)", MATHEXPR_ZERO_TERMINATED, &value) == MATHEXPR_OK &&
                 value.x == 18.0;
    mathexpr_vocabulary_item_utf8 item{};
    item.size = sizeof(item);
    right = right && mathexpr_get_vocabulary_item_utf8(4, &item) == MATHEXPR_OK && std::strcmp(item.symbol, "+") == 0;
    return mathexpr_destroy(expression) == MATHEXPR_OK && right;
}

void report(bool right)
{
    std::fputs(right ? "computed\n" : "wrong\n", stderr);
}

/// Its destructor runs after the destructors of everything that the library creates during main.
struct Global
{
    ~Global()
    {
        if (work != nullptr)
        {
            report(work());
        }
    }

    Work work = nullptr;
};

Global global;

Work handlersWork = nullptr;

std::atomic<int> rounds;
std::atomic<bool> threadWasWrong;

class EndOfProcess : public testing::TestWithParam<Work>
{
protected:
    EndOfProcess() { GTEST_FLAG_SET(death_test_style, DEATH_TEST_STYLE); }
};

TEST_P(EndOfProcess, GlobalsDestructorComputes)
{
    const auto end = [work = GetParam()] {
        global.work = work;
        work();
        std::exit(0);
    };
    EXPECT_EXIT(end(), testing::ExitedWithCode(0), "^computed");
}

TEST_P(EndOfProcess, ExitHandlerComputes)
{
    const auto end = [work = GetParam()] {
        handlersWork = work;
        std::atexit([] { report(handlersWork()); });
        work();
        std::exit(0);
    };
    EXPECT_EXIT(end(), testing::ExitedWithCode(0), "^computed");
}

// The handler runs after the destructors of everything that the library creates, and lets the thread continue for some
// rounds.
TEST_P(EndOfProcess, ThreadGoesOnComputing)
{
    const auto end = [work = GetParam()] {
        std::atexit([] {
            const int before = rounds;
            while (rounds < before + 100 && !threadWasWrong)
            {
                std::this_thread::yield();
            }
            report(!threadWasWrong);
        });
        std::thread([work] {
            for (;; ++rounds)
            {
                if (!work())
                {
                    threadWasWrong = true;
                }
            }
        }).detach();
        while (rounds == 0)
        {
            std::this_thread::yield();
        }
        std::exit(0);
    };
    EXPECT_EXIT(end(), testing::ExitedWithCode(0), "^computed");
}

#if !defined(_WIN32)  // Windows ends the threads first, whatever locks of the system they hold
// No synchronisation: the process ends while sixteen threads compute.
TEST_P(EndOfProcess, IsRacedByManyThreads)
{
    const auto end = [work = GetParam()] {
        for (int number = 0; number < 16; ++number)
        {
            std::thread([work] {
                for (;; ++rounds)
                {
                    if (!work())
                    {
                        report(false);
                        std::_Exit(1);
                    }
                }
            }).detach();
        }
        while (rounds < 100)
        {
            std::this_thread::yield();
        }
        report(true);
        std::exit(0);
    };
    for (int race = 0; race < 5; ++race)
    {
        EXPECT_EXIT(end(), testing::ExitedWithCode(0), "^computed");
    }
}
#endif

INSTANTIATE_TEST_SUITE_P(Through, EndOfProcess, testing::Values(&computeThroughClasses, &computeThroughC),
                         [](const testing::TestParamInfo<Work>& each) {
                             return std::string(each.param == &computeThroughC ? "C" : "Classes");
                         });

}
