// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MuparserxEngine.h - muparserx as an engine.
#pragma once

#include "benchmarks/Formulas.h"

#include <mpParser.h>

#include <array>
#include <stdexcept>
#include <string>

class MuparserxEngine
{
public:
    using Slot = mup::Value;
    using Text = std::string;
    static constexpr const char* name = "muparserx";

    MuparserxEngine() : parser(mup::pckALL_NON_COMPLEX)
    {
        values.fill(mup::Value(0.0));
        for (const Component& component : components)
        {
            parser.DefineVar(std::string(component.name), mup::Variable(&values[component.index]));
        }
        parser.DefineFun(new Conversion(
            "m2f", +[](double x) { return x * 10000.0 / 3048.0; }));
        parser.DefineFun(new Conversion(
            "f2m", +[](double x) { return x * 0.3048; }));
    }

    mup::Value* slot(const Component& component) { return &values[component.index]; }

    void prepare(const Formula& formula)
    {
        if (!formula.withoutTruthValues.empty())
        {
            compile(formula.withoutTruthValues);
        }
        else if (formula.isPoint())
        {
            compile(arrayText(formula.scalar));
        }
        else
        {
            compile(formula.scalar.parts.front());
        }
        evaluate();
    }

    static Text textOf(const Formula& formula) { return formula.text; }
    static Text textOf(const std::string& text) { return text; }

    static double oneShot(const Text& text)
    {
        mup::ParserX parser(mup::pckALL_NON_COMPLEX);
        parser.SetExpr(text);
        return parser.Eval().GetFloat();
    }

    static void construct() { mup::ParserX object(mup::pckALL_NON_COMPLEX); }

    /// Only stores the text: the first evaluation compiles it.
    void compile(const Text& text)
    try
    {
        parser.SetExpr(text);
    }
    catch (const mup::ParserError& error)
    {
        throw std::runtime_error(error.GetMsg());
    }

    double number() { return evaluate().GetFloat(); }

    Point point()
    {
        const mup::matrix_type& array = evaluate().GetArray();
        return {array.At(0, 0).GetFloat(), array.At(0, 1).GetFloat(), array.At(0, 2).GetFloat()};
    }

private:
    class Conversion : public mup::ICallback
    {
    public:
        Conversion(const char* symbol, double (*function)(double))
            : ICallback(mup::cmFUNC, symbol, 1), function(function)
        {}
        void Eval(mup::ptr_val_type& result, const mup::ptr_val_type* args, int) override
        {
            *result = function(args[0]->GetFloat());
        }
        const mup::char_type* GetDesc() const override { return ""; }
        mup::IToken* Clone() const override { return new Conversion(*this); }

    private:
        double (*function)(double);
    };

    /// An array of the parts, with the shared value written out in each.
    static std::string arrayText(const ScalarText& scalar)
    {
        std::string text;
        for (std::string part : scalar.parts)
        {
            const std::size_t at = part.find("len");
            if (at != std::string::npos)
            {
                part.replace(at, 3, scalar.shared);
            }
            text += (text.empty() ? "{" : ",") + part;
        }
        return text + "}";
    }

    const mup::IValue& evaluate()
    try
    {
        return parser.Eval();
    }
    catch (const mup::ParserError& error)
    {
        throw std::runtime_error(error.GetMsg());
    }

    mup::ParserX parser;
    std::array<mup::Value, nbComponents> values;
};
