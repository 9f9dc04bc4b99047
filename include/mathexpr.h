// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// mathexpr.h - the C interface of the whole library, for C and for every language that can call C.
//
//     mathexpr_expression* expression = NULL;
//     mathexpr_value value;
//     if (mathexpr_create_utf8(NULL, &expression) == MATHEXPR_OK &&
//         mathexpr_set_expression_utf8(expression, "[1,2,0]+[3,4,0]", MATHEXPR_ZERO_TERMINATED) == MATHEXPR_OK &&
//         mathexpr_evaluate(expression, &value) == MATHEXPR_OK)
//         ...  // value.type is 1, value.x 4, value.y 6, value.z 0
//     mathexpr_destroy(expression);
//
// These rules apply throughout; declarations document only what is specific to them.
//
// Stability. Names, numbers and layouts of this header never change; later versions only add. The header is C99 and C++17.
//
// Status. A function that can fail returns a mathexpr_status. Unless a function says otherwise, nothing has been written to
// the caller's results when it is not MATHEXPR_OK. No function throws or ends the process.
//
// NULL. A required pointer that is NULL gives MATHEXPR_NULL_ARGUMENT, and nothing changes. Declarations say where NULL is
// allowed.
//
// Text is UTF-8 (functions that end in _utf8) or UTF-16 in the machine's byte order (_utf16), on every platform; one
// expression accepts both. A text is a pointer and a length in code units (bytes or 16-bit units). MATHEXPR_ZERO_TERMINATED as
// the length means up to the terminating zero. NULL with length 0 is the empty text; NULL with any other length gives
// MATHEXPR_NULL_ARGUMENT. All positions and lengths count code units of the function's encoding. Ill-formed text is refused,
// never repaired: MATHEXPR_BAD_UTF8 (overlong forms, encoded surrogates and truncated characters included),
// MATHEXPR_BAD_UTF16 (a lone surrogate), MATHEXPR_ZERO_IN_TEXT (a zero before the end); mathexpr_check_utf8 and
// mathexpr_check_utf16 find the position. Texts that the library returns are well-formed and zero-terminated; their lengths
// exclude the zero.
//
// Structures that begin with size grow at the end in later versions. The caller sets size to the sizeof that it was compiled
// with. With a smaller size than the library's, missing members read as 0 and are not written. With a greater size, unknown
// members must be 0 in what is read, and are set to 0 in what is written; otherwise, and for a size that no version can have
// (0, not a multiple of the alignment, above MATHEXPR_MAX_STRUCT_SIZE), the result is MATHEXPR_BAD_SIZE.
//
// Threads. An expression and its copies are used by one thread at a time; unrelated expressions share no mutable state.
// Functions without an expression argument may be called from any thread at any time.
//
// Reentrancy. While a callback of the host runs, calls that would change, destroy or run the same expression or a copy return
// MATHEXPR_BUSY; calls that only read are allowed.
//
// Handles. A destroyed or invalid handle gives MATHEXPR_STALE_HANDLE if the library was built to check handles
// (mathexpr_checks_handles); otherwise the behaviour is undefined.
//
// Floating point. The library computes with its own control words (all exceptions masked, round to nearest, denormals kept)
// and restores the host's in callbacks and on return. No function depends on the locale.
#pragma once

#include "mathexpr/Export.h"

#include <stddef.h>
#include <stdint.h>

/// Version of this interface. A library serves every host that was compiled with this number or a smaller one.
#define MATHEXPR_ABI_VERSION 1

/// Pass as the length of a zero-terminated text.
#define MATHEXPR_ZERO_TERMINATED ((size_t)-1)

/// Reported as the argument count of a function that takes any number of arguments.
#define MATHEXPR_ANY_ARG_COUNT ((uint32_t)0xFFFFFFFF)

/// Upper bound on the member size of a structure.
#define MATHEXPR_MAX_STRUCT_SIZE 4096

#if defined(__cplusplus)
#define MATHEXPR_C_API extern "C" MATHEXPR_API
#define MATHEXPR_NOEXCEPT noexcept
typedef char16_t mathexpr_char16;
#else
#define MATHEXPR_C_API MATHEXPR_API
#define MATHEXPR_NOEXCEPT
typedef uint16_t mathexpr_char16;  ///< A unit of UTF-16.
#endif

/// Outcome of a call: one of the numbers below. Later versions may add some.
typedef int32_t mathexpr_status;

enum
{
    MATHEXPR_OK = 0,

    // Invalid use by the caller. Nothing was changed.
    MATHEXPR_NULL_ARGUMENT = 1,
    MATHEXPR_STALE_HANDLE = 2,  ///< The handle was destroyed or never created.
    MATHEXPR_WRONG_KIND = 3,    ///< The function is for the other kind of expression.
    MATHEXPR_BUSY = 4,          ///< A callback of the expression is running.
    MATHEXPR_BAD_UTF8 = 5,
    MATHEXPR_BAD_UTF16 = 6,
    MATHEXPR_ZERO_IN_TEXT = 7,
    MATHEXPR_BAD_SIZE = 8,       ///< The size of a structure.
    MATHEXPR_BAD_VALUE = 9,      ///< A value that is neither a number nor a point.
    MATHEXPR_BAD_OPTION = 10,    ///< An option or argument has an unlisted value.
    MATHEXPR_NOT_FOUND = 11,     ///< No such variable, or no such index.
    MATHEXPR_BULK_REFUSED = 12,  ///< Invalid arrays; see mathexpr_bulk_outcome.
    MATHEXPR_BUFFER_TOO_SMALL = 13,

    // Failures of the expression. When a text is compiled or evaluated, all but MATHEXPR_NO_PROGRAM and
    // MATHEXPR_OTHER_KIND leave a diagnostic (mathexpr_get_diagnostic_utf8). mathexpr_set_variable_utf8 and
    // mathexpr_call_function leave none.
    MATHEXPR_PARSING_ERROR = 20,     ///< The text does not compile, or a function got a point for a number.
    MATHEXPR_DEFINITION_ERROR = 21,  ///< The name is not allowed for a variable.
    MATHEXPR_REFUSED = 22,           ///< An item refused its arguments, or an integer literal is too large.
    MATHEXPR_NO_PROGRAM = 23,        ///< There is nothing to evaluate.
    MATHEXPR_OTHER_KIND = 24,        ///< A number was requested and the value is a point, or vice versa.

