// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TextTokens.h - splits a text into tokens, for colours and for the partner of a bracket. One of the editor services
// (EditorServices.h), whose rules apply.
//
//     a = 2*sin(30)    AssignedName "a"  Blank  AssignmentSign "="  Blank  Number "2"  Operator "*"  Function "sin"
//                      Bracket "("  Number "30"  Bracket ")"
#pragma once

#include "mathexpr/Export.h"
#include "mathexpr/MathExpression.h"

#include <cstdint>
#include <vector>

namespace mathexpr {

/// What the compiler takes a token for. The numbers are part of the interface.
enum class TokenKind : std::uint32_t
{
    Number = 0,
    Constant = 1,
    Function = 2,  ///< A registered name before a bracket.
    Variable = 3,
    HostName = 4,     ///< A name that the host offers (IMathExprNameSource), or has answered.
    UnknownName = 5,  ///< Also a function's name without its bracket.
    Operator = 6,
    Bracket = 7,  ///< "(" or ")".
    Separator = 8,
    AssignedName = 9,
    AssignmentSign = 10,
    Blank = 11,
    Shorthand = 12,  ///< "[" and "]", which are brackets, too, or the operator "e+".
    Other = 13,      ///< A "=" that cannot assign, and all of a text that is longer than the object's limit.
};

/// As TextToken::partner: there is none.
inline constexpr std::uint32_t noPartner = 0xFFFFFFFF;

/// A stretch of the text, from start on. Blanks between the characters of a token, as in "1 000", belong to it.
struct TextToken
{
    TokenKind kind = TokenKind::Other;
    std::uint32_t start = 0;
    std::uint32_t length = 0;
    std::uint32_t depth = 0;            ///< How many brackets are open around it.
    std::uint32_t partner = noPartner;  ///< Of a bracket, round or square: the index of the one that it pairs with.
};

/// The tokens of a text, in order. They cover it without a gap.
MATHEXPR_API std::vector<TextToken> getTokens(const MathExpression& expression, const wchar_t* text);

}
