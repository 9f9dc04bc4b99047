// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// mathexpr.h - the whole library for C, and for every language that can call C.
//
//     mathexpr_expression* expression = NULL;
//     mathexpr_value value;
//     if (mathexpr_create_utf8(NULL, &expression) == MATHEXPR_OK &&
//         mathexpr_set_expression_utf8(expression, "[1,2,0]+[3,4,0]", MATHEXPR_ZERO_TERMINATED) == MATHEXPR_OK &&
//         mathexpr_evaluate(expression, &value) == MATHEXPR_OK)
//         ...  // value.type is 1, value.x 4, value.y 6, value.z 0
//     mathexpr_destroy(expression);
//
// What is said here holds for every declaration below; each says what is its own.
//
// The interface is frozen: names, numbers and layouts of this header stay as they are, later versions only add. The
// header is C99, and C++17.
//
// Status. A function that can fail answers a mathexpr_status. Where it is not MATHEXPR_OK, nothing that the caller gave
// for results has been written, unless a function says otherwise. Nothing is thrown, and the process is never ended.
//
// NULL. A pointer that a function needs and that is NULL is answered by MATHEXPR_NULL_ARGUMENT, with nothing changed.
// Where NULL has a meaning, the declaration says so.
//
// Text comes in two encodings on every platform, UTF-8 (names that end in _utf8) and UTF-16 in the byte order of the
// machine (_utf16). Both may be used with one expression. A text is a pointer and a length in units of its encoding, a
// byte or 16 bits; as the length, MATHEXPR_ZERO_TERMINATED means up to the terminating zero. NULL with length 0 is the
// empty text, and NULL with any other length MATHEXPR_NULL_ARGUMENT. All positions and lengths are in units of the
// encoding of the function that is called. Ill-formed text is never repaired: bad UTF-8 (also an overlong form, an
// encoded surrogate, an end in the middle of a character) is answered by MATHEXPR_BAD_UTF8, a lone surrogate by
// MATHEXPR_BAD_UTF16, a zero within the length by MATHEXPR_ZERO_IN_TEXT; mathexpr_check_utf8 and mathexpr_check_utf16
// tell where it stands. Texts that the library answers are well-formed and zero-terminated; a length beside one does
// not count the zero.
//
// Structures whose first member is size grow at the end in later versions. The caller sets size to the sizeof of the
// structure that it was compiled with. Smaller than the library's: of what is read the missing members count as 0, of
// what is written the missing members are left out. Greater: what is read has to be 0 where the library knows no
// member, and what is written is set to 0 there. A size that no version can have (0, no multiple of the structure's
// alignment, more than MATHEXPR_MAX_STRUCT_SIZE), or members that the library does not know and that are not 0:
// MATHEXPR_BAD_SIZE.
//
// Threads. One expression is used from one thread at a time, together with its copies; two that are no copies share
// nothing that changes. Functions without an expression may be called from any thread at any time.
//
// Calls from within. While a call waits for one of the host's callbacks, calls on the same expression or a copy that
// would change it, destroy it or run it are answered by MATHEXPR_BUSY; those that read may be made.
//
// Handles. A handle that has been destroyed, or was never made, is answered by MATHEXPR_STALE_HANDLE where the library
// was built to check them (mathexpr_checks_handles). Otherwise the behaviour is undefined.
//
// Floating point. Everything is computed with the library's own control words (all exceptions masked, rounding to
// nearest, denormal numbers kept); the host's are in force in its callbacks and after the call. No function depends on
// the locale.
#pragma once

#include "mathexpr/Export.h"

#include <stddef.h>
#include <stdint.h>

/// The version of this interface. A library serves every host compiled with this number or a smaller one.
#define MATHEXPR_ABI_VERSION 1

/// As the length of a text: it ends before its first zero.
#define MATHEXPR_ZERO_TERMINATED ((size_t)-1)

/// As the number of arguments: any.
#define MATHEXPR_ANY_ARG_COUNT ((uint32_t)0xFFFFFFFF)

/// The upper bound on the member size of a structure.
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

/// How a call went: one of the numbers below. A later version may add some.
typedef int32_t mathexpr_status;

enum
{
    MATHEXPR_OK = 0,

    // What the caller gave. Nothing was changed.
    MATHEXPR_NULL_ARGUMENT = 1,
    MATHEXPR_STALE_HANDLE = 2,  ///< The handle was destroyed, or never made.
    MATHEXPR_WRONG_KIND = 3,    ///< The function is for the other kind of expression.
    MATHEXPR_BUSY = 4,          ///< A call on the expression waits for the host.
    MATHEXPR_BAD_UTF8 = 5,
    MATHEXPR_BAD_UTF16 = 6,
    MATHEXPR_ZERO_IN_TEXT = 7,
    MATHEXPR_BAD_SIZE = 8,       ///< The size of a structure.
    MATHEXPR_BAD_VALUE = 9,      ///< A value that is neither a number nor a point.
    MATHEXPR_BAD_OPTION = 10,    ///< A member or argument is none of what its declaration names.
    MATHEXPR_NOT_FOUND = 11,     ///< No such variable, or no such index.
    MATHEXPR_BULK_REFUSED = 12,  ///< The arrays; the outcome tells why.
    MATHEXPR_BUFFER_TOO_SMALL = 13,

