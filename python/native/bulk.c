// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// bulk.c - Columns: arrays, used in place, and single values for all rows.
#include "native.h"

#include <string.h>

PyObject* arrayType;
PyObject* makeArray;

enum
{
    RowsPerCall = 1 << 20,  // computed between checks for Ctrl-C
    RowsPerTrial = 1024,    // evaluated at a time to determine the kind of the results
    RowsWithoutGil = 64,    // for fewer rows, releasing the GIL costs more than the computation
    Alignment = 8,
};

static bool isAligned(const Py_buffer* view)
{
    uintptr_t bits = (uintptr_t)view->buf;
    for (int axis = 0; axis < view->ndim; ++axis)
    {
        bits |= (uintptr_t)view->strides[axis];
    }
    return bits % Alignment == 0;
}

/// Whether a view contains doubles and has the shape (n,) or (n, 3).
static bool isOfDoubles(const Py_buffer* view)
{
    return view->format != NULL && strcmp(view->format, "d") == 0 &&
           (view->ndim == 1 || (view->ndim == 2 && view->shape[1] == 3));
}

static OpenResult openColumn(mathexpr_column_utf8* column, mathexpr_value* constant, Py_buffer* view, PyObject* object)
{
    if (!PyFloat_Check(object) && PyObject_CheckBuffer(object))
    {
        if (PyObject_GetBuffer(object, view, PyBUF_RECORDS_RO) != 0)
        {
            PyErr_Clear();
            return OpenUnfit;
        }
        if (view->ndim != 0)
        {
            column->kind = view->ndim == 1 ? MATHEXPR_NUMBERS : MATHEXPR_POINTS;
            column->data = view->buf;
            column->stride = view->strides[0];
            column->coordinate_stride = view->ndim == 2 ? view->strides[1] : 0;
            return isOfDoubles(view) && isAligned(view) ? OpenDone : OpenUnfit;
        }
        const bool isNumber = view->format != NULL && strcmp(view->format, "d") == 0;
        if (isNumber)
        {
            memcpy(&constant->x, view->buf, sizeof constant->x);
            column->data = &constant->x;
        }
        PyBuffer_Release(view);  // a NumPy scalar, or an array without dimensions
        if (!isNumber && (PyObject*)Py_TYPE(object) == arrayType)
        {
            return OpenUnfit;
        }
        if (isNumber)
        {
            return OpenDone;
        }
    }
    if (!valueOf(object, constant))
    {
        return OpenFailed;
    }
    column->kind = constant->type == MATHEXPR_POINT ? MATHEXPR_POINTS : MATHEXPR_NUMBERS;
    column->data = &constant->x;
    column->coordinate_stride = sizeof(double);
    return OpenDone;
}

OpenResult openColumns(Columns* self, PyObject* names, PyObject* values, size_t* unfit)
{
    memset(self, 0, sizeof *self);
    self->rowCount = -1;
    const size_t count = (size_t)PyTuple_Size(values);
    if (count != (size_t)PyTuple_Size(names))
    {
        PyErr_SetString(PyExc_ValueError, "as many names as columns are needed");
        return OpenFailed;
    }
    self->columns = PyMem_Calloc(count + 1, sizeof *self->columns);
    self->constants = PyMem_Calloc(count + 1, sizeof *self->constants);
    self->views = PyMem_Calloc(count + 1, sizeof *self->views);
    if (self->columns == NULL || self->constants == NULL || self->views == NULL)
    {
        PyErr_NoMemory();
        return OpenFailed;
    }
    self->count = count;
    for (size_t index = 0; index < count; ++index)
    {
        mathexpr_column_utf8* column = &self->columns[index];
        Py_buffer* view = &self->views[index];
        Py_ssize_t length = 0;
        *unfit = index;
        column->size = sizeof *column;
        column->name = utf8Of(PyTuple_GetItem(names, (Py_ssize_t)index), "the name of a column", &length);
        column->name_length = (size_t)length;
        if (column->name == NULL)
        {
            return OpenFailed;
        }
        const OpenResult result =
            openColumn(column, &self->constants[index], view, PyTuple_GetItem(values, (Py_ssize_t)index));
        if (result != OpenDone)
        {
            return result;
        }
        if (view->obj == NULL)
        {
            continue;
        }
        if (self->rowCount >= 0 && view->shape[0] != self->rowCount)
        {
            return OpenUnfit;
        }
        self->rowCount = view->shape[0];
    }
    return OpenDone;
}

