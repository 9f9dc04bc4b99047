// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// mathexpr_editor.h - editor services in C: what an edit box needs while its user types an expression.
//
//     mathexpr_tokens tokens = {sizeof(tokens), 0, NULL, 0};
//     if (mathexpr_get_tokens_utf8(expression, "2*sin(30", MATHEXPR_ZERO_TERMINATED, &tokens) == MATHEXPR_OK)
//         ...  // tokens.tokens[2] is a MATHEXPR_TOKEN_FUNCTION from 2 on, 3 bytes long
//
// The rules of mathexpr.h apply: status, NULL, text, structures that begin with size, threads, handles. Besides, these rules
// apply to every function of this header:
//
// Texts. Any text is accepted, broken or half typed.
//
// Cursors. A cursor is an index into the text, in code units of the function's encoding. One within a character counts as before
// it, one beyond the end as the end.
//
// Effects. Nothing in the expression changes: neither its program nor its variables, diagnostic or pending assignment. No
// message is shown. The host's lookup is called only where a call passes MATHEXPR_MAY_ASK_HOST; get_name may be called for all
// names. The expression's limits hold.
//
// Answers. What an answer points at is owned by the expression, and valid until the same function is called on it again in the
// same encoding or the expression is destroyed. Only pointers to arrays without elements are NULL.
//
// Status. Besides the statuses that a function names, each returns MATHEXPR_OK, MATHEXPR_NULL_ARGUMENT, MATHEXPR_STALE_HANDLE,
// MATHEXPR_BUSY (in one of the callbacks that it calls), MATHEXPR_BAD_SIZE, MATHEXPR_BAD_UTF8 or MATHEXPR_BAD_UTF16,
// MATHEXPR_ZERO_IN_TEXT, MATHEXPR_HOST_CALLBACK_..., MATHEXPR_OUT_OF_MEMORY.
//
// Sections: tokens; edits (format, references, rename, literals); diagnostics; signature and hover; completion; large
// models; typesetting.
#pragma once

#include "mathexpr.h"

// ----- tokens ---------------------------------------------------------------

/// What the compiler takes a token for.
enum
{
    MATHEXPR_TOKEN_NUMBER = 0,
    MATHEXPR_TOKEN_CONSTANT = 1,
    MATHEXPR_TOKEN_FUNCTION = 2,  ///< A registered name before a bracket.
    MATHEXPR_TOKEN_VARIABLE = 3,
    MATHEXPR_TOKEN_HOST_NAME = 4,     ///< A name that the host offers, or has answered.
    MATHEXPR_TOKEN_UNKNOWN_NAME = 5,  ///< Also a function's name without its bracket.
    MATHEXPR_TOKEN_OPERATOR = 6,
    MATHEXPR_TOKEN_BRACKET = 7,  ///< "(" or ")".
    MATHEXPR_TOKEN_SEPARATOR = 8,
    MATHEXPR_TOKEN_ASSIGNED_NAME = 9,
    MATHEXPR_TOKEN_ASSIGNMENT_SIGN = 10,
    MATHEXPR_TOKEN_BLANK = 11,
    MATHEXPR_TOKEN_SHORTHAND = 12,  ///< "[" and "]", which are brackets, too, or the operator "e+".
    MATHEXPR_TOKEN_OTHER = 13,      ///< A "=" that cannot assign, and all of a text that is longer than the limit.
};

/// As the partner of a token: there is none.
#define MATHEXPR_NO_PARTNER ((size_t)-1)

/// A stretch of a text. 32 bytes that never grow.
typedef struct mathexpr_token
{
    uint32_t kind;   ///< MATHEXPR_TOKEN_...
    uint32_t depth;  ///< How many brackets are open around it.
    size_t start;    ///< In units of the encoding of the call, as the next one.
    size_t length;
    size_t partner;  ///< Of a bracket, round or square: the index of the one that it pairs with.
} mathexpr_token;

typedef struct mathexpr_tokens
{
    uint32_t size;      ///< sizeof(mathexpr_tokens).
    uint32_t reserved;  ///< Set to 0.
    const mathexpr_token* tokens;
    size_t token_count;
} mathexpr_tokens;

/// Splits a text into tokens, which cover it without a gap.
/// @param tokens  its size is read, the rest filled
MATHEXPR_C_API mathexpr_status mathexpr_get_tokens_utf8(mathexpr_expression* expression, const char* text,
                                                        size_t length, mathexpr_tokens* tokens) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_get_tokens_utf16(mathexpr_expression* expression, const mathexpr_char16* text,
                                                         size_t length, mathexpr_tokens* tokens) MATHEXPR_NOEXCEPT;

