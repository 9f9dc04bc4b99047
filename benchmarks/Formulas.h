// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Formulas.h - the formulas of the benchmarks, in this language and in those of the peers.
#pragma once

#include "benchmarks/Native.h"

#include <string>
#include <variant>
#include <vector>

/// A formula for an engine without points and degrees.
struct ScalarText
{
    std::string shared;              // computed first; "len" in the other parts; may be empty
    std::vector<std::string> parts;  // the result's coordinates, or the single number
};

struct Formula
{
    using NativeNumber = double (*)(const Inputs&);
    using NativePoint = Point (*)(const Inputs&);

    std::string title;      // for tables
    std::string variables;  // the letters of the variables that it reads
    std::string text;
    std::variant<NativeNumber, NativePoint> native;
    ScalarText scalar;
    std::string withoutTruthValues;  // for an engine whose comparisons are not numbers but that has "?:"; empty: as
                                     // scalar
    std::string lua;                 // the same for Lua
    NativeNumber sameTextNative;     // the peers' result for the text as it is; null if they cannot read it

    bool isPoint() const { return std::holds_alternative<NativePoint>(native); }
    /// Whether its value or one of its variables is a point.
    bool hasPoints() const { return isPoint() || variables.find_first_of("pq") != std::string::npos; }
};

/// In the order of the tables. The geometric mean covers the first 11.
const std::vector<Formula>& formulas();