void closeColumns(Columns* self)
{
    for (size_t index = 0; index < self->count; ++index)
    {
        if (self->views[index].obj != NULL)
        {
            PyBuffer_Release(&self->views[index]);
        }
    }
    PyMem_Free(self->columns);
    PyMem_Free(self->constants);
    PyMem_Free(self->views);
}

PyObject* outcomeOf(const Columns* columns)
{
    return Py_BuildValue("nnI", (Py_ssize_t)columns->outcome.failed_count, (Py_ssize_t)columns->outcome.first_failed,
                         columns->outcome.first_status);
}

/// Evaluates rowCount rows from start on. The caller has entered the session.
static bool evaluateRows(Session* session, Columns* self, PyObject* names, Py_ssize_t start, Py_ssize_t rowCount,
                         const mathexpr_results* results, uint32_t threadCount, mathexpr_bulk_outcome* outcome)
{
    for (size_t index = 0; index < self->count; ++index)
    {
        if (self->views[index].obj != NULL)
        {
            self->columns[index].data =
                (const double*)(const void*)((const char*)self->views[index].buf + start * self->columns[index].stride);
        }
    }
    *outcome = (mathexpr_bulk_outcome){.size = sizeof *outcome};
    PyThreadState* state = rowCount >= RowsWithoutGil ? PyEval_SaveThread() : NULL;
    const mathexpr_status status = mathexpr_evaluate_bulk_utf8(session->handle, self->columns, self->count,
                                                               (size_t)rowCount, results, threadCount, outcome);
    if (state != NULL)
    {
        PyEval_RestoreThread(state);
    }
    if (status == MATHEXPR_BULK_REFUSED)
    {
        PyObject* name = outcome->column < self->count ? PyTuple_GetItem(names, (Py_ssize_t)outcome->column) : Py_None;
        raiseAnswered(hook("mathexpr._errors", "error_of_refused_arrays", "(IO)", outcome->error, name));
    }
    else if (status != MATHEXPR_OK)
    {
        raiseStatus(status);
    }
    return status == MATHEXPR_OK;
}

int kindOfRows(Session* session, Columns* columns, Py_ssize_t rowCount, PyObject* names)
{
    mathexpr_value records[RowsPerTrial];
    uint32_t rowStatus[RowsPerTrial];
    const mathexpr_results results = {.size = sizeof results,
                                      .kind = MATHEXPR_RECORDS,
                                      .data = records,
                                      .stride = sizeof records[0],
                                      .row_status = rowStatus};
    Py_ssize_t triedCount = 1;
    for (Py_ssize_t start = 0; start < rowCount; start += triedCount, triedCount = RowsPerTrial)
    {
        triedCount = triedCount < rowCount - start ? triedCount : rowCount - start;
        mathexpr_bulk_outcome outcome;
        if (!evaluateRows(session, columns, names, start, triedCount, &results, 1, &outcome))
        {
            return -2;
        }
        for (Py_ssize_t row = 0; row < triedCount; ++row)
        {
            if (rowStatus[row] == MATHEXPR_ROW_DONE)
            {
                return records[row].type == MATHEXPR_POINT;
            }
        }
    }
    return -1;
}

bool runOneRow(Session* session, Columns* columns, PyObject* names, mathexpr_value* value)
{
    const mathexpr_results results = {
        .size = sizeof results, .kind = MATHEXPR_RECORDS, .data = value, .stride = sizeof *value};
    return evaluateRows(session, columns, names, 0, 1, &results, 1, &columns->outcome) &&
           columns->outcome.failed_count == 0;
}

