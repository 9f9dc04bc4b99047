// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ExpressionDiagnostic.h - the record that tells what went wrong in an expression, and where.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace mathexpr {

/// What would have been accepted where an expression failed: a set of these bits. The numbers are part of the
/// interface.
namespace Expected {
enum : std::uint32_t
{
    Value = 0x1,  ///< Something with a value: a number, a name, a point, a function call, an opening bracket.
    Operator = 0x2,
    ClosingBracket = 0x4,
    Separator = 0x8,
    End = 0x10,          ///< The end of the expression.
    Function = 0x20,     ///< The name of a function, with its brackets.
    KnownName = 0x40,    ///< A constant, a variable, or a name that the host answers.
    NewName = 0x80,      ///< Before "=": a name that can be a variable.
    OtherCount = 0x100,  ///< Another number of arguments, one of acceptedArgCounts.
    Number = 0x200,      ///< A number instead of a point.
    Point = 0x400,       ///< Points instead of numbers.
    SameKind = 0x800,    ///< Two numbers or two points.
    InDomain = 0x1000,   ///< Another value: the item is not defined for this one.
    SmallerNumber = 0x2000,
    Less = 0x4000,  ///< A shorter or simpler expression.
};
}

/// A stretch of the typed text, and what to put in its place. The text that this makes compiles.
struct ExpressionFix
{
    std::uint32_t start = 0;  ///< Counted as ExpressionDiagnostic::start.
    std::uint32_t length = 0;
    std::wstring replacement;
};

/// One failure. Where nothing has failed, message is 0 and everything else is empty.
struct ExpressionDiagnostic
{
    enum class Kind : std::uint32_t
    {
        None = 0,  ///< No exception: an item refused its arguments, or an integer literal is too large.
        Parsing = 1,
        Definition = 2,
    };

    /// Number of the message, 1 to 19, that is shown to the user where messages are shown. The exceptions with parsing
    /// codes 0 and 15 are raised in every mode and never shown; they have the general message 3 here.
    std::uint32_t message = 0;
    /// The text of the message in the user's language.
    std::wstring text;

    /// Which exception is raised where messages are not shown.
    Kind kind = Kind::None;
    /// One of ParsingError or DefinitionError, by kind; 0 where kind is None.
    std::uint32_t code = 0;

    /// Where the failure stands in the text as it was typed, counted in characters of wchar_t from 0, blanks and
    /// shorthands included. length is 0 where nothing in the text stands for it, as with an assignment that an earlier
    /// text left pending.
    std::uint32_t start = 0;
    std::uint32_t length = 0;

    /// The token, symbol or text concerned, as the exception names it; where that names none, what stands at start,
    /// without blanks.
    std::wstring itemName;
    /// What stands in the way of a definition; empty for the other kinds.
    std::wstring conflictItemName;
    /// How many arguments or operands the item concerned was given; 0 where no count is known.
    std::uint32_t nbArgs = 0;
    /// The numbers of arguments that the function concerned takes, in the order of its overloads. NB_ARGS_UNDEFINED
    /// (IMathFunction.h) is any number. Empty where no function is concerned.
    std::vector<std::uint32_t> acceptedArgCounts;

    /// What would have been accepted there: bits of Expected.
    std::uint32_t expected = 0;

    /// For an unknown name: up to three that the user may have meant, the nearest first.
    std::vector<std::wstring> suggestions;

    /// What helps the user along, as sentences in the user's language, to be shown below the text of the message: what
    /// fits where the expression fails, and what may be meant. Up to two.
    std::vector<std::wstring> hints;
    /// The correction that the last hint speaks of, where there is one that is plain.
    std::optional<ExpressionFix> fix;
};

}
