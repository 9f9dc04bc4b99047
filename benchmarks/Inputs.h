// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Inputs.h - the values that the formulas read, in one layout for native code and all engines.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <string_view>
#include <vector>

/// A point of native code.
struct Point
{
    double x;
    double y;
    double z;
};

/// The variables of the formulas.
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

/// Number of scalars in the inputs.
inline constexpr std::size_t nbComponents = sizeof(Inputs) / sizeof(double);
using Scalars = std::array<double, nbComponents>;

/// A scalar in the inputs. Engines without points use name for a coordinate.
struct Component
{
    std::string_view name;
    char variable;      // the formula's variable that contains it
    std::size_t index;  // index of the scalar in the inputs
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

/// The components of a formula's variables, in the order above.
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
