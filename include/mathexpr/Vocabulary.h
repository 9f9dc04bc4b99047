// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Vocabulary.h - walks the language's constants, operators and functions, so that a host can list them and complete and
// explain what a user types.
//
//     mathexpr::VocabularyItem item;
//     for (std::uint32_t index = 0; mathexpr::getVocabularyItem(index, item); ++index)
//         ...  // item.symbol, item.help
#pragma once

#include "mathexpr/Export.h"

#include <cstdint>

namespace mathexpr {

enum class VocabularyKind : std::uint32_t
{
    Constant = 0,
    Operator = 1,
    Function = 2,
};

/// What an item is about, for a reader who looks for one. The numbers are part of the interface.
enum class VocabularyFamily : std::uint32_t
{
    Operators = 0,
    CoreMath = 1,
    Angle = 2,  ///< This and the next three are conversions between units.
    Length = 3,
    Area = 4,
    Volume = 5,
    Geometry = 6,
    Constants = 7,
};

/// One constant, operator or function. The strings are zero-terminated and live as long as the library is loaded.
struct VocabularyItem
{
    VocabularyKind kind;
    VocabularyFamily family;
    const wchar_t* className;    ///< Of the item's class in the library; empty for a constant.
    const wchar_t* symbol;       ///< As written in an expression. Overloads share it, as do two operators "-".
    const wchar_t* help;         ///< The usage, such as "sin(x)"; empty for a constant.
    const wchar_t* description;  ///< One line; empty for a constant.
    std::uint32_t nbArgs;        ///< Arguments or operands; NB_ARGS_UNDEFINED (IMathFunction.h) for any number; 0 for a
                                 ///< constant.
    std::int32_t precedence;     ///< Of an operator, 0 to 4, the higher one binding tighter; 0 for the others.
    bool unary;                  ///< Whether it is an operator written before its one operand.
    bool constant;               ///< Whether its result depends on its arguments alone; true for a constant.
    double value;                ///< Of a constant; 0 for the others.
};

/// The items in the order in which an expression object registers them: constants, operators, functions. Any thread.
/// @param item  receives the item; untouched where there is none
/// @return false from the number of items on
MATHEXPR_API bool getVocabularyItem(std::uint32_t index, VocabularyItem& item) noexcept;

}