    // What the expression is. The diagnostic tells more (mathexpr_get_diagnostic_utf8), but of MATHEXPR_NO_PROGRAM.
    MATHEXPR_PARSING_ERROR = 20,     ///< The text does not compile, or a point stands where a number is needed.
    MATHEXPR_DEFINITION_ERROR = 21,  ///< A name cannot be a variable.
    MATHEXPR_REFUSED = 22,           ///< An item refused its arguments, or an integer literal is too large.
    MATHEXPR_NO_PROGRAM = 23,        ///< There is nothing to evaluate.
    MATHEXPR_OTHER_KIND = 24,        ///< The value is a point, and a number was asked for, or the other way round.

    // What a callback of the host did.
    MATHEXPR_HOST_CALLBACK_THREW = 30,       ///< It ended by a C++ exception, which has been caught.
    MATHEXPR_HOST_CALLBACK_REFUSED = 31,     ///< It answered MATHEXPR_LOOKUP_REFUSED.
    MATHEXPR_HOST_CALLBACK_BAD_ANSWER = 32,  ///< It answered what it may not: another number or value, ill-formed text.

    MATHEXPR_OUT_OF_MEMORY = 40,
    MATHEXPR_INTERNAL_ERROR = 41,  ///< A fault in the library.
};

/// What a status means, in English, for a log.
/// @return zero-terminated ASCII that lives as long as the library is loaded; never NULL, also for an unknown number
MATHEXPR_C_API const char* mathexpr_status_text(mathexpr_status status) MATHEXPR_NOEXCEPT;

// ----- version ---------------------------------------------------------------

/// The version of the library: major * 1000000 + minor * 1000 + patch.
MATHEXPR_C_API uint32_t mathexpr_version_number(void) MATHEXPR_NOEXCEPT;

/// The same as text, such as "1.0.0".
/// @return zero-terminated ASCII that lives as long as the library is loaded
MATHEXPR_C_API const char* mathexpr_version_text(void) MATHEXPR_NOEXCEPT;

/// MATHEXPR_ABI_VERSION as the library was compiled with it. A host needs its own or a greater one.
MATHEXPR_C_API uint32_t mathexpr_abi_version(void) MATHEXPR_NOEXCEPT;

/// Whether this library was built to recognise stale handles: 1 or 0.
MATHEXPR_C_API int32_t mathexpr_checks_handles(void) MATHEXPR_NOEXCEPT;

// ----- text ------------------------------------------------------------------

/// Looks for what makes a text unfit for the library.
/// @param offset  receives, with MATHEXPR_BAD_UTF8, the index of the first byte of what is no character, and with
///                MATHEXPR_ZERO_IN_TEXT that of the zero; untouched otherwise; may be NULL
/// @return MATHEXPR_OK, one of these two, or MATHEXPR_NULL_ARGUMENT
MATHEXPR_C_API mathexpr_status mathexpr_check_utf8(const char* text, size_t length, size_t* offset) MATHEXPR_NOEXCEPT;

/// The same for UTF-16: MATHEXPR_BAD_UTF16 with the index of the first lone surrogate.
MATHEXPR_C_API mathexpr_status mathexpr_check_utf16(const mathexpr_char16* text, size_t length,
                                                    size_t* offset) MATHEXPR_NOEXCEPT;

// ----- value -----------------------------------------------------------------

enum
{
    MATHEXPR_NUMBER = 0,
    MATHEXPR_POINT = 1,
};

/// A number or a point. 32 bytes that never grow.
typedef struct mathexpr_value
{
    uint8_t type;       ///< MATHEXPR_NUMBER, held in x, or MATHEXPR_POINT, held in x, y and z.
    uint8_t flag;       ///< 1 marks a converted value or a distance, 0 any other. Read by the operator "&" only.
    uint16_t reserved;  ///< 0.
    uint32_t padding;   ///< 0.
    double x;
    double y;
    double z;
} mathexpr_value;

/// As the number of digits: as few as read back to the same bits.
#define MATHEXPR_EXACT_DIGITS 0

/// The capacity of a buffer that holds the text of any value, with its zero.
#define MATHEXPR_VALUE_TEXT_CAPACITY 1024

/// Writes a value as text that an expression reads back: plain decimals from 1e-6 up to 1e15, whole numbers up to 2^53 in
/// all their digits (above 2147483647 with ".0", since an integer literal may not be greater), beyond that "1.5e+20" and
/// "1.5*10^-7", and a point as "[x,y,z]". Not a number is "nan", the infinities are "inf" and "-inf", which no expression
/// reads. Nothing is allocated.
/// @param value     the flag does not show
/// @param digits    how many significant digits, 1 to 17, or MATHEXPR_EXACT_DIGITS. A whole number up to 2^53 keeps all of
///                  its own, and so does a number whose text would otherwise be read as 0 or as infinity.
/// @param text      receives the text and a terminating zero; NULL with capacity 0 asks for the length
/// @param capacity  of text, in units
/// @param length    receives the length of the text, also with MATHEXPR_BUFFER_TOO_SMALL; may be NULL
/// @return MATHEXPR_OK, MATHEXPR_NULL_ARGUMENT (value, or text with a capacity), MATHEXPR_BAD_VALUE, MATHEXPR_BAD_OPTION
///         (digits), MATHEXPR_BUFFER_TOO_SMALL
MATHEXPR_C_API mathexpr_status mathexpr_format_value_utf8(const mathexpr_value* value, uint32_t digits, char* text,
                                                          size_t capacity, size_t* length) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_format_value_utf16(const mathexpr_value* value, uint32_t digits,
                                                           mathexpr_char16* text, size_t capacity,
                                                           size_t* length) MATHEXPR_NOEXCEPT;

// ----- expression ------------------------------------------------------------

