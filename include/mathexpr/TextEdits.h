// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TextEdits.h - finds and rewrites what a text is made of: spacing, uses of a name, numbers and points. Some of the
// editor services (EditorServices.h), whose rules apply.
#pragma once

#include "mathexpr/Export.h"
#include "mathexpr/MathExpression.h"
#include "mathexpr/ValType.h"

#include <cstdint>
#include <string>
#include <vector>

namespace mathexpr {

/// A stretch of a text.
struct TextSpan
{
    std::uint32_t start = 0;
    std::uint32_t length = 0;
};

/// What to put in place of a stretch of a text.
struct TextEdit
{
    TextSpan span;
    std::wstring replacement;
};

/// The text with even spacing: blanks around assignment and around operators between two operands but "^", one behind a
/// separator, no other. It compiles to the same program, and formatting it again changes nothing. Unchanged is a text
/// that would become longer than the object's limit.
MATHEXPR_API std::wstring formatText(const MathExpression& expression, const wchar_t* text);

/// Where a text names a value: a variable, a name of the host's or an unknown one, in any case of letters, assigned to
/// or read; or a constant.
MATHEXPR_API std::vector<TextSpan> findReferences(const MathExpression& expression, const wchar_t* text,
                                                  const wchar_t* name);

/// Why a name is not renamed. The numbers are part of the interface.
enum class RenameRefusal : std::uint32_t
{
    None = 0,
    NotAName = 1,       ///< The new name cannot be a variable.
    NameTaken = 2,      ///< The text uses the new name already, in some case of letters, for something else.
    ReadOtherwise = 3,  ///< The text with the new name would be read in another way, as with an "e" before "+".
};

struct Renaming
{
    RenameRefusal refusal = RenameRefusal::None;
    TextSpan refusedAt;           ///< With NameTaken and ReadOtherwise: the use that stands in the way.
    std::vector<TextEdit> edits;  ///< In the order of the text; empty where the renaming is refused.
};

/// What renames a variable or a name of the host's wherever a text uses it.
MATHEXPR_API Renaming renameInText(const MathExpression& expression, const wchar_t* text, const wchar_t* name,
                                   const wchar_t* newName);

/// A number or a point that is written out, so that a slider or a dragged handle can write another one in its place.
struct TextLiteral
{
    TextSpan span;  ///< With the sign of a number, where one stands before it.
    VALTYPE value;
};

/// The literals of a text, in order. A point is one literal before those of its coordinates, which are numbers as the
/// library writes them (formatValue of the C interface).
MATHEXPR_API std::vector<TextLiteral> getLiterals(const MathExpression& expression, const wchar_t* text);

}
