// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// session.c - Session: one expression of the library, its variables, and its callbacks.
//
// An exception in a callback stays set while the library returns, and propagates out of the call unchanged.
#include "native.h"

#include <string.h>

PyTypeObject* sessionType;

/// Releasing the GIL pays off for texts of at least this many bytes.
enum
{
    LongText = 10000
};

static void replace(PyObject** place, PyObject* object)
{
    PyObject* before = *place;
    *place = object;
    Py_XDECREF(before);
}

// ----- ownership by threads --------------------------------------------------

bool tryEnter(Session* self)
{
    const unsigned long me = PyThread_get_thread_ident();
    unsigned long found = 0;
    if (!atomic_compare_exchange_strong(&self->owner, &found, me) && found != me)
    {
        return false;
    }
    ++self->depth;
    return true;
}

bool tryEnterFirst(Session* self)
{
    unsigned long nobody = 0;
    if (!atomic_compare_exchange_strong(&self->owner, &nobody, PyThread_get_thread_ident()))
    {
        return false;
    }
    self->depth = 1;
    return true;
}

bool enter(Session* self)
{
    if (!tryEnter(self))
    {
        PyErr_SetString(PyExc_RuntimeError,
                        "the expression is in use in another thread; give each thread an expression of its own");
        return false;
    }
    if (self->handle == NULL)
    {
        leave(self);
        PyErr_SetString(PyExc_ValueError, "the expression is closed");
        return false;
    }
    return true;
}

void leave(Session* self)
{
    if (--self->depth == 0)
    {
        atomic_store(&self->owner, 0);
    }
}

/// Releases the GIL for a long text. Callbacks acquire it again while they run.
static void suspend(Session* self, Py_ssize_t length)
{
    if (length >= LongText)
    {
        self->suspended = PyEval_SaveThread();
    }
}

static bool resume(Session* self)
{
    PyThreadState* state = self->suspended;
    self->suspended = NULL;
    if (state != NULL)
    {
        PyEval_RestoreThread(state);
    }
    return state != NULL;
}

// ----- callbacks -------------------------------------------------------------

static int32_t askResolver(Session* self, const char* name, size_t length, mathexpr_value* value)
{
    if (PyErr_Occurred())
    {
        return MATHEXPR_LOOKUP_REFUSED;
    }
    PyObject* text = PyUnicode_FromStringAndSize(name, (Py_ssize_t)length);
    PyObject* answer = text != NULL ? PyObject_CallFunctionObjArgs(self->resolver, text, NULL) : NULL;
    Py_XDECREF(text);
    if (answer == NULL)
    {
        return MATHEXPR_LOOKUP_REFUSED;
    }
    int32_t result = MATHEXPR_LOOKUP_NOT_KNOWN;
    if (answer != Py_None)
    {
        result = valueOf(answer, value) ? MATHEXPR_LOOKUP_FOUND : MATHEXPR_LOOKUP_REFUSED;
    }
    Py_DECREF(answer);
    return result;
}

static int32_t lookUp(void* context, const char* name, size_t length, mathexpr_value* value)
{
    Session* self = context;
    const bool wasSuspended = resume(self);
    const int32_t result = askResolver(self, name, length, value);
    suspend(self, wasSuspended ? LongText : 0);
    return result;
}

/// Iterates over the host's names, and returns them as a list of bytes.
static PyObject* encodedNames(PyObject* names)
{
    PyObject* list = PySequence_List(names);
    for (Py_ssize_t index = 0; list != NULL && index < PyList_Size(list); ++index)
    {
        Py_ssize_t length = 0;
        const char* name = utf8Of(PyList_GetItem(list, index), "a name", &length);
        PyObject* encoded = name != NULL ? PyBytes_FromStringAndSize(name, length) : NULL;
        if (encoded == NULL || PyList_SetItem(list, index, encoded) != 0)
        {
            Py_CLEAR(list);
        }
    }
    return list;
}

/// Called while a diagnostic is built, with the GIL held.
static const char* getName(void* context, uint32_t index)
{
    Session* self = context;
    if (self->hostNames == NULL || PyErr_Occurred())
    {
        return NULL;
    }
    if (index == 0)
    {
        replace(&self->answeredNames, encodedNames(self->hostNames));
    }
    if (self->answeredNames == NULL || (Py_ssize_t)index >= PyList_Size(self->answeredNames))
    {
        return NULL;
    }
    return PyBytes_AsString(PyList_GetItem(self->answeredNames, (Py_ssize_t)index));
}