// ----- edits ----------------------------------------------------------------

/// A text that the library made.
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

/// Gives the text with even spacing: blanks around assignment and around operators between two operands but "^", one
/// behind a separator, no other. It compiles to the same program, and formatting it again changes nothing. Unchanged is a
/// text that would become longer than the expression's limit.
/// @param formatted  its size is read, the rest filled
MATHEXPR_C_API mathexpr_status mathexpr_format_text_utf8(mathexpr_expression* expression, const char* text,
                                                         size_t length,
                                                         mathexpr_text_utf8* formatted) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_format_text_utf16(mathexpr_expression* expression, const mathexpr_char16* text,
                                                          size_t length,
                                                          mathexpr_text_utf16* formatted) MATHEXPR_NOEXCEPT;

/// 16 bytes that never grow.
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

/// Finds where a text names a value: a variable, a name of the host's or an unknown one, in any case of letters, assigned
/// to or read; or a constant.
/// @param spans  its size is read, the rest filled
MATHEXPR_C_API mathexpr_status mathexpr_find_references_utf8(mathexpr_expression* expression, const char* text,
                                                             size_t length, const char* name, size_t name_length,
                                                             mathexpr_spans* spans) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_find_references_utf16(mathexpr_expression* expression,
                                                              const mathexpr_char16* text, size_t length,
                                                              const mathexpr_char16* name, size_t name_length,
                                                              mathexpr_spans* spans) MATHEXPR_NOEXCEPT;

/// Why a name is not renamed.
enum
{
    MATHEXPR_RENAME_DONE = 0,
    MATHEXPR_RENAME_NOT_A_NAME = 1,      ///< The new name cannot be a variable.
    MATHEXPR_RENAME_NAME_TAKEN = 2,      ///< The text uses the new name already, in some case of letters.
    MATHEXPR_RENAME_READ_OTHERWISE = 3,  ///< The text with the new name would be read in another way, as with an "e"
                                         ///< before "+".
};

/// What to put in place of a stretch of a text. 32 bytes that never grow.
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
    mathexpr_span refused_at;         ///< The use that stands in the way, with the last two refusals.
    const mathexpr_edit_utf8* edits;  ///< In the order of the text; none where the renaming is refused.
    size_t edit_count;
} mathexpr_renaming_utf8;

/// The same in UTF-16.
typedef struct mathexpr_renaming_utf16
{
    uint32_t size;                     ///< sizeof(mathexpr_renaming_utf16).
    uint32_t refusal;                  ///< MATHEXPR_RENAME_...
    mathexpr_span refused_at;          ///< The use that stands in the way, with the last two refusals.
    const mathexpr_edit_utf16* edits;  ///< In the order of the text; none where the renaming is refused.
    size_t edit_count;
} mathexpr_renaming_utf16;

/// Tells what renames a variable or a name of the host's wherever a text uses it.
/// @param renaming  its size is read, the rest filled
MATHEXPR_C_API mathexpr_status mathexpr_rename_in_text_utf8(mathexpr_expression* expression, const char* text,
                                                            size_t length, const char* name, size_t name_length,
                                                            const char* new_name, size_t new_name_length,
                                                            mathexpr_renaming_utf8* renaming) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_rename_in_text_utf16(mathexpr_expression* expression,
                                                             const mathexpr_char16* text, size_t length,
                                                             const mathexpr_char16* name, size_t name_length,
                                                             const mathexpr_char16* new_name, size_t new_name_length,
                                                             mathexpr_renaming_utf16* renaming) MATHEXPR_NOEXCEPT;

/// A number or a point that is written out. 48 bytes that never grow.
typedef struct mathexpr_literal
{
    size_t start;  ///< With the sign of a number, where one stands before it.
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

/// Lists the literals of a text, in order, so that a slider or a dragged handle can write another one in the place of one.
/// A point is one literal before those of its coordinates.
/// @param literals  its size is read, the rest filled
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
    MATHEXPR_TYPING_UNFINISHED = 1,  ///< Something has to follow; there is no mistake yet.
    MATHEXPR_TYPING_WRONG = 2,
};

/// Flag of the editor services: names that nothing else knows may be looked up with the host's lookup.
#define MATHEXPR_MAY_ASK_HOST 1

