// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Formulas.h - the formulas that every engine computes, as this language writes them and as the peers do.
#pragma once

#include "benchmarks/Native.h"

#include <string>
#include <variant>
#include <vector>

/// A formula as an engine without points and without degrees writes it.
struct ScalarText
{
    std::string shared;              // computed first and known as "len" to the others; empty: nothing
    std::vector<std::string> parts;  // the result's coordinates, or the one number
};

struct Formula
{
    using NativeNumber = double (*)(const Inputs&);
    using NativePoint = Point (*)(const Inputs&);

    std::string title;      // as a table shows it
    std::string variables;  // the letters of those that it reads
    std::string text;
    std::variant<NativeNumber, NativePoint> native;
    ScalarText scalar;
    std::string withoutTruthValues;  // for an engine whose comparisons are no numbers but know "?:"; empty: as scalar
    std::string lua;                 // likewise for Lua
    NativeNumber sameTextNative;     // what a peer computes when given the very text; null where it cannot read it

    bool isPoint() const { return std::holds_alternative<NativePoint>(native); }
    /// Whether its value or a variable of it is a point.
    bool hasPoints() const { return isPoint() || variables.find_first_of("pq") != std::string::npos; }
};

/// In the order of the tables. The first 11 form the geometric mean.
const std::vector<Formula>& formulas();