    // Failures of the host's callbacks.
    MATHEXPR_HOST_CALLBACK_THREW = 30,       ///< It threw a C++ exception, which was caught.
    MATHEXPR_HOST_CALLBACK_REFUSED = 31,     ///< It returned MATHEXPR_LOOKUP_REFUSED.
    MATHEXPR_HOST_CALLBACK_BAD_ANSWER = 32,  ///< It returned an unlisted number, an invalid value or ill-formed text.

    MATHEXPR_OUT_OF_MEMORY = 40,
    MATHEXPR_INTERNAL_ERROR = 41,  ///< A bug in the library.
};

/// Describes a status in English, for logs.
/// @return zero-terminated ASCII, valid while the library is loaded; never NULL, even for an unknown number
MATHEXPR_C_API const char* mathexpr_status_text(mathexpr_status status) MATHEXPR_NOEXCEPT;

// ----- version ---------------------------------------------------------------

/// Version of the library: major * 1000000 + minor * 1000 + patch.
MATHEXPR_C_API uint32_t mathexpr_version_number(void) MATHEXPR_NOEXCEPT;

/// Version of the library as text, such as "1.0.0".
/// @return zero-terminated ASCII, valid while the library is loaded
MATHEXPR_C_API const char* mathexpr_version_text(void) MATHEXPR_NOEXCEPT;

/// MATHEXPR_ABI_VERSION of the library. It must be at least that of the host.
MATHEXPR_C_API uint32_t mathexpr_abi_version(void) MATHEXPR_NOEXCEPT;

/// 1 if the library was built to detect stale handles, else 0.
MATHEXPR_C_API int32_t mathexpr_checks_handles(void) MATHEXPR_NOEXCEPT;

// ----- text ------------------------------------------------------------------

/// Checks that a text is well-formed and holds no zero.
/// @param offset  receives the index of the first ill-formed byte (MATHEXPR_BAD_UTF8) or of the zero
///                (MATHEXPR_ZERO_IN_TEXT); otherwise unchanged; may be NULL
/// @return MATHEXPR_OK, one of these two, or MATHEXPR_NULL_ARGUMENT
MATHEXPR_C_API mathexpr_status mathexpr_check_utf8(const char* text, size_t length, size_t* offset) MATHEXPR_NOEXCEPT;

/// The same for UTF-16: MATHEXPR_BAD_UTF16 gives the index of the first lone surrogate.
MATHEXPR_C_API mathexpr_status mathexpr_check_utf16(const mathexpr_char16* text, size_t length,
                                                    size_t* offset) MATHEXPR_NOEXCEPT;

// ----- value -----------------------------------------------------------------

enum
{
    MATHEXPR_NUMBER = 0,
    MATHEXPR_POINT = 1,
};

/// A number or a point: 32 bytes, which later versions keep.
typedef struct mathexpr_value
{
    uint8_t type;       ///< MATHEXPR_NUMBER, held in x, or MATHEXPR_POINT, held in x, y and z.
    uint8_t flag;       ///< 1 for a converted value or a distance, else 0. Only the operator "&" reads it.
    uint16_t reserved;  ///< 0.
    uint32_t padding;   ///< 0.
    double x;
    double y;
    double z;
} mathexpr_value;

/// Digits for the shortest text that reads back to the same bits.
#define MATHEXPR_EXACT_DIGITS 0

/// Capacity of a buffer for the text of any value, terminating zero included.
#define MATHEXPR_VALUE_TEXT_CAPACITY 1024

/// Formats a value as text that an expression reads back: plain decimals from 1e-6 up to 1e15, whole numbers up to 2^53 with
/// all digits (above 2147483647 followed by ".0", since integer literals end there), otherwise "1.5e+20" and "1.5*10^-7"; a
/// point as "[x,y,z]". NaN is "nan" and the infinities are "inf" and "-inf", which no expression reads. Allocates nothing.
/// @param value     its flag is ignored
/// @param digits    significant digits, 1 to 17, or MATHEXPR_EXACT_DIGITS. Whole numbers up to 2^53 keep all digits, as do
///                  numbers whose rounded text would read back as 0 or infinity.
/// @param text      receives the text and a terminating zero; NULL with capacity 0 queries the length
/// @param capacity  of text, in code units
/// @param length    receives the length of the text, even with MATHEXPR_BUFFER_TOO_SMALL; may be NULL
/// @return MATHEXPR_OK, MATHEXPR_NULL_ARGUMENT (value, or text with a capacity), MATHEXPR_BAD_VALUE, MATHEXPR_BAD_OPTION
///         (digits), MATHEXPR_BUFFER_TOO_SMALL
MATHEXPR_C_API mathexpr_status mathexpr_format_value_utf8(const mathexpr_value* value, uint32_t digits, char* text,
                                                          size_t capacity, size_t* length) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_format_value_utf16(const mathexpr_value* value, uint32_t digits,
                                                           mathexpr_char16* text, size_t capacity,
                                                           size_t* length) MATHEXPR_NOEXCEPT;

// ----- expression ------------------------------------------------------------

/// Compiles and evaluates texts; its variables persist from one text to the next. Created by mathexpr_create_utf8,
/// mathexpr_create_utf16 or mathexpr_copy, owned by the caller, destroyed by mathexpr_destroy.
typedef struct mathexpr_expression mathexpr_expression;

/// Kinds of expression.
enum
{
    MATHEXPR_EXPRESSION = 0,  ///< Compiles once, evaluates often; may ask the host for names.
    MATHEXPR_CALCULATOR = 1,  ///< Computes one text per call, with a bound on integers; shows messages; can be copied.
};

/// Flags of an expression.
enum
{
    /// Show failures to the user. Without this flag only message 19 (integer literal too large) is shown. A calculator
    /// always shows messages.
    MATHEXPR_SHOW_MESSAGES = 1,
};

/// Results of a lookup callback.
enum
{
    MATHEXPR_LOOKUP_NOT_KNOWN = 0,  ///< The name is unknown to the host.
    MATHEXPR_LOOKUP_FOUND = 1,      ///< The value has been written.
    MATHEXPR_LOOKUP_REFUSED = 2,    ///< Abort: the call returns MATHEXPR_HOST_CALLBACK_REFUSED.
};

// Callbacks receive the context of the expression's options. A callback may throw a C++ exception of any type (also
// MTExceptions of the library's classes): the library catches it, the pending call returns MATHEXPR_HOST_CALLBACK_THREW
// without a diagnostic, and the expression stays usable. A callback must not leave by longjmp or end its thread.