/// Compiles texts and evaluates them, and keeps variables from one to the next. Made by mathexpr_create_utf8,
/// mathexpr_create_utf16 or mathexpr_copy, owned by the caller, destroyed by mathexpr_destroy.
typedef struct mathexpr_expression mathexpr_expression;

/// The kinds of expression.
enum
{
    MATHEXPR_EXPRESSION = 0,  ///< Compiles once and evaluates often; may ask the host for names.
    MATHEXPR_CALCULATOR = 1,  ///< Computes one text in one call, with a greatest integer; shows messages; has copies.
};

/// Flags of an expression.
enum
{
    /// Failures are shown to the user. Without it only message 19 is, about an integer literal that is too large. A
    /// calculator shows messages whether or not it is set.
    MATHEXPR_SHOW_MESSAGES = 1,
};

/// What a look-up answers.
enum
{
    MATHEXPR_LOOKUP_NOT_KNOWN = 0,  ///< The name is unknown to the host.
    MATHEXPR_LOOKUP_FOUND = 1,      ///< The value has been filled.
    MATHEXPR_LOOKUP_REFUSED = 2,    ///< Gives the call up: it answers MATHEXPR_HOST_CALLBACK_REFUSED.
};

// The callbacks. Each is handed the context of the expression's options. It returns, or ends by a C++ exception,
// which the library catches, whatever its type (also that of the library's own C++ classes, MTExceptions): the call
// that waited answers MATHEXPR_HOST_CALLBACK_THREW, there is no diagnostic, and the expression is as usable as after
// any failure. It may not leave by longjmp nor end its thread.

/// Asked while a text is compiled, for a name that is neither a constant nor a variable of the expression.
/// @param name    the name exactly as written, zero-terminated, owned by the library, valid during the call only
/// @param length  of the name, in units
/// @param value   the number 0 on entry; to be filled with a number or a point; what it holds counts with
///                MATHEXPR_LOOKUP_FOUND only, and the name is then a variable that is not asked for again
/// @return MATHEXPR_LOOKUP_NOT_KNOWN, MATHEXPR_LOOKUP_FOUND or MATHEXPR_LOOKUP_REFUSED; with anything else, or with a
///         value that is neither number nor point, the call answers MATHEXPR_HOST_CALLBACK_BAD_ANSWER
typedef int32_t (*mathexpr_lookup_utf8)(void* context, const char* name, size_t length, mathexpr_value* value);
typedef int32_t (*mathexpr_lookup_utf16)(void* context, const mathexpr_char16* name, size_t length,
                                         mathexpr_value* value);

/// Shows one message to the user and returns when the user has seen it.
/// @param id      number of the message, 1 to 19
/// @param text    its text in the user's language, zero-terminated, owned by the library, valid during the call only
/// @param length  of the text, in units
typedef void (*mathexpr_show_message_utf8)(void* context, uint32_t id, const char* text, size_t length);
typedef void (*mathexpr_show_message_utf16)(void* context, uint32_t id, const mathexpr_char16* text, size_t length);

/// Called with 0, 1, 2 and so on until it answers NULL, while a diagnostic about an unknown name is made, for
/// suggestions.
/// @return a name that the host would answer, zero-terminated, owned by the host and valid until the next call; NULL
///         when there are no more. With ill-formed text the call answers MATHEXPR_HOST_CALLBACK_BAD_ANSWER.
typedef const char* (*mathexpr_get_name_utf8)(void* context, uint32_t index);
typedef const mathexpr_char16* (*mathexpr_get_name_utf16)(void* context, uint32_t index);

