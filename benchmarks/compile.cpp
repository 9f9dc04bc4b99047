// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// compile.cpp - times of: compiling a text and evaluating it once on an existing object; the same for texts of up to a
// million terms; creating and destroying an object; computing a text with a new object.
//
// Compilers allocate memory, and the heap that one engine leaves behind affects the next one. So each engine must be
// measured in a separate process, selected with --benchmark_filter. Names are "compile/FORMULA/ENGINE",
// "scale/SHAPE/TERMS/ENGINE", "construct/ENGINE" and "oneshot/NUMBER/ENGINE".
#include "benchmarks/Checks.h"
#include "benchmarks/Formulas.h"
#include "benchmarks/engines/FparserEngine.h"
#include "benchmarks/engines/LuajitEngine.h"
#include "benchmarks/engines/MathexprEngine.h"
#include "benchmarks/engines/MuparserEngine.h"
#include "benchmarks/engines/MuparserxEngine.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstddef>
#include <exception>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>

namespace {

constexpr std::size_t nbChecks = 64;

template <class Engine>
double compileAndEvaluate(Engine& engine, const typename Engine::Text& text)
{
    engine.compile(text);
    return engine.number();
}

/// Compiles and evaluates for many inputs; returns the number of results that differ from native code in any bit.
template <class Engine>
std::size_t countDiffering(Engine& engine, const Formula& formula, const typename Engine::Text& text)
{
    std::mt19937_64 generator(3);
    std::size_t differing = 0;
    for (std::size_t check = 0; check < nbChecks; ++check)
    {
        const Inputs inputs = randomInputs(generator);
        for (const Component& component : componentsOf(formula.variables))
        {
            *engine.slot(component) = valueOf(inputs, component);
        }
        // This library's angles are degrees; the peers read the same text in radians.
        const auto native = std::is_same_v<Engine, MathexprEngine> ? std::get<Formula::NativeNumber>(formula.native)
                                                                   : formula.sameTextNative;
        const double expected = native(inputs);
        const double value = compileAndEvaluate(engine, text);
        if (!isClose(value, expected))
        {
            throw std::runtime_error("computes something else");
        }
        differing += sameBits(value, expected) ? 0U : 1U;
    }
    return differing;
}

/// Runs a measurement; an exception is reported as the reason why there is no result.
template <class Body>
void guarded(benchmark::State& state, Body body)
{
    try
    {
        body();
    }
    catch (const std::exception& error)
    {
        state.SkipWithError(error.what());
    }
}

template <class Engine>
void compileFormula(benchmark::State& state, const Formula& formula)
{
    guarded(state, [&] {
        Engine engine;
        const typename Engine::Text text = Engine::textOf(formula);
        const std::size_t differing = countDiffering(engine, formula, text);
        for ([[maybe_unused]] auto iteration : state)
        {
            double value = compileAndEvaluate(engine, text);
            benchmark::DoNotOptimize(value);
        }
        state.counters["differing"] = static_cast<double>(differing);
        state.counters["characters"] = static_cast<double>(formula.text.size());
    });
}

/// A sum of nbTerms times x, in one of the shapes.
std::string sumOf(std::size_t nbTerms, std::string_view shape)
{
    std::string text;
    if (shape == "nested")
    {
        text.assign(nbTerms - 1, '(');
    }
    text += 'x';
    for (std::size_t term = 1; term < nbTerms; ++term)
    {
        text += shape == "nested" ? "+x)" : shape == "right-nested" ? "+(x" : "+x";
    }
    if (shape == "right-nested")
    {
        text.append(nbTerms - 1, ')');
    }
    return text;
}

template <class Engine>
void compileSum(benchmark::State& state, std::size_t nbTerms, std::string_view shape)
{
    guarded(state, [&] {
        Engine engine;
        *engine.slot(components[0]) = 1.0;
        const typename Engine::Text text = Engine::textOf(sumOf(nbTerms, shape));
        if (compileAndEvaluate(engine, text) != static_cast<double>(nbTerms))
        {
            throw std::runtime_error("computes something else");
        }
        for ([[maybe_unused]] auto iteration : state)
        {
            double value = compileAndEvaluate(engine, text);
            benchmark::DoNotOptimize(value);
        }
        state.counters["terms"] = static_cast<double>(nbTerms);
    });
}

template <class Engine>
void construct(benchmark::State& state)
{
    for ([[maybe_unused]] auto iteration : state)
    {
        Engine::construct();
    }
}

struct OneShot
{
    const char* text;
    double value;
};

constexpr std::array<OneShot, 2> oneShots{{
    {"2*3+4*5-6/7", 2.0 * 3 + 4.0 * 5 - 6.0 / 7},
    {"sqrt(3*3+4*4)", 5.0},
}};

template <class Engine>
void oneShot(benchmark::State& state, const OneShot& shot)
{
    guarded(state, [&] {
        const typename Engine::Text text = Engine::textOf(std::string(shot.text));
        if (!isClose(Engine::oneShot(text), shot.value))
        {
            throw std::runtime_error("computes something else");
        }
        for ([[maybe_unused]] auto iteration : state)
        {
            double value = Engine::oneShot(text);
            benchmark::DoNotOptimize(value);
        }
    });
}

template <class Engine>
void registerEngine()
{
    const auto add = [](const std::string& name, auto body) {
        benchmark::RegisterBenchmark((name + '/' + Engine::name).c_str(), body);
    };
    for (std::size_t i = 0; i < formulas().size(); ++i)
    {
        if (formulas()[i].sameTextNative != nullptr)
        {
            add("compile/" + std::to_string(i + 1),
                [i](benchmark::State& state) { compileFormula<Engine>(state, formulas()[i]); });
        }
    }
    for (const char* shape : {"flat", "nested", "right-nested"})
    {
        for (const std::size_t nbTerms : {100U, 1000U, 10000U, 100000U, 1000000U})
        {
            add("scale/" + std::string(shape) + '/' + std::to_string(nbTerms),
                [nbTerms, shape](benchmark::State& state) { compileSum<Engine>(state, nbTerms, shape); });
        }
    }
    add("construct", [](benchmark::State& state) { construct<Engine>(state); });
    for (std::size_t i = 0; i < oneShots.size(); ++i)
    {
        add("oneshot/" + std::to_string(i + 1), [i](benchmark::State& state) { oneShot<Engine>(state, oneShots[i]); });
    }
}

}

int main(int argc, char** argv)
{
    registerEngine<MathexprEngine>();
    registerEngine<MuparserEngine>();
    registerEngine<MuparserxEngine>();
    registerEngine<FparserEngine>();
    registerEngine<OptimizedFparserEngine>();
    registerEngine<LuajitEngine>();
    for (std::size_t i = 0; i < formulas().size(); ++i)
    {
        benchmark::AddCustomContext("formula " + std::to_string(i + 1), formulas()[i].title);
    }
    for (std::size_t i = 0; i < oneShots.size(); ++i)
    {
        benchmark::AddCustomContext("oneshot " + std::to_string(i + 1), oneShots[i].text);
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
