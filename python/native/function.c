// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// function.c - Function: a text as a callable.
//
// A call takes the first of these paths that fits:
//
//     f(3.0, 4), f(3.0, h=4)    numbers in, a number out: one call of the library
//     f(xs, ys), f(xs, 2)       aligned arrays of doubles and numbers, by position: one bulk evaluation
//     anything else             mathexpr._function.call, which converts, and calls value or borrow
//
// A lane is the state that one call needs: a session, and the library's function if all arguments are numbers. A call
// takes the first free lane; if there is none, it creates one with a copy of the session. The number of lanes is
// therefore the maximum number of concurrent calls so far. With a GIL, numbers need no lane, since the GIL is held.
#include "native.h"

#include <string.h>

enum
{
    MaxPlainArguments = 16,  // calls with more arguments take the general path
};

typedef struct Lane
{
    Session* session;
    mathexpr_function* numbers;  ///< NULL if an argument or the value is a point.
    struct Lane* next;
} Lane;

typedef struct
{
    PyObject ob_base;
    PyObject* names;   ///< Tuple of the arguments' names.
    PyObject* points;  ///< Tuple of bool: whether an argument is a point.
    Py_ssize_t count;
    Session* source;             ///< Has compiled the text; copied to lanes, never run.
    mathexpr_function* numbers;  ///< NULL if an argument is a point, or there are too many.
    atomic_int kind;             ///< 1 if results are points, 0 if numbers, or KindUnknown.
    _Atomic(Lane*) lanes;        ///< The newest first; NULL at first.
} Function;

// ----- lanes -----------------------------------------------------------------

static void destroyLane(Lane* lane)
{
    if (lane != NULL)
    {
        mathexpr_destroy_function(lane->numbers);
        Py_XDECREF((PyObject*)lane->session);
        PyMem_Free(lane);
    }
}

/// Returns a lane whose session this thread has entered; NULL with an exception.
static Lane* takeLane(Function* self)
{
    Lane* first = atomic_load(&self->lanes);
    for (Lane* lane = first; lane != NULL; lane = lane->next)
    {
        if (tryEnterFirst(lane->session))
        {
            return lane;
        }
    }
    Lane* lane = PyMem_Calloc(1, sizeof *lane);
    if (lane == NULL)
    {
        PyErr_NoMemory();
        return NULL;
    }
    const mathexpr_status status =
        self->numbers != NULL ? mathexpr_copy_function(self->numbers, &lane->numbers) : MATHEXPR_OK;
    if (status != MATHEXPR_OK)
    {
        raiseStatus(status);
    }
    lane->session = status == MATHEXPR_OK ? copySession(self->source) : NULL;
    if (lane->session == NULL)
    {
        destroyLane(lane);
        return NULL;
    }
    tryEnterFirst(lane->session);
    lane->next = first;
    while (!atomic_compare_exchange_weak(&self->lanes, &lane->next, lane))
    {}
    return lane;
}

// ----- creation and destruction ----------------------------------------------

static bool makeNumbers(Function* self, PyObject* text)
{
    const char* names[MaxPlainArguments];
    for (Py_ssize_t index = 0; index < self->count; ++index)
    {
        names[index] = utf8Of(PyTuple_GetItem(self->names, index), "the name of an argument", NULL);
        if (names[index] == NULL)
        {
            return false;
        }
    }
    Py_ssize_t length = 0;
    const char* encoded = utf8Of(text, "an expression", &length);
    if (encoded == NULL || !enter(self->source))
    {
        return false;
    }
    const mathexpr_status status = mathexpr_create_function_utf8(self->source->handle, encoded, (size_t)length, names,
                                                                 (size_t)self->count, &self->numbers);
    const bool isDone = status == MATHEXPR_OK || status == MATHEXPR_OTHER_KIND;
    if (!isDone)
    {
        raiseFailure(self->source, status);
    }
    leave(self->source);
    return isDone;
}