/// What an expression is made with. All but size may be 0.
typedef struct mathexpr_options_utf8
{
    uint32_t size;      ///< sizeof(mathexpr_options_utf8).
    uint32_t kind;      ///< MATHEXPR_EXPRESSION or MATHEXPR_CALCULATOR.
    uint32_t flags;     ///< MATHEXPR_SHOW_MESSAGES or 0.
    uint32_t reserved;  ///< 0.
    void* context;      ///< Handed to the callbacks and never looked at. The host keeps alive what it points at.
    mathexpr_lookup_utf8 lookup;              ///< NULL: no names of the host. Has to be NULL for a calculator.
    mathexpr_show_message_utf8 show_message;  ///< NULL: as the process shows messages (see
                                              ///< mathexpr/MessageDisplay.h): unless a host has replaced it, a box
                                              ///< on Windows, standard error elsewhere.
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

/// Makes an expression. Which of the two functions is used decides on the encoding of the callbacks only.
/// @param options     read during the call; NULL: all 0, an expression that shows nothing and has no callbacks
/// @param expression  receives the handle, which the caller owns
/// @return MATHEXPR_OK, MATHEXPR_NULL_ARGUMENT (expression), MATHEXPR_BAD_SIZE, MATHEXPR_BAD_OPTION (an unknown kind or
///         flag, a lookup for a calculator, reserved not 0), MATHEXPR_OUT_OF_MEMORY
MATHEXPR_C_API mathexpr_status mathexpr_create_utf8(const mathexpr_options_utf8* options,
                                                    mathexpr_expression** expression) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_create_utf16(const mathexpr_options_utf16* options,
                                                     mathexpr_expression** expression) MATHEXPR_NOEXCEPT;

/// Makes a copy of a calculator. It shares variables, program, diagnostic, limits and callbacks with its source;
/// either may be destroyed first, and an assignment lands in the one that was asked.
/// @param copy  receives the handle, which the caller owns
/// @return MATHEXPR_OK, MATHEXPR_NULL_ARGUMENT, MATHEXPR_STALE_HANDLE, MATHEXPR_WRONG_KIND (no calculator),
///         MATHEXPR_BUSY, MATHEXPR_OUT_OF_MEMORY
MATHEXPR_C_API mathexpr_status mathexpr_copy(mathexpr_expression* expression,
                                             mathexpr_expression** copy) MATHEXPR_NOEXCEPT;

/// Destroys an expression. Its handle, its diagnostic and lists of names become invalid, and with the last of the
/// copies the addresses of its variables.
/// @param expression  NULL: nothing is done
/// @return MATHEXPR_OK, MATHEXPR_STALE_HANDLE, MATHEXPR_BUSY (it is not destroyed)
MATHEXPR_C_API mathexpr_status mathexpr_destroy(mathexpr_expression* expression) MATHEXPR_NOEXCEPT;

/// Compiles a text. After a failure the expression holds no program; with a status of what the caller gave (up to
/// MATHEXPR_BULK_REFUSED) it still holds the one of before.
/// @return MATHEXPR_OK: there is a program to evaluate. MATHEXPR_NULL_ARGUMENT, MATHEXPR_STALE_HANDLE,
///         MATHEXPR_WRONG_KIND (a calculator), MATHEXPR_BUSY, MATHEXPR_BAD_UTF8 or MATHEXPR_BAD_UTF16,
///         MATHEXPR_ZERO_IN_TEXT; MATHEXPR_PARSING_ERROR, MATHEXPR_DEFINITION_ERROR, MATHEXPR_REFUSED, in the last
///         three cases after the user has seen a message, where messages are shown; MATHEXPR_HOST_CALLBACK_...;
///         MATHEXPR_OUT_OF_MEMORY
MATHEXPR_C_API mathexpr_status mathexpr_set_expression_utf8(mathexpr_expression* expression, const char* text,
                                                            size_t length) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_set_expression_utf16(mathexpr_expression* expression,
                                                             const mathexpr_char16* text,
                                                             size_t length) MATHEXPR_NOEXCEPT;

/// Runs the program and makes a pending assignment, once.
/// @param value  receives the value
/// @return MATHEXPR_OK, MATHEXPR_NULL_ARGUMENT, MATHEXPR_STALE_HANDLE, MATHEXPR_WRONG_KIND (a calculator),
///         MATHEXPR_BUSY, MATHEXPR_NO_PROGRAM, MATHEXPR_REFUSED, MATHEXPR_PARSING_ERROR (a point where a function needs
///         a number), MATHEXPR_DEFINITION_ERROR (the name that is assigned to), MATHEXPR_HOST_CALLBACK_THREW,
///         MATHEXPR_OUT_OF_MEMORY
MATHEXPR_C_API mathexpr_status mathexpr_evaluate(mathexpr_expression* expression,
                                                 mathexpr_value* value) MATHEXPR_NOEXCEPT;

/// Compiles and evaluates a text in one call.
/// @param value  receives the value
/// @return as mathexpr_set_expression_utf8 and, where that answers MATHEXPR_OK, mathexpr_evaluate
MATHEXPR_C_API mathexpr_status mathexpr_evaluate_text_utf8(mathexpr_expression* expression, const char* text,
                                                           size_t length, mathexpr_value* value) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_evaluate_text_utf16(mathexpr_expression* expression,
                                                            const mathexpr_char16* text, size_t length,
                                                            mathexpr_value* value) MATHEXPR_NOEXCEPT;

/// The same for a calculator, with a bound on integer literals.
/// @param max_integer  the greatest integer literal accepted; a literal with a decimal point is not tested
/// @param value        receives the value
/// @return as mathexpr_evaluate_text_utf8; MATHEXPR_WRONG_KIND where the expression is no calculator
MATHEXPR_C_API mathexpr_status mathexpr_calculate_utf8(mathexpr_expression* expression, const char* text, size_t length,
                                                       uint32_t max_integer, mathexpr_value* value) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_calculate_utf16(mathexpr_expression* expression, const mathexpr_char16* text,
                                                        size_t length, uint32_t max_integer,
                                                        mathexpr_value* value) MATHEXPR_NOEXCEPT;

/// Forgets the name that a text such as "a=2" waits to assign. An assignment that failed, such as "pi=3", otherwise
/// stays pending and is made by the next evaluation that succeeds, whatever its text.
/// @return MATHEXPR_OK, MATHEXPR_NULL_ARGUMENT, MATHEXPR_STALE_HANDLE, MATHEXPR_BUSY
MATHEXPR_C_API mathexpr_status mathexpr_drop_assignment(mathexpr_expression* expression) MATHEXPR_NOEXCEPT;

// ----- function --------------------------------------------------------------

/// A text as a function of numbers, whose arguments are given by position: the fastest way to one number. Made by
/// mathexpr_create_function_utf8, mathexpr_create_function_utf16 or mathexpr_copy_function, owned by the caller, destroyed
/// by mathexpr_destroy_function. It does not need the expression in which it was made, and calls no callback.
/// One function is used from one thread at a time; a function and its copies share nothing that changes.
typedef struct mathexpr_function mathexpr_function;

/// Compiles a text, as mathexpr_set_expression_utf8 does with the expression, and makes a function of it. An assignment in
/// the text is not carried out. Variables that are no arguments keep in the function the values that they have now.
/// @param arguments     names of variables of the expression, zero-terminated, by position; NULL where there are none. The
///                      text need not use them. Their values do not count.
/// @param argument_count  how many
/// @param function      receives the handle, which the caller owns
/// @return as mathexpr_set_expression_utf8, where the diagnostic tells more; MATHEXPR_NULL_ARGUMENT (also for a name),
///         MATHEXPR_BAD_OPTION (two arguments have one name), MATHEXPR_NOT_FOUND (an argument is no variable)
MATHEXPR_C_API mathexpr_status mathexpr_create_function_utf8(mathexpr_expression* expression, const char* text,
                                                             size_t length, const char* const* arguments,
                                                             size_t argument_count,
                                                             mathexpr_function** function) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_create_function_utf16(mathexpr_expression* expression,
                                                              const mathexpr_char16* text, size_t length,
                                                              const mathexpr_char16* const* arguments,
                                                              size_t argument_count,
                                                              mathexpr_function** function) MATHEXPR_NOEXCEPT;

/// Makes a copy, such as one for each thread.
/// @param copy  receives the handle, which the caller owns
/// @return MATHEXPR_OK, MATHEXPR_NULL_ARGUMENT, MATHEXPR_STALE_HANDLE, MATHEXPR_OUT_OF_MEMORY
MATHEXPR_C_API mathexpr_status mathexpr_copy_function(const mathexpr_function* function,
                                                      mathexpr_function** copy) MATHEXPR_NOEXCEPT;

/// Destroys a function.
/// @param function  NULL: nothing is done
/// @return MATHEXPR_OK, MATHEXPR_STALE_HANDLE
MATHEXPR_C_API mathexpr_status mathexpr_destroy_function(mathexpr_function* function) MATHEXPR_NOEXCEPT;

/// Computes the function. The result is bit for bit what an evaluation gives right after the text was compiled, with the
/// variables set to the arguments, whatever was computed before. Nothing is allocated.
/// @param arguments  as many numbers as the function has arguments; NULL where it has none
/// @param result     receives the value
/// @return MATHEXPR_OK, MATHEXPR_NULL_ARGUMENT, MATHEXPR_STALE_HANDLE, MATHEXPR_REFUSED (an item refused its arguments, or
///         was given a point for a number), MATHEXPR_OTHER_KIND (the value is a point)
MATHEXPR_C_API mathexpr_status mathexpr_call_function(mathexpr_function* function, const double* arguments,
                                                      double* result) MATHEXPR_NOEXCEPT;

// ----- limits ----------------------------------------------------------------

/// Upper bounds on an accepted text, in three measures; 0 is no limit. A text beyond one is refused before anything of it
/// is compiled.
typedef struct mathexpr_limits
{
    uint32_t size;             ///< sizeof(mathexpr_limits).
    uint32_t max_text_length;  ///< Characters as typed, blanks included: code points, on Windows units of UTF-16, in
                               ///< both encodings.
    uint32_t max_records;      ///< Values, operators and function calls, each as often as it stands in the text.
    uint32_t max_nesting;      ///< Nesting depth: brackets, and operators before an operand.
} mathexpr_limits;

/// Sets the limits, in force from the next text that is compiled.
/// @param limits  read during the call
/// @return MATHEXPR_OK, MATHEXPR_NULL_ARGUMENT, MATHEXPR_STALE_HANDLE, MATHEXPR_BUSY, MATHEXPR_BAD_SIZE
MATHEXPR_C_API mathexpr_status mathexpr_set_limits(mathexpr_expression* expression,
                                                   const mathexpr_limits* limits) MATHEXPR_NOEXCEPT;

/// The limits in force; all 0 in a new expression.
/// @param limits  its size is read, the rest filled
/// @return MATHEXPR_OK, MATHEXPR_NULL_ARGUMENT, MATHEXPR_STALE_HANDLE, MATHEXPR_BAD_SIZE
MATHEXPR_C_API mathexpr_status mathexpr_get_limits(const mathexpr_expression* expression,
                                                   mathexpr_limits* limits) MATHEXPR_NOEXCEPT;

// ----- diagnostics -----------------------------------------------------------

/// Which kind of failure a diagnostic tells of.
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

/// Codes of MATHEXPR_KIND_DEFINITION, and of a name that mathexpr_set_variable_utf8 refuses.
enum
{
    MATHEXPR_DEFINITION_NAME_EMPTY = 12,
    MATHEXPR_DEFINITION_NAME_IS_NUMBER = 13,
    MATHEXPR_DEFINITION_NAME_IS_CONSTANT = 14,
    MATHEXPR_DEFINITION_CONTAINS_SYNTAX_CHARACTER = 15,
};

/// What would have been accepted where an expression failed: a set of bits.
enum
{
    MATHEXPR_EXPECTED_VALUE = 0x1,
    MATHEXPR_EXPECTED_OPERATOR = 0x2,
    MATHEXPR_EXPECTED_CLOSING_BRACKET = 0x4,
    MATHEXPR_EXPECTED_SEPARATOR = 0x8,
    MATHEXPR_EXPECTED_END = 0x10,           ///< The end of the expression.
    MATHEXPR_EXPECTED_FUNCTION = 0x20,      ///< The name of a function, with its brackets.
    MATHEXPR_EXPECTED_KNOWN_NAME = 0x40,    ///< A constant, a variable, or a name that the host answers.
    MATHEXPR_EXPECTED_NEW_NAME = 0x80,      ///< Before "=": a name that can be a variable.
    MATHEXPR_EXPECTED_OTHER_COUNT = 0x100,  ///< Another number of arguments, one of accepted_arg_counts.
    MATHEXPR_EXPECTED_NUMBER = 0x200,       ///< A number instead of a point.
    MATHEXPR_EXPECTED_POINT = 0x400,        ///< Points instead of numbers.
    MATHEXPR_EXPECTED_SAME_KIND = 0x800,    ///< Two numbers or two points.
    MATHEXPR_EXPECTED_IN_DOMAIN = 0x1000,   ///< Another value: the item is not defined for this one.
    MATHEXPR_EXPECTED_SMALLER_NUMBER = 0x2000,
    MATHEXPR_EXPECTED_LESS = 0x4000,  ///< A shorter or simpler expression.
};

/// The last failure of an expression. Where nothing has failed, message is 0, and so is everything else but the
/// texts, which are empty. No pointer is NULL but those to an array without elements. All that is pointed at is
/// owned by the expression and valid until the next call of mathexpr_get_diagnostic_utf8 on the same handle, or its
/// destruction.
typedef struct mathexpr_diagnostic_utf8
{
    uint32_t size;     ///< sizeof(mathexpr_diagnostic_utf8).
    uint32_t message;  ///< Number of the message that is shown where messages are shown, 1 to 19.
    uint32_t kind;     ///< MATHEXPR_KIND_...
    uint32_t code;     ///< MATHEXPR_PARSING_... or MATHEXPR_DEFINITION_..., by kind; 0 with MATHEXPR_KIND_NONE.
    size_t start;      ///< Where the failure stands in the text as it was typed, from 0, in units of this encoding.
    size_t length;     ///< How far it reaches, in the same units; 0 where nothing in the text stands for it.
    const char* text;  ///< The text of the message in the user's language.
    size_t text_length;
    const char* item;  ///< The token, symbol or text concerned.
    size_t item_length;
    const char* conflict;  ///< What stands in the way of a definition.
    size_t conflict_length;
    uint32_t expected;   ///< What would have been accepted: bits of MATHEXPR_EXPECTED_...
    uint32_t arg_count;  ///< How many arguments the item concerned was given; 0 where no count is known.
    const uint32_t* accepted_arg_counts;  ///< The numbers of arguments that the function concerned takes, in the order
                                          ///< of its overloads; MATHEXPR_ANY_ARG_COUNT is any number.
    size_t accepted_count;
    const char* const* suggestions;  ///< For an unknown name: up to three that may be meant, the nearest first,
                                     ///< each zero-terminated.
    size_t suggestion_count;
} mathexpr_diagnostic_utf8;

/// The same in UTF-16; start and length count units of UTF-16.
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
} mathexpr_diagnostic_utf16;

