// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// mathexpr_editor.h - editor services in C: what an edit box needs while its user types an expression.
//
//     mathexpr_tokens tokens = {sizeof(tokens), 0, NULL, 0};
//     if (mathexpr_get_tokens_utf8(expression, "2*sin(30", MATHEXPR_ZERO_TERMINATED, &tokens) == MATHEXPR_OK)
//         ...  // tokens.tokens[2] is a MATHEXPR_TOKEN_FUNCTION from 2 on, 3 bytes long
//
// The rules of mathexpr.h apply: status, NULL, text, structures that begin with size, threads, handles. The following rules
// apply to every function of this header as well.
//
// Texts. Any text is accepted, also an incomplete or invalid one.
//
// Cursors. A cursor is an index into the text, in code units of the function's encoding. A cursor inside a character means the
// start of that character; a cursor beyond the end means the end.
//
// Effects. No function changes the expression: its program, variables, diagnostic and pending assignment stay as they are. No
// message is shown. lookup is called only if the caller passes MATHEXPR_MAY_ASK_HOST; get_name may be called to enumerate all
// names. The expression's limits apply.
//
// Results. The memory behind a result is owned by the expression. It stays valid until the same function is called on the
// expression again in the same encoding, or the expression is destroyed. A pointer in a result is NULL only if its array is
// empty.
//
// Status. In addition to the statuses that its declaration lists, every function can return MATHEXPR_OK,
// MATHEXPR_NULL_ARGUMENT, MATHEXPR_STALE_HANDLE, MATHEXPR_BUSY (called from a callback that it invoked), MATHEXPR_BAD_SIZE,
// MATHEXPR_BAD_UTF8 or MATHEXPR_BAD_UTF16, MATHEXPR_ZERO_IN_TEXT, MATHEXPR_HOST_CALLBACK_..., MATHEXPR_OUT_OF_MEMORY.
//
// Sections: tokens; edits (format, references, rename, literals); diagnostics; signature and hover; completion; large
// models; typesetting.
#pragma once

#include "mathexpr.h"

// ----- tokens ---------------------------------------------------------------

/// Kind of a token, as the compiler reads it.
enum
{
    MATHEXPR_TOKEN_NUMBER = 0,
    MATHEXPR_TOKEN_CONSTANT = 1,
    MATHEXPR_TOKEN_FUNCTION = 2,  ///< A function's name, followed by a bracket.
    MATHEXPR_TOKEN_VARIABLE = 3,
    MATHEXPR_TOKEN_HOST_NAME = 4,     ///< A name that the host has supplied or offers for suggestions.
    MATHEXPR_TOKEN_UNKNOWN_NAME = 5,  ///< Includes a function's name without a bracket.
    MATHEXPR_TOKEN_OPERATOR = 6,
    MATHEXPR_TOKEN_BRACKET = 7,  ///< "(" or ")".
    MATHEXPR_TOKEN_SEPARATOR = 8,
    MATHEXPR_TOKEN_ASSIGNED_NAME = 9,
    MATHEXPR_TOKEN_ASSIGNMENT_SIGN = 10,
    MATHEXPR_TOKEN_BLANK = 11,
    MATHEXPR_TOKEN_SHORTHAND = 12,  ///< "[", "]", or the operator "e+". Square brackets pair like round ones.
    MATHEXPR_TOKEN_OTHER = 13,      ///< A "=" that cannot assign; the whole text if it exceeds the length limit.
};

/// The partner of a token that has none.
#define MATHEXPR_NO_PARTNER ((size_t)-1)

/// A token: a span of the text. 32 bytes, which later versions keep.
typedef struct mathexpr_token
{
    uint32_t kind;   ///< MATHEXPR_TOKEN_...
    uint32_t depth;  ///< Number of brackets open around the token.
    size_t start;    ///< In code units of the call's encoding, as is length.
    size_t length;
    size_t partner;  ///< Of a round or square bracket: index of the matching one, or MATHEXPR_NO_PARTNER.
} mathexpr_token;

typedef struct mathexpr_tokens
{
    uint32_t size;      ///< sizeof(mathexpr_tokens).
    uint32_t reserved;  ///< Set to 0.
    const mathexpr_token* tokens;
    size_t token_count;
} mathexpr_tokens;

