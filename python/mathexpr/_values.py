"""Values: a float or a `Point`, and their way into and out of the library's records."""

from __future__ import annotations

from numbers import Real
from typing import NamedTuple

from . import _library


class Point(NamedTuple):
    """A point in space. It is a tuple, whose ``+`` and ``*`` join and repeat; compute with points in expressions.

    >>> Point(1, 2)
    Point(x=1, y=2, z=0.0)
    """

    x: float
    y: float = 0.0
    z: float = 0.0


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