/// Whether there is a failure to tell about.
/// @param failed  receives 1 or 0
/// @return MATHEXPR_OK, MATHEXPR_NULL_ARGUMENT, MATHEXPR_STALE_HANDLE
MATHEXPR_C_API mathexpr_status mathexpr_has_failed(const mathexpr_expression* expression,
                                                   int32_t* failed) MATHEXPR_NOEXCEPT;

/// Tells what went wrong. The failure is cleared by the next text that is compiled and by the next evaluation that
/// runs a program; a call that answers a status of what the caller gave, or MATHEXPR_NO_PROGRAM, leaves it. A lookup
/// that ends a call leaves no diagnostic. It is there when the call that failed returns; in show_message it may not be
/// yet. Takes time in proportion to the text and to the number of names known.
/// @param diagnostic  its size is read, the rest filled
/// @return MATHEXPR_OK, MATHEXPR_NULL_ARGUMENT, MATHEXPR_STALE_HANDLE, MATHEXPR_BUSY (in get_name), MATHEXPR_BAD_SIZE,
///         MATHEXPR_HOST_CALLBACK_THREW or MATHEXPR_HOST_CALLBACK_BAD_ANSWER (of get_name), MATHEXPR_OUT_OF_MEMORY
MATHEXPR_C_API mathexpr_status mathexpr_get_diagnostic_utf8(mathexpr_expression* expression,
                                                            mathexpr_diagnostic_utf8* diagnostic) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_get_diagnostic_utf16(mathexpr_expression* expression,
                                                             mathexpr_diagnostic_utf16* diagnostic) MATHEXPR_NOEXCEPT;

