// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// failures.c - converts statuses and diagnostics to exceptions, which mathexpr._errors creates.
#include "native.h"

PyObject* hook(const char* module, const char* function, const char* arguments, ...)
{
    va_list list;
    va_start(list, arguments);
    PyObject* tuple = Py_VaBuildValue(arguments, list);
    va_end(list);
    PyObject* owner = tuple != NULL ? PyImport_ImportModule(module) : NULL;
    PyObject* callable = owner != NULL ? PyObject_GetAttrString(owner, function) : NULL;
    PyObject* answer = callable != NULL ? PyObject_Call(callable, tuple, NULL) : NULL;
    Py_XDECREF(callable);
    Py_XDECREF(owner);
    Py_XDECREF(tuple);
    return answer;
}

void raiseAnswered(PyObject* exception)
{
    if (exception != NULL)
    {
        PyErr_SetObject((PyObject*)Py_TYPE(exception), exception);
        Py_DECREF(exception);
    }
}

void raiseStatus(mathexpr_status status)
{
    raiseAnswered(hook("mathexpr._errors", "error_of_status", "(is)", (int)status, mathexpr_status_text(status)));
}

static PyObject* namesOf(const char* const* names, size_t count)
{
    PyObject* tuple = PyTuple_New((Py_ssize_t)count);
    for (size_t index = 0; tuple != NULL && index < count; ++index)
    {
        PyObject* name = PyUnicode_FromString(names[index]);
        if (name == NULL || PyTuple_SetItem(tuple, (Py_ssize_t)index, name) != 0)
        {
            Py_CLEAR(tuple);
        }
    }
    return tuple;
}

/// The accepted argument counts; None is any number.
static PyObject* countsOf(const mathexpr_diagnostic_utf8* record)
{
    PyObject* tuple = PyTuple_New((Py_ssize_t)record->accepted_count);
    for (size_t index = 0; tuple != NULL && index < record->accepted_count; ++index)
    {
        const uint32_t number = record->accepted_arg_counts[index];
        PyObject* count = number == MATHEXPR_ANY_ARG_COUNT ? Py_NewRef(Py_None) : PyLong_FromUnsignedLong(number);
        if (count == NULL || PyTuple_SetItem(tuple, (Py_ssize_t)index, count) != 0)
        {
            Py_CLEAR(tuple);
        }
    }
    return tuple;
}

/// The members of the diagnostic, by their names in mathexpr._errors. Positions are bytes of UTF-8.
static PyObject* membersOf(const mathexpr_diagnostic_utf8* record)
{
    return Py_BuildValue("{sIsIsIsnsnsssssssIsIsNsNsNs(nns)}",                                   //
                         "message_number", record->message,                                      //
                         "kind", record->kind,                                                   //
                         "code", record->code,                                                   //
                         "start", (Py_ssize_t)record->start,                                     //
                         "length", (Py_ssize_t)record->length,                                   //
                         "message", record->text,                                                //
                         "item", record->item,                                                   //
                         "conflict", record->conflict,                                           //
                         "expected", record->expected,                                           //
                         "arg_count", record->arg_count,                                         //
                         "accepted_arg_counts", countsOf(record),                                //
                         "suggestions", namesOf(record->suggestions, record->suggestion_count),  //
                         "hints", namesOf(record->hints, record->hint_count),                    //
                         "fix", (Py_ssize_t)record->fix_start, (Py_ssize_t)record->fix_length, record->fix_replacement);
}

void raiseFailure(Session* self, mathexpr_status status)
{
    if (PyErr_Occurred())
    {
        return;
    }
    if (status != MATHEXPR_PARSING_ERROR && status != MATHEXPR_DEFINITION_ERROR && status != MATHEXPR_REFUSED)
    {
        raiseStatus(status);
        return;
    }
    mathexpr_diagnostic_utf8 record = {.size = sizeof record};
    const mathexpr_status told = mathexpr_get_diagnostic_utf8(self->handle, &record);
    Py_CLEAR(self->answeredNames);
    if (PyErr_Occurred())
    {
        return;
    }
    if (told != MATHEXPR_OK)
    {
        raiseStatus(told);
        return;
    }
    PyObject* members = membersOf(&record);
    if (members != NULL)
    {
        raiseAnswered(hook("mathexpr._errors", "error_of_diagnostic", "(ON)", self->text, members));
    }
}