/// Called while a text is compiled, for each name that is neither a constant nor a variable of the expression.
/// @param name    the name exactly as written, zero-terminated, owned by the library, valid during the call only
/// @param length  of the name, in code units
/// @param value   the number 0 on entry; set it to a number or a point. With MATHEXPR_LOOKUP_FOUND the name becomes a variable
///                with this value and is not looked up again; otherwise the value is ignored.
/// @return MATHEXPR_LOOKUP_NOT_KNOWN, MATHEXPR_LOOKUP_FOUND or MATHEXPR_LOOKUP_REFUSED; with anything else, or with a
///         value that is neither number nor point, the call returns MATHEXPR_HOST_CALLBACK_BAD_ANSWER
typedef int32_t (*mathexpr_lookup_utf8)(void* context, const char* name, size_t length, mathexpr_value* value);
typedef int32_t (*mathexpr_lookup_utf16)(void* context, const mathexpr_char16* name, size_t length,
                                         mathexpr_value* value);

/// Shows one message to the user, and returns when the user has seen it.
/// @param id      number of the message, 1 to 19
/// @param text    its text in the user's language, zero-terminated, owned by the library, valid during the call only
/// @param length  of the text, in code units
typedef void (*mathexpr_show_message_utf8)(void* context, uint32_t id, const char* text, size_t length);
typedef void (*mathexpr_show_message_utf16)(void* context, uint32_t id, const mathexpr_char16* text, size_t length);

/// Enumerates names that the lookup would find, for suggestions in a diagnostic: called with 0, 1, 2 and so on until it
/// returns NULL.
/// @return a zero-terminated name, owned by the host and valid until the next call, or NULL after the last. Ill-formed text
///         makes the call return MATHEXPR_HOST_CALLBACK_BAD_ANSWER.
typedef const char* (*mathexpr_get_name_utf8)(void* context, uint32_t index);
typedef const mathexpr_char16* (*mathexpr_get_name_utf16)(void* context, uint32_t index);

/// Options of a new expression. All members but size may be 0.
typedef struct mathexpr_options_utf8
{
    uint32_t size;                            ///< sizeof(mathexpr_options_utf8).
    uint32_t kind;                            ///< MATHEXPR_EXPRESSION or MATHEXPR_CALCULATOR.
    uint32_t flags;                           ///< MATHEXPR_SHOW_MESSAGES or 0.
    uint32_t reserved;                        ///< 0.
    void* context;                            ///< Passed to the callbacks, never dereferenced.
    mathexpr_lookup_utf8 lookup;              ///< NULL: no names of the host. Must be NULL for a calculator.
    mathexpr_show_message_utf8 show_message;  ///< NULL: the display of the process (see
                                              ///< mathexpr/MessageDisplay.h); by default a message box on
                                              ///< Windows and standard error elsewhere.
    mathexpr_get_name_utf8 get_name;          ///< NULL: no names of the host for suggestions.
} mathexpr_options_utf8;

/// The same with callbacks in UTF-16.
typedef struct mathexpr_options_utf16
{
    uint32_t size;  ///< sizeof(mathexpr_options_utf16).
    uint32_t kind;
    uint32_t flags;
    uint32_t reserved;
    void* context;
    mathexpr_lookup_utf16 lookup;
    mathexpr_show_message_utf16 show_message;
    mathexpr_get_name_utf16 get_name;
} mathexpr_options_utf16;

/// Creates an expression. The two functions differ only in the encoding of the callbacks.
/// @param options     read during the call; NULL means all 0: no callbacks, and no message but 19
/// @param expression  receives the handle, which the caller owns
/// @return MATHEXPR_OK, MATHEXPR_NULL_ARGUMENT (expression), MATHEXPR_BAD_SIZE, MATHEXPR_BAD_OPTION (an unknown kind or
///         flag, a lookup for a calculator, reserved not 0), MATHEXPR_OUT_OF_MEMORY
MATHEXPR_C_API mathexpr_status mathexpr_create_utf8(const mathexpr_options_utf8* options,
                                                    mathexpr_expression** expression) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_create_utf16(const mathexpr_options_utf16* options,
                                                     mathexpr_expression** expression) MATHEXPR_NOEXCEPT;

/// Copies a calculator. The copy shares variables, program, diagnostic, limits and callbacks with its source; either may be
/// destroyed first. A pending assignment belongs to the one that compiled it.
/// @param copy  receives the handle, which the caller owns
/// @return MATHEXPR_OK, MATHEXPR_NULL_ARGUMENT, MATHEXPR_STALE_HANDLE, MATHEXPR_WRONG_KIND (not a calculator), MATHEXPR_BUSY,
///         MATHEXPR_OUT_OF_MEMORY
MATHEXPR_C_API mathexpr_status mathexpr_copy(mathexpr_expression* expression,
                                             mathexpr_expression** copy) MATHEXPR_NOEXCEPT;

/// Destroys an expression. Its handle, its diagnostic and its lists of names become invalid. The addresses of its variables
/// become invalid when its last copy is destroyed.
/// @param expression  NULL has no effect
/// @return MATHEXPR_OK, MATHEXPR_STALE_HANDLE, MATHEXPR_BUSY (it is not destroyed)
MATHEXPR_C_API mathexpr_status mathexpr_destroy(mathexpr_expression* expression) MATHEXPR_NOEXCEPT;

/// Compiles a text. After a failure the expression holds no program; after a status of invalid use (up to
/// MATHEXPR_BULK_REFUSED) it keeps its former program.
/// @return MATHEXPR_OK: the program is ready to be evaluated. MATHEXPR_NULL_ARGUMENT, MATHEXPR_STALE_HANDLE,
///         MATHEXPR_WRONG_KIND (a calculator), MATHEXPR_BUSY, MATHEXPR_BAD_UTF8 or MATHEXPR_BAD_UTF16,
///         MATHEXPR_ZERO_IN_TEXT; MATHEXPR_PARSING_ERROR, MATHEXPR_DEFINITION_ERROR, MATHEXPR_REFUSED (these three
///         after showing a message, if messages are shown); MATHEXPR_HOST_CALLBACK_...; MATHEXPR_OUT_OF_MEMORY
MATHEXPR_C_API mathexpr_status mathexpr_set_expression_utf8(mathexpr_expression* expression, const char* text,
                                                            size_t length) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_set_expression_utf16(mathexpr_expression* expression,
                                                             const mathexpr_char16* text,
                                                             size_t length) MATHEXPR_NOEXCEPT;

