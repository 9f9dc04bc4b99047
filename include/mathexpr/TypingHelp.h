// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TypingHelp.h - what an edit box shows beside a text: what is wrong with it, how to mend it, the call around the
// cursor, and the item under it. Some of the editor services (EditorServices.h), whose rules apply.
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

/// Whether a service may ask the host's service for the value of a name that nothing else knows.
enum class HostQuestions : std::uint32_t
{
    Forbidden = 0,
    Allowed = 1,
};

/// The numbers are part of the interface.
enum class TypingState : std::uint32_t
{
    Complete = 0,    ///< It compiles.
    Unfinished = 1,  ///< Something has to follow; there is no mistake yet.
    Wrong = 2,
};

struct TypingDiagnostic
{
    TypingState state = TypingState::Complete;
    /// The failure that compiling the text would give; message 0 where it compiles.
    ExpressionDiagnostic failure;
};

/// Tells whether a text would compile, without compiling it into the object. A name that the host offers counts as
/// known, whatever its value.
MATHEXPR_API TypingDiagnostic diagnoseText(const MathExpression& expression, const wchar_t* text,
                                           HostQuestions questions = HostQuestions::Forbidden);

/// A correction that makes the text compile.
struct TextFix
{
    TextEdit edit;
    std::wstring title;  ///< What to call it in a menu, a sentence in the user's language.
};

/// Corrections of a text that does not compile: the one that the hints of its failure speak of, or none.
MATHEXPR_API std::vector<TextFix> getFixes(const MathExpression& expression, const wchar_t* text);

/// What kind of value something takes or has. The numbers are part of the interface.
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
    std::vector<std::wstring> parameters;  ///< Their names; a last one of "..." repeats.
    ValueKind parameterKind = ValueKind::Unknown;
};

/// The call around a cursor. Outside of calls function and overloads are empty.
struct CallSignature
{
    std::wstring function;       ///< "point" for a square bracket.
    TextSpan name;               ///< The function's name in the text, or the square bracket.
    std::uint32_t argument = 0;  ///< The argument at the cursor, from 0.
    std::vector<SignatureOverload> overloads;
    std::uint32_t activeOverload = 0;       ///< The one that has this argument; the last where none has.
    ValueKind wanted = ValueKind::Unknown;  ///< What the argument at the cursor has to be.
    std::wstring unit;                      ///< Of the argument, such as "degree"; empty where it has none.
};

MATHEXPR_API CallSignature getSignature(const MathExpression& expression, const wchar_t* text, std::uint32_t cursor);

/// What stands under a cursor. Where nothing does, or a blank, the span is empty.
struct HoverInfo
{
    TokenKind kind = TokenKind::Blank;
    TextSpan span;
    std::wstring name;
    std::wstring help;         ///< The usage of an operator or function.
    std::wstring description;  ///< One line.
    std::wstring domain;       ///< The message of an argument that a function is not defined for, if there is one.
    std::wstring unit;         ///< Of a function's argument.
    std::wstring example;      ///< A call of a function,
    std::optional<VALTYPE> exampleValue;  ///< and what it computes.
    std::optional<VALTYPE> value;  ///< Of a number, constant or name, of the call of a function, or of what a bracket
                                   ///< encloses, with the variables as they are.
    TextSpan valueSpan;            ///< What has this value.
};

/// Explains the token at a cursor, which begins there or contains it, or ends there where none does.
/// @param questions  also whether a name that the host offers shows its value
MATHEXPR_API HoverInfo getHover(const MathExpression& expression, const wchar_t* text, std::uint32_t cursor,
                                HostQuestions questions = HostQuestions::Forbidden);

}
