// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TextEdits.h - edits of a text: uniform spacing, uses of a name, renaming, literals. Part of the editor services; the
// rules in EditorServices.h apply.
#pragma once

#include "mathexpr/Export.h"
#include "mathexpr/MathExpression.h"
#include "mathexpr/ValType.h"

#include <cstdint>
#include <string>
#include <vector>

namespace mathexpr {

/// A span of a text.
struct TextSpan
{
    std::uint32_t start = 0;
    std::uint32_t length = 0;
};

/// Replaces a span of a text.
struct TextEdit
{
    TextSpan span;
    std::wstring replacement;
};

/// Rewrites a text with uniform spacing: a blank on both sides of "=" and of every binary operator except "^", a blank
/// after each separator, no other blanks. The result compiles to the same program; formatting it again does not change
/// it. If the result would exceed the object's length limit, the text is returned unchanged.
MATHEXPR_API std::wstring formatText(const MathExpression& expression, const wchar_t* text);

/// Finds all uses of a name that denotes a value: a variable, a name of the host, an unknown name or a constant. Names
/// of constants are case-sensitive, all others ignore case. Assignments count as uses.
MATHEXPR_API std::vector<TextSpan> findReferences(const MathExpression& expression, const wchar_t* text,
                                                  const wchar_t* name);

/// Why a renaming is refused. The numbers are part of the interface.
enum class RenameRefusal : std::uint32_t
{
    None = 0,
    NotAName = 1,       ///< The new name cannot be a variable.
    NameTaken = 2,      ///< The text already uses the new name, ignoring case.
    ReadOtherwise = 3,  ///< The new name would be split or read as something else, such as an "e" before "+".
};

struct Renaming
{
    RenameRefusal refusal = RenameRefusal::None;
    TextSpan refusedAt;           ///< With NameTaken and ReadOtherwise: the conflicting use.
    std::vector<TextEdit> edits;  ///< In text order; empty if the renaming is refused.
};

/// Computes the edits that rename a variable or a name of the host at all its uses in a text.
MATHEXPR_API Renaming renameInText(const MathExpression& expression, const wchar_t* text, const wchar_t* name,
                                   const wchar_t* newName);

/// A literal number or point, which a slider or a dragged handle can replace.
struct TextLiteral
{
    TextSpan span;  ///< Includes the sign of a number.
    VALTYPE value;
};

/// Lists the literals of a text in order. A point is listed before its coordinates. A point counts as a literal if all
/// its coordinates are numbers as the C interface formats them (mathexpr_format_value_utf8).
MATHEXPR_API std::vector<TextLiteral> getLiterals(const MathExpression& expression, const wchar_t* text);

}
