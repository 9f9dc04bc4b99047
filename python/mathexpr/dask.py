# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Expressions over tables and arrays that are larger than memory, with Dask.

>>> import pandas, dask.dataframe, mathexpr.dask
>>> boxes = pandas.DataFrame({"w": [1, 2], "h": [3.0, 4.0]})
>>> frame = dask.dataframe.from_pandas(boxes, npartitions=2)
>>> mathexpr.dask.evaluate(frame, "area=w*h", "twice=2*area").compute()
   w    h  area  twice
0  1  3.0   3.0    6.0
1  2  4.0   8.0   16.0

Evaluation is lazy and keeps the partitions. Workers receive the text and compile it for each partition. If a worker dies,
others compute its partitions again. A partition that kills several workers, and a row without a value, raise an exception
in the computation, so the result has either all rows or none.
"""

from __future__ import annotations

import re
from collections.abc import Mapping
from typing import Any

from dask.array.core import map_blocks as blockwise
import numpy as np
import pandas  # type: ignore[import]

from ._expression import Expression
from ._function import Function
from ._limits import Limits
from ._values import Value

_ASSIGNMENT = re.compile(r"\s*([^\s=<>!()\[\],]+)\s*=(?!=)(.+)", re.DOTALL)


def evaluate(
    frame: Any, *assignments: str, variables: Mapping[str, Value] | None = None, limits: Limits | None = None
) -> Any:
    """Adds a column to a frame for each assignment, such as ``"volume=w*h*l"``.

    A text reads columns by name, including those of earlier assignments. If it yields points, it adds three columns:
    ``name_x``, ``name_y`` and ``name_z``.

    :param frame: a dask.dataframe.DataFrame
    :param variables: values of other names, the same for all rows
    :raises MathExprError: if a text does not compile, before anything is computed
    """
    named = [_split(assignment) for assignment in assignments]
    fixed = dict(variables or {})
    meta = _with_columns(frame._meta, named, fixed, limits)
    return frame.map_partitions(_with_columns, named, fixed, limits, meta=meta)


def map_blocks(function: Function, *arrays: Any, **options: Any) -> Any:
    """Applies a function to arrays block by block, with blocks aligned as in dask.array.map_blocks.

    >>> import dask.array, mathexpr
    >>> xs = dask.array.arange(6, chunks=2, dtype=float)
    >>> mathexpr.dask.map_blocks(mathexpr.function("x^2+k", "x", "k"), xs, 1).compute()
    array([ 1.,  2.,  5., 10., 17., 26.])

    :param function: created by mathexpr.function; its arguments and results are numbers
    :param options: options of the function: threads, strict
    """
    if function.points:
        raise TypeError("map_blocks takes functions of numbers; compute points by their coordinates")
    return blockwise(function, *arrays, dtype=np.float64, meta=np.empty(0), **options)  # type: ignore[no-untyped-call]


def _split(assignment: str) -> tuple[str, str]:
    """The name and the text of an assignment."""
    found = _ASSIGNMENT.fullmatch(assignment)
    if found is None:
        raise ValueError(f"{assignment!r} assigns to no column; write for example volume=w*h*l")
    return found[1], found[2].strip()


def _with_columns(
    part: pandas.DataFrame, named: list[tuple[str, str]], variables: dict[str, Value], limits: Limits | None
) -> pandas.DataFrame:
    """Evaluates the assignments over a partition, and adds the results."""
    for name, text in named:
        values = _result(part, text, variables, limits)
        if isinstance(values, pandas.DataFrame):
            part = part.assign(**{f"{name}_{axis}": values[axis] for axis in "xyz"})
        else:
            part = part.assign(**{name: values})
    return part


def _result(part: pandas.DataFrame, text: str, variables: dict[str, Value], limits: Limits | None) -> Any:
    """A Series of numbers or a DataFrame of points for the rows of a partition."""
    labels = {str(label): label for label in part.columns}
    expression = Expression(
        variables=variables, resolver=lambda name: 0.0 if name in labels else None, names=labels, limits=limits
    )
    with expression:
        expression.compile(text)
        columns = {name: part[labels[name]] for name in expression.host_names}
        if not columns:  # one column is needed for the number of rows
            unread = "_" * (1 + max(map(len, variables), default=0))
            expression.variables[unread] = 0.0
            columns[unread] = pandas.Series(0.0, index=part.index)
        if len(part):
            return expression.evaluate_arrays(columns)
        # An empty partition has no results: sample rows of the same types determine their kind.
        expression.evaluate_arrays(columns)
        sample = {name: _sample(column) for name, column in columns.items()}
        return expression.evaluate_arrays(sample, strict=False).iloc[:0].set_axis(part.index)


def _sample(column: Any) -> pandas.Series:
    """Sample rows with the type of an empty column."""
    return pandas.Series(np.arange(1, 65), dtype=column.dtype)
