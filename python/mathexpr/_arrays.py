# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Bulk evaluation over arrays of any kind.

Input: a session with a compiled text, names and their values. Output: an array of float64; a table or a masked array
if a value is one. Aligned arrays of float64 are used in place; others are converted in blocks of rows. Unusable arrays
raise an exception before anything is written.
"""

from __future__ import annotations

import math
import sys
from collections.abc import Iterator, Sequence
from numbers import Real
from typing import Any

import numpy as np
from numpy.typing import NDArray

from . import _native
from ._native import Session
from ._rows import raise_rows
from ._values import Point

_native.use_arrays(np.ndarray, np.empty)

# Rows converted per thread and block: large enough to hide the cost per block, small enough for the cache.
_ROWS_PER_BLOCK = 1 << 15

_SHAPES = "the shape (n,) for numbers or (n, 3) for points"


class _Input:
    """The values of a variable: an array-like of numbers, or one value for all rows."""

    __slots__ = ("array", "index", "is_masked", "is_point", "mask", "name", "rows", "scalar", "what")

    def __init__(self, name: str, value: Any, is_point: bool | None, copy: bool, what: str) -> None:
        self.name = name
        self.what = f"{what} {name!r}"
        self.array: Any = None
        self.scalar: Any = None
        self.mask: NDArray[np.bool_] | None = None  #: True where a row has no value.
        self.is_masked = False  #: The result becomes a masked array.
        self.index: Any = None  #: Index of a pandas Series or DataFrame.
        self.rows: tuple[int, ...] = ()  #: The shape without the coordinates of points.
        self.is_point = bool(is_point)
        if isinstance(value, (Real, Point)):
            if is_point is not None and isinstance(value, Point) != is_point:
                raise TypeError(f"{self.what} is a {'point' if is_point else 'number'}, not {value!r}; {_SAY_POINTS}")
            self.scalar = value
            return
        if type(value) is np.ndarray:
            self.array = value
        elif not copy:
            got = type(value).__name__
            raise TypeError(f"{self.what} must be a NumPy array of float64; got {got}; leave out copy=False to convert it")
        else:
            self._adopt(value)
        self._check(is_point, copy)

    def _adopt(self, value: Any) -> None:
        """Extracts the array from a container."""
        pandas = sys.modules.get("pandas")
        if pandas is not None and isinstance(value, (pandas.Series, pandas.DataFrame)):
            self.index = value.index
            if isinstance(value, pandas.Series) and pandas.api.types.is_extension_array_dtype(value.dtype):
                if not pandas.api.types.is_numeric_dtype(value.dtype):
                    raise TypeError(f"{self.what} holds {value.dtype}, not numbers")
                self.mask = value.isna().to_numpy()
                self.array = value.to_numpy(dtype=np.float64, na_value=math.nan)
                return
        elif isinstance(value, np.ma.MaskedArray):
            self.is_masked = True
            self.mask = np.broadcast_to(value.mask, value.shape)
            self.array = value.data
            return
        null_count: Any = getattr(value, "null_count", 0)  # an attribute of some containers, a method of others
        null_count = null_count() if callable(null_count) else null_count
        if null_count > 0:
            raise TypeError(f"{self.what} holds nulls; fill them, or drop their rows, for example with .drop_nulls()")
        self.array = np.asarray(value)

    def _check(self, is_point: bool | None, copy: bool) -> None:
        array = self.array
        if array.dtype.kind not in "biuf":
            if array.dtype.kind == "O":
                remedy = "a column with missing values becomes one with .astype('Float64'), any other with .astype(float)"
                raise TypeError(f"{self.what} holds Python objects, not numbers; {remedy}")
            raise TypeError(f"{self.what} holds {array.dtype}, not numbers")
        if not copy and array.dtype != np.float64:
            raise TypeError(f"{self.what} must be an array of float64; got {array.dtype.str}; .astype(float) converts it")
        if not copy and (_address(array) | math.gcd(*array.strides, 0)) % 8:
            raise ValueError(f"{self.what} is not aligned to 8 bytes; numpy.ascontiguousarray makes a copy that is")
        if is_point is None:
            self.is_point = array.ndim == 2 and array.shape[1] == 3
            if array.ndim > 1 and not self.is_point:
                raise ValueError(f"{self.what} has {_SHAPES}, not {array.shape}")
        if self.is_point and (array.ndim == 0 or array.shape[-1] != 3):
            raise ValueError(f"{self.what} is a point and has 3 coordinates on its last axis; got the shape {array.shape}")
        self.rows = array.shape[:-1] if self.is_point else array.shape
        if self.mask is not None and self.is_point:
            self.mask = self.mask.any(axis=-1)

    def spread(self, rows: tuple[int, ...]) -> Any:
        """The array broadcast to all rows, or the one value."""
        if self.array is None:
            return self.scalar
        return np.broadcast_to(self.array, (*rows, 3) if self.is_point else rows)


_SAY_POINTS = "say which arguments are points with points="


def _is_direct(array: Any, rows: tuple[int, ...], is_point: bool) -> bool:
    """Whether the library accepts an array without conversion."""
    return bool(
        len(rows) == 1
        and array.shape[0] == rows[0]
        and array.ndim == 1 + is_point
        and array.dtype == np.float64
        and array.dtype.isnative
        and not (_address(array) | math.gcd(*array.strides)) % 8
    )


def _address(array: NDArray[Any]) -> int:
    address: int = array.__array_interface__["data"][0]
    return address


def evaluate(
    session: Session,
    names: tuple[str, ...],
    values: Sequence[Any],
    points: Sequence[bool | None],
    *,
    out: Any = None,
    where: Any = True,
    row_status: Any = None,
    threads: int = 1,
    strict: bool = True,
    copy: bool = True,
    what: str = "the argument",
) -> Any:
    """See `Expression.evaluate_arrays` and `Function`. points has one entry per name.

    If an entry is None, an array of shape (n, 3) holds points.
    """
    if not isinstance(threads, int) or not 1 <= threads <= 0xFFFFFFFF:
        raise ValueError(f"threads is {threads!r}; it is a whole number from 1 on")
    inputs = [_Input(name, value, point, copy, what) for name, value, point in zip(names, values, points)]
    if out is not None:
        _check_out(out)
    if out is not None and where is True and all(input.array is None for input in inputs):
        is_point = out.shape[-1:] == (3,) and session.yields_points(names, tuple(values), 1)
        rows = out.shape[:-1] if is_point else out.shape
    else:
        rows = _common_rows(inputs, out, where, copy)
    if row_status is not None:
        _check_row_status(row_status, rows)
    index = _common_index(inputs)
    mask = _common_mask(inputs, rows)
    chosen = _chosen(where, mask, rows)
    run = _Run(session, names, inputs, rows, threads, row_status)
    if chosen is None:
        result = run.all_rows(out)
    else:
        result = run.chosen_rows(out, chosen, mask)
    if run.failed_count and strict:
        raise_rows(session, names, run.flat_columns(), result, (run.failed_count, run.first_failed, run.first_status))
    if out is not None:
        return out
    return _as_given(result, rows, index, mask, any(input.is_masked for input in inputs))


def _check_out(out: object) -> None:
    if not isinstance(out, np.ndarray) or isinstance(out, np.ma.MaskedArray):
        raise TypeError(f"out must be a NumPy array of float64; got {type(out).__name__}")
    if out.dtype != np.float64:
        raise TypeError(f"out must be an array of float64; got {out.dtype.str}")
    if not out.flags.writeable:
        raise ValueError("out is read-only")
    if (_address(out) | math.gcd(*out.strides, 0)) % 8:
        raise ValueError("out is not aligned to 8 bytes; numpy.empty makes an array that is")


def _common_rows(inputs: list[_Input], out: Any, where: Any, copy: bool) -> tuple[int, ...]:
    """The common shape of the rows, to which all arrays are broadcast. For points, out has an additional axis of size 3."""
    shapes = {input.what: input.rows for input in inputs if input.array is not None}
    if where is not True:
        shapes["where"] = np.shape(where)
    if out is None and not shapes:
        raise ValueError("no column is an array, and there is no out: the number of rows is not known")
    rows = _spread(*shapes.values())
    if rows is not None and out is not None:
        if out.shape[-1:] == (3,) and out.ndim == max(len(rows), 1) + 1 and _spread(rows, out.shape[:-1]) == out.shape[:-1]:
            rows = out.shape[:-1]
        else:
            rows = out.shape if _spread(rows, out.shape) == out.shape else None
    if rows is not None and (copy or all(shape == rows for shape in shapes.values())):
        return rows
    if out is not None:
        shapes["out"] = out.shape
    if all(len(shape) == 1 for shape in shapes.values()):
        told = ", ".join(f"{of} has {shape[0]} rows" for of, shape in shapes.items())
        raise ValueError(f"different lengths: {told}")
    raise ValueError(f"shapes that do not go together: {', '.join(f'{of} {shape}' for of, shape in shapes.items())}")


def _spread(*shapes: tuple[int, ...]) -> tuple[int, ...] | None:
    """The shape that broadcasting yields; None if the shapes are incompatible."""
    try:
        return np.broadcast_shapes(*shapes)
    except ValueError:
        return None


def _check_row_status(row_status: object, rows: tuple[int, ...]) -> None:
    if not isinstance(row_status, np.ndarray) or row_status.dtype != np.uint32:
        raise TypeError("row_status must be a NumPy array of uint32")
    if row_status.shape != rows:
        raise ValueError(f"row_status must have the shape {rows}; got {row_status.shape}")
    if not row_status.flags.c_contiguous or not row_status.flags.writeable:
        raise ValueError("row_status must be contiguous and not read-only")


def _common_index(inputs: list[_Input]) -> Any:
    indices = [(input.what, input.index) for input in inputs if input.index is not None]
    for what, index in indices[1:]:
        if not index.equals(indices[0][1]):
            raise ValueError(f"{indices[0][0]} and {what} have different indices; align them, for example with .reindex_like")
    return indices[0][1] if indices else None


def _common_mask(inputs: list[_Input], rows: tuple[int, ...]) -> NDArray[np.bool_] | None:
    """Mask of the rows with a missing value; None if no input has a mask."""
    masks = [input.mask for input in inputs if input.mask is not None]
    if not masks:
        return None
    mask = np.zeros(rows, np.bool_)
    for each in masks:
        mask |= each
    return mask


def _chosen(where: Any, mask: NDArray[np.bool_] | None, rows: tuple[int, ...]) -> NDArray[np.bool_] | None:
    """Mask of the rows to compute; None for all rows."""
    if where is not True:
        given = np.asarray(where)
        if given.dtype != np.bool_:
            raise TypeError(f"where must hold bools; got {given.dtype}")
        chosen: NDArray[np.bool_] = np.broadcast_to(given, rows)
        return chosen if mask is None else chosen & ~mask
    return None if mask is None else ~mask


def _as_given(result: Any, rows: tuple[int, ...], index: Any, mask: Any, is_masked: bool) -> Any:
    """The result as a Series, a DataFrame, a masked array, or an array."""
    if index is not None:
        pandas = sys.modules["pandas"]
        if result.shape != rows:
            frame = pandas.DataFrame(result, index=index, columns=["x", "y", "z"])
            return frame if mask is None else frame.astype("Float64").where(~mask[:, None])
        if mask is None:
            return pandas.Series(result, index=index)
        return pandas.Series(pandas.arrays.FloatingArray(result, mask), index=index)
    if is_masked:
        masked = result.view(np.ma.MaskedArray)
        masked.mask = mask if result.shape == rows else np.repeat(mask[..., None], 3, axis=-1)
        return masked
    return result[()]


class _Run:
    """One evaluation over rows: its inputs, and the failed rows."""

    def __init__(
        self,
        session: Session,
        names: tuple[str, ...],
        inputs: list[_Input],
        rows: tuple[int, ...],
        threads: int,
        row_status: Any,
    ) -> None:
        self.failed_count, self.first_failed, self.first_status = 0, 0, 0
        self._session, self._names, self._inputs = session, names, inputs
        self._rows, self._threads = rows, threads
        self._row_status = None if row_status is None else row_status.reshape(-1)
        self._row_count = math.prod(rows)
        self._done_count = 0

    def all_rows(self, out: Any) -> Any:
        columns = [input.spread(self._rows) for input in self._inputs]
        out = self._make(columns, out)
        is_point = out.shape != self._rows
        direct = all(
            input.array is None or _is_direct(column, self._rows, input.is_point)
            for input, column in zip(self._inputs, columns)
        )
        if direct and _is_direct(out, self._rows, is_point):
            self._check_overlap(columns, out)
            self._run(tuple(columns), out)
        else:
            self._check_overlap(columns, out)
            self._run_blocks(columns, out)
        return out

    def chosen_rows(self, out: Any, chosen: NDArray[np.bool_], mask: Any) -> Any:
        """Computes the chosen rows; leaves the other rows of out unchanged."""
        columns = [input.spread(self._rows) for input in self._inputs]
        packed = [
            input.scalar if input.array is None else np.ascontiguousarray(column[chosen], np.float64)
            for input, column in zip(self._inputs, columns)
        ]
        count = int(np.count_nonzero(chosen))
        kind = None if out is not None else self._session.yields_points(self._names, tuple(packed), count)
        if out is None:
            out = np.full((*self._rows, 3) if kind else self._rows, math.nan)
        values = np.empty((count, *out.shape[len(self._rows) :]))
        status = None if self._row_status is None else np.zeros(count, np.uint32)
        outcome = self._session.run(self._names, tuple(packed), values, status, self._threads)
        self.failed_count, first, self.first_status = outcome
        self.first_failed = int(np.flatnonzero(chosen)[first]) if self.failed_count else 0
        out[chosen] = values
        if self._row_status is not None:
            self._row_status[chosen.reshape(-1)] = status
        return out

    def flat_columns(self) -> list[Any]:
        """The columns, indexed by flat row number, to look up the values of a row."""
        columns = [input.spread(self._rows) for input in self._inputs]
        return [
            column if input.array is None else _FlatRows(column, self._rows)
            for input, column in zip(self._inputs, columns)
        ]

    def _make(self, columns: list[Any], out: Any) -> Any:
        """Returns out, or a new array. The first row with a value determines whether the results are points."""
        if out is not None:
            return out
        kind = None
        for block in _blocks(self._rows, 1024):
            kind = self._session.yields_points(self._names, *self._converted(columns, block))
            if kind is not None:
                break
        return np.empty((*self._rows, 3) if kind else self._rows)

    def _converted(self, columns: list[Any], block: tuple[Any, ...]) -> tuple[tuple[Any, ...], int]:
        """A block of the columns in the form that the library accepts, and its number of rows."""
        count = 0
        converted = []
        for input, column in zip(self._inputs, columns):
            if input.array is not None:
                part = np.require(column[block], np.float64, ["C", "A"])
                column = part.reshape(-1, 3) if input.is_point else part.reshape(-1)
                count = len(column)
            converted.append(column)
        return tuple(converted), count

    def _run_blocks(self, columns: list[Any], out: Any) -> None:
        axes = len(self._rows)
        for block in _blocks(self._rows, _ROWS_PER_BLOCK * self._threads):
            converted, _ = self._converted(columns, block)
            part = out[block]
            values = np.empty((math.prod(part.shape[: part.ndim - (out.ndim - axes)]), *out.shape[axes:]))
            self._run(converted, values)
            out[block] = values.reshape(part.shape)

    def _run(self, columns: tuple[Any, ...], out: Any) -> None:
        status = self._row_status
        if status is not None:
            status = status[self._done_count : self._done_count + len(out)]
        failed, first, first_status = self._session.run(self._names, columns, out, status, self._threads)
        if failed and not self.failed_count:
            self.first_failed, self.first_status = self._done_count + first, first_status
        self.failed_count += failed
        self._done_count += len(out)

    def _check_overlap(self, columns: list[Any], out: Any) -> None:
        """Raises a ValueError if out overlaps a column in any way other than row by row."""
        for input, column in zip(self._inputs, columns):
            if input.array is None or not np.may_share_memory(column, out):
                continue
            same = column.shape == out.shape == self._rows and column.strides == out.strides
            if same and _address(column) == _address(out):
                continue
            if self._overlaps(column, out):
                raise ValueError(f"out overlaps {input.what} in another way than row by row")

    @staticmethod
    def _overlaps(column: Any, out: Any) -> bool:
        try:
            return np.shares_memory(column, out, max_work=1_000_000)
        except np.TooHardError:
            return True


class _FlatRows:
    """A column, indexed by flat row number."""

    ndim = 1

    def __init__(self, column: Any, rows: tuple[int, ...]) -> None:
        self._column, self._rows = column, rows

    def __getitem__(self, row: int) -> Any:
        value = self._column[np.unravel_index(row, self._rows)]
        return np.asarray(value, np.float64) if value.ndim else float(value)


def _blocks(rows: tuple[int, ...], size: int) -> Iterator[tuple[Any, ...]]:
    """Yields indices that split the rows of a shape, in order, into blocks of at most size rows.

    >>> list(_blocks((3, 4), 8))
    [(slice(0, 2, None),), (slice(2, 4, None),)]
    """
    if not rows:
        yield (...,)
        return
    inner = math.prod(rows[1:])
    if inner > size:
        for index in range(rows[0]):
            for rest in _blocks(rows[1:], size):
                yield (index, *rest)
        return
    step = max(size // max(inner, 1), 1)
    for start in range(0, rows[0], step):
        yield (slice(start, start + step),)