/// Function(session, text, names, points). The session has compiled the text; the function takes ownership of it.
static PyObject* newFunction(PyTypeObject* type, PyObject* arguments, PyObject* keywords)
{
    Session* session = NULL;
    PyObject* text = NULL;
    PyObject* names = NULL;
    PyObject* points = NULL;
    if (keywords != NULL && PyDict_Size(keywords) != 0)
    {
        PyErr_SetString(PyExc_TypeError, "a function is made by mathexpr.function");
        return NULL;
    }
    if (!PyArg_ParseTuple(arguments, "O!O!O!O!", sessionType, &session, &PyUnicode_Type, &text, &PyTuple_Type, &names,
                          &PyTuple_Type, &points))
    {
        return NULL;
    }
    const allocfunc allocate = (allocfunc)PyType_GetSlot(type, Py_tp_alloc);
    Function* self = (Function*)allocate(type, 0);
    if (self == NULL)
    {
        return NULL;
    }
    self->names = Py_NewRef(names);
    self->points = Py_NewRef(points);
    self->count = PyTuple_Size(names);
    self->source = (Session*)Py_NewRef((PyObject*)session);
    atomic_init(&self->kind, KindUnknown);
    bool takesNumbers = self->count <= MaxPlainArguments;
    for (Py_ssize_t index = 0; index < PyTuple_Size(points); ++index)
    {
        takesNumbers = takesNumbers && PyTuple_GetItem(points, index) == Py_False;
    }
    if (takesNumbers && !makeNumbers(self, text))
    {
        Py_DECREF((PyObject*)self);
        return NULL;
    }
    return (PyObject*)self;
}

static void dealloc(Function* self)
{
    PyTypeObject* type = Py_TYPE((PyObject*)self);
    for (Lane* lane = atomic_load(&self->lanes); lane != NULL;)
    {
        Lane* next = lane->next;
        destroyLane(lane);
        lane = next;
    }
    mathexpr_destroy_function(self->numbers);
    Py_XDECREF((PyObject*)self->source);
    Py_XDECREF(self->names);
    Py_XDECREF(self->points);
    const freefunc release = (freefunc)PyType_GetSlot(type, Py_tp_free);
    release(self);
    Py_DECREF(type);
}

// ----- calls -----------------------------------------------------------------

/// Reads the arguments of a call, if all are plain numbers. False for other calls; an exception may be set.
static bool readNumbers(const Function* self, PyObject* arguments, PyObject* keywords, double* numbers)
{
    const Py_ssize_t givenCount = PyTuple_Size(arguments);
    const Py_ssize_t namedCount = keywords != NULL ? PyDict_Size(keywords) : 0;
    if (givenCount + namedCount != self->count)
    {
        return false;
    }
    for (Py_ssize_t index = 0; index < givenCount; ++index)
    {
        if (!plainNumberOf(PyTuple_GetItem(arguments, index), &numbers[index]))
        {
            return false;
        }
    }
    for (Py_ssize_t index = givenCount; index < self->count; ++index)
    {
        PyObject* given = PyDict_GetItemWithError(keywords, PyTuple_GetItem(self->names, index));
        if (given == NULL || !plainNumberOf(given, &numbers[index]))
        {
            return false;
        }
    }
    return true;
}

/// If the value is a point, the status is not MATHEXPR_OK.
static mathexpr_status computeNumber(Function* self, const double* numbers, double* result)
{
#if defined(Py_GIL_DISABLED)
    Lane* lane = takeLane(self);
    if (lane == NULL)
    {
        return MATHEXPR_OUT_OF_MEMORY;
    }
    const mathexpr_status status = mathexpr_call_function(lane->numbers, numbers, result);
    leave(lane->session);
    return status;
#else
    return mathexpr_call_function(self->numbers, numbers, result);
#endif
}

/// The value for a tuple of numbers and Points.
static PyObject* value(Function* self, PyObject* values)
{
    if (!PyTuple_Check(values))
    {
        PyErr_SetString(PyExc_TypeError, "values come as a tuple");
        return NULL;
    }
    Lane* lane = takeLane(self);
    if (lane == NULL)
    {
        return NULL;
    }
    Columns columns;
    mathexpr_value result;
    size_t unfit = 0;
    const OpenResult opened = openColumns(&columns, self->names, values, &unfit);
    const bool fits = opened == OpenDone && columns.rowCount < 0;
    PyObject* answer = NULL;
    if (fits && runOneRow(lane->session, &columns, self->names, &result))
    {
        answer = objectOf(&result);
    }
    else if (fits && !PyErr_Occurred())
    {
        answer = hook("mathexpr._rows", "raise_refusal", "(OOO)", lane->session, self->names, values);
    }
    else if (!PyErr_Occurred())  // an array instead of a number or a Point
    {
        answer = hook("mathexpr._values", "to_record", "(O)", PyTuple_GetItem(values, (Py_ssize_t)unfit));
    }
    closeColumns(&columns);
    leave(lane->session);
    return answer;
}