// ----- creation and destruction ----------------------------------------------

static PyObject* newSession(PyTypeObject* type, PyObject* arguments, PyObject* keywords)
{
    static char* names[] = {"resolver", "names", NULL};
    PyObject* resolver = Py_None;
    PyObject* hostNames = Py_None;
    if (!PyArg_ParseTupleAndKeywords(arguments, keywords, "|OO", names, &resolver, &hostNames))
    {
        return NULL;
    }
    Session* self = PyObject_GC_New(Session, type);
    if (self == NULL)
    {
        return NULL;
    }
    memset((char*)self + sizeof(PyObject), 0, sizeof *self - sizeof(PyObject));
    self->resolver = resolver != Py_None ? Py_NewRef(resolver) : NULL;
    self->hostNames = hostNames != Py_None ? Py_NewRef(hostNames) : NULL;
    const mathexpr_options_utf8 options = {
        .size = sizeof options, .context = self, .lookup = self->resolver != NULL ? lookUp : NULL, .get_name = getName};
    const mathexpr_status status = mathexpr_create_utf8(&options, &self->handle);
    PyObject_GC_Track((PyObject*)self);
    if (status != MATHEXPR_OK)
    {
        Py_DECREF((PyObject*)self);
        raiseStatus(status);
        return NULL;
    }
    return (PyObject*)self;
}

static int traverse(Session* self, visitproc visit, void* arg)
{
    Py_VISIT(Py_TYPE((PyObject*)self));
    Py_VISIT(self->resolver);
    Py_VISIT(self->hostNames);
    return 0;
}

static int clear(Session* self)
{
    Py_CLEAR(self->resolver);
    Py_CLEAR(self->hostNames);
    return 0;
}

static void dealloc(Session* self)
{
    PyTypeObject* type = Py_TYPE((PyObject*)self);
    PyObject_GC_UnTrack(self);
    mathexpr_destroy(self->handle);
    clear(self);
    Py_XDECREF(self->answeredNames);
    Py_XDECREF(self->text);
    Py_XDECREF(self->usedNames);
    PyObject_GC_Del(self);
    Py_DECREF(type);
}

static PyObject* closeSession(Session* self, PyObject* unused)
{
    (void)unused;
    if (self->handle == NULL)
    {
        Py_RETURN_NONE;
    }
    if (!enter(self))
    {
        return NULL;
    }
    const mathexpr_status status = mathexpr_destroy(self->handle);
    if (status == MATHEXPR_OK)
    {
        self->handle = NULL;
    }
    leave(self);
    if (status != MATHEXPR_OK)
    {
        raiseStatus(status);
        return NULL;
    }
    Py_RETURN_NONE;
}

static PyObject* enterBlock(Session* self, PyObject* unused)
{
    (void)unused;
    return enter(self) ? Py_NewRef((PyObject*)self) : NULL;
}

static PyObject* leaveBlock(Session* self, PyObject* unused)
{
    (void)unused;
    leave(self);
    Py_RETURN_NONE;
}

// ----- texts -----------------------------------------------------------------

static bool compileText(Session* self, PyObject* text)
{
    Py_ssize_t length = 0;
    const char* encoded = utf8Of(text, "an expression", &length);
    if (encoded == NULL)
    {
        return false;
    }
    suspend(self, length);
    const mathexpr_status status = mathexpr_set_expression_utf8(self->handle, encoded, (size_t)length);
    resume(self);
    if (status == MATHEXPR_OK || status > MATHEXPR_BULK_REFUSED)  // otherwise nothing has changed
    {
        replace(&self->text, Py_NewRef(text));
        Py_CLEAR(self->usedNames);
    }
    if (status != MATHEXPR_OK)
    {
        raiseFailure(self, status);
        return false;
    }
    return true;
}

static PyObject* evaluateProgram(Session* self)
{
    mathexpr_value value;
    suspend(self, self->text != NULL ? PyUnicode_GetLength(self->text) : 0);
    const mathexpr_status status = mathexpr_evaluate(self->handle, &value);
    resume(self);
    if (status == MATHEXPR_OK)
    {
        return objectOf(&value);
    }
    raiseFailure(self, status);
    if (status == MATHEXPR_PARSING_ERROR || status == MATHEXPR_DEFINITION_ERROR || status == MATHEXPR_REFUSED)
    {
        mathexpr_drop_assignment(self->handle);
    }
    return NULL;
}

