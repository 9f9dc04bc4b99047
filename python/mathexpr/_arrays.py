# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Bulk evaluation over NumPy arrays, which the library reads and writes where they are.

In: a session with a compiled text, columns, and where the results go. Out: the array of results. `_Call` holds what
the library is handed, and the arrays behind it; everything that an array may not be is told before anything is written.
"""

from __future__ import annotations

import ctypes
from collections.abc import Mapping
from numbers import Real
from typing import Any

import numpy as np
from numpy.typing import NDArray

from . import _library
from ._errors import Diagnostic, MathExprError, RowsError, error_of_status
from ._library import LIBRARY
from ._session import Session, utf8
from ._values import Point, to_record
from ._variables import Variables

Column = Any  # NDArray[np.float64] or Value; what it really is gets checked

# As many rows go into one call; between two calls Python notices Ctrl-C.
_ROWS_PER_CALL = 1 << 20

# To find out the kind of result, as many rows are tried at a time.
_ROWS_PER_TRIAL = 1024

_RECORD = np.dtype({"names": ["type", "x"], "formats": ["u1", "f8"], "offsets": [0, 8], "itemsize": 32})

_REFUSALS = {
    _library.BULK_COLUMN_NAME: "is not a name",
    _library.BULK_COLUMN_TWICE: "is there twice: names are compared without regard to case",
    _library.BULK_COLUMN_ALIGNMENT: "is not aligned to 8 bytes; numpy.ascontiguousarray makes a copy that is",
    _library.BULK_RESULTS_ALIGNMENT: "is not aligned to 8 bytes, or row_status not to 4",
    _library.BULK_RESULTS_OVERLAP: "has rows that share memory",
}


def evaluate_arrays(
    session: Session,
    variables: Variables,
    columns: Mapping[str, Column],
    out: NDArray[np.float64] | None,
    row_status: NDArray[np.uint32] | None,
    threads: int,
    strict: bool,
) -> NDArray[np.float64]:
    """See `Expression.evaluate_arrays`."""
    if not isinstance(threads, int) or not 1 <= threads <= 0xFFFFFFFF:
        raise ValueError(f"threads is {threads!r}; it is a whole number from 1 on")
    for name, column in columns.items():
        if not isinstance(column, (Real, Point)):
            _check(column, f"the column {name!r}")
        if name not in variables:
            raise ValueError(f"the column {name!r} is no variable of the expression")
    if out is not None:
        _check(out, "out", writeable=True)
    row_count = _number_of_rows(columns, out)
    if row_status is not None:
        _check_row_status(row_status, row_count)
    with session:
        call = _Call(session, columns)
        if out is None:
            out = np.empty((row_count, 3) if call.yields_points(row_count) else row_count)
        else:
            _check_overlap(columns, out)
        failed_count, first_failed, first_status = call.run(out, row_status, threads)
        if failed_count and strict:
            diagnostic = _diagnose(session.text.decode(), variables, columns, first_failed, first_status)
            raise RowsError(diagnostic, out, failed_count, first_failed)
    return out


def _check(array: object, what: str, writeable: bool = False) -> None:
    if not isinstance(array, np.ndarray) or isinstance(array, np.ma.MaskedArray):
        raise TypeError(f"{what} is a NumPy array of float64, not {type(array).__name__}")
    if array.dtype != np.float64:
        raise TypeError(f"{what} is an array of float64, not {array.dtype.str}; .astype(float) makes a copy that is")
    if array.ndim != 1 and not (array.ndim == 2 and array.shape[1] == 3):
        raise ValueError(f"{what} has the shape (n,) for numbers or (n, 3) for points, not {array.shape}")
    if writeable and not array.flags.writeable:
        raise ValueError(f"{what} is read-only")


def _number_of_rows(columns: Mapping[str, Column], out: NDArray[np.float64] | None) -> int:
    arrays = {f"the column {name!r}": column for name, column in columns.items()} | {"out": out}
    lengths = {what: len(array) for what, array in arrays.items() if isinstance(array, np.ndarray)}
    if not lengths:
        raise ValueError("no column is an array, and there is no out: the number of rows is not known")
    if len(set(lengths.values())) > 1:
        told = ", ".join(f"{what} has {length} rows" for what, length in lengths.items())
        raise ValueError(f"different lengths: {told}")
    return next(iter(lengths.values()))


def _check_row_status(row_status: object, row_count: int) -> None:
    if not isinstance(row_status, np.ndarray) or row_status.dtype != np.uint32:
        raise TypeError("row_status is a NumPy array of uint32")
    if row_status.shape != (row_count,):
        raise ValueError(f"row_status has the shape ({row_count},), not {row_status.shape}")
    if not row_status.flags.c_contiguous or not row_status.flags.writeable:
        raise ValueError("row_status is contiguous and not read-only")


def _check_overlap(columns: Mapping[str, Column], out: NDArray[np.float64]) -> None:
    """A result may go where its own row's number stands, and nowhere else in a column."""
    for name, column in columns.items():
        if not isinstance(column, np.ndarray) or not np.may_share_memory(column, out):
            continue
        if column.ndim == out.ndim == 1 and _address(column) == _address(out) and column.strides == out.strides:
            continue
        try:
            overlap = np.shares_memory(column, out, max_work=1_000_000)
        except np.TooHardError:
            overlap = True
        if overlap:
            raise ValueError(f"out overlaps the column {name!r} in another way than row by row")


