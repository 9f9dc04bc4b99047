// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// editor.c - editor services. Results are tuples, which mathexpr._editor converts to named tuples. Positions are bytes
// of UTF-8.
#include "native.h"

#include <mathexpr_editor.h>

/// A text in UTF-8, valid while the session is entered.
typedef struct
{
    const char* text;
    size_t length;
} Encoded;

static bool begin(Session* self, PyObject* text, Encoded* encoded)
{
    Py_ssize_t length = 0;
    encoded->text = utf8Of(text, "an expression", &length);
    encoded->length = (size_t)length;
    return encoded->text != NULL && enter(self);
}

/// Whether there is a result; otherwise sets an exception. An exception of a callback takes precedence.
static bool hasAnswer(Session* self, mathexpr_status status)
{
    Py_CLEAR(self->answeredNames);
    if (status != MATHEXPR_OK && !PyErr_Occurred())
    {
        raiseStatus(status);
    }
    return !PyErr_Occurred();
}

/// Calls make for each element of an array, and returns the results as a list; NULL with an exception.
static PyObject* listOf(const void* elements, size_t count, PyObject* (*make)(const void* elements, size_t index))
{
    PyObject* list = PyList_New((Py_ssize_t)count);
    for (size_t index = 0; list != NULL && index < count; ++index)
    {
        PyObject* made = make(elements, index);
        if (made == NULL || PyList_SetItem(list, (Py_ssize_t)index, made) != 0)
        {
            Py_CLEAR(list);
        }
    }
    return list;
}

/// The value, or None.
static PyObject* valueIf(uint32_t hasValue, const mathexpr_value* value)
{
    return hasValue != 0 ? objectOf(value) : Py_NewRef(Py_None);
}

static PyObject* makeToken(const void* tokens, size_t index)
{
    const mathexpr_token* token = (const mathexpr_token*)tokens + index;
    PyObject* partner = token->partner != MATHEXPR_NO_PARTNER ? PyLong_FromSize_t(token->partner) : Py_NewRef(Py_None);
    return Py_BuildValue("InnIN", token->kind, (Py_ssize_t)token->start, (Py_ssize_t)token->length, token->depth,
                         partner);
}

PyObject* getTokens(Session* self, PyObject* text)
{
    Encoded encoded;
    if (!begin(self, text, &encoded))
    {
        return NULL;
    }
    mathexpr_tokens record = {.size = sizeof record};
    const mathexpr_status status = mathexpr_get_tokens_utf8(self->handle, encoded.text, encoded.length, &record);
    PyObject* answer = hasAnswer(self, status) ? listOf(record.tokens, record.token_count, makeToken) : NULL;
    leave(self);
    return answer;
}

/// The text that a service returned, or NULL with an exception. Leaves the session.
static PyObject* finishText(Session* self, mathexpr_status status, const mathexpr_text_utf8* made)
{
    PyObject* answer =
        hasAnswer(self, status) ? PyUnicode_FromStringAndSize(made->text, (Py_ssize_t)made->text_length) : NULL;
    leave(self);
    return answer;
}

PyObject* formatText(Session* self, PyObject* text)
{
    Encoded encoded;
    if (!begin(self, text, &encoded))
    {
        return NULL;
    }
    mathexpr_text_utf8 record = {.size = sizeof record};
    const mathexpr_status status = mathexpr_format_text_utf8(self->handle, encoded.text, encoded.length, &record);
    return finishText(self, status, &record);
}

PyObject* typesetText(Session* self, PyObject* arguments)
{
    PyObject* text = NULL;
    unsigned int notation = 0;
    Encoded encoded;
    if (!PyArg_ParseTuple(arguments, "OI", &text, &notation) || !begin(self, text, &encoded))
    {
        return NULL;
    }
    mathexpr_text_utf8 record = {.size = sizeof record};
    const mathexpr_status status =
        mathexpr_typeset_text_utf8(self->handle, encoded.text, encoded.length, notation, &record);
    return finishText(self, status, &record);
}