/// Tells whether a text would compile, without compiling it into the expression. A name that the host offers counts as
/// known, whatever its value.
/// @param flags       MATHEXPR_MAY_ASK_HOST or 0; MATHEXPR_BAD_OPTION for another
/// @param state       receives MATHEXPR_TYPING_...
/// @param diagnostic  its size is read, the rest filled with the failure that compiling the text would give
MATHEXPR_C_API mathexpr_status mathexpr_diagnose_text_utf8(mathexpr_expression* expression, const char* text,
                                                           size_t length, uint32_t flags, uint32_t* state,
                                                           mathexpr_diagnostic_utf8* diagnostic) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_diagnose_text_utf16(mathexpr_expression* expression,
                                                            const mathexpr_char16* text, size_t length, uint32_t flags,
                                                            uint32_t* state,
                                                            mathexpr_diagnostic_utf16* diagnostic) MATHEXPR_NOEXCEPT;

// ----- signature and hover --------------------------------------------------

/// What kind of value something takes or has.
enum
{
    MATHEXPR_VALUE_UNKNOWN = 0,
    MATHEXPR_VALUE_NUMBER = 1,
    MATHEXPR_VALUE_POINT = 2,
    MATHEXPR_VALUE_EITHER = 3,
};

/// One overload of a function. 40 bytes that never grow.
typedef struct mathexpr_overload_utf8
{
    const char* help;               ///< The usage, such as "min(x,y)". The texts are zero-terminated.
    const char* description;        ///< One line.
    const char* const* parameters;  ///< Their names; a last one of "..." repeats.
    size_t parameter_count;
    uint32_t parameter_kind;  ///< MATHEXPR_VALUE_...
    uint32_t reserved;        ///< Set to 0.
} mathexpr_overload_utf8;

/// The same in UTF-16.
typedef struct mathexpr_overload_utf16
{
    const mathexpr_char16* help;               ///< The usage, such as "min(x,y)". The texts are zero-terminated.
    const mathexpr_char16* description;        ///< One line.
    const mathexpr_char16* const* parameters;  ///< Their names; a last one of "..." repeats.
    size_t parameter_count;
    uint32_t parameter_kind;  ///< MATHEXPR_VALUE_...
    uint32_t reserved;        ///< Set to 0.
} mathexpr_overload_utf16;

/// The call around a cursor. Outside of calls there are no overloads, and function is empty.
typedef struct mathexpr_signature_utf8
{
    uint32_t size;         ///< sizeof(mathexpr_signature_utf8).
    uint32_t argument;     ///< The argument at the cursor, from 0.
    mathexpr_span name;    ///< The function's name in the text, or the square bracket.
    const char* function;  ///< "point" for a square bracket. The texts are zero-terminated.
    const char* unit;      ///< Of the argument, such as "degree"; empty where it has none.
    const mathexpr_overload_utf8* overloads;
    size_t overload_count;
    uint32_t active_overload;  ///< The one that has this argument; the last where none has.
    uint32_t wanted;           ///< MATHEXPR_VALUE_...: what the argument at the cursor has to be.
} mathexpr_signature_utf8;

/// The same in UTF-16.
typedef struct mathexpr_signature_utf16
{
    uint32_t size;                    ///< sizeof(mathexpr_signature_utf16).
    uint32_t argument;                ///< The argument at the cursor, from 0.
    mathexpr_span name;               ///< The function's name in the text, or the square bracket.
    const mathexpr_char16* function;  ///< "point" for a square bracket. The texts are zero-terminated.
    const mathexpr_char16* unit;      ///< Of the argument, such as "degree"; empty where it has none.
    const mathexpr_overload_utf16* overloads;
    size_t overload_count;
    uint32_t active_overload;  ///< The one that has this argument; the last where none has.
    uint32_t wanted;           ///< MATHEXPR_VALUE_...: what the argument at the cursor has to be.
} mathexpr_signature_utf16;

/// Tells which call is open around a cursor.
/// @param signature  its size is read, the rest filled
MATHEXPR_C_API mathexpr_status mathexpr_get_signature_utf8(mathexpr_expression* expression, const char* text,
                                                           size_t length, size_t cursor,
                                                           mathexpr_signature_utf8* signature) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_get_signature_utf16(mathexpr_expression* expression,
                                                            const mathexpr_char16* text, size_t length, size_t cursor,
                                                            mathexpr_signature_utf16* signature) MATHEXPR_NOEXCEPT;