/// Runs the program, and carries out a pending assignment once.
/// @param value  receives the value
/// @return MATHEXPR_OK, MATHEXPR_NULL_ARGUMENT, MATHEXPR_STALE_HANDLE, MATHEXPR_WRONG_KIND (a calculator),
///         MATHEXPR_BUSY, MATHEXPR_NO_PROGRAM, MATHEXPR_REFUSED, MATHEXPR_PARSING_ERROR (a point where a function needs
///         a number), MATHEXPR_DEFINITION_ERROR (the name that is assigned to), MATHEXPR_HOST_CALLBACK_THREW,
///         MATHEXPR_OUT_OF_MEMORY
MATHEXPR_C_API mathexpr_status mathexpr_evaluate(mathexpr_expression* expression,
                                                 mathexpr_value* value) MATHEXPR_NOEXCEPT;

/// Compiles and evaluates a text in one call.
/// @param value  receives the value
/// @return as mathexpr_set_expression_utf8; if that returns MATHEXPR_OK, as mathexpr_evaluate
MATHEXPR_C_API mathexpr_status mathexpr_evaluate_text_utf8(mathexpr_expression* expression, const char* text,
                                                           size_t length, mathexpr_value* value) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_evaluate_text_utf16(mathexpr_expression* expression,
                                                            const mathexpr_char16* text, size_t length,
                                                            mathexpr_value* value) MATHEXPR_NOEXCEPT;

/// The same for a calculator, with an upper bound on integer literals.
/// @param max_integer  the greatest accepted integer literal; literals with a decimal point are not tested
/// @param value        receives the value
/// @return as mathexpr_evaluate_text_utf8; MATHEXPR_WRONG_KIND if the expression is not a calculator
MATHEXPR_C_API mathexpr_status mathexpr_calculate_utf8(mathexpr_expression* expression, const char* text, size_t length,
                                                       uint32_t max_integer, mathexpr_value* value) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_calculate_utf16(mathexpr_expression* expression, const mathexpr_char16* text,
                                                        size_t length, uint32_t max_integer,
                                                        mathexpr_value* value) MATHEXPR_NOEXCEPT;

/// Drops a pending assignment. A refused assignment such as "pi=3" stays pending: each later evaluation that yields a value
/// tries it again, until it is dropped or a text with another assignment is compiled.
/// @return MATHEXPR_OK, MATHEXPR_NULL_ARGUMENT, MATHEXPR_STALE_HANDLE, MATHEXPR_BUSY
MATHEXPR_C_API mathexpr_status mathexpr_drop_assignment(mathexpr_expression* expression) MATHEXPR_NOEXCEPT;

// ----- function --------------------------------------------------------------

/// A text as a function of numbers by position: the fastest way to compute one number. Created by
/// mathexpr_create_function_utf8, mathexpr_create_function_utf16 or mathexpr_copy_function, owned by the caller, destroyed by
/// mathexpr_destroy_function. It does not depend on the expression that created it, and calls no callback. A function is used
/// by one thread at a time; a function and its copies share no mutable state.
typedef struct mathexpr_function mathexpr_function;

/// Compiles a text, as mathexpr_set_expression_utf8 does, and creates a function from it. An assignment in the text is not
/// carried out. Variables that are not arguments keep their present values in the function.
/// @param arguments     zero-terminated names of variables of the expression, by position; NULL if there are none. The text
///                      need not use them, and their values are ignored.
/// @param argument_count  number of arguments
/// @param function      receives the handle, which the caller owns
/// @return as mathexpr_set_expression_utf8, with a diagnostic; MATHEXPR_NULL_ARGUMENT (also for a name), MATHEXPR_BAD_OPTION
///         (two arguments have the same name), MATHEXPR_NOT_FOUND (an argument is not a variable), MATHEXPR_OTHER_KIND (the
///         value is a point; without a diagnostic)
MATHEXPR_C_API mathexpr_status mathexpr_create_function_utf8(mathexpr_expression* expression, const char* text,
                                                             size_t length, const char* const* arguments,
                                                             size_t argument_count,
                                                             mathexpr_function** function) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_create_function_utf16(mathexpr_expression* expression,
                                                              const mathexpr_char16* text, size_t length,
                                                              const mathexpr_char16* const* arguments,
                                                              size_t argument_count,
                                                              mathexpr_function** function) MATHEXPR_NOEXCEPT;

/// Copies a function, for example for each thread.
/// @param copy  receives the handle, which the caller owns
/// @return MATHEXPR_OK, MATHEXPR_NULL_ARGUMENT, MATHEXPR_STALE_HANDLE, MATHEXPR_OUT_OF_MEMORY
MATHEXPR_C_API mathexpr_status mathexpr_copy_function(const mathexpr_function* function,
                                                      mathexpr_function** copy) MATHEXPR_NOEXCEPT;

/// Destroys a function.
/// @param function  NULL has no effect
/// @return MATHEXPR_OK, MATHEXPR_STALE_HANDLE
MATHEXPR_C_API mathexpr_status mathexpr_destroy_function(mathexpr_function* function) MATHEXPR_NOEXCEPT;

/// Computes the function. The result equals, bit for bit, the first evaluation after compiling the text with the variables set
/// to the arguments, whatever was computed before. Allocates nothing.
/// @param arguments  as many numbers as the function has arguments; NULL if it has none
/// @param result     receives the value
/// @return MATHEXPR_OK, MATHEXPR_NULL_ARGUMENT, MATHEXPR_STALE_HANDLE, MATHEXPR_REFUSED (an item refused its arguments, or
///         was given a point for a number)
MATHEXPR_C_API mathexpr_status mathexpr_call_function(mathexpr_function* function, const double* arguments,
                                                      double* result) MATHEXPR_NOEXCEPT;

// ----- limits ----------------------------------------------------------------

/// Upper bounds on an accepted text; 0 is no limit. A text that exceeds one is refused before it is compiled.
typedef struct mathexpr_limits
{
    uint32_t size;             ///< sizeof(mathexpr_limits).
    uint32_t max_text_length;  ///< Characters as typed, blanks included: code points, on Windows units of UTF-16, in
                               ///< both encodings.
    uint32_t max_records;      ///< Values, operators and function calls, counted at each use.
    uint32_t max_nesting;      ///< Nesting depth of brackets and prefix operators.
} mathexpr_limits;

/// Sets the limits for texts that are compiled from now on.
/// @param limits  read during the call
/// @return MATHEXPR_OK, MATHEXPR_NULL_ARGUMENT, MATHEXPR_STALE_HANDLE, MATHEXPR_BUSY, MATHEXPR_BAD_SIZE
MATHEXPR_C_API mathexpr_status mathexpr_set_limits(mathexpr_expression* expression,
                                                   const mathexpr_limits* limits) MATHEXPR_NOEXCEPT;

