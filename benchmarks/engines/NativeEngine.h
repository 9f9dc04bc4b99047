// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// NativeEngine.h - the formulas in C++, behind the interface of an engine.
//
// An engine offers: its name; the type Slot, and slot(component), the address through which a variable is changed;
// prepare(formula), which throws std::exception where it cannot; number() or point(), which evaluate once.
//
// The interpreters also offer the type Text and textOf, a formula as it is handed to compile(text); oneShot(text),
// which makes an object, computes a text without variables and destroys the object; and construct(), which does no more
// than make and destroy.
#pragma once

#include "benchmarks/Formulas.h"

class NativeEngine
{
public:
    using Slot = double;
    static constexpr const char* name = "native";

    /// Inputs is made of doubles alone.
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
