// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Inputs.h - the values that the formulas of the benchmarks read, in one layout for native code and for every engine.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <string_view>
#include <vector>

/// A point as native code holds it.
struct Point
{
    double x;
    double y;
    double z;
};

/// What the formulas name.
struct Inputs
{
    double x;
    double y;
    double z;
    double a;
    double b;
    double r;
    Point p;
    Point q;
};

/// The scalars of the inputs, in the order above.
inline constexpr std::size_t nbComponents = sizeof(Inputs) / sizeof(double);
using Scalars = std::array<double, nbComponents>;

/// One scalar among the inputs. Engines without points know a coordinate by the name given here.
struct Component
{
    std::string_view name;
    char variable;      // the formula's variable that it belongs to
    std::size_t index;  // among the scalars
};

inline constexpr std::array<Component, nbComponents> components{{
    {"x", 'x', 0},
    {"y", 'y', 1},
    {"z", 'z', 2},
    {"a", 'a', 3},
    {"b", 'b', 4},
    {"r", 'r', 5},
    {"px", 'p', 6},
    {"py", 'p', 7},
    {"pz", 'p', 8},
    {"qx", 'q', 9},
    {"qy", 'q', 10},
    {"qz", 'q', 11},
}};

inline double valueOf(const Inputs& inputs, const Component& component)
{
    return std::bit_cast<Scalars>(inputs)[component.index];
}

/// The components of the variables named in a formula, in the order above.
inline std::vector<Component> componentsOf(std::string_view variables)
{
    std::vector<Component> used;
    for (const Component& component : components)
    {
        if (variables.find(component.variable) != std::string_view::npos)
        {
            used.push_back(component);
        }
    }
    return used;
}
