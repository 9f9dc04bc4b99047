// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TypingHelp.h - help for a text that is being typed: its failure, corrections, the call around the cursor, the item
// under it. Part of the editor services; the rules in EditorServices.h apply.
#pragma once

#include "mathexpr/Export.h"
#include "mathexpr/ExpressionDiagnostic.h"
#include "mathexpr/MathExpression.h"
#include "mathexpr/TextEdits.h"
#include "mathexpr/TextTokens.h"
#include "mathexpr/ValType.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace mathexpr {

/// Whether a call may ask the host's service for names that are not known otherwise.
enum class HostQuestions : std::uint32_t
{
    Forbidden = 0,
    Allowed = 1,
};

/// State of a text that is being typed. The numbers are part of the interface.
enum class TypingState : std::uint32_t
{
    Complete = 0,    ///< The text compiles.
    Unfinished = 1,  ///< The text is valid so far, but incomplete.
    Wrong = 2,
};

struct TypingDiagnostic
{
    TypingState state = TypingState::Complete;
    /// The failure that compiling the text would give; message 0 if it compiles.
    ExpressionDiagnostic failure;
};

/// Checks whether a text would compile, without compiling it into the object. A name that the name source lists counts
/// as known, whatever its value.
MATHEXPR_API TypingDiagnostic diagnoseText(const MathExpression& expression, const wchar_t* text,
                                           HostQuestions questions = HostQuestions::Forbidden);

/// A correction that makes the text compile.
struct TextFix
{
    TextEdit edit;
    std::wstring title;  ///< For a menu: a sentence in the user's language.
};

/// Corrections of a text that does not compile: the one that the hints of its failure describe, or none.
MATHEXPR_API std::vector<TextFix> getFixes(const MathExpression& expression, const wchar_t* text);

/// Kind of value: of an argument, a parameter or a name. The numbers are part of the interface.
enum class ValueKind : std::uint32_t
{
    Unknown = 0,
    Number = 1,
    Point = 2,
    Either = 3,
};

struct SignatureOverload
{
    std::wstring help;                     ///< The usage, such as "min(x,y)".
    std::wstring description;              ///< One line.
    std::vector<std::wstring> parameters;  ///< Names of the parameters; a final "..." means that more may follow.
    ValueKind parameterKind = ValueKind::Unknown;
};

/// The function call that contains a cursor. Outside calls, function and overloads are empty.
struct CallSignature
{
    std::wstring function;       ///< "point" for a square bracket.
    TextSpan name;               ///< Span of the function's name, or of the square bracket.
    std::uint32_t argument = 0;  ///< Index of the argument at the cursor, from 0.
    std::vector<SignatureOverload> overloads;
    std::uint32_t activeOverload = 0;       ///< Index of the first overload that has this argument; of the last if none
                                            ///< has.
    ValueKind wanted = ValueKind::Unknown;  ///< The required kind of the argument at the cursor.
    std::wstring unit;                      ///< Unit of the argument, such as "degree"; empty if it has none.
};

MATHEXPR_API CallSignature getSignature(const MathExpression& expression, const wchar_t* text, std::uint32_t cursor);

/// The token under a cursor. The span is empty if there is no token, or only a blank. A text that does not apply is
/// empty.
struct HoverInfo
{
    TokenKind kind = TokenKind::Blank;
    TextSpan span;
    std::wstring name;
    std::wstring help;                    ///< The usage of an operator or function.
    std::wstring description;             ///< One line.
    std::wstring domain;                  ///< The function's message for an argument outside its domain.
    std::wstring unit;                    ///< Unit of a function's argument.
    std::wstring example;                 ///< A valid call of the function.
    std::optional<VALTYPE> exampleValue;  ///< Value of the example.
    std::optional<VALTYPE> value;  ///< Of a number, a constant, a name, a function call or a bracketed part, with the
                                   ///< variables' current values.
    TextSpan valueSpan;            ///< The part of the text that has this value.
};

/// Describes the token at a cursor: the one that begins at the cursor or contains it, otherwise the one that ends
/// there.
/// @param questions  whether the host's service may be asked for the value of a name that the host offers
MATHEXPR_API HoverInfo getHover(const MathExpression& expression, const wchar_t* text, std::uint32_t cursor,
                                HostQuestions questions = HostQuestions::Forbidden);

}