/// Splits a text into tokens. They cover the text without gaps.
/// @param tokens  its size is read, its other members are written
MATHEXPR_C_API mathexpr_status mathexpr_get_tokens_utf8(mathexpr_expression* expression, const char* text,
                                                        size_t length, mathexpr_tokens* tokens) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_get_tokens_utf16(mathexpr_expression* expression, const mathexpr_char16* text,
                                                         size_t length, mathexpr_tokens* tokens) MATHEXPR_NOEXCEPT;

// ----- edits ----------------------------------------------------------------

/// A text owned by the expression.
typedef struct mathexpr_text_utf8
{
    uint32_t size;      ///< sizeof(mathexpr_text_utf8).
    uint32_t reserved;  ///< Set to 0.
    const char* text;   ///< Zero-terminated.
    size_t text_length;
} mathexpr_text_utf8;

/// The same in UTF-16.
typedef struct mathexpr_text_utf16
{
    uint32_t size;                ///< sizeof(mathexpr_text_utf16).
    uint32_t reserved;            ///< Set to 0.
    const mathexpr_char16* text;  ///< Zero-terminated.
    size_t text_length;
} mathexpr_text_utf16;

/// Rewrites a text with uniform spacing: a blank on both sides of "=" and of every binary operator except "^", a blank after
/// each separator, no other blanks. The result compiles to the same program; formatting it again does not change it. If the
/// result would exceed the expression's length limit, the text is returned unchanged.
/// @param formatted  its size is read, its other members are written
MATHEXPR_C_API mathexpr_status mathexpr_format_text_utf8(mathexpr_expression* expression, const char* text,
                                                         size_t length,
                                                         mathexpr_text_utf8* formatted) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_format_text_utf16(mathexpr_expression* expression, const mathexpr_char16* text,
                                                          size_t length,
                                                          mathexpr_text_utf16* formatted) MATHEXPR_NOEXCEPT;

/// 16 bytes, which later versions keep.
typedef struct mathexpr_span
{
    size_t start;
    size_t length;
} mathexpr_span;

typedef struct mathexpr_spans
{
    uint32_t size;      ///< sizeof(mathexpr_spans).
    uint32_t reserved;  ///< Set to 0.
    const mathexpr_span* spans;
    size_t span_count;
} mathexpr_spans;

/// Finds all uses of a name that denotes a value: a variable, a name of the host, an unknown name or a constant. Names of
/// constants are case-sensitive, all others ignore case. Assignments count as uses.
/// @param spans  its size is read, its other members are written
MATHEXPR_C_API mathexpr_status mathexpr_find_references_utf8(mathexpr_expression* expression, const char* text,
                                                             size_t length, const char* name, size_t name_length,
                                                             mathexpr_spans* spans) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_find_references_utf16(mathexpr_expression* expression,
                                                              const mathexpr_char16* text, size_t length,
                                                              const mathexpr_char16* name, size_t name_length,
                                                              mathexpr_spans* spans) MATHEXPR_NOEXCEPT;

/// Why a renaming is refused.
enum
{
    MATHEXPR_RENAME_DONE = 0,
    MATHEXPR_RENAME_NOT_A_NAME = 1,      ///< The new name cannot be a variable.
    MATHEXPR_RENAME_NAME_TAKEN = 2,      ///< The text already uses the new name, ignoring case.
    MATHEXPR_RENAME_READ_OTHERWISE = 3,  ///< The new name would be split or read as something else, such as an "e"
                                         ///< before "+".
};

/// Replaces a span of a text. 32 bytes, which later versions keep.
typedef struct mathexpr_edit_utf8
{
    size_t start;
    size_t length;
    const char* replacement;  ///< Zero-terminated.
    size_t replacement_length;
} mathexpr_edit_utf8;

/// The same in UTF-16.
typedef struct mathexpr_edit_utf16
{
    size_t start;
    size_t length;
    const mathexpr_char16* replacement;  ///< Zero-terminated.
    size_t replacement_length;
} mathexpr_edit_utf16;

typedef struct mathexpr_renaming_utf8
{
    uint32_t size;                    ///< sizeof(mathexpr_renaming_utf8).
    uint32_t refusal;                 ///< MATHEXPR_RENAME_...
    mathexpr_span refused_at;         ///< The conflicting use, with the last two refusals.
    const mathexpr_edit_utf8* edits;  ///< In text order; none if the renaming is refused.
    size_t edit_count;
} mathexpr_renaming_utf8;

