// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// module.c - the module, its types, and the functions without a handle.
#include "native.h"

#include <mathexpr_editor.h>

static PyObject* formatValue(PyObject* module, PyObject* arguments)
{
    (void)module;
    PyObject* object = NULL;
    unsigned int digits = MATHEXPR_EXACT_DIGITS;
    mathexpr_value value;
    if (!PyArg_ParseTuple(arguments, "O|I", &object, &digits) || !valueOf(object, &value))
    {
        return NULL;
    }
    char text[MATHEXPR_VALUE_TEXT_CAPACITY];
    const mathexpr_status status = mathexpr_format_value_utf8(&value, digits, text, sizeof text, NULL);
    if (status != MATHEXPR_OK)
    {
        raiseStatus(status);
        return NULL;
    }
    return PyUnicode_FromString(text);
}

/// An item of the vocabulary as a tuple of the members of VocabularyItem; None if there is no such item.
static PyObject* vocabularyItem(PyObject* module, PyObject* index)
{
    (void)module;
    mathexpr_vocabulary_item_utf8 item = {.size = sizeof item};
    const unsigned long number = PyLong_AsUnsignedLong(index);
    if (PyErr_Occurred())
    {
        return NULL;
    }
    const mathexpr_status status = mathexpr_get_vocabulary_item_utf8((uint32_t)number, &item);
    if (status == MATHEXPR_NOT_FOUND)
    {
        Py_RETURN_NONE;
    }
    if (status != MATHEXPR_OK)
    {
        raiseStatus(status);
        return NULL;
    }
    PyObject* count =
        item.arg_count == MATHEXPR_ANY_ARG_COUNT ? Py_NewRef(Py_None) : PyLong_FromUnsignedLong(item.arg_count);
    return Py_BuildValue("IIsssNiNNd", item.kind, item.family, item.symbol, item.help, item.description, count,
                         item.precedence, PyBool_FromLong((long)item.unary), PyBool_FromLong((long)item.constant),
                         item.value);
}

/// Receives numpy.ndarray and numpy.empty.
static PyObject* useArrays(PyObject* module, PyObject* arguments)
{
    (void)module;
    PyObject* type = NULL;
    PyObject* maker = NULL;
    if (!PyArg_ParseTuple(arguments, "OO", &type, &maker))
    {
        return NULL;
    }
    if (arrayType == NULL)  // kept until the process ends
    {
        makeArray = Py_NewRef(maker);
        arrayType = Py_NewRef(type);
    }
    Py_RETURN_NONE;
}

static int addTypes(PyObject* module)
{
    PyObject* session = PyType_FromModuleAndSpec(module, &sessionSpec, NULL);
    sessionType = (PyTypeObject*)session;
    if (session == NULL || PyModule_AddObjectRef(module, "Session", session) != 0)
    {
        return -1;
    }
    PyObject* function = PyType_FromModuleAndSpec(module, &functionSpec, NULL);
    const int added = function != NULL ? PyModule_AddObjectRef(module, "Function", function) : -1;
    Py_XDECREF(function);
    return added;
}

static int execute(PyObject* module)
{
    if (sessionType != NULL)
    {
        PyErr_SetString(PyExc_ImportError, "mathexpr serves one interpreter of a process");
        return -1;
    }
    return addTypes(module) != 0 || PyModule_AddStringConstant(module, "VERSION", mathexpr_version_text()) != 0 ||
                   PyModule_AddIntMacro(module, MATHEXPR_NAMES_USED) != 0 ||
                   PyModule_AddIntMacro(module, MATHEXPR_NAMES_DEFINED) != 0 ||
                   PyModule_AddIntMacro(module, MATHEXPR_NAMES_OF_HOST) != 0 ||
                   PyModule_AddIntMacro(module, MATHEXPR_NOTATION_LATEX) != 0 ||
                   PyModule_AddIntMacro(module, MATHEXPR_NOTATION_MATHML) != 0 ||
                   PyModule_AddIntMacro(module, MATHEXPR_ROW_OTHER_KIND) != 0
               ? -1
               : 0;
}

static PyMethodDef functions[] = {
    {"format_value", formatValue, METH_VARARGS, "A value as text that an expression reads back."},
    {"vocabulary_item", vocabularyItem, METH_O, "An item of the vocabulary; None behind the last."},
    {"use_arrays", useArrays, METH_VARARGS, "Hands over numpy.ndarray and numpy.empty."},
    {NULL, NULL, 0, NULL},
};

static PyModuleDef_Slot moduleSlots[] = {
    {Py_mod_exec, execute},
#if defined(Py_GIL_DISABLED)
    {Py_mod_gil, Py_MOD_GIL_NOT_USED},
#endif
    {0, NULL},
};

static PyModuleDef definition = {
    .m_base = PyModuleDef_HEAD_INIT,
    .m_name = "_native",
    .m_doc = "The library, for the package mathexpr alone.",
    .m_methods = functions,
    .m_slots = moduleSlots,
};

PyMODINIT_FUNC PyInit__native(void);

PyMODINIT_FUNC PyInit__native(void)
{
    return PyModuleDef_Init(&definition);
}
