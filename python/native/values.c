// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// values.c - converts between Python values and records of the library.
#include "native.h"

#include <string.h>

bool plainNumberOf(PyObject* object, double* number)
{
    if (PyFloat_CheckExact(object))
    {
        *number = PyFloat_AsDouble(object);
        return true;
    }
    if (!PyLong_CheckExact(object))
    {
        return false;
    }
    *number = PyLong_AsDouble(object);
    if (*number == -1.0 && PyErr_Occurred())
    {
        PyErr_Clear();  // too large; reported by the next function that reads it
        return false;
    }
    return true;
}

bool valueOf(PyObject* object, mathexpr_value* value)
{
    memset(value, 0, sizeof *value);
    if (plainNumberOf(object, &value->x))
    {
        return true;
    }
    // Points, and numbers other than float and int, are handled in Python.
    PyObject* record = hook("mathexpr._values", "to_record", "(O)", object);
    if (record == NULL)
    {
        return false;
    }
    const bool isPoint = PyTuple_Check(record);
    value->type = isPoint ? MATHEXPR_POINT : MATHEXPR_NUMBER;
    const bool done = isPoint ? PyArg_ParseTuple(record, "ddd", &value->x, &value->y, &value->z) != 0
                              : ((value->x = PyFloat_AsDouble(record)), !PyErr_Occurred());
    Py_DECREF(record);
    return done;
}

PyObject* objectOf(const mathexpr_value* value)
{
    if (value->type == MATHEXPR_NUMBER)
    {
        return PyFloat_FromDouble(value->x);
    }
    return hook("mathexpr._values", "Point", "(ddd)", value->x, value->y, value->z);
}

const char* utf8Of(PyObject* text, const char* what, Py_ssize_t* length)
{
    if (!PyUnicode_Check(text))
    {
        PyObject* name = PyType_GetName(Py_TYPE(text));
        if (name != NULL)
        {
            PyErr_Format(PyExc_TypeError, "%s is a str, not %U", what, name);
            Py_DECREF(name);
        }
        return NULL;
    }
    return PyUnicode_AsUTF8AndSize(text, length);
}

PyObject* foldedName(PyObject* name)
{
    Py_ssize_t length = 0;
    const char* given = utf8Of(name, "the name of a variable", &length);
    char* folded = given != NULL ? PyMem_Malloc((size_t)length + 1) : NULL;
    if (folded == NULL)
    {
        return given != NULL ? PyErr_NoMemory() : NULL;
    }
    for (Py_ssize_t index = 0; index < length; ++index)
    {
        const char unit = given[index];
        folded[index] = unit >= 'A' && unit <= 'Z' ? (char)(unit - 'A' + 'a') : unit;
    }
    PyObject* answer = PyUnicode_FromStringAndSize(folded, length);
    PyMem_Free(folded);
    return answer;
}
