// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MuparserEngine.h - muparser as an engine.
#pragma once

#include "benchmarks/Formulas.h"

#include <muParser.h>

#include <stdexcept>
#include <string>

class MuparserEngine
{
public:
    using Slot = double;
    using Text = std::string;
    static constexpr const char* name = "muparser";

    MuparserEngine()
    {
        for (const Component& component : components)
        {
            parser.DefineVar(std::string(component.name), &values[component.index]);
        }
        parser.DefineVar("len", &shared);
        parser.DefineFun(
            "m2f", +[](double x) { return x * 10000.0 / 3048.0; });
        parser.DefineFun(
            "f2m", +[](double x) { return x * 0.3048; });
    }

    double* slot(const Component& component) { return &values[component.index]; }

    void prepare(const Formula& formula)
    {
        std::string text = formula.scalar.shared.empty() ? "" : "len=" + formula.scalar.shared;
        for (const std::string& part : formula.scalar.parts)
        {
            text += (text.empty() ? "" : ",") + part;
        }
        compile(text);
        number();
    }

    static Text textOf(const Formula& formula) { return formula.text; }
    static Text textOf(const std::string& text) { return text; }

    static double oneShot(const Text& text)
    {
        mu::Parser parser;
        parser.SetExpr(text);
        return parser.Eval();
    }

    static void construct() { mu::Parser object; }

    /// Only stores the text: the first evaluation compiles it.
    void compile(const Text& text)
    try
    {
        parser.SetExpr(text);
    }
    catch (const mu::ParserError& error)
    {
        throw std::runtime_error(error.GetMsg());
    }

    double number()
    try
    {
        return parser.Eval();
    }
    catch (const mu::ParserError& error)
    {
        throw std::runtime_error(error.GetMsg());
    }

    Point point()
    {
        int count = 0;
        const double* results = parser.Eval(count);
        return {results[count - 3], results[count - 2], results[count - 1]};
    }

private:
    mu::Parser parser;
    Scalars values{};
    double shared = 0;
};
