// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MathexprEngine.h - this library as an engine.
#pragma once

#include "benchmarks/Formulas.h"
#include "mathexpr/CMathExpr.h"
#include "mathexpr/MathExpression.h"
#include "mathexpr/Variables.h"

#include <stdexcept>
#include <string>

class MathexprEngine
{
public:
    using Slot = double;
    using Text = std::wstring;
    static constexpr const char* name = "mathexpr";

    MathexprEngine() : expression(true, nullptr)
    {
        for (const wchar_t* number : {L"x", L"y", L"z", L"a", L"b", L"r"})
        {
            mathexpr::setVariable(expression, number, VALTYPE{});
        }
        VALTYPE point;
        point.type = 1;
        mathexpr::setVariable(expression, L"p", point);
        mathexpr::setVariable(expression, L"q", point);
    }

    double* slot(const Component& component)
    {
        const wchar_t variable[] = {static_cast<wchar_t>(component.variable), L'\0'};
        VALTYPE* record = mathexpr::getVariableAddress(expression, variable);
        switch (component.name.back())
        {
        case 'y':
            return component.variable == 'y' ? &record->x : &record->y;
        case 'z':
            return component.variable == 'z' ? &record->x : &record->z;
        default:
            return &record->x;
        }
    }

    void prepare(const Formula& formula) { compile(textOf(formula)); }

    static Text textOf(const Formula& formula) { return textOf(formula.text); }
    static Text textOf(const std::string& text) { return Text(text.begin(), text.end()); }

    /// Computes a text with a new object, and destroys it.
    static double oneShot(const Text& text)
    {
        CMathExpr calculator;
        VALTYPE result;
        calculator.Calculate(text.c_str(), result, 2147483647);
        return result.x;
    }

    /// Creates an object with its whole vocabulary, and destroys it.
    static void construct() { MathExpression object(true, nullptr); }

    void compile(const Text& text)
    {
        if (!expression.setExpression(text.c_str()))
        {
            throw std::runtime_error("refused");
        }
    }

    double number()
    {
        expression.evaluate(value);
        return value.x;
    }

    const VALTYPE& point()
    {
        expression.evaluate(value);
        return value;
    }

private:
    MathExpression expression;
    VALTYPE value;
};