PyObject* getHover(Session* self, PyObject* arguments)
{
    PyObject* text = NULL;
    Py_ssize_t cursor = 0;
    int mayAsk = 0;
    Encoded encoded;
    if (!PyArg_ParseTuple(arguments, "Onp", &text, &cursor, &mayAsk) || !begin(self, text, &encoded))
    {
        return NULL;
    }
    mathexpr_hover_utf8 record = {.size = sizeof record};
    const mathexpr_status status = mathexpr_get_hover_utf8(self->handle, encoded.text, encoded.length, (size_t)cursor,
                                                           mayAsk != 0 ? MATHEXPR_MAY_ASK_HOST : 0, &record);
    PyObject* answer = NULL;
    if (hasAnswer(self, status))
    {
        answer = Py_BuildValue("InnssssssNNnn",                                           //
                               record.kind,                                               //
                               (Py_ssize_t)record.span.start,                             //
                               (Py_ssize_t)record.span.length,                            //
                               record.name,                                               //
                               record.help,                                               //
                               record.description,                                        //
                               record.domain,                                             //
                               record.unit,                                               //
                               record.example,                                            //
                               valueIf(record.has_example_value, &record.example_value),  //
                               valueIf(record.has_value, &record.value),                  //
                               (Py_ssize_t)record.value_span.start,                       //
                               (Py_ssize_t)record.value_span.length);
    }
    leave(self);
    return answer;
}

static PyObject* makeCompletion(const void* completions, size_t index)
{
    const mathexpr_completion_utf8* item = (const mathexpr_completion_utf8*)completions + index;
    return Py_BuildValue("sIIsNnnsnn",                            //
                         item->name,                              //
                         item->kind,                              //
                         item->value_kind,                        //
                         item->description,                       //
                         valueIf(item->has_value, &item->value),  //
                         (Py_ssize_t)item->edit.start,            //
                         (Py_ssize_t)item->edit.length,           //
                         item->edit.replacement,                  //
                         (Py_ssize_t)item->selection.start,       //
                         (Py_ssize_t)item->selection.length);
}

/// The names in a tuple as C strings, valid as long as the tuple; NULL with an exception.
static const char** recentNames(PyObject* names)
{
    const Py_ssize_t count = PyTuple_Size(names);
    const char** recent = PyMem_Calloc((size_t)count + 1, sizeof *recent);
    if (recent == NULL)
    {
        PyErr_NoMemory();
        return NULL;
    }
    for (Py_ssize_t index = 0; index < count; ++index)
    {
        recent[index] = utf8Of(PyTuple_GetItem(names, index), "a name", NULL);
        if (recent[index] == NULL)
        {
            PyMem_Free((void*)recent);
            return NULL;
        }
    }
    return recent;
}

PyObject* getCompletions(Session* self, PyObject* arguments)
{
    PyObject* text = NULL;
    PyObject* names = NULL;
    Py_ssize_t cursor = 0;
    unsigned int maxCount = 0;
    if (!PyArg_ParseTuple(arguments, "OnIO!", &text, &cursor, &maxCount, &PyTuple_Type, &names))
    {
        return NULL;
    }
    const char** recent = recentNames(names);
    Encoded encoded;
    if (recent == NULL || !begin(self, text, &encoded))
    {
        PyMem_Free((void*)recent);
        return NULL;
    }
    const mathexpr_completion_options_utf8 options = {
        .size = sizeof options, .max_count = maxCount, .recent = recent, .recent_count = (size_t)PyTuple_Size(names)};
    mathexpr_completions_utf8 record = {.size = sizeof record};
    const mathexpr_status status =
        mathexpr_get_completions_utf8(self->handle, encoded.text, encoded.length, (size_t)cursor, &options, &record);
    PyObject* answer = hasAnswer(self, status) ? listOf(record.items, record.item_count, makeCompletion) : NULL;
    leave(self);
    PyMem_Free((void*)recent);
    return answer;
}