static bool runChunks(Session* session, Columns* self, PyObject* names, const Py_buffer* out, uint32_t* rowStatus,
                      uint32_t threadCount)
{
    const Py_ssize_t rowCount = out->shape[0];
    mathexpr_results results = {.size = sizeof results,
                                .kind = out->ndim == 1 ? MATHEXPR_NUMBERS : MATHEXPR_POINTS,
                                .stride = out->strides[0],
                                .coordinate_stride = out->ndim == 2 ? out->strides[1] : 0};
    Py_ssize_t start = 0;
    do  // at least once, to report errors in the arrays
    {
        const Py_ssize_t chunk = rowCount - start < RowsPerCall ? rowCount - start : RowsPerCall;
        results.data = (char*)out->buf + start * out->strides[0];
        results.row_status = rowStatus != NULL ? rowStatus + start : NULL;
        mathexpr_bulk_outcome outcome;
        if (!evaluateRows(session, self, names, start, chunk, &results, threadCount, &outcome) ||
            PyErr_CheckSignals() != 0)
        {
            return false;
        }
        if (outcome.failed_count != 0 && self->outcome.failed_count == 0)
        {
            self->outcome.first_failed = (size_t)start + outcome.first_failed;
            self->outcome.first_status = outcome.first_status;
        }
        self->outcome.failed_count += outcome.failed_count;
        start += chunk;
    } while (start < rowCount);
    return true;
}

bool runRows(Session* session, Columns* columns, PyObject* names, PyObject* out, PyObject* rowStatus,
             uint32_t threadCount)
{
    Py_buffer results;
    if (PyObject_GetBuffer(out, &results, PyBUF_RECORDS) != 0)
    {
        return false;
    }
    bool done = isOfDoubles(&results) && (columns->rowCount < 0 || results.shape[0] == columns->rowCount);
    if (!done)
    {
        PyErr_SetString(PyExc_ValueError, "out has to be an array of float64 with as many rows as the columns have");
    }
    else if (rowStatus == NULL)
    {
        done = runChunks(session, columns, names, &results, NULL, threadCount);
    }
    else
    {
        Py_buffer statuses;
        done = PyObject_GetBuffer(rowStatus, &statuses, PyBUF_CONTIG) == 0;
        if (done)
        {
            done = statuses.itemsize == sizeof(uint32_t) && statuses.len == results.shape[0] * statuses.itemsize;
            if (!done)
            {
                PyErr_SetString(PyExc_ValueError,
                                "row_status has to be an array of uint32 with as many rows as out has");
            }
            done = done && runChunks(session, columns, names, &results, statuses.buf, threadCount);
            PyBuffer_Release(&statuses);
        }
    }
    PyBuffer_Release(&results);
    return done;
}

bool areArrays(PyObject* values)
{
    bool hasArray = false;
    for (Py_ssize_t index = 0; index < PyTuple_Size(values); ++index)
    {
        PyObject* value = PyTuple_GetItem(values, index);
        const bool isArray = (PyObject*)Py_TYPE(value) == arrayType && arrayType != NULL;
        if (!isArray && !PyFloat_CheckExact(value) && !PyLong_CheckExact(value))
        {
            return false;
        }
        hasArray = hasArray || isArray;
    }
    return hasArray;
}

PyObject* computeRows(Session* session, Columns* columns, PyObject* names, PyObject* values, uint32_t threadCount,
                      atomic_int* knownKind)
{
    int kind = atomic_load(knownKind);
    if (kind == KindUnknown)
    {
        kind = kindOfRows(session, columns, columns->rowCount, names);
        if (kind >= 0)
        {
            atomic_store(knownKind, kind);
        }
    }
    if (kind == -2)
    {
        return NULL;
    }
    PyObject* shape = kind == 1 ? Py_BuildValue("(ni)", columns->rowCount, 3) : PyLong_FromSsize_t(columns->rowCount);
    PyObject* out = shape != NULL ? PyObject_CallFunctionObjArgs(makeArray, shape, NULL) : NULL;
    Py_XDECREF(shape);
    if (out == NULL || !runRows(session, columns, names, out, NULL, threadCount))
    {
        Py_XDECREF(out);
        return NULL;
    }
    if (columns->outcome.failed_count != 0)
    {
        return hook("mathexpr._rows", "raise_rows", "(OOONN)", session, names, values, out, outcomeOf(columns));
    }
    return out;
}