/// The same in UTF-16.
typedef struct mathexpr_renaming_utf16
{
    uint32_t size;                     ///< sizeof(mathexpr_renaming_utf16).
    uint32_t refusal;                  ///< MATHEXPR_RENAME_...
    mathexpr_span refused_at;          ///< The conflicting use, with the last two refusals.
    const mathexpr_edit_utf16* edits;  ///< In text order; none if the renaming is refused.
    size_t edit_count;
} mathexpr_renaming_utf16;

/// Computes the edits that rename a variable or a name of the host at all its uses in a text.
/// @param renaming  its size is read, its other members are written
MATHEXPR_C_API mathexpr_status mathexpr_rename_in_text_utf8(mathexpr_expression* expression, const char* text,
                                                            size_t length, const char* name, size_t name_length,
                                                            const char* new_name, size_t new_name_length,
                                                            mathexpr_renaming_utf8* renaming) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_rename_in_text_utf16(mathexpr_expression* expression,
                                                             const mathexpr_char16* text, size_t length,
                                                             const mathexpr_char16* name, size_t name_length,
                                                             const mathexpr_char16* new_name, size_t new_name_length,
                                                             mathexpr_renaming_utf16* renaming) MATHEXPR_NOEXCEPT;

/// A literal number or point. 48 bytes, which later versions keep.
typedef struct mathexpr_literal
{
    size_t start;  ///< Includes the sign of a number.
    size_t length;
    mathexpr_value value;
} mathexpr_literal;

typedef struct mathexpr_literals
{
    uint32_t size;      ///< sizeof(mathexpr_literals).
    uint32_t reserved;  ///< Set to 0.
    const mathexpr_literal* literals;
    size_t literal_count;
} mathexpr_literals;

/// Lists the literals of a text in order, so that a slider or a dragged handle can replace one. A point is listed before its
/// coordinates.
/// @param literals  its size is read, its other members are written
MATHEXPR_C_API mathexpr_status mathexpr_get_literals_utf8(mathexpr_expression* expression, const char* text,
                                                          size_t length, mathexpr_literals* literals) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_get_literals_utf16(mathexpr_expression* expression, const mathexpr_char16* text,
                                                           size_t length,
                                                           mathexpr_literals* literals) MATHEXPR_NOEXCEPT;

// ----- diagnostics ----------------------------------------------------------

/// State of a text that is being typed.
enum
{
    MATHEXPR_TYPING_COMPLETE = 0,    ///< The text compiles.
    MATHEXPR_TYPING_UNFINISHED = 1,  ///< The text is valid so far, but incomplete.
    MATHEXPR_TYPING_WRONG = 2,
};

/// Flag of the editor services: lookup may be called for names that are not known otherwise.
#define MATHEXPR_MAY_ASK_HOST 1

/// Checks whether a text would compile, without compiling it into the expression. A name that get_name or the name index lists
/// counts as known, whatever its value.
/// @param flags       MATHEXPR_MAY_ASK_HOST or 0; otherwise MATHEXPR_BAD_OPTION
/// @param state       receives MATHEXPR_TYPING_...
/// @param diagnostic  its size is read; its other members receive the failure that compiling the text would give
MATHEXPR_C_API mathexpr_status mathexpr_diagnose_text_utf8(mathexpr_expression* expression, const char* text,
                                                           size_t length, uint32_t flags, uint32_t* state,
                                                           mathexpr_diagnostic_utf8* diagnostic) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_diagnose_text_utf16(mathexpr_expression* expression,
                                                            const mathexpr_char16* text, size_t length, uint32_t flags,
                                                            uint32_t* state,
                                                            mathexpr_diagnostic_utf16* diagnostic) MATHEXPR_NOEXCEPT;

// ----- signature and hover --------------------------------------------------

/// Kind of value: of an argument, a parameter or a name.
enum
{
    MATHEXPR_VALUE_UNKNOWN = 0,
    MATHEXPR_VALUE_NUMBER = 1,
    MATHEXPR_VALUE_POINT = 2,
    MATHEXPR_VALUE_EITHER = 3,
};

