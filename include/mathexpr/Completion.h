// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Completion.h - proposals for the cursor of an edit box. Part of the editor services; the rules in EditorServices.h
// apply.
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

/// The host's notes on one of its names.
struct NameNotes
{
    ValueKind kind = ValueKind::Unknown;  ///< Number or Point; Unknown if the host does not know.
    std::wstring description;             ///< One line; may be empty.
    std::wstring unavailable;             ///< Why the name must not be used here; empty if it may be used.
};

/// Implemented by a host that has notes on its names.
class IMathExprNameNotes
{
public:
    /// Slot 0: never called by the library.
    virtual ~IMathExprNameNotes() = default;

    /// Slot 1: called for every name that the name source lists, since completion also matches descriptions; for names
    /// of a NameIndex only if they match or are used in the text.
    virtual NameNotes getNotes(const wchar_t* name) const = 0;
};

struct CompletionOptions
{
    std::uint32_t maxCount = 200;
    /// Recently chosen names and functions, the newest first; they precede otherwise equal items.
    std::vector<std::wstring> recent;
    const IMathExprNameNotes* notes = nullptr;
};

struct CompletionItem
{
    TokenKind kind = TokenKind::Variable;  ///< Constant, Function, Variable or HostName.
    std::wstring name;
    TextEdit edit;             ///< Inserts the name; a function is inserted as a valid call.
    TextSpan selection;        ///< What to select after the edit: a call's arguments, otherwise an empty span.
    std::wstring description;  ///< One line.
    ValueKind valueKind = ValueKind::Unknown;
    std::optional<VALTYPE> value;  ///< Of a constant or variable.
    std::wstring unavailable;      ///< As in NameNotes.
};

/// Proposes items for the cursor. An item is proposed if the text up to the cursor, with the item inserted and all open
/// brackets closed, would be accepted; a value outside an item's domain counts as accepted. Names of the host of unknown
/// kind come last; they are proposed wherever a number or a point is accepted.
///
/// The typed word is matched with the beginning of the name, then with the words in the name, then with the words of the
/// description and of all names of the units that the item converts between (VocabularyUnits.h). Among equal matches,
/// items of the required kind come first, then recently chosen ones, then shorter ones.
MATHEXPR_API std::vector<CompletionItem> getCompletions(const MathExpression& expression, const wchar_t* text,
                                                        std::uint32_t cursor,
                                                        const CompletionOptions& options = CompletionOptions());

}
