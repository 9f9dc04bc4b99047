// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TextTokens.h - splits a text into tokens, for syntax colours and bracket matching. Part of the editor services; the
// rules in EditorServices.h apply.
//
//     a = 2*sin(30)    AssignedName "a"  Blank  AssignmentSign "="  Blank  Number "2"  Operator "*"  Function "sin"
//                      Bracket "("  Number "30"  Bracket ")"
#pragma once

#include "mathexpr/Export.h"
#include "mathexpr/MathExpression.h"

#include <cstdint>
#include <vector>

namespace mathexpr {

/// Kind of a token, as the compiler reads it. The numbers are part of the interface.
enum class TokenKind : std::uint32_t
{
    Number = 0,
    Constant = 1,
    Function = 2,  ///< A function's name, followed by a bracket.
    Variable = 3,
    HostName = 4,     ///< A name that the host has supplied or offers (IMathExprNameSource).
    UnknownName = 5,  ///< Includes a function's name without a bracket.
    Operator = 6,
    Bracket = 7,  ///< "(" or ")".
    Separator = 8,
    AssignedName = 9,
    AssignmentSign = 10,
    Blank = 11,
    Shorthand = 12,  ///< "[", "]", or the operator "e+". Square brackets pair like round ones.
    Other = 13,      ///< A "=" that cannot assign; the whole text if it exceeds the object's length limit.
};

/// TextToken::partner of a token that has none.
inline constexpr std::uint32_t noPartner = 0xFFFFFFFF;

/// A token: a span of the text. It includes blanks between its characters, as in "1 000".
struct TextToken
{
    TokenKind kind = TokenKind::Other;
    std::uint32_t start = 0;
    std::uint32_t length = 0;
    std::uint32_t depth = 0;            ///< Number of brackets open around the token.
    std::uint32_t partner = noPartner;  ///< Of a round or square bracket: index of the matching one.
};

/// Splits a text into tokens, in order. They cover the text without gaps.
MATHEXPR_API std::vector<TextToken> getTokens(const MathExpression& expression, const wchar_t* text);

}