/// One overload of a function. 40 bytes, which later versions keep.
typedef struct mathexpr_overload_utf8
{
    const char* help;               ///< The usage, such as "min(x,y)". All texts are zero-terminated.
    const char* description;        ///< One line.
    const char* const* parameters;  ///< Names of the parameters; a final "..." means that more may follow.
    size_t parameter_count;
    uint32_t parameter_kind;  ///< MATHEXPR_VALUE_...
    uint32_t reserved;        ///< Set to 0.
} mathexpr_overload_utf8;

/// The same in UTF-16.
typedef struct mathexpr_overload_utf16
{
    const mathexpr_char16* help;               ///< The usage, such as "min(x,y)". All texts are zero-terminated.
    const mathexpr_char16* description;        ///< One line.
    const mathexpr_char16* const* parameters;  ///< Names of the parameters; a final "..." means that more may follow.
    size_t parameter_count;
    uint32_t parameter_kind;  ///< MATHEXPR_VALUE_...
    uint32_t reserved;        ///< Set to 0.
} mathexpr_overload_utf16;

/// The function call that contains a cursor. Outside calls, function is empty and there are no overloads.
typedef struct mathexpr_signature_utf8
{
    uint32_t size;         ///< sizeof(mathexpr_signature_utf8).
    uint32_t argument;     ///< Index of the argument at the cursor, from 0.
    mathexpr_span name;    ///< Span of the function's name, or of the square bracket.
    const char* function;  ///< "point" for a square bracket. All texts are zero-terminated.
    const char* unit;      ///< Unit of the argument, such as "degree"; empty if it has none.
    const mathexpr_overload_utf8* overloads;
    size_t overload_count;
    uint32_t active_overload;  ///< Index of the first overload that has this argument; of the last if none has.
    uint32_t wanted;           ///< MATHEXPR_VALUE_...: the required kind of the argument at the cursor.
} mathexpr_signature_utf8;

/// The same in UTF-16.
typedef struct mathexpr_signature_utf16
{
    uint32_t size;                    ///< sizeof(mathexpr_signature_utf16).
    uint32_t argument;                ///< Index of the argument at the cursor, from 0.
    mathexpr_span name;               ///< Span of the function's name, or of the square bracket.
    const mathexpr_char16* function;  ///< "point" for a square bracket. All texts are zero-terminated.
    const mathexpr_char16* unit;      ///< Unit of the argument, such as "degree"; empty if it has none.
    const mathexpr_overload_utf16* overloads;
    size_t overload_count;
    uint32_t active_overload;  ///< Index of the first overload that has this argument; of the last if none has.
    uint32_t wanted;           ///< MATHEXPR_VALUE_...: the required kind of the argument at the cursor.
} mathexpr_signature_utf16;

/// Finds the innermost function call that is open at a cursor.
/// @param signature  its size is read, its other members are written
MATHEXPR_C_API mathexpr_status mathexpr_get_signature_utf8(mathexpr_expression* expression, const char* text,
                                                           size_t length, size_t cursor,
                                                           mathexpr_signature_utf8* signature) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_get_signature_utf16(mathexpr_expression* expression,
                                                            const mathexpr_char16* text, size_t length, size_t cursor,
                                                            mathexpr_signature_utf16* signature) MATHEXPR_NOEXCEPT;

/// The token under a cursor. The span is empty if there is no token, or only a blank.
typedef struct mathexpr_hover_utf8
{
    uint32_t size;  ///< sizeof(mathexpr_hover_utf8).
    uint32_t kind;  ///< MATHEXPR_TOKEN_...
    mathexpr_span span;
    const char* name;            ///< All texts are zero-terminated. A text that does not apply is empty.
    const char* help;            ///< The usage of an operator or function.
    const char* description;     ///< One line.
    const char* domain;          ///< The function's message for an argument outside its domain.
    const char* unit;            ///< Unit of a function's argument.
    const char* example;         ///< A valid call of the function.
    uint32_t has_example_value;  ///< 1 or 0, as has_value.
    uint32_t has_value;
    mathexpr_value example_value;  ///< Value of the example.
    mathexpr_value value;          ///< Of a number, a constant, a name, a function call or a bracketed part.
    mathexpr_span value_span;      ///< The part of the text that has this value.
} mathexpr_hover_utf8;

