// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// size_report.cpp - time and memory per character of a text, from ten thousand to ten million characters.
//
// Each text is compiled and evaluated by a new object, on a thread with a small stack. Prints a table. The exit status
// is 1 if the cost per character of a longer text is more than twice that of the shortest text.
//
// The process allocates all memory at its start. Otherwise page faults would dominate the times of long texts, but not
// those of short ones.
#include "mathexpr/MathExpression.h"
#include "mathexpr/SMTParsingExcepData.h"
#include "tests/robustness/CountedMemory.h"
#include "tests/robustness/LongTexts.h"
#include "tests/robustness/SmallStack.h"
#include "tests/unit/Hosts.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <limits>

#include <time.h>

namespace {

constexpr std::array<std::size_t, 4> sizes{10000, 100000, 1000000, 10000000};
constexpr int repetitions = 3;  // the fastest one counts
constexpr double greatestGrowth = 2.0;
constexpr std::size_t enoughMemory = std::size_t{4} << 30;

double processorTime()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e9 + static_cast<double>(now.tv_nsec);
}

struct Cost
{
    double time = std::numeric_limits<double>::infinity();  // ns
    std::size_t memory = 0;                                 // bytes, without the text itself
};

Cost costOf(const std::wstring& text)
{
    const AnsweringHost host({{L"x", number(1.0)}});
    Cost cost;
    onSmallStack([&] {
        memory::startCounting();
        const double start = processorTime();
        MathExpression expression(true, &host);
        try
        {
            VALTYPE value;
            if (!expression.setExpression(text.c_str()) || !expression.evaluate(value))
            {
                std::abort();  // the tests check the outcomes
            }
        }
        catch (const mathexpr::ParsingException&)
        {
            // the tests check these outcomes, too
        }
        cost.time = processorTime() - start;
        cost.memory = memory::mostInUse();
    });
    return cost;
}

}

int main()
{
    memory::hold(enoughMemory);
    std::printf("| Text | 10,000 | 100,000 | 1,000,000 | 10,000,000 | Growth | Bytes |\n"
                "|---|---:|---:|---:|---:|---:|---:|\n");
    bool isLinear = true;
    for (const LongText& shape : longTexts())
    {
        std::printf("| %s |", shape.name);
        std::array<double, sizes.size()> times{};
        double bytes = 0.0;
        for (std::size_t i = 0; i < sizes.size(); ++i)
        {
            const std::wstring text = shape.make(shape.partsOf(sizes[i]));
            const auto length = static_cast<double>(text.size());
            Cost least;
            for (int time = 0; time < repetitions; ++time)
            {
                const Cost cost = costOf(text);
                least.time = std::min(least.time, cost.time);
                bytes = std::max(bytes, static_cast<double>(cost.memory) / length);
            }
            times[i] = least.time / length;
            std::printf(" %.1f |", times[i]);
        }
        const double growth = *std::max_element(times.begin() + 1, times.end()) / times.front();
        isLinear = isLinear && growth <= greatestGrowth;
        std::printf(" %.2f%s | %.0f |\n", growth, growth <= greatestGrowth ? "" : " (!)", bytes);
        std::fflush(stdout);
    }
    return isLinear ? 0 : 1;
}