/// Whether arrays of points are given for exactly the arguments that are points.
static bool haveKinds(const Function* self, const Columns* columns)
{
    for (size_t index = 0; index < columns->count; ++index)
    {
        const bool isPoint = PyTuple_GetItem(self->points, (Py_ssize_t)index) == Py_True;
        if ((columns->columns[index].kind == MATHEXPR_POINTS) != isPoint)
        {
            return false;
        }
    }
    return true;
}

/// Bulk evaluation of arrays without conversion. Py_NotImplemented if one needs conversion.
static PyObject* callArrays(Function* self, PyObject* arguments, uint32_t threadCount)
{
    Columns columns;
    size_t unfit = 0;
    PyObject* answer = NULL;
    const OpenResult opened = openColumns(&columns, self->names, arguments, &unfit);
    if (opened == OpenUnfit || (opened == OpenDone && (columns.rowCount < 0 || !haveKinds(self, &columns))))
    {
        answer = Py_NewRef(Py_NotImplemented);
    }
    else if (opened == OpenDone)
    {
        Lane* lane = takeLane(self);
        if (lane != NULL)
        {
            answer = computeRows(lane->session, &columns, self->names, arguments, threadCount, &self->kind);
            leave(lane->session);
        }
    }
    closeColumns(&columns);
    return answer;
}

/// The value of threads=; 1 without keywords. 0 for other keywords or an invalid value, which take the general path.
static uint32_t threadCountOf(PyObject* keywords)
{
    if (keywords == NULL)
    {
        return 1;
    }
    PyObject* given = PyDict_Size(keywords) == 1 ? PyDict_GetItemString(keywords, "threads") : NULL;
    const unsigned long count = given != NULL && PyLong_CheckExact(given) ? PyLong_AsUnsignedLong(given) : 0;
    if (PyErr_Occurred())
    {
        PyErr_Clear();  // negative, or too large
        return 0;
    }
    return count <= UINT32_MAX ? (uint32_t)count : 0;
}

static PyObject* call(Function* self, PyObject* arguments, PyObject* keywords)
{
    double numbers[MaxPlainArguments];
    if (self->numbers != NULL && readNumbers(self, arguments, keywords, numbers))
    {
        double result = 0.0;
        const mathexpr_status status = computeNumber(self, numbers, &result);
        if (status == MATHEXPR_OK)
        {
            return PyFloat_FromDouble(result);
        }
        if (keywords == NULL && !PyErr_Occurred())
        {
            return value(self, arguments);  // a point, or a refusal
        }
    }
    if (PyErr_Occurred())
    {
        return NULL;
    }
    const uint32_t threadCount = threadCountOf(keywords);
    if (threadCount != 0 && PyTuple_Size(arguments) == self->count && areArrays(arguments))
    {
        PyObject* answer = callArrays(self, arguments, threadCount);
        if (answer != Py_NotImplemented)
        {
            return answer;
        }
        Py_DECREF(answer);
    }
    return hook("mathexpr._function", "call", "(OOO)", self, arguments, keywords != NULL ? keywords : Py_None);
}

/// Returns a session for arrays, which this thread has entered and must leave (__exit__).
static PyObject* borrow(Function* self, PyObject* unused)
{
    (void)unused;
    Lane* lane = takeLane(self);
    return lane != NULL ? Py_NewRef((PyObject*)lane->session) : NULL;
}

static PyObject* getNames(Function* self, void* unused)
{
    (void)unused;
    return Py_NewRef(self->names);
}

// ----- the type --------------------------------------------------------------

#define METHOD(function) ((PyCFunction)(void (*)(void))(function))

static PyMethodDef methods[] = {
    {"_value", METHOD(value), METH_O, "The value for a tuple of numbers and Points."},
    {"_borrow", METHOD(borrow), METH_NOARGS, "A session that this thread has entered."},
    {NULL, NULL, 0, NULL},
};

static PyGetSetDef properties[] = {
    {"arguments", (getter)getNames, NULL, "The names of the arguments, by position.", NULL},
    {NULL, NULL, NULL, NULL, NULL},
};

static PyType_Slot slots[] = {
    {Py_tp_new, newFunction}, {Py_tp_dealloc, dealloc},   {Py_tp_call, call},
    {Py_tp_methods, methods}, {Py_tp_getset, properties}, {0, NULL},
};

PyType_Spec functionSpec = {
    .name = "mathexpr._native.Function",
    .basicsize = sizeof(Function),
    .flags = Py_TPFLAGS_DEFAULT | Py_TPFLAGS_BASETYPE,
    .slots = slots,
};