/// What stands under a cursor. Where nothing does, or a blank, the span is empty.
typedef struct mathexpr_hover_utf8
{
    uint32_t size;  ///< sizeof(mathexpr_hover_utf8).
    uint32_t kind;  ///< MATHEXPR_TOKEN_...
    mathexpr_span span;
    const char* name;            ///< The texts are zero-terminated, and empty where there is nothing to say.
    const char* help;            ///< The usage of an operator or function.
    const char* description;     ///< One line.
    const char* domain;          ///< The message of an argument that a function is not defined for.
    const char* unit;            ///< Of a function's argument.
    const char* example;         ///< A call of a function.
    uint32_t has_example_value;  ///< 1 or 0, as the next one.
    uint32_t has_value;
    mathexpr_value example_value;  ///< What the example computes.
    mathexpr_value value;  ///< Of a number, constant or name, of the call of a function, or of what a bracket encloses.
    mathexpr_span value_span;  ///< What has this value.
} mathexpr_hover_utf8;

/// The same in UTF-16.
typedef struct mathexpr_hover_utf16
{
    uint32_t size;  ///< sizeof(mathexpr_hover_utf16).
    uint32_t kind;  ///< MATHEXPR_TOKEN_...
    mathexpr_span span;
    const mathexpr_char16* name;         ///< The texts are zero-terminated, and empty where there is nothing to say.
    const mathexpr_char16* help;         ///< The usage of an operator or function.
    const mathexpr_char16* description;  ///< One line.
    const mathexpr_char16* domain;       ///< The message of an argument that a function is not defined for.
    const mathexpr_char16* unit;         ///< Of a function's argument.
    const mathexpr_char16* example;      ///< A call of a function.
    uint32_t has_example_value;          ///< 1 or 0, as the next one.
    uint32_t has_value;
    mathexpr_value example_value;  ///< What the example computes.
    mathexpr_value value;  ///< Of a number, constant or name, of the call of a function, or of what a bracket encloses.
    mathexpr_span value_span;  ///< What has this value.
} mathexpr_hover_utf16;

/// Explains the token at a cursor, which begins there or contains it, or ends there where none does.
/// @param flags  MATHEXPR_MAY_ASK_HOST or 0; MATHEXPR_BAD_OPTION for another
/// @param hover  its size is read, the rest filled
MATHEXPR_C_API mathexpr_status mathexpr_get_hover_utf8(mathexpr_expression* expression, const char* text, size_t length,
                                                       size_t cursor, uint32_t flags,
                                                       mathexpr_hover_utf8* hover) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_get_hover_utf16(mathexpr_expression* expression, const mathexpr_char16* text,
                                                        size_t length, size_t cursor, uint32_t flags,
                                                        mathexpr_hover_utf16* hover) MATHEXPR_NOEXCEPT;

// ----- completion -----------------------------------------------------------

/// What a host knows of one of its names. All but size is 0 on entry.
typedef struct mathexpr_name_notes_utf8
{
    uint32_t size;            ///< sizeof(mathexpr_name_notes_utf8), set by whoever calls.
    uint32_t value_kind;      ///< MATHEXPR_VALUE_...
    const char* description;  ///< One line. The texts are zero-terminated, owned by the host, and valid until the next
                              ///< call; NULL is the empty text.
    const char* unavailable;  ///< Why the name must not be used here; empty where it may be.
} mathexpr_name_notes_utf8;

/// The same in UTF-16.
typedef struct mathexpr_name_notes_utf16
{
    uint32_t size;        ///< sizeof(mathexpr_name_notes_utf16), set by whoever calls.
    uint32_t value_kind;  ///< MATHEXPR_VALUE_...
    const mathexpr_char16*
        description;  ///< One line. The texts are zero-terminated, owned by the host, and valid until the next
                      ///< call; NULL is the empty text.
    const mathexpr_char16* unavailable;  ///< Why the name must not be used here; empty where it may be.
} mathexpr_name_notes_utf16;

/// Tells what the host knows of a name. Called for each that get_name lists, since what has been typed is matched with its
/// description, too; of a name index for those names alone that match or stand in the text.
/// @param context  that of the options
/// @param name     zero-terminated, owned by the library, valid during the call only
/// @param notes    to be filled
/// @return MATHEXPR_LOOKUP_FOUND; MATHEXPR_LOOKUP_NOT_KNOWN, which ignores notes; or MATHEXPR_LOOKUP_REFUSED, which ends the
///         call with MATHEXPR_HOST_CALLBACK_REFUSED. With anything else, with an unlisted kind or an ill-formed text, the
///         call returns MATHEXPR_HOST_CALLBACK_BAD_ANSWER.
typedef int32_t (*mathexpr_get_name_notes_utf8)(void* context, const char* name, size_t length,
                                                mathexpr_name_notes_utf8* notes);