/// Returns the limits; all 0 in a new expression.
/// @param limits  its size is read, its other members are written
/// @return MATHEXPR_OK, MATHEXPR_NULL_ARGUMENT, MATHEXPR_STALE_HANDLE, MATHEXPR_BAD_SIZE
MATHEXPR_C_API mathexpr_status mathexpr_get_limits(const mathexpr_expression* expression,
                                                   mathexpr_limits* limits) MATHEXPR_NOEXCEPT;

// ----- diagnostics -----------------------------------------------------------

/// Kinds of failure in a diagnostic.
enum
{
    MATHEXPR_KIND_NONE = 0,  ///< An item refused its arguments, or an integer literal is too large: MATHEXPR_REFUSED.
    MATHEXPR_KIND_PARSING = 1,     ///< MATHEXPR_PARSING_ERROR.
    MATHEXPR_KIND_DEFINITION = 2,  ///< MATHEXPR_DEFINITION_ERROR.
};

/// Codes of MATHEXPR_KIND_PARSING.
enum
{
    MATHEXPR_PARSING_OPERATOR_MISPLACED = 0,
    MATHEXPR_PARSING_OPERAND_MISSING = 3,
    MATHEXPR_PARSING_CLOSING_WITHOUT_OPENING = 4,
    MATHEXPR_PARSING_SEPARATOR_OUTSIDE_BRACKETS = 5,
    MATHEXPR_PARSING_BRACKET_NOT_CLOSED = 6,
    MATHEXPR_PARSING_NO_OVERLOAD = 7,
    MATHEXPR_PARSING_NO_EXPRESSION = 8,
    MATHEXPR_PARSING_VALUE_AFTER_VALUE = 9,
    MATHEXPR_PARSING_UNKNOWN_FUNCTION = 10,
    MATHEXPR_PARSING_UNKNOWN_NAME = 11,
    MATHEXPR_PARSING_ARGUMENT_EMPTY = 12,
    MATHEXPR_PARSING_ARGUMENT_KIND = 15,
    MATHEXPR_PARSING_STRUCTURE = 16,
    MATHEXPR_PARSING_TEXT_TOO_LONG = 17,
    MATHEXPR_PARSING_TOO_MANY_RECORDS = 18,
    MATHEXPR_PARSING_NESTED_TOO_DEEP = 19,
};

/// Codes of MATHEXPR_KIND_DEFINITION, and of mathexpr_name_refusal.
enum
{
    MATHEXPR_DEFINITION_NAME_EMPTY = 12,
    MATHEXPR_DEFINITION_NAME_IS_NUMBER = 13,
    MATHEXPR_DEFINITION_NAME_IS_CONSTANT = 14,
    MATHEXPR_DEFINITION_CONTAINS_SYNTAX_CHARACTER = 15,
};

/// What would have been accepted at the failure: a set of bits.
enum
{
    MATHEXPR_EXPECTED_VALUE = 0x1,
    MATHEXPR_EXPECTED_OPERATOR = 0x2,
    MATHEXPR_EXPECTED_CLOSING_BRACKET = 0x4,
    MATHEXPR_EXPECTED_SEPARATOR = 0x8,
    MATHEXPR_EXPECTED_END = 0x10,           ///< The end of the expression.
    MATHEXPR_EXPECTED_FUNCTION = 0x20,      ///< The name of a function, with its brackets.
    MATHEXPR_EXPECTED_KNOWN_NAME = 0x40,    ///< A constant, a variable, or a name known to the host.
    MATHEXPR_EXPECTED_NEW_NAME = 0x80,      ///< Before "=": a name allowed for a variable.
    MATHEXPR_EXPECTED_OTHER_COUNT = 0x100,  ///< One of accepted_arg_counts as the number of arguments.
    MATHEXPR_EXPECTED_NUMBER = 0x200,       ///< A number instead of a point.
    MATHEXPR_EXPECTED_POINT = 0x400,        ///< Points instead of numbers.
    MATHEXPR_EXPECTED_SAME_KIND = 0x800,    ///< Two numbers or two points.
    MATHEXPR_EXPECTED_IN_DOMAIN = 0x1000,   ///< A value for which the item is defined.
    MATHEXPR_EXPECTED_SMALLER_NUMBER = 0x2000,
    MATHEXPR_EXPECTED_LESS = 0x4000,  ///< A shorter or simpler expression.
};

/// The last failure of an expression. Without a failure all numbers are 0 and all texts empty. Only pointers to arrays without
/// elements are NULL. All memory is owned by the expression, and valid until the next call of mathexpr_get_diagnostic_utf8 on
/// the same handle or until the handle is destroyed.
typedef struct mathexpr_diagnostic_utf8
{
    uint32_t size;     ///< sizeof(mathexpr_diagnostic_utf8).
    uint32_t message;  ///< Number of the message that is shown to the user, 1 to 19.
    uint32_t kind;     ///< MATHEXPR_KIND_...
    uint32_t code;     ///< MATHEXPR_PARSING_... or MATHEXPR_DEFINITION_..., by kind; 0 with MATHEXPR_KIND_NONE.
    size_t start;      ///< Position of the failure in the typed text, from 0, in code units of this encoding.
    size_t length;     ///< Its length in code units; 0 if no part of the text is concerned.
    const char* text;  ///< The text of the message in the user's language.
    size_t text_length;
    const char* item;  ///< The token, symbol or text concerned.
    size_t item_length;
    const char* conflict;  ///< What a definition conflicts with.
    size_t conflict_length;
    uint32_t expected;                    ///< Bits of MATHEXPR_EXPECTED_...
    uint32_t arg_count;                   ///< Number of arguments given to the item; 0 if unknown.
    const uint32_t* accepted_arg_counts;  ///< The numbers of arguments that the function concerned takes, in the order
                                          ///< of its overloads; MATHEXPR_ANY_ARG_COUNT is any number.
    size_t accepted_count;
    const char* const* suggestions;  ///< For an unknown name: up to three similar names, the nearest first, each
                                     ///< zero-terminated.
    size_t suggestion_count;
    const char* const* hints;  ///< Sentences in the user's language that help to correct the text; show them below
                               ///< text. Each zero-terminated.
    size_t hint_count;
    size_t fix_start;   ///< The correction that the last hint describes, if it is unambiguous: the span of the typed
                        ///< text to replace, in code units of this encoding. The corrected text compiles.
    size_t fix_length;  ///< If this and fix_replacement_length are 0, there is no correction.
    const char* fix_replacement;
    size_t fix_replacement_length;
} mathexpr_diagnostic_utf8;

