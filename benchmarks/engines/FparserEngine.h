// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// FparserEngine.h - fparser as an engine, with and without its optimizer.
#pragma once

#include "benchmarks/Formulas.h"

#include <fparser.hh>

#include <array>
#include <stdexcept>
#include <string>
#include <string_view>

template <bool optimized>
class FparserEngineOf
{
public:
    using Slot = double;
    using Text = std::string;
    static constexpr const char* name = optimized ? "fparser optimized" : "fparser";

    FparserEngineOf()
    {
        for (const Component& component : components)
        {
            (names += component.name) += ',';
        }
        names += "len";
        for (FunctionParser& parser : parsers)
        {
            parser.AddFunction(
                "m2f", +[](const double* x) { return *x * 10000.0 / 3048.0; }, 1);
            parser.AddFunction(
                "f2m", +[](const double* x) { return *x * 0.3048; }, 1);
        }
    }

    double* slot(const Component& component) { return &values[component.index]; }

    void prepare(const Formula& formula)
    {
        for (std::size_t i = 0; i < formula.scalar.parts.size(); ++i)
        {
            prepare(parsers[i], formula.scalar.parts[i]);
        }
        hasShared = !formula.scalar.shared.empty();
        if (hasShared)
        {
            prepare(parsers[3], formula.scalar.shared);
        }
    }

    static Text textOf(const Formula& formula) { return formula.text; }
    static Text textOf(const std::string& text) { return text; }

    static double oneShot(const Text& text)
    {
        FunctionParser parser;
        parser.Parse(text, "");
        if constexpr (optimized)
        {
            parser.Optimize();
        }
        return parser.Eval(nullptr);
    }

    static void construct() { FunctionParser object; }

    void compile(const Text& text) { prepare(parsers[0], text); }

    double number() { return parsers[0].Eval(values.data()); }

    Point point()
    {
        if (hasShared)
        {
            values[nbComponents] = parsers[3].Eval(values.data());
        }
        return {parsers[0].Eval(values.data()), parsers[1].Eval(values.data()), parsers[2].Eval(values.data())};
    }

private:
    void prepare(FunctionParser& parser, const std::string& text)
    {
        if (parser.Parse(text, names) >= 0)
        {
            throw std::runtime_error(parser.ErrorMsg());
        }
        if constexpr (optimized)
        {
            parser.Optimize();
        }
    }

    std::array<FunctionParser, 4> parsers;  // x, y, z, the shared value
    std::array<double, nbComponents + 1> values{};
    std::string names;
    bool hasShared = false;
};

using FparserEngine = FparserEngineOf<false>;
using OptimizedFparserEngine = FparserEngineOf<true>;