static PyObject* compile(Session* self, PyObject* text)
{
    if (!enter(self))
    {
        return NULL;
    }
    const bool done = compileText(self, text);
    leave(self);
    return done ? Py_NewRef(Py_None) : NULL;
}

static PyObject* evaluate(Session* self, PyObject* const* arguments, Py_ssize_t count)
{
    if (!enter(self))
    {
        return NULL;
    }
    const bool withText = count > 0 && arguments[0] != Py_None;
    PyObject* value = !withText || compileText(self, arguments[0]) ? evaluateProgram(self) : NULL;
    leave(self);
    return value;
}

static PyObject* getText(Session* self, void* unused)
{
    (void)unused;
    return self->text != NULL ? Py_NewRef(self->text) : PyUnicode_FromString("");
}

// ----- names and variables ---------------------------------------------------

static PyObject* listNames(Session* self, uint32_t which)
{
    mathexpr_names_utf8 record = {.size = sizeof record};
    const mathexpr_status status = mathexpr_get_names_utf8(self->handle, which, &record);
    if (status != MATHEXPR_OK)
    {
        raiseFailure(self, status);
        return NULL;
    }
    PyObject* list = PyList_New((Py_ssize_t)record.name_count);
    for (size_t index = 0; list != NULL && index < record.name_count; ++index)
    {
        PyObject* name = PyUnicode_FromString(record.names[index]);
        if (name == NULL || PyList_SetItem(list, (Py_ssize_t)index, name) != 0)
        {
            Py_CLEAR(list);
        }
    }
    return list;
}

static PyObject* names(Session* self, PyObject* which)
{
    const unsigned long number = PyLong_AsUnsignedLong(which);
    if (PyErr_Occurred() || !enter(self))
    {
        return NULL;
    }
    PyObject* list = listNames(self, (uint32_t)number);
    leave(self);
    return list;
}

/// 1 or 0; -1 with an exception.
static int readsName(Session* self, PyObject* name)
{
    if (self->usedNames == NULL)
    {
        PyObject* list = listNames(self, MATHEXPR_NAMES_USED);
        PyObject* used = list != NULL ? PyDict_New() : NULL;
        for (Py_ssize_t index = 0; used != NULL && index < PyList_Size(list); ++index)
        {
            PyObject* folded = foldedName(PyList_GetItem(list, index));
            if (folded == NULL || PyDict_SetItem(used, folded, Py_None) != 0)
            {
                Py_CLEAR(used);
            }
            Py_XDECREF(folded);
        }
        Py_XDECREF(list);
        if (used == NULL)
        {
            return -1;
        }
        self->usedNames = used;
    }
    const int found = PyDict_Contains(self->usedNames, name);
    if (found != 0)
    {
        return found;
    }
    PyObject* folded = foldedName(name);
    const int foundFolded = folded != NULL ? PyDict_Contains(self->usedNames, folded) : -1;
    Py_XDECREF(folded);
    return foundFolded;
}

static bool setRecord(Session* self, PyObject* name, const mathexpr_value* value)
{
    Py_ssize_t length = 0;
    const char* encoded = utf8Of(name, "the name of a variable", &length);
    if (encoded == NULL)
    {
        return false;
    }
    mathexpr_name_refusal refusal = {.size = sizeof refusal};
    const mathexpr_status status = mathexpr_set_variable_utf8(self->handle, encoded, (size_t)length, value, &refusal);
    if (status == MATHEXPR_DEFINITION_ERROR)
    {
        raiseAnswered(hook("mathexpr._errors", "error_of_name", "(OInn)", name, refusal.code, (Py_ssize_t)refusal.start,
                           (Py_ssize_t)refusal.length));
    }
    else if (status != MATHEXPR_OK)
    {
        raiseStatus(status);
    }
    return status == MATHEXPR_OK;
}

static bool setValue(Session* self, PyObject* name, PyObject* object)
{
    mathexpr_value value;
    return valueOf(object, &value) && setRecord(self, name, &value);
}

static PyObject* setVariable(Session* self, PyObject* const* arguments, Py_ssize_t count)
{
    if (count != 2)
    {
        PyErr_SetString(PyExc_TypeError, "set_variable takes a name and a value");
        return NULL;
    }
    if (!enter(self))
    {
        return NULL;
    }
    const bool done = setValue(self, arguments[0], arguments[1]);
    leave(self);
    return done ? Py_NewRef(Py_None) : NULL;
}