typedef int32_t (*mathexpr_get_name_notes_utf16)(void* context, const mathexpr_char16* name, size_t length,
                                                 mathexpr_name_notes_utf16* notes);

/// How to complete. All but size may be 0.
typedef struct mathexpr_completion_options_utf8
{
    uint32_t size;              ///< sizeof(mathexpr_completion_options_utf8).
    uint32_t max_count;         ///< 0: 200.
    const char* const* recent;  ///< Names that the user has chosen lately, the newest first, each zero-terminated.
    size_t recent_count;
    void* context;                           ///< Passed to get_notes, never dereferenced.
    mathexpr_get_name_notes_utf8 get_notes;  ///< NULL: nothing is known of the host's names.
} mathexpr_completion_options_utf8;

/// The same in UTF-16.
typedef struct mathexpr_completion_options_utf16
{
    uint32_t size;       ///< sizeof(mathexpr_completion_options_utf16).
    uint32_t max_count;  ///< 0: 200.
    const mathexpr_char16* const*
        recent;  ///< Names that the user has chosen lately, the newest first, each zero-terminated.
    size_t recent_count;
    void* context;
    mathexpr_get_name_notes_utf16 get_notes;
} mathexpr_completion_options_utf16;

/// What may be put at the cursor. 120 bytes that never grow.
typedef struct mathexpr_completion_utf8
{
    uint32_t kind;            ///< MATHEXPR_TOKEN_CONSTANT, _FUNCTION, _VARIABLE or _HOST_NAME.
    uint32_t value_kind;      ///< MATHEXPR_VALUE_...
    mathexpr_edit_utf8 edit;  ///< A function is inserted as a call that works.
    mathexpr_span selection;  ///< In the text afterwards: the arguments, to be typed over; else a place.
    const char* name;         ///< The texts are zero-terminated.
    const char* description;  ///< One line.
    uint32_t has_value;       ///< 1 for a constant or variable, else 0.
    uint32_t reserved;        ///< Set to 0.
    mathexpr_value value;
    const char* unavailable;  ///< Why the host does not want the name here; else empty.
} mathexpr_completion_utf8;

