// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Vocabulary.h - lists the constants, operators and functions of the language, for help and completion in a host.
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

/// Subject of an item, for grouped lists. The numbers are part of the interface.
enum class VocabularyFamily : std::uint32_t
{
    Operators = 0,
    CoreMath = 1,
    Angle = 2,  ///< Angle, Length, Area and Volume are unit conversions.
    Length = 3,
    Area = 4,
    Volume = 5,
    Geometry = 6,
    Constants = 7,
};

/// A constant, operator or function. The strings are zero-terminated and valid while the library is loaded.
struct VocabularyItem
{
    VocabularyKind kind;
    VocabularyFamily family;
    const wchar_t* className;    ///< Name of the item's class in the library; empty for a constant.
    const wchar_t* symbol;       ///< As written in an expression. Overloads share it, as do both operators "-".
    const wchar_t* help;         ///< The usage, such as "sin(x)"; empty for a constant.
    const wchar_t* description;  ///< One line; empty for a constant.
    std::uint32_t nbArgs;        ///< Arguments or operands; NB_ARGS_UNDEFINED (IMathFunction.h) for any number; 0 for a
                                 ///< constant.
    std::int32_t precedence;     ///< Of an operator, 0 to 4, higher binds tighter; otherwise 0.
    bool unary;                  ///< Whether it is a unary operator.
    bool constant;               ///< Whether its result depends only on its arguments; true for a constant.
    double value;                ///< Of a constant; otherwise 0.
};

/// Returns an item by index, in the order of registration: constants, operators, functions. Can be called from any thread.
/// @param item  receives the item; not written if there is none
/// @return false if index is not less than the number of items
MATHEXPR_API bool getVocabularyItem(std::uint32_t index, VocabularyItem& item) noexcept;

}