/// Reads a variable; removes it if value is NULL. Sets a KeyError if there is none.
static bool findVariable(Session* self, PyObject* name, mathexpr_value* value)
{
    Py_ssize_t length = 0;
    const char* encoded = PyUnicode_Check(name) ? PyUnicode_AsUTF8AndSize(name, &length) : NULL;
    mathexpr_status status = MATHEXPR_NOT_FOUND;
    if (encoded != NULL && enter(self))
    {
        status = value != NULL ? mathexpr_get_variable_utf8(self->handle, encoded, (size_t)length, value)
                               : mathexpr_remove_variable_utf8(self->handle, encoded, (size_t)length);
        if (value == NULL)
        {
            Py_CLEAR(self->usedNames);
        }
        leave(self);
    }
    if (PyErr_Occurred())
    {
        return false;
    }
    if (status == MATHEXPR_NOT_FOUND || status == MATHEXPR_ZERO_IN_TEXT)
    {
        PyErr_SetObject(PyExc_KeyError, name);
    }
    else if (status != MATHEXPR_OK)
    {
        raiseStatus(status);
    }
    return status == MATHEXPR_OK;
}

static PyObject* getVariable(Session* self, PyObject* name)
{
    mathexpr_value value;
    return findVariable(self, name, &value) ? objectOf(&value) : NULL;
}

static PyObject* removeVariable(Session* self, PyObject* name)
{
    return findVariable(self, name, NULL) ? Py_NewRef(Py_None) : NULL;
}

/// Whether the program reads all names; otherwise sets a TypeError about the first that it does not read.
static bool checkNames(Session* self, PyObject* variables)
{
    PyObject* name = NULL;
    PyObject* value = NULL;
    for (Py_ssize_t place = 0; PyDict_Next(variables, &place, &name, &value);)
    {
        const int found = readsName(self, name);
        if (found == 0)
        {
            PyObject* used = listNames(self, MATHEXPR_NAMES_USED);
            raiseAnswered(used != NULL ? hook("mathexpr._errors", "error_of_unread_name", "(ON)", name, used) : NULL);
        }
        if (found != 1)
        {
            return false;
        }
    }
    return true;
}

/// Sets the variables in a dictionary, all of which the program must read, and evaluates.
static PyObject* call(Session* self, PyObject* variables)
{
    if (!enter(self))
    {
        return NULL;
    }
    bool done = self->text == NULL || checkNames(self, variables);
    PyObject* name = NULL;
    PyObject* value = NULL;
    for (Py_ssize_t place = 0; done && PyDict_Next(variables, &place, &name, &value);)
    {
        done = setValue(self, name, value);
    }
    PyObject* answer = done ? evaluateProgram(self) : NULL;
    leave(self);
    return answer;
}

// ----- limits ----------------------------------------------------------------

static PyObject* getLimits(Session* self, PyObject* unused)
{
    (void)unused;
    mathexpr_limits record = {.size = sizeof record};
    if (!enter(self))
    {
        return NULL;
    }
    const mathexpr_status status = mathexpr_get_limits(self->handle, &record);
    leave(self);
    if (status != MATHEXPR_OK)
    {
        raiseStatus(status);
        return NULL;
    }
    return Py_BuildValue("III", record.max_text_length, record.max_records, record.max_nesting);
}

static PyObject* setLimits(Session* self, PyObject* limits)
{
    mathexpr_limits record = {.size = sizeof record};
    if (!PyArg_ParseTuple(limits, "III", &record.max_text_length, &record.max_records, &record.max_nesting) ||
        !enter(self))
    {
        return NULL;
    }
    const mathexpr_status status = mathexpr_set_limits(self->handle, &record);
    leave(self);
    if (status != MATHEXPR_OK)
    {
        raiseStatus(status);
        return NULL;
    }
    Py_RETURN_NONE;
}

// ----- copies ----------------------------------------------------------------

