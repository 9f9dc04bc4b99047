// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// evaluate.cpp - the time of one evaluation, for every formula and every engine.
//
// First, every engine's results are compared with native code. A peer whose bits differ is marked in the counter
// "differing"; one that computes something else is omitted. If any interface of this library differs in a single bit,
// the program fails.
#include "benchmarks/Checks.h"
#include "benchmarks/Formulas.h"
#include "benchmarks/engines/CInterfaceEngines.h"
#include "benchmarks/engines/FparserEngine.h"
#include "benchmarks/engines/LuajitEngine.h"
#include "benchmarks/engines/MathexprEngine.h"
#include "benchmarks/engines/MuparserEngine.h"
#include "benchmarks/engines/MuparserxEngine.h"
#include "benchmarks/engines/NativeEngine.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstddef>
#include <cstdio>
#include <memory>
#include <random>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

constexpr std::size_t nbChecks = 4096;
constexpr std::size_t nbRows = 64;  // of inputs per measurement; a power of two

/// The values of a formula's components, row by row.
std::vector<double> measurementTable(const std::vector<Component>& used)
{
    std::mt19937_64 generator(1);
    std::vector<double> table;
    for (std::size_t row = 0; row < nbRows; ++row)
    {
        const Inputs inputs = randomInputs(generator);
        for (const Component& component : used)
        {
            table.push_back(valueOf(inputs, component));
        }
    }
    return table;
}

/// An engine with a prepared formula, and the outcome of the comparison with native code.
template <class Engine>
struct Candidate
{
    Engine engine;
    std::vector<typename Engine::Slot*> slots;
    std::vector<double> table;
    std::size_t differing = 0;
    std::string error;
};

template <class Engine>
std::array<double, 3> outcome(Engine& engine, const Formula& formula)
{
    if (!formula.isPoint())
    {
        return {engine.number(), 0.0, 0.0};
    }
    const auto& point = engine.point();
    return {point.x, point.y, point.z};
}

template <class Engine>
void compareWithNative(Candidate<Engine>& candidate, const Formula& formula)
{
    const std::vector<Component> used = componentsOf(formula.variables);
    NativeEngine native;
    native.prepare(formula);
    std::mt19937_64 generator(2);
    for (std::size_t check = 0; check < nbChecks; ++check)
    {
        const Inputs inputs = randomInputs(generator);
        for (std::size_t i = 0; i < used.size(); ++i)
        {
            *native.slot(used[i]) = valueOf(inputs, used[i]);
            *candidate.slots[i] = valueOf(inputs, used[i]);
        }
        const std::array<double, 3> expected = outcome(native, formula);
        const std::array<double, 3> actual = outcome(candidate.engine, formula);
        bool differs = false;
        for (std::size_t i = 0; i < 3; ++i)
        {
            if (!isClose(actual[i], expected[i]))
            {
                candidate.error = "computes something else";
                return;
            }
            differs |= !sameBits(actual[i], expected[i]);
        }
        candidate.differing += differs ? 1U : 0U;
    }
}

template <class Engine>
std::shared_ptr<Candidate<Engine>> makeCandidate(const Formula& formula)
{
    auto candidate = std::make_shared<Candidate<Engine>>();
    const std::vector<Component> used = componentsOf(formula.variables);
    for (const Component& component : used)
    {
        candidate->slots.push_back(candidate->engine.slot(component));
    }
    candidate->table = measurementTable(used);
    try
    {
        candidate->engine.prepare(formula);
        compareWithNative(*candidate, formula);
    }
    catch (const std::exception& error)
    {
        candidate->error = error.what();
    }
    return candidate;
}

