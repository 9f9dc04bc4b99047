// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ExpressionDiagnostic.h - the description of a failure: cause, position and correction.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace mathexpr {

/// What would have been accepted at the failure: a set of these bits. The numbers are part of the interface.
namespace Expected {
enum : std::uint32_t
{
    Value = 0x1,  ///< A number, a name, a point, a function call or an opening bracket.
    Operator = 0x2,
    ClosingBracket = 0x4,
    Separator = 0x8,
    End = 0x10,          ///< The end of the expression.
    Function = 0x20,     ///< The name of a function, with its brackets.
    KnownName = 0x40,    ///< A constant, a variable, or a name that the host knows.
    NewName = 0x80,      ///< Before "=": a name that can be a variable.
    OtherCount = 0x100,  ///< Another number of arguments, one of acceptedArgCounts.
    Number = 0x200,      ///< A number instead of a point.
    Point = 0x400,       ///< Points instead of numbers.
    SameKind = 0x800,    ///< Two numbers or two points.
    InDomain = 0x1000,   ///< Another value: this one is outside the item's domain.
    SmallerNumber = 0x2000,
    Less = 0x4000,  ///< A shorter or simpler expression.
};
}

/// A correction: replaces a span of the typed text. The corrected text compiles.
struct ExpressionFix
{
    std::uint32_t start = 0;  ///< Counted as ExpressionDiagnostic::start.
    std::uint32_t length = 0;
    std::wstring replacement;
};

/// A failure. Without one, message is 0 and everything else is empty.
struct ExpressionDiagnostic
{
    enum class Kind : std::uint32_t
    {
        None = 0,  ///< No exception: an item refused its arguments, or an integer literal is too large.
        Parsing = 1,
        Definition = 2,
    };

    /// Number, 1 to 19, of the message that is shown to the user if messages are shown. The exceptions with parsing codes 0
    /// and 15 are raised in every mode and never shown; here they have the general message 3.
    std::uint32_t message = 0;
    /// The text of the message in the user's language.
    std::wstring text;

    /// The exception that is raised if messages are not shown.
    Kind kind = Kind::None;
    /// One of ParsingError or DefinitionError, depending on kind; 0 if kind is None.
    std::uint32_t code = 0;

    /// Span of the failure in the text as typed, in units of wchar_t from 0, blanks and shorthands included. length is 0 if
    /// the failure has no span, as with an assignment that an earlier text left pending.
    std::uint32_t start = 0;
    std::uint32_t length = 0;

    /// The token, symbol or text concerned, as in the exception; if the exception has none, the text at start, without blanks.
    std::wstring itemName;
    /// What a definition conflicts with; empty for the other kinds.
    std::wstring conflictItemName;
    /// Number of arguments or operands that the item concerned was given; 0 if unknown.
    std::uint32_t nbArgs = 0;
    /// Argument counts of the overloads of the function concerned. NB_ARGS_UNDEFINED (IMathFunction.h) is any number. Empty if
    /// no function is concerned.
    std::vector<std::uint32_t> acceptedArgCounts;

    /// What would have been accepted: a set of Expected bits.
    std::uint32_t expected = 0;

    /// For an unknown name: up to three similar names, the nearest first.
    std::vector<std::wstring> suggestions;

    /// Up to two sentences in the user's language that help to correct the text; show them below the message.
    std::vector<std::wstring> hints;
    /// The correction that the last hint describes, if it is unambiguous.
    std::optional<ExpressionFix> fix;
};

}