// ----- variables -------------------------------------------------------------

// Names of variables are compared without regard to the case of the letters A to Z and are answered as they were
// written when the variable was defined. Constants are no variables.

/// Which names a list holds.
enum
{
    MATHEXPR_NAMES_USED = 0,     ///< Those that the program reads, in the order of first use; none without a program.
    MATHEXPR_NAMES_DEFINED = 1,  ///< All variables, in the order of definition.
    MATHEXPR_NAMES_OF_HOST = 2,  ///< Those that lookup has answered, in the order in which it was asked.
};

/// A list of names, owned by the expression and valid until the next call of mathexpr_get_names_utf8 on the same
/// handle, or its destruction.
typedef struct mathexpr_names_utf8
{
    uint32_t size;             ///< sizeof(mathexpr_names_utf8).
    uint32_t reserved;         ///< Set to 0.
    const char* const* names;  ///< Each zero-terminated; NULL where there are none.
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
/// @param names  its size is read, the rest filled
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

/// Why a name cannot be a variable.
typedef struct mathexpr_name_refusal
{
    uint32_t size;  ///< sizeof(mathexpr_name_refusal).
    uint32_t code;  ///< MATHEXPR_DEFINITION_...
    size_t start;   ///< What in the name stands in the way, in units of the encoding of the call;
    size_t length;  ///< the whole name where no part of it does.
} mathexpr_name_refusal;

/// Gives a variable a value, in place where it exists, so that the program computes with it from the next
/// evaluation on. A new variable may be used by the next text that is compiled. It leaves the diagnostic alone.
/// Refused are the names that an assignment refuses: a number, a constant, one that holds ".", ",", "[" or "]". Beyond
/// those, names that no text can assign to: the empty one, and one that holds a blank, "(", ")", "=" or the symbol of an
/// operator.
/// @param value    the type is MATHEXPR_NUMBER or MATHEXPR_POINT, the flag 0 or 1
/// @param refusal  with MATHEXPR_DEFINITION_ERROR its size is read and the rest filled, if it is not NULL
/// @return MATHEXPR_OK, MATHEXPR_NULL_ARGUMENT, MATHEXPR_STALE_HANDLE, MATHEXPR_BUSY, MATHEXPR_BAD_UTF8 or
///         MATHEXPR_BAD_UTF16, MATHEXPR_ZERO_IN_TEXT, MATHEXPR_BAD_VALUE, MATHEXPR_BAD_SIZE (refusal),
///         MATHEXPR_DEFINITION_ERROR (the name cannot be a variable; nothing has changed), MATHEXPR_OUT_OF_MEMORY
MATHEXPR_C_API mathexpr_status mathexpr_set_variable_utf8(mathexpr_expression* expression, const char* name,
                                                          size_t length, const mathexpr_value* value,
                                                          mathexpr_name_refusal* refusal) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_set_variable_utf16(mathexpr_expression* expression, const mathexpr_char16* name,
                                                           size_t length, const mathexpr_value* value,
                                                           mathexpr_name_refusal* refusal) MATHEXPR_NOEXCEPT;

/// Forgets a variable. A program that reads it becomes empty: mathexpr_evaluate answers MATHEXPR_NO_PROGRAM until
/// the next text is compiled.
/// @return MATHEXPR_OK, MATHEXPR_NULL_ARGUMENT, MATHEXPR_STALE_HANDLE, MATHEXPR_BUSY, MATHEXPR_BAD_UTF8 or
///         MATHEXPR_BAD_UTF16, MATHEXPR_ZERO_IN_TEXT, MATHEXPR_NOT_FOUND, MATHEXPR_OUT_OF_MEMORY
MATHEXPR_C_API mathexpr_status mathexpr_remove_variable_utf8(mathexpr_expression* expression, const char* name,
                                                             size_t length) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_remove_variable_utf16(mathexpr_expression* expression,
                                                              const mathexpr_char16* name,
                                                              size_t length) MATHEXPR_NOEXCEPT;

/// Where a variable's value is held, for reading and for writing in place; what is written has to be a number or a
/// point. The record is owned by the expression. The address stays valid until the variable is removed or the last
/// of the expression and its copies is destroyed; setting, assigning and compiling do not move it.
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

/// What an item is about.
enum
{
    MATHEXPR_FAMILY_OPERATORS = 0,
    MATHEXPR_FAMILY_CORE_MATH = 1,
    MATHEXPR_FAMILY_ANGLE = 2,  ///< This and the next three are conversions between units.
    MATHEXPR_FAMILY_LENGTH = 3,
    MATHEXPR_FAMILY_AREA = 4,
    MATHEXPR_FAMILY_VOLUME = 5,
    MATHEXPR_FAMILY_GEOMETRY = 6,
    MATHEXPR_FAMILY_CONSTANTS = 7,
};

/// One constant, operator or function. The texts are zero-terminated and live as long as the library is loaded.
typedef struct mathexpr_vocabulary_item_utf8
{
    uint32_t size;            ///< sizeof(mathexpr_vocabulary_item_utf8).
    uint32_t kind;            ///< MATHEXPR_ITEM_...
    uint32_t family;          ///< MATHEXPR_FAMILY_...
    uint32_t arg_count;       ///< Arguments or operands; MATHEXPR_ANY_ARG_COUNT for any number; 0 for a constant.
    int32_t precedence;       ///< Of an operator, 0 to 4, the higher one binding tighter; 0 for the others.
    uint32_t unary;           ///< 1 for an operator written before its one operand, else 0.
    uint32_t constant;        ///< 1 where the result depends on the arguments alone, and for a constant; else 0.
    uint32_t reserved;        ///< Set to 0.
    double value;             ///< Of a constant; 0 for the others.
    const char* symbol;       ///< As written in an expression. Overloads share it, as do two operators "-".
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

/// Walks the items in the order in which an expression knows them: constants, operators, functions.
/// @param index  from 0 on
/// @param item   its size is read, the rest filled
/// @return MATHEXPR_OK, MATHEXPR_NULL_ARGUMENT, MATHEXPR_BAD_SIZE, MATHEXPR_NOT_FOUND (from the number of items on),
///         MATHEXPR_OUT_OF_MEMORY
MATHEXPR_C_API mathexpr_status mathexpr_get_vocabulary_item_utf8(uint32_t index,
                                                                 mathexpr_vocabulary_item_utf8* item) MATHEXPR_NOEXCEPT;
MATHEXPR_C_API mathexpr_status mathexpr_get_vocabulary_item_utf16(uint32_t index, mathexpr_vocabulary_item_utf16* item)
    MATHEXPR_NOEXCEPT;

// ----- bulk evaluation -------------------------------------------------------

/// What an array holds.
enum
{
    MATHEXPR_NUMBERS = 0,  ///< A double a row.
    MATHEXPR_POINTS = 1,   ///< Three doubles a row.
    MATHEXPR_RECORDS = 2,  ///< A mathexpr_value a row, number or point; for results only.
};

/// The values of one variable. Distances are in bytes, may be negative, and are multiples of 8; data is aligned
/// to 8. A distance of 0 repeats one value.
typedef struct mathexpr_column_utf8
{
    uint32_t size;     ///< sizeof(mathexpr_column_utf8): also the distance from one column to the next in an array.
    uint32_t kind;     ///< MATHEXPR_NUMBERS or MATHEXPR_POINTS.
    const char* name;  ///< A name that the expression does not read does no harm.
    size_t name_length;
    const double* data;  ///< The first row's number or x; owned by the caller; NULL only where there are no rows.
    ptrdiff_t stride;    ///< From one row to the next.
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

/// Where the values go. Alignment and distances as in a column, but no two rows may share memory. A value may go
/// where a column holds the same row's number; where results and columns overlap in any other way, what is computed
/// from the overlapped rows is unspecified.
typedef struct mathexpr_results
{
    uint32_t size;     ///< sizeof(mathexpr_results).
    uint32_t kind;     ///< MATHEXPR_NUMBERS, MATHEXPR_POINTS or MATHEXPR_RECORDS.
    void* data;        ///< The first row's double, x or record; owned by the caller; NULL only where there are no rows.
    ptrdiff_t stride;  ///< From one row to the next.
    ptrdiff_t coordinate_stride;  ///< Of points: from x to y and from y to z.
    uint32_t* row_status;         ///< For each row MATHEXPR_ROW_... or a message number, without gaps; may be NULL.
} mathexpr_results;

/// How a row went: one of these, or the number of the message, 1 to 19, that a diagnostic of the row would have.
enum
{
    MATHEXPR_ROW_DONE = 0,
    MATHEXPR_ROW_ARGUMENTS_REFUSED = 3,  ///< An item refused its arguments without a message of its own, or was
                                         ///< given a point for a number.
    MATHEXPR_ROW_OTHER_KIND = 256,       ///< The value is a point and the results take numbers, or the other way round.
};

/// Why nothing was evaluated.
enum
{
    MATHEXPR_BULK_NONE = 0,
    MATHEXPR_BULK_BUSY = 1,                ///< MATHEXPR_BUSY.
    MATHEXPR_BULK_NO_PROGRAM = 2,          ///< MATHEXPR_NO_PROGRAM.
    MATHEXPR_BULK_COLUMNS_MISSING = 3,     ///< The array of columns is NULL, and there should be some.
    MATHEXPR_BULK_COLUMN_NAME = 4,         ///< A column's name is NULL, empty, ill-formed, or has a zero in it.
    MATHEXPR_BULK_COLUMN_TWICE = 5,        ///< Two columns have the same name.
    MATHEXPR_BULK_COLUMN_KIND = 6,         ///< A column is neither of numbers nor of points.
    MATHEXPR_BULK_COLUMN_DATA = 7,         ///< A column's data is NULL.
    MATHEXPR_BULK_COLUMN_ALIGNMENT = 8,    ///< A column's data or a distance in it is no multiple of 8.
    MATHEXPR_BULK_COLUMN_VARIABLE = 9,     ///< The variable's value is not the library's to replace.
    MATHEXPR_BULK_RESULTS_KIND = 10,       ///< The kind of the results is none of the three.
    MATHEXPR_BULK_RESULTS_DATA = 11,       ///< The results' data is NULL.
    MATHEXPR_BULK_RESULTS_ALIGNMENT = 12,  ///< Their data or a distance is no multiple of 8, or row_status none of 4.
    MATHEXPR_BULK_RESULTS_OVERLAP = 13,    ///< Two rows of the results would share memory.
};

/// What came of it.
typedef struct mathexpr_bulk_outcome
{
    uint32_t size;          ///< sizeof(mathexpr_bulk_outcome).
    uint32_t error;         ///< MATHEXPR_BULK_...
    size_t column;          ///< With an error about a column: its index; of two with one name the later one.
    size_t failed_count;    ///< How many rows have no value.
    size_t first_failed;    ///< The first of them.
    uint32_t first_status;  ///< Its row status.
    uint32_t reserved;      ///< Set to 0.
} mathexpr_bulk_outcome;

/// Evaluates the program over arrays: columns of values in, one result a row out. A row's result is bit for bit
/// what an evaluation gives with the variables set to the row's values, right after the text was compiled; a
/// variable without a column has in all rows the value that it has in the expression. A row that fails does not
/// stop the others: its result is NaN (a point of three NaN, a record that is the number NaN) and its status tells
/// why. No message is shown for a row. An assignment in the text is not carried out; the value is the result.
/// Afterwards the expression is what it was: variables, pending assignment, diagnostic. Nothing is allocated in
/// proportion to the number of rows.
///
/// Both kinds of expression may be used.
///
/// @param columns     for the variables to set, as far from each other as the first one's size says; NULL where there
///                    are none
/// @param results     where the values go; untouched where nothing was evaluated
/// @param thread_count  how many threads compute, this one among them; 0 and 1: this one alone. The results do not depend
///                    on it.
/// @param outcome     its size is read, the rest filled: with MATHEXPR_OK, and with the statuses that
///                    mathexpr_bulk_outcome names, too; may be NULL
/// @return MATHEXPR_OK: all rows were evaluated, whether or not they failed. Otherwise nothing was:
///         MATHEXPR_NULL_ARGUMENT (expression, results), MATHEXPR_STALE_HANDLE, MATHEXPR_BUSY, MATHEXPR_NO_PROGRAM,
///         MATHEXPR_BAD_SIZE (a column, which all have to have the same size; results; outcome), MATHEXPR_BULK_REFUSED,
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