/// The same in UTF-16.
typedef struct mathexpr_hover_utf16
{
    uint32_t size;  ///< sizeof(mathexpr_hover_utf16).
    uint32_t kind;  ///< MATHEXPR_TOKEN_...
    mathexpr_span span;
    const mathexpr_char16* name;         ///< All texts are zero-terminated. A text that does not apply is empty.
    const mathexpr_char16* help;         ///< The usage of an operator or function.
    const mathexpr_char16* description;  ///< One line.
    const mathexpr_char16* domain;       ///< The function's message for an argument outside its domain.
    const mathexpr_char16* unit;         ///< Unit of a function's argument.
    const mathexpr_char16* example;      ///< A valid call of the function.
    uint32_t has_example_value;          ///< 1 or 0, as has_value.
    uint32_t has_value;
    mathexpr_value example_value;  ///< Value of the example.
    mathexpr_value value;          ///< Of a number, a constant, a name, a function call or a bracketed part.
    mathexpr_span value_span;      ///< The part of the text that has this value.
} mathexpr_hover_utf16;

/// Describes the token at a cursor: the one that begins at the cursor or contains it, otherwise the one that ends there.
/// @param flags  MATHEXPR_MAY_ASK_HOST or 0; otherwise MATHEXPR_BAD_OPTION
/// @param hover  its size is read, its other members are written
MATHEXPR_C_API mathexpr_status mathexpr_get_hover_utf8(mathexpr_expression* expression, const char* text, size_t length,
                                                       size_t cursor, uint32_t flags,
                                                       mathexpr_hover_utf8* hover) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_get_hover_utf16(mathexpr_expression* expression, const mathexpr_char16* text,
                                                        size_t length, size_t cursor, uint32_t flags,
                                                        mathexpr_hover_utf16* hover) MATHEXPR_NOEXCEPT;

// ----- completion -----------------------------------------------------------

/// The host's notes on one of its names. All members but size are 0 on entry to the callback.
typedef struct mathexpr_name_notes_utf8
{
    uint32_t size;            ///< sizeof(mathexpr_name_notes_utf8), set by the caller.
    uint32_t value_kind;      ///< MATHEXPR_VALUE_...
    const char* description;  ///< One line. All texts are zero-terminated, owned by the host, and valid until the next
                              ///< call; NULL is the empty text.
    const char* unavailable;  ///< Why the name must not be used here; empty if it may be used.
} mathexpr_name_notes_utf8;

/// The same in UTF-16.
typedef struct mathexpr_name_notes_utf16
{
    uint32_t size;        ///< sizeof(mathexpr_name_notes_utf16), set by the caller.
    uint32_t value_kind;  ///< MATHEXPR_VALUE_...
    const mathexpr_char16*
        description;  ///< One line. All texts are zero-terminated, owned by the host, and valid until the next call;
                      ///< NULL is the empty text.
    const mathexpr_char16* unavailable;  ///< Why the name must not be used here; empty if it may be used.
} mathexpr_name_notes_utf16;

/// Returns the host's notes on a name. Called for every name that get_name lists, since completion also matches descriptions;
/// for names of an index only if they match or are used in the text.
/// @param context  the context of the completion options
/// @param name     zero-terminated, owned by the library, valid during the call only
/// @param notes    receives the notes
/// @return MATHEXPR_LOOKUP_FOUND; MATHEXPR_LOOKUP_NOT_KNOWN: notes is ignored; MATHEXPR_LOOKUP_REFUSED: the completion call
///         returns MATHEXPR_HOST_CALLBACK_REFUSED. With any other number, an unlisted kind or ill-formed text it returns
///         MATHEXPR_HOST_CALLBACK_BAD_ANSWER.
typedef int32_t (*mathexpr_get_name_notes_utf8)(void* context, const char* name, size_t length,
                                                mathexpr_name_notes_utf8* notes);
typedef int32_t (*mathexpr_get_name_notes_utf16)(void* context, const mathexpr_char16* name, size_t length,
                                                 mathexpr_name_notes_utf16* notes);

/// Options of a completion. All members but size may be 0.
typedef struct mathexpr_completion_options_utf8
{
    uint32_t size;              ///< sizeof(mathexpr_completion_options_utf8).
    uint32_t max_count;         ///< Upper bound on the number of items; 0 means 200.
    const char* const* recent;  ///< Recently chosen names, the newest first, each zero-terminated.
    size_t recent_count;
    void* context;                           ///< Passed to get_notes, never dereferenced.
    mathexpr_get_name_notes_utf8 get_notes;  ///< NULL: there are no notes.
} mathexpr_completion_options_utf8;