def _address(array: NDArray[Any]) -> int:
    address: int = array.__array_interface__["data"][0]
    return address


class _Call:
    """The columns as the library takes them."""

    def __init__(self, session: Session, columns: Mapping[str, Column]) -> None:
        self._session = session
        self._names = list(columns)
        self._kept_alive: list[object] = []
        self._columns = (_library.Column * len(columns))()
        for index, (name, column) in enumerate(columns.items()):
            self._columns[index] = self._column(utf8(name, "the name of a column"), column)

    def _column(self, name: bytes, values: Column) -> _library.Column:
        column = _library.Column(name=name, name_length=len(name))
        if isinstance(values, np.ndarray):
            address = _address(values)
            column.kind = _library.NUMBERS if values.ndim == 1 else _library.POINTS
            column.stride = values.strides[0]
            column.coordinate_stride = values.strides[1] if values.ndim == 2 else 0
        else:  # one value for all rows
            values = to_record(values)
            address = ctypes.addressof(values) + _library.Record.x.offset
            column.kind = _library.POINTS if values.type == _library.POINT else _library.NUMBERS
            column.coordinate_stride = ctypes.sizeof(ctypes.c_double)
        column.data = address
        self._kept_alive += (name, values)
        return column

    def yields_points(self, row_count: int) -> bool:
        """Whether the results are points. All rows that have a value have one of the same kind."""
        start, step = 0, 1
        while start < row_count:
            tried_count = min(step, row_count - start)
            records = np.empty(tried_count, _RECORD)
            status = np.empty(tried_count, np.uint32)
            results = _library.Results(
                kind=_library.RECORDS, data=_address(records), stride=records.strides[0], row_status=_address(status)
            )
            self._evaluate(start, tried_count, results, 1)
            kinds = records["type"][status == _library.ROW_DONE]
            if len(kinds):
                return bool(kinds[0] == _library.POINT)
            start, step = start + tried_count, _ROWS_PER_TRIAL
        return False

    def run(
        self,
        out: NDArray[np.float64],
        row_status: NDArray[np.uint32] | None,
        threads: int,
    ) -> tuple[int, int, int]:
        """Fills `out`. Answers how many rows failed, which was the first, and its status."""
        failed_count, first_failed, first_status = 0, 0, _library.ROW_DONE
        results = _library.Results(
            kind=_library.NUMBERS if out.ndim == 1 else _library.POINTS,
            stride=out.strides[0],
            coordinate_stride=out.strides[1] if out.ndim == 2 else 0,
        )
        for start in range(0, max(len(out), 1), _ROWS_PER_CALL):
            results.data = _address(out) + start * out.strides[0]
            if row_status is not None:
                results.row_status = _address(row_status) + start * row_status.itemsize
            outcome = self._evaluate(start, min(len(out) - start, _ROWS_PER_CALL), results, threads)
            if outcome.failed_count and not failed_count:
                first_failed, first_status = start + outcome.first_failed, outcome.first_status
            failed_count += outcome.failed_count
        return failed_count, first_failed, first_status

    def _evaluate(self, start: int, row_count: int, results: _library.Results, threads: int) -> _library.Outcome:
        columns = type(self._columns)(*self._columns)
        for column in columns:
            column.data += start * column.stride
        outcome = _library.Outcome()
        status = self._session.status(
            LIBRARY.mathexpr_evaluate_bulk_utf8,
            columns,
            len(columns),
            row_count,
            ctypes.byref(results),
            threads,
            ctypes.byref(outcome),
        )
        if status == _library.BULK_REFUSED:
            of_results = outcome.error in (_library.BULK_RESULTS_ALIGNMENT, _library.BULK_RESULTS_OVERLAP)
            what = "out" if of_results else f"the column {self._names[outcome.column]!r}"
            raise ValueError(f"{what} {_REFUSALS.get(outcome.error, f'is refused (error {outcome.error})')}")
        if status != _library.OK:
            raise error_of_status(status)
        return outcome


def _diagnose(text: str, variables: Variables, columns: Mapping[str, Column], row: int, status: int) -> Diagnostic:
    """Tells what went wrong in a row, by evaluating it alone in an expression of its own."""
    from ._expression import Expression

    if status == _library.ROW_OTHER_KIND:
        return Diagnostic("The value is a point and out takes numbers, or the other way round.", 0, text)
    with Expression() as alone:
        for name in variables:
            alone.variables.set_record(name, variables.record(name))
        for name, column in columns.items():
            value = column[row] if isinstance(column, np.ndarray) else column
            alone.variables[name] = Point(*value) if isinstance(value, np.ndarray) else value
        try:
            alone.evaluate(text)
        except MathExprError as error:
            return error.diagnostic
    return Diagnostic("An item refused its arguments.", status, text)  # in that row only, by chance