/// The same in UTF-16.
typedef struct mathexpr_completion_utf16
{
    uint32_t kind;                       ///< MATHEXPR_TOKEN_CONSTANT, _FUNCTION, _VARIABLE or _HOST_NAME.
    uint32_t value_kind;                 ///< MATHEXPR_VALUE_...
    mathexpr_edit_utf16 edit;            ///< A function is inserted as a call that works.
    mathexpr_span selection;             ///< In the text afterwards: the arguments, to be typed over; else a place.
    const mathexpr_char16* name;         ///< The texts are zero-terminated.
    const mathexpr_char16* description;  ///< One line.
    uint32_t has_value;                  ///< 1 for a constant or variable, else 0.
    uint32_t reserved;                   ///< Set to 0.
    mathexpr_value value;
    const mathexpr_char16* unavailable;  ///< Why the host does not want the name here; else empty.
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

/// Offers what may stand at the cursor: what makes the text up to it, with everything open closed, one that the expression
/// accepts; an argument that a function is not defined for counts as accepted. Names of the host's whose kind is unknown or
/// that are unavailable come last; one of unknown kind is offered wherever a number or a point is accepted. What has been
/// typed is matched with the beginning of a name, of words in it, of its description, and of all that people call the
/// units that it converts between.
/// @param options      read during the call; NULL: all 0
/// @param completions  its size is read, the rest filled
MATHEXPR_C_API mathexpr_status mathexpr_get_completions_utf8(mathexpr_expression* expression, const char* text,
                                                             size_t length, size_t cursor,
                                                             const mathexpr_completion_options_utf8* options,
                                                             mathexpr_completions_utf8* completions) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_get_completions_utf16(
    mathexpr_expression* expression, const mathexpr_char16* text, size_t length, size_t cursor,
    const mathexpr_completion_options_utf16* options, mathexpr_completions_utf16* completions) MATHEXPR_NOEXCEPT;

// ----- large models ----------------------------------------------------------

/// The names of a large model, ordered once so that no keystroke has to walk through all of them: they need not be listed by
/// get_name. Of the names that match what has been typed, completion considers those of recent and as many others as it may
/// offer, at least 256, in alphabetical order. Created by mathexpr_create_name_index, owned by the caller, destroyed by
/// mathexpr_destroy_name_index. Several expressions may use one. It is used by one thread at a time, together with them.
typedef struct mathexpr_name_index mathexpr_name_index;

/// Creates an index without names.
/// @param index  receives the handle
/// @return MATHEXPR_OK, MATHEXPR_NULL_ARGUMENT, MATHEXPR_OUT_OF_MEMORY
MATHEXPR_C_API mathexpr_status mathexpr_create_name_index(mathexpr_name_index** index) MATHEXPR_NOEXCEPT;

/// Destroys an index. Expressions that use it keep its names.
/// @param index  NULL has no effect
/// @return MATHEXPR_OK, MATHEXPR_STALE_HANDLE
MATHEXPR_C_API mathexpr_status mathexpr_destroy_name_index(mathexpr_name_index* index) MATHEXPR_NOEXCEPT;

/// Adds a name, or replaces what is known of it. The empty name has no effect.
/// @param notes  copied; shown by completion unless get_notes tells others; NULL: nothing is known
/// @return MATHEXPR_OK, MATHEXPR_NULL_ARGUMENT, MATHEXPR_STALE_HANDLE, MATHEXPR_BAD_SIZE, MATHEXPR_BAD_OPTION (an unlisted
///         kind), MATHEXPR_BAD_UTF8 or MATHEXPR_BAD_UTF16, MATHEXPR_ZERO_IN_TEXT, MATHEXPR_OUT_OF_MEMORY
MATHEXPR_C_API mathexpr_status mathexpr_add_indexed_name_utf8(mathexpr_name_index* index, const char* name,
                                                              size_t length,
                                                              const mathexpr_name_notes_utf8* notes) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_add_indexed_name_utf16(mathexpr_name_index* index, const mathexpr_char16* name,
                                                               size_t length, const mathexpr_name_notes_utf16* notes)
    MATHEXPR_NOEXCEPT;

/// Removes a name.
/// @return as mathexpr_add_indexed_name_utf8; MATHEXPR_NOT_FOUND for a name that is not there
MATHEXPR_C_API mathexpr_status mathexpr_remove_indexed_name_utf8(mathexpr_name_index* index, const char* name,
                                                                 size_t length) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_remove_indexed_name_utf16(mathexpr_name_index* index,
                                                                  const mathexpr_char16* name,
                                                                  size_t length) MATHEXPR_NOEXCEPT;

/// Lets an expression find the names of an index, beside those of get_name. Names that are added or removed later count
/// from the next call on.
/// @param index  NULL: of none
/// @return MATHEXPR_OK, MATHEXPR_NULL_ARGUMENT (expression), MATHEXPR_STALE_HANDLE (either), MATHEXPR_BUSY
MATHEXPR_C_API mathexpr_status mathexpr_set_name_index(mathexpr_expression* expression,
                                                       const mathexpr_name_index* index) MATHEXPR_NOEXCEPT;

// ----- typesetting -----------------------------------------------------------

enum
{
    MATHEXPR_NOTATION_LATEX = 0,   ///< For math mode, with the package amsmath; also what MathJax and KaTeX take.
    MATHEXPR_NOTATION_MATHML = 1,  ///< Presentation MathML: one `math` element, well-formed for any text.
};

/// Sets a text as a page or a notebook shows it: fractions, roots, powers, "p_1" with an index, points as columns. Brackets
/// stand where the compiler's grouping needs them to be seen. Names need not be known. A text that is no expression is set
/// as it was typed, in the letters of a typewriter.
/// @param notation  MATHEXPR_NOTATION_...; MATHEXPR_BAD_OPTION for another
/// @param typeset   its size is read, the rest filled
MATHEXPR_C_API mathexpr_status mathexpr_typeset_text_utf8(mathexpr_expression* expression, const char* text,
                                                          size_t length, uint32_t notation,
                                                          mathexpr_text_utf8* typeset) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_typeset_text_utf16(mathexpr_expression* expression, const mathexpr_char16* text,
                                                           size_t length, uint32_t notation,
                                                           mathexpr_text_utf16* typeset) MATHEXPR_NOEXCEPT;