/// The same in UTF-16.
typedef struct mathexpr_completion_options_utf16
{
    uint32_t size;                         ///< sizeof(mathexpr_completion_options_utf16).
    uint32_t max_count;                    ///< Upper bound on the number of items; 0 means 200.
    const mathexpr_char16* const* recent;  ///< Recently chosen names, the newest first, each zero-terminated.
    size_t recent_count;
    void* context;
    mathexpr_get_name_notes_utf16 get_notes;
} mathexpr_completion_options_utf16;

/// One proposal. 120 bytes, which later versions keep.
typedef struct mathexpr_completion_utf8
{
    uint32_t kind;            ///< MATHEXPR_TOKEN_CONSTANT, _FUNCTION, _VARIABLE or _HOST_NAME.
    uint32_t value_kind;      ///< MATHEXPR_VALUE_...
    mathexpr_edit_utf8 edit;  ///< Inserts the name; a function is inserted as a valid call.
    mathexpr_span selection;  ///< What to select after the edit: a call's arguments, otherwise an empty span.
    const char* name;         ///< All texts are zero-terminated.
    const char* description;  ///< One line.
    uint32_t has_value;       ///< 1 for a constant or variable, else 0.
    uint32_t reserved;        ///< Set to 0.
    mathexpr_value value;
    const char* unavailable;  ///< Why the host does not want the name used here; otherwise empty.
} mathexpr_completion_utf8;

/// The same in UTF-16.
typedef struct mathexpr_completion_utf16
{
    uint32_t kind;                       ///< MATHEXPR_TOKEN_CONSTANT, _FUNCTION, _VARIABLE or _HOST_NAME.
    uint32_t value_kind;                 ///< MATHEXPR_VALUE_...
    mathexpr_edit_utf16 edit;            ///< Inserts the name; a function is inserted as a valid call.
    mathexpr_span selection;             ///< What to select after the edit: a call's arguments, otherwise an empty
                                         ///< span.
    const mathexpr_char16* name;         ///< All texts are zero-terminated.
    const mathexpr_char16* description;  ///< One line.
    uint32_t has_value;                  ///< 1 for a constant or variable, else 0.
    uint32_t reserved;                   ///< Set to 0.
    mathexpr_value value;
    const mathexpr_char16* unavailable;  ///< Why the host does not want the name used here; otherwise empty.
} mathexpr_completion_utf16;

typedef struct mathexpr_completions_utf8
{
    uint32_t size;      ///< sizeof(mathexpr_completions_utf8).
    uint32_t reserved;  ///< Set to 0.
    const mathexpr_completion_utf8* items;
    size_t item_count;
} mathexpr_completions_utf8;

/// The same in UTF-16.
typedef struct mathexpr_completions_utf16
{
    uint32_t size;      ///< sizeof(mathexpr_completions_utf16).
    uint32_t reserved;  ///< Set to 0.
    const mathexpr_completion_utf16* items;
    size_t item_count;
} mathexpr_completions_utf16;

/// Proposes items for the cursor. An item is proposed if the text up to the cursor, with the item inserted and all open
/// brackets closed, would be accepted; a value outside a function's domain counts as accepted. The typed word is matched with
/// the beginnings of the name, of the words in it, of the words of its description, and of all names of the units that it
/// converts between. Names of the host that are unavailable or of unknown kind come last; a name of unknown kind is proposed
/// wherever a number or a point is accepted.
/// @param options      read during the call; NULL means all 0
/// @param completions  its size is read, its other members are written
MATHEXPR_C_API mathexpr_status mathexpr_get_completions_utf8(mathexpr_expression* expression, const char* text,
                                                             size_t length, size_t cursor,
                                                             const mathexpr_completion_options_utf8* options,
                                                             mathexpr_completions_utf8* completions) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_get_completions_utf16(
    mathexpr_expression* expression, const mathexpr_char16* text, size_t length, size_t cursor,
    const mathexpr_completion_options_utf16* options, mathexpr_completions_utf16* completions) MATHEXPR_NOEXCEPT;

// ----- large models ----------------------------------------------------------

