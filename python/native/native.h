// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// native.h - declarations shared by the sources of the native module.
//
// The module is written in C over mathexpr.h and Python's stable ABI. It contains what must be fast: a handle of the
// library (Session), a text as a callable (Function), and arrays passed to bulk evaluation in place (Columns).
// Everything else is Python code, called by the names of module and function (hook).
//
//     values.c     Python values <-> records of the library
//     failures.c   statuses and diagnostics -> exceptions
//     session.c    Session: one expression, its variables, its resolver
//     editor.c     Session: editor services
//     bulk.c       Columns: arrays and values for many rows -> bulk evaluation
//     function.c   Function: by position or by name, numbers or arrays
//     module.c     the module, and functions without a handle
//
// Locks. With a GIL, a call that does not release it needs no lock. A Session is used by one thread at a time: the
// thread that enters it owns it until it leaves. Meanwhile, a Session refuses other threads, and a Function gives them
// another lane.
#pragma once

#define PY_SSIZE_T_CLEAN
#include <Python.h>
#include <mathexpr.h>
#include <stdatomic.h>
#include <stdbool.h>

// ----- values ----------------------------------------------------------------

/// Reads a number or a Point. On failure false, with a TypeError set.
bool valueOf(PyObject* object, mathexpr_value* value);

/// Reads a float or int, but no subclass. False, with no exception set, for anything else.
bool plainNumberOf(PyObject* object, double* number);

/// A float or a Point; NULL with an exception.
PyObject* objectOf(const mathexpr_value* value);

/// The UTF-8 of a str, which owns it; NULL with a TypeError whose message begins with what.
const char* utf8Of(PyObject* text, const char* what, Py_ssize_t* length);

/// The name with A to Z in lower case, since names ignore their case.
PyObject* foldedName(PyObject* name);

// ----- failures --------------------------------------------------------------

/// Calls a function of one of the package's modules. The arguments are as for Py_BuildValue, in brackets.
PyObject* hook(const char* module, const char* function, const char* arguments, ...);

/// Sets the exception that a hook returned. Steals the reference.
void raiseAnswered(PyObject* exception);

/// Sets the exception for a status without a diagnostic.
void raiseStatus(mathexpr_status status);

// ----- Session ---------------------------------------------------------------

typedef struct Session
{
    PyObject ob_base;
    mathexpr_expression* handle;  ///< NULL once closed.
    PyObject* resolver;           ///< Callable, or NULL.
    PyObject* hostNames;          ///< Iterable, or NULL.
    PyObject* answeredNames;      ///< Names for the diagnostic in progress: a list of bytes, or NULL.
    PyObject* text;               ///< The last text given to compile, valid or not; NULL before the first.
    PyObject* usedNames;          ///< Dictionary of the folded names that the program reads; NULL until needed.
    PyThreadState* suspended;     ///< State of the thread that released the GIL for this session, for callbacks.
    atomic_ulong owner;           ///< The thread that has entered; 0 if none has.
    unsigned depth;               ///< How often the owner has entered without leaving.
} Session;

extern PyTypeObject* sessionType;
extern PyType_Spec sessionSpec;

/// False if another thread has entered; sets no exception.
bool tryEnter(Session* self);

/// Like tryEnter, but also false if this thread has already entered.
bool tryEnterFirst(Session* self);

/// Like tryEnter, but sets a RuntimeError on failure. Fails with a ValueError if the session is closed.
bool enter(Session* self);

void leave(Session* self);

/// Sets the exception for a status of this session, which has been entered; an exception of a callback has precedence.
void raiseFailure(Session* self, mathexpr_status status);

/// A session with the same variables, limits and compiled text; NULL with an exception. Waits for a thread that has
/// entered: call it only for sessions that are entered briefly, or by this thread.
Session* copySession(Session* self);

// ----- editor services -------------------------------------------------------

// Methods of Session, as declared in mathexpr._native; the parameters depend on the METH_ flag.
PyObject* getTokens(Session* self, PyObject* text);
PyObject* formatText(Session* self, PyObject* text);
PyObject* typesetText(Session* self, PyObject* arguments);
PyObject* getHover(Session* self, PyObject* arguments);
PyObject* getCompletions(Session* self, PyObject* arguments);

// ----- bulk evaluation -------------------------------------------------------

/// The values of variables for many rows, in the library's form. The buffers are held from openColumns to closeColumns.
typedef struct
{
    size_t count;
    Py_ssize_t rowCount;  ///< -1 if no column is an array.
    mathexpr_column_utf8* columns;
    mathexpr_value* constants;  ///< Values of the columns with one value for all rows.
    Py_buffer* views;           ///< obj is NULL for those columns.
    mathexpr_bulk_outcome outcome;
} Columns;

typedef enum
{
    OpenFailed = -1,  ///< An exception is set.
    OpenUnfit = 0,    ///< No exception is set: an array needs conversion.
    OpenDone = 1,
} OpenResult;

/// Opens columns. names is a tuple of str; values are arrays of aligned doubles, (n,) or (n, 3), numbers or Points.
/// Call closeColumns whatever the result. unfit receives the index of a column that needs conversion.
OpenResult openColumns(Columns* self, PyObject* names, PyObject* values, size_t* unfit);
void closeColumns(Columns* self);

/// Whether the results are points: 1 or 0; -1 if no row has a value, -2 with an exception. All values have
/// the same kind. names are used in exceptions.
int kindOfRows(Session* session, Columns* columns, Py_ssize_t rowCount, PyObject* names);

/// Fills an array of doubles of shape (n,) or (n, 3), and statuses if given. outcome covers all rows.
bool runRows(Session* session, Columns* columns, PyObject* names, PyObject* out, PyObject* rowStatus,
             uint32_t threadCount);

/// Evaluates a single row. False with the row's status in outcome, or with an exception.
bool runOneRow(Session* session, Columns* columns, PyObject* names, mathexpr_value* value);

/// The number of failed rows, the index of the first, and its status, as a tuple.
PyObject* outcomeOf(const Columns* columns);

/// numpy.ndarray and numpy.empty; NULL until arrays are used.
extern PyObject* arrayType;
extern PyObject* makeArray;

/// Whether all values are NumPy arrays or plain numbers, and at least one is an array.
bool areArrays(PyObject* values);

/// The kind of results before it is known.
enum
{
    KindUnknown = -1
};

/// Returns a new array with the results of all rows. knownKind is 1 for points and 0 for numbers;
/// if it is KindUnknown, it receives the kind. NULL with an exception, also if rows have no value.
PyObject* computeRows(Session* session, Columns* columns, PyObject* names, PyObject* values, uint32_t threadCount,
                      atomic_int* knownKind);

// ----- Function --------------------------------------------------------------

extern PyType_Spec functionSpec;