/// Copies variables and limits. The caller has entered the source.
static bool copyState(Session* self, Session* copy)
{
    mathexpr_limits limits = {.size = sizeof limits};
    mathexpr_status status = mathexpr_get_limits(self->handle, &limits);
    status = status == MATHEXPR_OK ? mathexpr_set_limits(copy->handle, &limits) : status;
    if (status != MATHEXPR_OK)
    {
        raiseStatus(status);
        return false;
    }
    PyObject* list = listNames(self, MATHEXPR_NAMES_DEFINED);
    bool done = list != NULL;
    for (Py_ssize_t index = 0; done && index < PyList_Size(list); ++index)
    {
        mathexpr_value value;  // including the flag of converted numbers, which Python's values lack
        PyObject* name = PyList_GetItem(list, index);
        done = findVariable(self, name, &value) && setRecord(copy, name, &value);
    }
    Py_XDECREF(list);
    return done;
}

Session* copySession(Session* self)
{
    Session* copy = (Session*)PyObject_CallNoArgs((PyObject*)sessionType);
    if (copy == NULL)
    {
        return NULL;
    }
    while (!tryEnter(self))  // another thread is copying, which takes a few microseconds
    {
        Py_BEGIN_ALLOW_THREADS Py_END_ALLOW_THREADS
    }
    bool done = copyState(self, copy);
    PyObject* text = self->text != NULL ? Py_NewRef(self->text) : NULL;
    leave(self);
    done = done && (text == NULL || compileText(copy, text));
    Py_XDECREF(text);
    if (!done)
    {
        Py_DECREF((PyObject*)copy);
        return NULL;
    }
    return copy;
}

static PyObject* copyMethod(Session* self, PyObject* unused)
{
    (void)unused;
    if (!enter(self))
    {
        return NULL;
    }
    Session* copy = copySession(self);
    leave(self);
    return (PyObject*)copy;
}

// ----- arrays ----------------------------------------------------------------

/// Opens columns for a method; sets an exception if an array needs conversion.
static bool openForMethod(Columns* columns, PyObject* names, PyObject* values)
{
    size_t unfit = 0;
    const OpenResult result = openColumns(columns, names, values, &unfit);
    if (result == OpenUnfit)
    {
        PyErr_Format(PyExc_ValueError,
                     "the column %R is not aligned to 8 bytes; numpy.ascontiguousarray makes a copy that is",
                     PyTuple_GetItem(names, (Py_ssize_t)unfit));
    }
    return result == OpenDone;
}

static PyObject* kindMethod(Session* self, PyObject* arguments)
{
    PyObject* columnNames = NULL;
    PyObject* values = NULL;
    Py_ssize_t rowCount = 0;
    if (!PyArg_ParseTuple(arguments, "O!O!n", &PyTuple_Type, &columnNames, &PyTuple_Type, &values, &rowCount) ||
        !enter(self))
    {
        return NULL;
    }
    Columns columns;
    const int kind =
        openForMethod(&columns, columnNames, values) ? kindOfRows(self, &columns, rowCount, columnNames) : -2;
    closeColumns(&columns);
    leave(self);
    return kind == -2 ? NULL : kind == -1 ? Py_NewRef(Py_None) : PyBool_FromLong(kind);
}

static PyObject* runMethod(Session* self, PyObject* arguments)
{
    PyObject* columnNames = NULL;
    PyObject* values = NULL;
    PyObject* out = NULL;
    PyObject* rowStatus = NULL;
    unsigned int threadCount = 1;
    if (!PyArg_ParseTuple(arguments, "O!O!OOI", &PyTuple_Type, &columnNames, &PyTuple_Type, &values, &out, &rowStatus,
                          &threadCount) ||
        !enter(self))
    {
        return NULL;
    }
    Columns columns;
    const bool done = openForMethod(&columns, columnNames, values) &&
                      runRows(self, &columns, columnNames, out, rowStatus != Py_None ? rowStatus : NULL, threadCount);
    PyObject* answer = done ? outcomeOf(&columns) : NULL;
    closeColumns(&columns);
    leave(self);
    return answer;
}

/// Whether each column belongs to a variable, and holds points only if the variable is a point.
static bool suitVariables(Session* self, const Columns* columns)
{
    for (size_t index = 0; index < columns->count; ++index)
    {
        const mathexpr_column_utf8* column = &columns->columns[index];
        mathexpr_value value;
        if (mathexpr_get_variable_utf8(self->handle, column->name, column->name_length, &value) != MATHEXPR_OK ||
            (column->kind == MATHEXPR_POINTS && value.type != MATHEXPR_POINT))
        {
            return false;
        }
    }
    return true;
}

