// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// NativeEngine.h - the formulas in C++ as an engine, and the interface of engines.
//
// An engine provides: its name; the type Slot, and slot(component), the address of a variable's value;
// prepare(formula), which throws std::exception if the engine cannot compute it; number() or point(), which evaluate
// once.
//
// Interpreters also provide: the type Text and textOf, a formula in the form that compile(text) takes; oneShot(text),
// which creates an object, computes a text without variables, and destroys the object; and construct(), which only
// creates and destroys an object.
#pragma once

#include "benchmarks/Formulas.h"

class NativeEngine
{
public:
    using Slot = double;
    static constexpr const char* name = "native";

    /// Inputs consists of doubles only.
    double* slot(const Component& component) { return reinterpret_cast<double*>(&inputs) + component.index; }

    void prepare(const Formula& formula)
    {
        if (formula.isPoint())
        {
            pointFunction = std::get<Formula::NativePoint>(formula.native);
        }
        else
        {
            numberFunction = std::get<Formula::NativeNumber>(formula.native);
        }
    }

    double number() const { return numberFunction(inputs); }
    Point point() const { return pointFunction(inputs); }

private:
    Inputs inputs{};
    Formula::NativeNumber numberFunction = nullptr;
    Formula::NativePoint pointFunction = nullptr;
};
