// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// first_object.cpp - the time to create and destroy the first object of a process, and the number of page faults, for
// the engine that the argument names. Each engine needs a separate process: for a second engine, pages of the heap and
// of the C++ library would already be in memory. Prints one JSON object.
#include "benchmarks/engines/FparserEngine.h"
#include "benchmarks/engines/LuajitEngine.h"
#include "benchmarks/engines/MathexprEngine.h"
#include "benchmarks/engines/MuparserEngine.h"
#include "benchmarks/engines/MuparserxEngine.h"

#include <sys/resource.h>

#include <chrono>
#include <cstdio>
#include <map>
#include <string_view>

namespace {

const std::map<std::string_view, void (*)()> constructors = {
    {"mathexpr", MathexprEngine::construct},   {"muparser", MuparserEngine::construct},
    {"muparserx", MuparserxEngine::construct}, {"fparser", FparserEngine::construct},
    {"luajit", LuajitEngine::construct},
};

long countPageFaults()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_minflt;
}

}

int main(int argc, char** argv)
{
    using Clock = std::chrono::steady_clock;
    const auto named = constructors.find(argc == 2 ? argv[1] : "");
    if (named == constructors.end())
    {
        std::fputs("benchmark_first_object ENGINE\n", stderr);
        return 2;
    }
    Clock::now();  // finds the system's clock the first time
    const long faultsBefore = countPageFaults();
    const Clock::time_point start = Clock::now();
    named->second();
    const Clock::time_point end = Clock::now();
    std::printf("{\"ns\": %.0f, \"page faults\": %ld}\n", std::chrono::duration<double, std::nano>(end - start).count(),
                countPageFaults() - faultsBefore);
    return 0;
}