/// The same in UTF-16.
typedef struct mathexpr_diagnostic_utf16
{
    uint32_t size;  ///< sizeof(mathexpr_diagnostic_utf16).
    uint32_t message;
    uint32_t kind;
    uint32_t code;
    size_t start;
    size_t length;
    const mathexpr_char16* text;
    size_t text_length;
    const mathexpr_char16* item;
    size_t item_length;
    const mathexpr_char16* conflict;
    size_t conflict_length;
    uint32_t expected;
    uint32_t arg_count;
    const uint32_t* accepted_arg_counts;
    size_t accepted_count;
    const mathexpr_char16* const* suggestions;
    size_t suggestion_count;
    const mathexpr_char16* const* hints;
    size_t hint_count;
    size_t fix_start;
    size_t fix_length;
    const mathexpr_char16* fix_replacement;
    size_t fix_replacement_length;
} mathexpr_diagnostic_utf16;

/// Whether there is a diagnostic.
/// @param failed  receives 1 or 0
/// @return MATHEXPR_OK, MATHEXPR_NULL_ARGUMENT, MATHEXPR_STALE_HANDLE
MATHEXPR_C_API mathexpr_status mathexpr_has_failed(const mathexpr_expression* expression,
                                                   int32_t* failed) MATHEXPR_NOEXCEPT;

/// Describes the last failure. The next compilation and the next evaluation that runs a program clear it; calls that return a
/// status of invalid use, or MATHEXPR_NO_PROGRAM, keep it. A call that a lookup aborts leaves no diagnostic. The diagnostic is
/// complete when the failed call returns, possibly not yet in show_message. Takes time proportional to the text and to the
/// number of known names.
/// @param diagnostic  its size is read, its other members are written
/// @return MATHEXPR_OK, MATHEXPR_NULL_ARGUMENT, MATHEXPR_STALE_HANDLE, MATHEXPR_BUSY (in get_name), MATHEXPR_BAD_SIZE,
///         MATHEXPR_HOST_CALLBACK_THREW or MATHEXPR_HOST_CALLBACK_BAD_ANSWER (of get_name), MATHEXPR_OUT_OF_MEMORY
MATHEXPR_C_API mathexpr_status mathexpr_get_diagnostic_utf8(mathexpr_expression* expression,
                                                            mathexpr_diagnostic_utf8* diagnostic) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_get_diagnostic_utf16(mathexpr_expression* expression,
                                                             mathexpr_diagnostic_utf16* diagnostic) MATHEXPR_NOEXCEPT;

// ----- variables -------------------------------------------------------------

// Names of variables are compared ignoring the case of the letters A to Z, and returned as written in their definition.
// Constants are not variables.

/// Contents of a list of names.
enum
{
    MATHEXPR_NAMES_USED = 0,     ///< Variables that the program reads, in order of first use; none without a program.
    MATHEXPR_NAMES_DEFINED = 1,  ///< All variables, in order of definition.
    MATHEXPR_NAMES_OF_HOST = 2,  ///< Variables that lookup has supplied, in order of lookup.
};

/// A list of names, owned by the expression, and valid until the next call of mathexpr_get_names_utf8 on the same handle or
/// until the handle is destroyed.
typedef struct mathexpr_names_utf8
{
    uint32_t size;             ///< sizeof(mathexpr_names_utf8).
    uint32_t reserved;         ///< Set to 0.
    const char* const* names;  ///< Each zero-terminated; NULL if there are none.
    size_t name_count;
} mathexpr_names_utf8;

/// The same in UTF-16.
typedef struct mathexpr_names_utf16
{
    uint32_t size;  ///< sizeof(mathexpr_names_utf16).
    uint32_t reserved;
    const mathexpr_char16* const* names;
    size_t name_count;
} mathexpr_names_utf16;

/// Lists names.
/// @param which  MATHEXPR_NAMES_...
/// @param names  its size is read, its other members are written
/// @return MATHEXPR_OK, MATHEXPR_NULL_ARGUMENT, MATHEXPR_STALE_HANDLE, MATHEXPR_BAD_OPTION (which), MATHEXPR_BAD_SIZE,
///         MATHEXPR_OUT_OF_MEMORY
MATHEXPR_C_API mathexpr_status mathexpr_get_names_utf8(mathexpr_expression* expression, uint32_t which,
                                                       mathexpr_names_utf8* names) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_get_names_utf16(mathexpr_expression* expression, uint32_t which,
                                                        mathexpr_names_utf16* names) MATHEXPR_NOEXCEPT;

/// Reads a variable.
/// @param value  receives the value
/// @return MATHEXPR_OK, MATHEXPR_NULL_ARGUMENT, MATHEXPR_STALE_HANDLE, MATHEXPR_BAD_UTF8 or MATHEXPR_BAD_UTF16,
///         MATHEXPR_ZERO_IN_TEXT, MATHEXPR_NOT_FOUND, MATHEXPR_OUT_OF_MEMORY
MATHEXPR_C_API mathexpr_status mathexpr_get_variable_utf8(const mathexpr_expression* expression, const char* name,
                                                          size_t length, mathexpr_value* value) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_get_variable_utf16(const mathexpr_expression* expression,
                                                           const mathexpr_char16* name, size_t length,
                                                           mathexpr_value* value) MATHEXPR_NOEXCEPT;

/// Why a name is not allowed for a variable.
typedef struct mathexpr_name_refusal
{
    uint32_t size;  ///< sizeof(mathexpr_name_refusal).
    uint32_t code;  ///< MATHEXPR_DEFINITION_...
    size_t start;   ///< The offending part of the name, in code units of the call's encoding;
    size_t length;  ///< the whole name if no single part is at fault.
} mathexpr_name_refusal;

/// Sets a variable. An existing one changes in place, and the program uses the new value from the next evaluation on; a new one
/// is known to texts compiled from now on. Keeps the diagnostic. Refuses the names that an assignment refuses (a number, a
/// constant, one with ".", ",", "[" or "]") and names that no text can assign to (the empty name, one with a blank, "(", ")",
/// "=" or the symbol of an operator).
/// @param value    the type is MATHEXPR_NUMBER or MATHEXPR_POINT, the flag 0 or 1
/// @param refusal  with MATHEXPR_DEFINITION_ERROR its size is read and its other members are written; may be NULL
/// @return MATHEXPR_OK, MATHEXPR_NULL_ARGUMENT, MATHEXPR_STALE_HANDLE, MATHEXPR_BUSY, MATHEXPR_BAD_UTF8 or
///         MATHEXPR_BAD_UTF16, MATHEXPR_ZERO_IN_TEXT, MATHEXPR_BAD_VALUE, MATHEXPR_BAD_SIZE (refusal),
///         MATHEXPR_DEFINITION_ERROR (the name is not allowed; nothing has changed), MATHEXPR_OUT_OF_MEMORY
MATHEXPR_C_API mathexpr_status mathexpr_set_variable_utf8(mathexpr_expression* expression, const char* name,
                                                          size_t length, const mathexpr_value* value,
                                                          mathexpr_name_refusal* refusal) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_set_variable_utf16(mathexpr_expression* expression, const mathexpr_char16* name,
                                                           size_t length, const mathexpr_value* value,
                                                           mathexpr_name_refusal* refusal) MATHEXPR_NOEXCEPT;