/// The measured loop. The number of variables is fixed at compile time, so that a change costs one load and one store
/// per variable, for every engine.
template <std::size_t nbSlots, bool isPoint, class Engine>
void measure(benchmark::State& state, Candidate<Engine>& candidate)
{
    std::array<typename Engine::Slot*, nbSlots> slots{};
    for (std::size_t i = 0; i < nbSlots; ++i)
    {
        slots[i] = candidate.slots[i];
    }
    const double* const table = candidate.table.data();
    Engine& engine = candidate.engine;
    std::size_t row = 0;
    for ([[maybe_unused]] auto iteration : state)
    {
        [&]<std::size_t... i>(std::index_sequence<i...>)
        {
            ((*slots[i] = table[row * nbSlots + i]), ...);
        }
        (std::make_index_sequence<nbSlots>{});
        row = (row + 1) % nbRows;
        if constexpr (isPoint)
        {
            auto&& result = engine.point();
            benchmark::DoNotOptimize(result);
        }
        else
        {
            double result = engine.number();
            benchmark::DoNotOptimize(result);
        }
        benchmark::ClobberMemory();
    }
}

template <class Engine>
using Measure = void (*)(benchmark::State&, Candidate<Engine>&);

template <class Engine>
Measure<Engine> measureFor(std::size_t nbSlots, bool isPoint)
{
    if (isPoint)
    {
        return nbSlots == 2   ? &measure<2, true, Engine>
               : nbSlots == 6 ? &measure<6, true, Engine>
                              : &measure<7, true, Engine>;
    }
    switch (nbSlots)
    {
    case 0:
        return &measure<0, false, Engine>;
    case 1:
        return &measure<1, false, Engine>;
    case 2:
        return &measure<2, false, Engine>;
    case 3:
        return &measure<3, false, Engine>;
    case 4:
        return &measure<4, false, Engine>;
    case 5:
        return &measure<5, false, Engine>;
    default:
        return &measure<6, false, Engine>;
    }
}

/// Registers the measurement of a formula with an engine, named "formula/engine".
template <class Engine>
bool registerEngine(std::size_t number, const Formula& formula)
{
    auto candidate = makeCandidate<Engine>(formula);
    const Measure<Engine> loop = measureFor<Engine>(candidate->slots.size(), formula.isPoint());
    const std::string name = std::to_string(number) + '/' + Engine::name;
    benchmark::RegisterBenchmark(name.c_str(), [candidate, loop](benchmark::State& state) {
        if (!candidate->error.empty())
        {
            state.SkipWithError(candidate->error.c_str());
            return;
        }
        loop(state, *candidate);
        state.counters["differing"] = static_cast<double>(candidate->differing);
    });

    // Bound functions do not return points.
    constexpr bool isFunction = std::is_same_v<Engine, BoundFunctionEngine>;
    constexpr bool isOurs =
        isFunction || std::is_same_v<Engine, MathexprEngine> || std::is_same_v<Engine, CInterfaceEngine>;
    const bool isComputed = candidate->error.empty() || (isFunction && formula.hasPoints());
    if (isOurs && (!isComputed || candidate->differing != 0))
    {
        std::fprintf(stderr, "%s: %zu of %zu results differ from native code %s\n", formula.title.c_str(),
                     candidate->differing, nbChecks, candidate->error.c_str());
        return false;
    }
    return true;
}

}

int main(int argc, char** argv)
{
    bool exact = true;
    const std::vector<Formula>& list = formulas();
    for (std::size_t i = 0; i < list.size(); ++i)
    {
        const Formula& formula = list[i];
        registerEngine<NativeEngine>(i + 1, formula);
        exact = registerEngine<MathexprEngine>(i + 1, formula) && exact;
        exact = registerEngine<CInterfaceEngine>(i + 1, formula) && exact;
        exact = registerEngine<BoundFunctionEngine>(i + 1, formula) && exact;
        registerEngine<MuparserEngine>(i + 1, formula);
        registerEngine<MuparserxEngine>(i + 1, formula);
        registerEngine<FparserEngine>(i + 1, formula);
        registerEngine<OptimizedFparserEngine>(i + 1, formula);
        registerEngine<LuajitEngine>(i + 1, formula);
        benchmark::AddCustomContext("formula " + std::to_string(i + 1), formula.title);
    }
    if (!exact)
    {
        return 1;
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
