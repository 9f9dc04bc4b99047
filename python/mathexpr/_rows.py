# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Exceptions for rows without a value; evaluating one row again yields the diagnostic."""

from __future__ import annotations

from collections.abc import Iterable
from typing import TYPE_CHECKING, Any, NoReturn

from . import _native
from ._errors import Diagnostic, MathExprError, RefusedError, RowsError
from ._native import Session
from ._values import Point, Value

if TYPE_CHECKING:
    import numpy as np
    from numpy.typing import NDArray


def raise_refusal(session: Session, names: Iterable[str], values: Iterable[Value]) -> NoReturn:
    """Evaluates a row again, and raises its exception."""
    raise _error(session, names, values)


def raise_rows(
    session: Session,
    names: Iterable[str],
    columns: Iterable[Any],
    out: NDArray[np.float64],
    outcome: tuple[int, int, int],
) -> NoReturn:
    """Raises a RowsError. Columns are arrays of rows, or values for all rows."""
    failed_count, first_failed, first_status = outcome
    if first_status == _native.MATHEXPR_ROW_OTHER_KIND:
        message = "The value is a point and out takes numbers, or the other way round."
        raise RowsError(Diagnostic(message, 0, session.text), out, failed_count, first_failed)
    values = (column[first_failed] if getattr(column, "ndim", 0) else column for column in columns)
    as_values = (Point(*value) if getattr(value, "ndim", 0) else value for value in values)
    raise RowsError(_error(session, names, as_values).diagnostic, out, failed_count, first_failed)


def _error(session: Session, names: Iterable[str], values: Iterable[Value]) -> MathExprError:
    alone = session.copy()
    for name, value in zip(names, values):
        alone.set_variable(name, value)
    try:
        alone.evaluate()
    except MathExprError as error:
        return error
    # The second evaluation succeeded: the refusal depends on random numbers.
    return RefusedError(Diagnostic("An item refused its arguments.", 3, session.text))