/// Removes a variable. A program that reads it becomes empty: mathexpr_evaluate returns MATHEXPR_NO_PROGRAM until the next text
/// is compiled.
/// @return MATHEXPR_OK, MATHEXPR_NULL_ARGUMENT, MATHEXPR_STALE_HANDLE, MATHEXPR_BUSY, MATHEXPR_BAD_UTF8 or
///         MATHEXPR_BAD_UTF16, MATHEXPR_ZERO_IN_TEXT, MATHEXPR_NOT_FOUND, MATHEXPR_OUT_OF_MEMORY
MATHEXPR_C_API mathexpr_status mathexpr_remove_variable_utf8(mathexpr_expression* expression, const char* name,
                                                             size_t length) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_remove_variable_utf16(mathexpr_expression* expression,
                                                              const mathexpr_char16* name,
                                                              size_t length) MATHEXPR_NOEXCEPT;

/// Returns the address of a variable's value, for reading and writing in place; write only numbers and points. The record is
/// owned by the expression. The address stays valid until the variable is removed or the last copy of the expression is
/// destroyed; setting, assigning and compiling do not move it.
/// @param address  receives the address
/// @return MATHEXPR_OK, MATHEXPR_NULL_ARGUMENT, MATHEXPR_STALE_HANDLE, MATHEXPR_BAD_UTF8 or MATHEXPR_BAD_UTF16,
///         MATHEXPR_ZERO_IN_TEXT, MATHEXPR_NOT_FOUND, MATHEXPR_OUT_OF_MEMORY
MATHEXPR_C_API mathexpr_status mathexpr_get_variable_address_utf8(mathexpr_expression* expression, const char* name,
                                                                  size_t length,
                                                                  mathexpr_value** address) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_get_variable_address_utf16(mathexpr_expression* expression,
                                                                   const mathexpr_char16* name, size_t length,
                                                                   mathexpr_value** address) MATHEXPR_NOEXCEPT;

// ----- vocabulary ------------------------------------------------------------

/// Kinds of the vocabulary's items.
enum
{
    MATHEXPR_ITEM_CONSTANT = 0,
    MATHEXPR_ITEM_OPERATOR = 1,
    MATHEXPR_ITEM_FUNCTION = 2,
};

/// Families of the vocabulary's items.
enum
{
    MATHEXPR_FAMILY_OPERATORS = 0,
    MATHEXPR_FAMILY_CORE_MATH = 1,
    MATHEXPR_FAMILY_ANGLE = 2,  ///< This family and the next three convert between units.
    MATHEXPR_FAMILY_LENGTH = 3,
    MATHEXPR_FAMILY_AREA = 4,
    MATHEXPR_FAMILY_VOLUME = 5,
    MATHEXPR_FAMILY_GEOMETRY = 6,
    MATHEXPR_FAMILY_CONSTANTS = 7,
};

/// A constant, operator or function. The texts are zero-terminated, and valid while the library is loaded.
typedef struct mathexpr_vocabulary_item_utf8
{
    uint32_t size;            ///< sizeof(mathexpr_vocabulary_item_utf8).
    uint32_t kind;            ///< MATHEXPR_ITEM_...
    uint32_t family;          ///< MATHEXPR_FAMILY_...
    uint32_t arg_count;       ///< Number of arguments or operands; MATHEXPR_ANY_ARG_COUNT for any; 0 for a constant.
    int32_t precedence;       ///< Of an operator, 0 to 4; higher binds tighter; 0 for other items.
    uint32_t unary;           ///< 1 for a prefix operator, else 0.
    uint32_t constant;        ///< 1 for constants and for items that depend on their arguments alone, else 0.
    uint32_t reserved;        ///< Set to 0.
    double value;             ///< Of a constant; 0 for other items.
    const char* symbol;       ///< As written in an expression; shared by overloads and by the two operators "-".
    const char* help;         ///< The usage, such as "sin(x)"; empty for a constant.
    const char* description;  ///< One line; empty for a constant.
} mathexpr_vocabulary_item_utf8;

/// The same in UTF-16.
typedef struct mathexpr_vocabulary_item_utf16
{
    uint32_t size;  ///< sizeof(mathexpr_vocabulary_item_utf16).
    uint32_t kind;
    uint32_t family;
    uint32_t arg_count;
    int32_t precedence;
    uint32_t unary;
    uint32_t constant;
    uint32_t reserved;
    double value;
    const mathexpr_char16* symbol;
    const mathexpr_char16* help;
    const mathexpr_char16* description;
} mathexpr_vocabulary_item_utf16;

/// Returns one item of the vocabulary, in the order constants, operators, functions.
/// @param index  from 0
/// @param item   its size is read, its other members are written
/// @return MATHEXPR_OK, MATHEXPR_NULL_ARGUMENT, MATHEXPR_BAD_SIZE, MATHEXPR_NOT_FOUND (from the number of items on),
///         MATHEXPR_OUT_OF_MEMORY
MATHEXPR_C_API mathexpr_status mathexpr_get_vocabulary_item_utf8(uint32_t index,
                                                                 mathexpr_vocabulary_item_utf8* item) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_get_vocabulary_item_utf16(uint32_t index, mathexpr_vocabulary_item_utf16* item)
    MATHEXPR_NOEXCEPT;

// ----- bulk evaluation -------------------------------------------------------

/// Contents of an array.
enum
{
    MATHEXPR_NUMBERS = 0,  ///< One double per row.
    MATHEXPR_POINTS = 1,   ///< Three doubles per row.
    MATHEXPR_RECORDS = 2,  ///< One mathexpr_value per row; for results only.
};

