// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ExpressionGenerator.h - expressions valid and broken, and scripts of calls around them, all from a seed.
//
// The same seed gives the same scripts on every platform: the engine is std::mt19937_64 and the distributions are this
// file's own.
#pragma once

#include "mathexpr/ValType.h"

#include <cstdint>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace reference {

/// Numbers from a seed.
class Random
{
public:
    explicit Random(std::uint64_t seed) : engine(seed) {}

    /// 0 to limit - 1.
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

/// Texts: well-formed ones, well-formed ones with a few characters changed, known oddities with a few characters
/// changed, and tokens in no order at all.
class ExpressionGenerator
{
public:
    explicit ExpressionGenerator(Random& source) : random(source) {}

    std::wstring any();

    /// Well-formed, but now and then a point where a number belongs or a call with a wrong number of arguments.
    std::wstring wellFormed();

    /// A number or a point, with special values and flags among them.
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

/// One call on an expression object.
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

/// What one expression object goes through, and what its host knows.
struct Script
{
    std::uint64_t seed = 0;
    std::map<std::wstring, VALTYPE> known;
    std::vector<Step> steps;
};

/// @param nbExpressions  how many texts are set
Script makeScript(std::uint64_t seed, std::size_t nbExpressions);

/// The same calls, with the numbers in the texts hidden from the compiler behind names such as h2_5, which
/// hiddenNumber reads back.
Script withHiddenNumbers(Script script);

/// True, and the value, when the name hides a number.
bool hiddenNumber(const std::wstring& name, VALTYPE& value);
}
