# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Values: a float or a `Point`, and their way into and out of the library's records."""

from __future__ import annotations

import ctypes
from numbers import Real
from typing import NamedTuple

from . import _library


class Point(NamedTuple):
    """A point in space. It is a tuple, whose ``+`` and ``*`` join and repeat; compute with points in expressions.

    >>> Point(1, 2)
    Point(x=1, y=2, z=0.0)
    >>> print(Point(1, 2))
    [1,2,0]
    """

    x: float
    y: float = 0.0
    z: float = 0.0

    def __str__(self) -> str:
        """The point as an expression has it; see `format_value`."""
        return format_value(self)


Value = float | Point


def _real(number: object, what: object) -> float:
    # Real is what float() takes without reading text: int, float, Fraction, and NumPy's scalars.
    if not isinstance(number, Real):
        raise TypeError(f"a value is a number or a mathexpr.Point, not {what!r}")
    return float(number)


def to_record(value: object) -> _library.Record:
    """The record of a number or a point; a TypeError for anything else."""
    if isinstance(value, Point):
        x, y, z = (_real(coordinate, value) for coordinate in value)
        return _library.Record(type=_library.POINT, x=x, y=y, z=z)
    return _library.Record(type=_library.NUMBER, x=_real(value, value))


def from_record(record: _library.Record) -> Value:
    """The value that a record holds."""
    if record.type == _library.POINT:
        return Point(record.x, record.y, record.z)
    number: float = record.x
    return number


def format_value(value: Value, digits: int | None = None) -> str:
    """A value as text that an expression reads back.

    >>> format_value(1e5), format_value(1.5e-7), format_value(3e9), format_value(Point(1, 0.1))
    ('100000', '1.5*10^-7', '3000000000.0', '[1,0.1,0]')
    >>> format_value(0.1 + 0.2), format_value(0.1 + 0.2, 15)
    ('0.30000000000000004', '0.3')

    :param digits: how many significant digits, 1 to 17; without it, as few as read back to the same value
    :raises ValueError: for any other number of digits
    """
    if digits is not None and not 1 <= digits <= 17:
        raise ValueError(f"a value is written with 1 to 17 digits, not {digits}")
    record = to_record(value)
    text = ctypes.create_string_buffer(_library.VALUE_TEXT_CAPACITY)
    _library.LIBRARY.mathexpr_format_value_utf8(
        ctypes.byref(record), _library.EXACT_DIGITS if digits is None else digits, text, len(text), None
    )
    return text.value.decode("ascii")
