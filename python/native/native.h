// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// native.h - what the sources of the native module share.
//
// The module is C over mathexpr.h and Python's stable ABI. It holds what has to be fast: a handle of the library
// (Session), a text as a callable (Function), and arrays handed to bulk evaluation where they are (Columns). Everything
// else is Python, and is called back from here by the name of its module (hook).
//
//     values.c     Python values <-> records of the library
//     failures.c   statuses and diagnostics -> exceptions
//     session.c    Session: one expression, its variables, its resolver
//     editor.c     Session: tokens, completion and the like of any text
//     bulk.c       Columns: arrays and values for many rows -> bulk evaluation
//     function.c   Function: by position or by name, numbers or arrays
//     module.c     the module, and what needs no handle
//
// Locks. With a GIL, a call that does not give it up needs none. A Session is used by one thread at a time: whoever
// enters it owns it until it leaves, and another thread is refused (Session) or takes another lane (Function).
#pragma once

#define PY_SSIZE_T_CLEAN
#include <Python.h>
#include <mathexpr.h>
#include <stdatomic.h>
#include <stdbool.h>

// ----- values ----------------------------------------------------------------

/// Reads a number or a Point. On failure false, with a TypeError set.
bool valueOf(PyObject* object, mathexpr_value* value);

/// Reads a float or int itself, no subclass. False, with nothing set, for anything else.
bool plainNumberOf(PyObject* object, double* number);

/// A float or a Point; NULL with an exception.
PyObject* objectOf(const mathexpr_value* value);

/// The UTF-8 of a str, owned by it; NULL with a TypeError that begins with what.
const char* utf8Of(PyObject* text, const char* what, Py_ssize_t* length);

/// Names are compared without regard to the case of A to Z: the name with these in lower case.
PyObject* foldedName(PyObject* name);

// ----- failures --------------------------------------------------------------

/// Calls a function of one of the package's modules; the arguments as for Py_BuildValue, in brackets.
PyObject* hook(const char* module, const char* function, const char* arguments, ...);

/// Sets the exception that a hook has answered. The reference is taken.
void raiseAnswered(PyObject* exception);

/// Sets the exception for a status that no diagnostic tells about.
void raiseStatus(mathexpr_status status);

// ----- Session ---------------------------------------------------------------

typedef struct Session
{
    PyObject ob_base;
    mathexpr_expression* handle;  ///< NULL once closed.
    PyObject* resolver;           ///< Callable, or NULL.
    PyObject* hostNames;          ///< Iterable, or NULL.
    PyObject* answeredNames;      ///< What a diagnostic is reading: a list of bytes, or NULL.
    PyObject* text;               ///< Compiled last, whether or not it compiles; NULL before the first.
    PyObject* usedNames;          ///< Dictionary of the folded names that the program reads; NULL until asked for.
    PyThreadState* suspended;     ///< Of the thread that gave up the GIL for this session, for callbacks.
    atomic_ulong owner;           ///< The thread that has entered; 0 where none has.
    unsigned depth;               ///< How often its owner has entered.
} Session;

extern PyTypeObject* sessionType;
extern PyType_Spec sessionSpec;

/// False where another thread has entered; nothing is set.
bool tryEnter(Session* self);

/// The same where no thread has entered, not this one either.
bool tryEnterFirst(Session* self);

/// tryEnter with a RuntimeError, and a ValueError where the session is closed.
bool enter(Session* self);

void leave(Session* self);

/// Sets the exception for a status of this session, which has been entered; one that a callback raised comes first.
void raiseFailure(Session* self, mathexpr_status status);

/// A session with the same variables, limits and text, compiled; NULL with an exception. It waits for another thread that
/// has entered: use it for sessions that are entered for a moment only, or by this thread.
Session* copySession(Session* self);

// ----- editor services -------------------------------------------------------

// Methods of Session, as mathexpr._native declares them; each takes what its METH_ flag says.
PyObject* getTokens(Session* self, PyObject* text);
PyObject* formatText(Session* self, PyObject* text);
PyObject* typesetText(Session* self, PyObject* arguments);
PyObject* getHover(Session* self, PyObject* arguments);
PyObject* getCompletions(Session* self, PyObject* arguments);

// ----- bulk evaluation -------------------------------------------------------

/// The values of variables for many rows, as the library takes them. The buffers are held from opening to closing.
typedef struct
{
    size_t count;
    Py_ssize_t rowCount;  ///< -1 where no column is an array.
    mathexpr_column_utf8* columns;
    mathexpr_value* constants;  ///< Of columns with one value for all rows.
    Py_buffer* views;           ///< obj is NULL for these.
    mathexpr_bulk_outcome outcome;
} Columns;

typedef enum
{
    OpenFailed = -1,  ///< An exception is set.
    OpenUnfit = 0,    ///< Nothing is set: an array that has to be converted first.
    OpenDone = 1,
} OpenResult;

/// Opens columns: names is a tuple of str; values are arrays of aligned doubles, (n,) or (n, 3), numbers or Points.
/// Close them whatever the result. unfit receives the index of the column that does not fit.
OpenResult openColumns(Columns* self, PyObject* names, PyObject* values, size_t* unfit);
void closeColumns(Columns* self);

/// Whether the results are points: 1 or 0; -1 where no row has a value, -2 with an exception. All rows that have a value
/// have one of the same kind. names are for exceptions.
int kindOfRows(Session* session, Columns* columns, Py_ssize_t rowCount, PyObject* names);

/// Fills an array of doubles with shape (n,) or (n, 3), and statuses if given. outcome tells of all rows.
bool runRows(Session* session, Columns* columns, PyObject* names, PyObject* out, PyObject* rowStatus,
             uint32_t threadCount);

/// Evaluates a single row of values. False with the row's status in outcome, or with an exception.
bool runOneRow(Session* session, Columns* columns, PyObject* names, mathexpr_value* value);

/// How many rows failed, the first of them, and its status, as a tuple.
PyObject* outcomeOf(const Columns* columns);

/// numpy.ndarray and numpy.empty, once arrays have been used; NULL before.
extern PyObject* arrayType;
extern PyObject* makeArray;

/// Whether all values are arrays of NumPy's or plain numbers, and one is an array.
bool areArrays(PyObject* values);

/// As the kind of results: not known yet.
enum
{
    KindUnknown = -1
};

/// A new array with the results of all rows. knownKind tells whether they are points, or receives it. NULL with an
/// exception, also where rows have no value.
PyObject* computeRows(Session* session, Columns* columns, PyObject* names, PyObject* values, uint32_t threadCount,
                      atomic_int* knownKind);

// ----- Function --------------------------------------------------------------

extern PyType_Spec functionSpec;