/// The results for arrays that need no conversion; NotImplemented for others, and for errors.
static PyObject* computeMethod(Session* self, PyObject* const* arguments, Py_ssize_t count)
{
    if (count != 3 || !PyTuple_Check(arguments[0]) || !PyTuple_Check(arguments[1]))
    {
        PyErr_SetString(PyExc_TypeError, "compute takes two tuples and a number of threads");
        return NULL;
    }
    const unsigned long threadCount = PyLong_Check(arguments[2]) ? PyLong_AsUnsignedLong(arguments[2]) : 0;
    if (PyErr_Occurred() || threadCount < 1 || threadCount > UINT32_MAX || !areArrays(arguments[1]))
    {
        PyErr_Clear();
        return Py_NewRef(Py_NotImplemented);
    }
    if (!enter(self))
    {
        return NULL;
    }
    Columns columns;
    size_t unfit = 0;
    atomic_int kind = KindUnknown;
    PyObject* answer = NULL;
    const OpenResult opened = openColumns(&columns, arguments[0], arguments[1], &unfit);
    if (opened == OpenUnfit || (opened == OpenDone && (columns.rowCount < 0 || !suitVariables(self, &columns))))
    {
        answer = Py_NewRef(Py_NotImplemented);
    }
    else if (opened == OpenDone)
    {
        answer = computeRows(self, &columns, arguments[0], arguments[1], (uint32_t)threadCount, &kind);
    }
    closeColumns(&columns);
    leave(self);
    return answer;
}

// ----- the type --------------------------------------------------------------

#define METHOD(function) ((PyCFunction)(void (*)(void))(function))

static PyMethodDef methods[] = {
    {"__enter__", METHOD(enterBlock), METH_NOARGS, "Keeps other threads out until __exit__."},
    {"__exit__", METHOD(leaveBlock), METH_VARARGS, NULL},
    {"close", METHOD(closeSession), METH_NOARGS, "Destroys the handle; a closed session stays closed."},
    {"compile", METHOD(compile), METH_O, "Compiles a text."},
    {"evaluate", METHOD(evaluate), METH_FASTCALL, "The value of the program, or of a text that is compiled first."},
    {"call", METHOD(call), METH_O, "Sets the variables of a dict, which the program has to read, and evaluates."},
    {"names", METHOD(names), METH_O, "One of the lists of names."},
    {"get_variable", METHOD(getVariable), METH_O, NULL},
    {"set_variable", METHOD(setVariable), METH_FASTCALL, NULL},
    {"remove_variable", METHOD(removeVariable), METH_O, NULL},
    {"get_limits", METHOD(getLimits), METH_NOARGS, NULL},
    {"set_limits", METHOD(setLimits), METH_O, NULL},
    {"copy", METHOD(copyMethod), METH_NOARGS, "A session with the same variables, limits and text; no resolver."},
    {"yields_points", METHOD(kindMethod), METH_VARARGS, "Whether rows are points; None where none has a value."},
    {"compute", METHOD(computeMethod), METH_FASTCALL, "The results of arrays as they are, or NotImplemented."},
    {"tokens", METHOD(getTokens), METH_O, "The tokens of any text."},
    {"format", METHOD(formatText), METH_O, "A text with even spacing."},
    {"typeset", METHOD(typesetText), METH_VARARGS, "A text in a notation of MATHEXPR_NOTATION_..."},
    {"hover", METHOD(getHover), METH_VARARGS, "What is under a cursor."},
    {"completions", METHOD(getCompletions), METH_VARARGS, "What may stand at a cursor."},
    {"run", METHOD(runMethod), METH_VARARGS, "Fills an array; how many rows failed, the first, its status."},
    {NULL, NULL, 0, NULL},
};

static PyGetSetDef properties[] = {
    {"text", (getter)getText, NULL, "The text that was compiled last.", NULL},
    {NULL, NULL, NULL, NULL, NULL},
};

static PyType_Slot slots[] = {
    {Py_tp_new, newSession},
    {Py_tp_dealloc, dealloc},
    {Py_tp_traverse, traverse},
    {Py_tp_clear, clear},
    {Py_tp_methods, methods},
    {Py_tp_getset, properties},
    {0, NULL},
};

PyType_Spec sessionSpec = {
    .name = "mathexpr._native.Session",
    .basicsize = sizeof(Session),
    .flags = Py_TPFLAGS_DEFAULT | Py_TPFLAGS_HAVE_GC,
    .slots = slots,
};