/// A sorted index of names, for models too large to enumerate at every keystroke; get_name need not list them. Completion
/// considers all names in recent that match the typed word, and the first other matches in alphabetical order, as many as it may
/// return, but at least 256. Descriptions are not searched. Created by mathexpr_create_name_index, owned by the caller, destroyed
/// by mathexpr_destroy_name_index. Several expressions may share an index; the index and these expressions are used by one
/// thread at a time.
typedef struct mathexpr_name_index mathexpr_name_index;

/// Creates an empty index.
/// @param index  receives the handle
/// @return MATHEXPR_OK, MATHEXPR_NULL_ARGUMENT, MATHEXPR_OUT_OF_MEMORY
MATHEXPR_C_API mathexpr_status mathexpr_create_name_index(mathexpr_name_index** index) MATHEXPR_NOEXCEPT;

/// Destroys an index. Expressions that use it keep access to its names.
/// @param index  NULL has no effect
/// @return MATHEXPR_OK, MATHEXPR_STALE_HANDLE
MATHEXPR_C_API mathexpr_status mathexpr_destroy_name_index(mathexpr_name_index* index) MATHEXPR_NOEXCEPT;

/// Adds a name, or replaces its notes. The empty name has no effect.
/// @param notes  copied; completion shows them unless get_notes supplies others; NULL means no notes
/// @return MATHEXPR_OK, MATHEXPR_NULL_ARGUMENT, MATHEXPR_STALE_HANDLE, MATHEXPR_BAD_SIZE, MATHEXPR_BAD_OPTION (an unlisted
///         kind), MATHEXPR_BAD_UTF8 or MATHEXPR_BAD_UTF16, MATHEXPR_ZERO_IN_TEXT, MATHEXPR_OUT_OF_MEMORY
MATHEXPR_C_API mathexpr_status mathexpr_add_indexed_name_utf8(mathexpr_name_index* index, const char* name,
                                                              size_t length,
                                                              const mathexpr_name_notes_utf8* notes) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_add_indexed_name_utf16(mathexpr_name_index* index, const mathexpr_char16* name,
                                                               size_t length, const mathexpr_name_notes_utf16* notes)
    MATHEXPR_NOEXCEPT;

/// Removes a name.
/// @return as mathexpr_add_indexed_name_utf8; MATHEXPR_NOT_FOUND if the index does not hold the name
MATHEXPR_C_API mathexpr_status mathexpr_remove_indexed_name_utf8(mathexpr_name_index* index, const char* name,
                                                                 size_t length) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_remove_indexed_name_utf16(mathexpr_name_index* index,
                                                                  const mathexpr_char16* name,
                                                                  size_t length) MATHEXPR_NOEXCEPT;

/// Attaches an index to an expression, in addition to get_name. Later changes of the index take effect at the next call.
/// @param index  NULL detaches the present index
/// @return MATHEXPR_OK, MATHEXPR_NULL_ARGUMENT (expression), MATHEXPR_STALE_HANDLE (either), MATHEXPR_BUSY
MATHEXPR_C_API mathexpr_status mathexpr_set_name_index(mathexpr_expression* expression,
                                                       const mathexpr_name_index* index) MATHEXPR_NOEXCEPT;

// ----- typesetting -----------------------------------------------------------

enum
{
    MATHEXPR_NOTATION_LATEX = 0,   ///< For LaTeX math mode with the package amsmath; accepted by MathJax and KaTeX.
    MATHEXPR_NOTATION_MATHML = 1,  ///< Presentation MathML: one `math` element, well-formed for any text.
};

/// Typesets a text: fractions, roots, powers, "p_1" with an index, points as columns. Brackets are kept where grouping requires
/// them. Names need not be known. A text that is not an expression is set verbatim in a monospaced font.
/// @param notation  MATHEXPR_NOTATION_...; otherwise MATHEXPR_BAD_OPTION
/// @param typeset   its size is read, its other members are written
MATHEXPR_C_API mathexpr_status mathexpr_typeset_text_utf8(mathexpr_expression* expression, const char* text,
                                                          size_t length, uint32_t notation,
                                                          mathexpr_text_utf8* typeset) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_typeset_text_utf16(mathexpr_expression* expression, const mathexpr_char16* text,
                                                           size_t length, uint32_t notation,
                                                           mathexpr_text_utf16* typeset) MATHEXPR_NOEXCEPT;
