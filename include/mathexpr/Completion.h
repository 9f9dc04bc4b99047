// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Completion.h - what may stand at the cursor. One of the editor services (EditorServices.h), whose rules apply.
#pragma once

#include "mathexpr/Export.h"
#include "mathexpr/MathExpression.h"
#include "mathexpr/TextEdits.h"
#include "mathexpr/TextTokens.h"
#include "mathexpr/TypingHelp.h"
#include "mathexpr/ValType.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace mathexpr {

/// What a host knows of one of its names.
struct NameNotes
{
    ValueKind kind = ValueKind::Unknown;  ///< Number or Point.
    std::wstring description;             ///< One line; may be empty.
    std::wstring unavailable;             ///< Why the name must not be used here; empty where it may be.
};

/// Implemented by a host that knows more of its names than how they are written.
class IMathExprNameNotes
{
public:
    /// Slot 0: never called by the library.
    virtual ~IMathExprNameNotes() = default;

    /// Slot 1: called for each name that the host lists (IMathExprNameSource), since what has been typed is matched with
    /// its description, too; of a NameIndex for those names alone that match or stand in the text.
    virtual NameNotes getNotes(const wchar_t* name) const = 0;
};

struct CompletionOptions
{
    std::uint32_t maxCount = 200;
    /// Names and functions that the user has chosen lately, the newest first: they come before others alike.
    std::vector<std::wstring> recent;
    const IMathExprNameNotes* notes = nullptr;
};

struct CompletionItem
{
    TokenKind kind = TokenKind::Variable;  ///< Constant, Function, Variable or HostName.
    std::wstring name;
    TextEdit edit;             ///< A function is inserted as a call that works.
    TextSpan selection;        ///< In the text afterwards: the arguments, to be typed over; else a place.
    std::wstring description;  ///< One line.
    ValueKind valueKind = ValueKind::Unknown;
    std::optional<VALTYPE> value;  ///< Of a constant or variable.
    std::wstring unavailable;      ///< As of NameNotes.
};

/// What may be put at the cursor so that the text up to it, with the item in place and everything open closed, is one
/// that the object accepts; what an item is not defined for counts as accepted, since another value may do. Names of the
/// host's whose kind is unknown come last and are accepted wherever a number or a point is.
///
/// What has been typed is matched with the beginning of a name, then with the beginnings of words in it, then with
/// those of its description and of all that people call the units it converts between (VocabularyUnits.h). Items alike
/// in that come in this order: of the kind that is wanted there, chosen lately, short.
MATHEXPR_API std::vector<CompletionItem> getCompletions(const MathExpression& expression, const wchar_t* text,
                                                        std::uint32_t cursor,
                                                        const CompletionOptions& options = CompletionOptions());

}
