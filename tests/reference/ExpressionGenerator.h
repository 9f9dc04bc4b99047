// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ExpressionGenerator.h - generates valid and invalid expressions, and scripts of calls, from a seed.
//
// A seed gives the same scripts on every platform: the engine is std::mt19937_64, and the distributions are implemented
// here.
#pragma once

#include "mathexpr/ValType.h"

#include <cstdint>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace reference {

/// Random numbers from a seed.
class Random
{
public:
    explicit Random(std::uint64_t seed) : engine(seed) {}

    /// A number from 0 to limit - 1.
    std::size_t below(std::size_t limit) { return static_cast<std::size_t>(engine() % limit); }

    bool chance(std::size_t percent) { return below(100) < percent; }

    template <class List>
    const auto& pick(const List& list)
    {
        return list[below(list.size())];
    }

private:
    std::mt19937_64 engine;
};

/// Generates texts: well-formed texts, well-formed and unusual texts with a few characters changed, and random
/// sequences of tokens.
class ExpressionGenerator
{
public:
    explicit ExpressionGenerator(Random& source) : random(source) {}

    std::wstring any();

    /// Well-formed, except for occasional points in place of numbers and calls with a wrong number of arguments.
    std::wstring wellFormed();

    /// A number or a point, including special values and flags.
    VALTYPE value();

private:
    Random& random;

    std::wstring longText();
    std::wstring number(std::size_t depth);
    std::wstring point(std::size_t depth);
    std::wstring operand(std::size_t depth, bool wantsPoint);
    std::wstring literal();
    std::wstring name(bool wantsPoint);
    std::wstring numberCall(std::size_t depth);
    std::wstring pointCall(std::size_t depth);
    std::wstring call(const std::wstring& function, std::size_t nbArgs, std::size_t depth, bool wantsPoints);
    std::wstring brackets(std::size_t depth);
    std::wstring assigned(const std::wstring& text);
    std::wstring soup();
    std::wstring mutated(std::wstring text);
    double special();
};

/// A call on an expression object.
struct Step
{
    enum class Kind
    {
        SetExpression,
        Evaluate,
        DropAssignment,
        ChangeVariable,
    };

    Kind kind = Kind::Evaluate;
    std::wstring text;  // the expression, or the variable's name
    VALTYPE value;      // the variable's new value
};

/// The calls on one expression object, and its host's names.
struct Script
{
    std::uint64_t seed = 0;
    std::map<std::wstring, VALTYPE> known;
    std::vector<Step> steps;
};

/// @param nbExpressions  number of texts
Script makeScript(std::uint64_t seed, std::size_t nbExpressions);

/// The same calls, with the numbers in the texts hidden from the compiler behind names such as h2_5, which hiddenNumber
/// decodes.
Script withHiddenNumbers(Script script);

/// Returns true and the value if the name hides a number.
bool hiddenNumber(const std::wstring& name, VALTYPE& value);
}
