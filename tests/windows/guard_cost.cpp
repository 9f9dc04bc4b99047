// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// guard_cost.cpp - measures the cost of the floating-point guard per evaluation: prints nanoseconds, the minimum of
// several rounds. Not a test: the figures depend on the machine.

#include "mathexpr/MathExpression.h"
#include "platform/FloatingPointGuard.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace {

constexpr int nbRounds = 50;
constexpr int nbCalls = 100000;

/// Nanoseconds per call of work.
template <class Work>
double nanoseconds(Work work)
{
    using Clock = std::chrono::steady_clock;
    double least = 1e9;
    for (int round = 0; round < nbRounds; ++round)
    {
        const Clock::time_point start = Clock::now();
        for (int call = 0; call < nbCalls; ++call)
        {
            work();
        }
        const std::chrono::duration<double, std::nano> elapsed = Clock::now() - start;
        least = std::min(least, elapsed.count() / nbCalls);
    }
    return least;
}

double ofAnEvaluation(const wchar_t* text)
{
    MathExpression expression(true, nullptr);
    VALTYPE result;
    if (!expression.setExpression(L"a=3") || !expression.evaluate(result) || !expression.setExpression(text))
    {
        return -1;
    }
    return nanoseconds([&] { expression.evaluate(result); });
}

double ofTheLook()
{
    volatile bool theLibrarys = false;
    return nanoseconds([&] { theLibrarys = platform::FloatingPointWords::current().areTheLibrarys(); });
}

}

int main()
{
    constexpr unsigned int librarysWords = 0x1F80;
    constexpr unsigned int divisionByZeroUnmasked = 0x1D80;
    std::printf("looking at the control words: %.1f ns\n", ofTheLook());
    for (const wchar_t* text : {L"a*2+1", L"sin(a)*[1,2,3]"})
    {
        const double withoutChange = ofAnEvaluation(text);
        _mm_setcsr(divisionByZeroUnmasked);
        const double withChange = ofAnEvaluation(text);
        _mm_setcsr(librarysWords);
        std::printf("%ls: %.1f ns; for a host with control words of its own %.1f ns\n", text, withoutChange,
                    withChange);
    }
    return 0;
}