/// The values of one variable. Strides are in bytes, may be negative, and are multiples of 8; data is aligned to 8. A stride of
/// 0 repeats one value.
typedef struct mathexpr_column_utf8
{
    uint32_t size;     ///< sizeof(mathexpr_column_utf8), which is also the stride of an array of columns.
    uint32_t kind;     ///< MATHEXPR_NUMBERS or MATHEXPR_POINTS.
    const char* name;  ///< May be a name that the expression does not read.
    size_t name_length;
    const double* data;           ///< The first row's number or x; owned by the caller; NULL only without rows.
    ptrdiff_t stride;             ///< From one row to the next.
    ptrdiff_t coordinate_stride;  ///< Of points: from x to y and from y to z.
} mathexpr_column_utf8;

/// The same with a name in UTF-16.
typedef struct mathexpr_column_utf16
{
    uint32_t size;  ///< sizeof(mathexpr_column_utf16).
    uint32_t kind;
    const mathexpr_char16* name;
    size_t name_length;
    const double* data;
    ptrdiff_t stride;
    ptrdiff_t coordinate_stride;
} mathexpr_column_utf16;

/// Destination of the values. Alignment and strides are as in a column, but no two rows may share memory. A result may overwrite
/// the same row's number of a column; with any other overlap, the results of the overlapped rows are unspecified.
typedef struct mathexpr_results
{
    uint32_t size;                ///< sizeof(mathexpr_results).
    uint32_t kind;                ///< MATHEXPR_NUMBERS, MATHEXPR_POINTS or MATHEXPR_RECORDS.
    void* data;                   ///< The first row's double, x or record; owned by the caller; NULL only without rows.
    ptrdiff_t stride;             ///< From one row to the next.
    ptrdiff_t coordinate_stride;  ///< Of points: from x to y and from y to z.
    uint32_t* row_status;         ///< MATHEXPR_ROW_... or a message number per row, contiguous; may be NULL.
} mathexpr_results;

/// Status of a row: one of these, or the number of the message, 1 to 19, that the row's diagnostic would have.
enum
{
    MATHEXPR_ROW_DONE = 0,
    MATHEXPR_ROW_ARGUMENTS_REFUSED = 3,  ///< An item refused its arguments without a message of its own, or got a
                                         ///< point for a number.
    MATHEXPR_ROW_OTHER_KIND = 256,       ///< The value is a point and the results hold numbers, or vice versa.
};

/// Reasons why nothing was evaluated.
enum
{
    MATHEXPR_BULK_NONE = 0,
    MATHEXPR_BULK_BUSY = 1,                ///< MATHEXPR_BUSY.
    MATHEXPR_BULK_NO_PROGRAM = 2,          ///< MATHEXPR_NO_PROGRAM.
    MATHEXPR_BULK_COLUMNS_MISSING = 3,     ///< The array of columns is NULL and column_count is not 0.
    MATHEXPR_BULK_COLUMN_NAME = 4,         ///< A column's name is NULL, empty or ill-formed, or contains a zero.
    MATHEXPR_BULK_COLUMN_TWICE = 5,        ///< Two columns have the same name.
    MATHEXPR_BULK_COLUMN_KIND = 6,         ///< A column's kind is neither MATHEXPR_NUMBERS nor MATHEXPR_POINTS.
    MATHEXPR_BULK_COLUMN_DATA = 7,         ///< A column's data is NULL.
    MATHEXPR_BULK_COLUMN_ALIGNMENT = 8,    ///< A column's data or a stride is not a multiple of 8.
    MATHEXPR_BULK_COLUMN_VARIABLE = 9,     ///< The host owns the variable's value.
    MATHEXPR_BULK_RESULTS_KIND = 10,       ///< The kind of the results is not listed.
    MATHEXPR_BULK_RESULTS_DATA = 11,       ///< The results' data is NULL.
    MATHEXPR_BULK_RESULTS_ALIGNMENT = 12,  ///< Their data or a stride is not a multiple of 8, or row_status not of 4.
    MATHEXPR_BULK_RESULTS_OVERLAP = 13,    ///< Two rows of the results would share memory.
};

/// Outcome of a bulk evaluation.
typedef struct mathexpr_bulk_outcome
{
    uint32_t size;          ///< sizeof(mathexpr_bulk_outcome).
    uint32_t error;         ///< MATHEXPR_BULK_...
    size_t column;          ///< With an error about a column: its index; of two with the same name, the later.
    size_t failed_count;    ///< Number of rows without a value.
    size_t first_failed;    ///< The first of them.
    uint32_t first_status;  ///< Its row status.
    uint32_t reserved;      ///< Set to 0.
} mathexpr_bulk_outcome;

/// Evaluates the program over arrays: columns of values in, one result per row out. The result of a row equals, bit for bit,
/// the first evaluation after compiling the text with the variables set to the row's values; only the sign and payload of a NaN
/// may differ. A variable without a column keeps its value in all rows. A failed row does not stop the others: its result is NaN
/// (three NaN for a point, the number NaN for a record), and its status is the reason. No message is shown for a row. An
/// assignment in the text is not carried out; the assigned value is the result. The call leaves variables, pending assignment
/// and diagnostic as they were, and its memory does not grow with the number of rows.
///
/// Accepts both kinds of expression.
///
/// @param columns       variables to set; their stride is the size member of the first; NULL if there are none
/// @param results       destination of the values; unchanged if nothing was evaluated
/// @param thread_count  number of threads that compute, the calling one included; 0 means 1. The results do not depend on it.
/// @param outcome       its size is read, its other members are written with MATHEXPR_OK and with the statuses that
///                      MATHEXPR_BULK_... names; may be NULL
/// @return MATHEXPR_OK: all rows were evaluated, failed rows included. Otherwise nothing was evaluated:
///         MATHEXPR_NULL_ARGUMENT (expression, results), MATHEXPR_STALE_HANDLE, MATHEXPR_BUSY, MATHEXPR_NO_PROGRAM,
///         MATHEXPR_BAD_SIZE (a column, whose sizes must be equal; results; outcome), MATHEXPR_BULK_REFUSED,
///         MATHEXPR_OUT_OF_MEMORY
MATHEXPR_C_API mathexpr_status mathexpr_evaluate_bulk_utf8(mathexpr_expression* expression,
                                                           const mathexpr_column_utf8* columns, size_t column_count,
                                                           size_t row_count, const mathexpr_results* results,
                                                           uint32_t thread_count,
                                                           mathexpr_bulk_outcome* outcome) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_evaluate_bulk_utf16(mathexpr_expression* expression,
                                                            const mathexpr_column_utf16* columns, size_t column_count,
                                                            size_t row_count, const mathexpr_results* results,
                                                            uint32_t thread_count,
                                                            mathexpr_bulk_outcome* outcome) MATHEXPR_NOEXCEPT;
