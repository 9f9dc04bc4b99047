# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Values (a float or a `Point`), and their text."""

from __future__ import annotations

import math
from collections.abc import Iterator
from numbers import Real
from typing import TYPE_CHECKING, Any, overload

from . import _native

if TYPE_CHECKING:
    import numpy as np
    from numpy.typing import NDArray


class Point:
    """An immutable point or vector, with the arithmetic of expressions.

    >>> Point(1, 2) + Point(3, 4), Point(1, 2) * 2, -Point(1, 2) / 2
    (Point(x=4.0, y=6.0, z=0.0), Point(x=2.0, y=4.0, z=0.0), Point(x=-0.5, y=-1.0, z=-0.0))

    ``*`` of two points is the dot product, ``&`` the cross product, and ``abs`` the length:

    >>> Point(1, 2, 3) * Point(4, 5, 6), Point(1) & Point(0, 1), abs(Point(3, 4))
    (32.0, Point(x=0.0, y=0.0, z=1.0), 5.0)

    It unpacks into its coordinates, and equals a tuple of them:

    >>> x, y, z = Point(1, 2)
    >>> (x, y, z) == Point(1, 2)
    True
    >>> print(Point(1, 2))
    [1,2,0]
    """

    __slots__ = ("x", "y", "z")
    __match_args__ = ("x", "y", "z")
    __array_ufunc__ = None  # makes NumPy's numbers defer to the point's operators

    x: float
    y: float
    z: float

    def __init__(self, x: float, y: float = 0.0, z: float = 0.0) -> None:
        for name, coordinate in (("x", x), ("y", y), ("z", z)):
            object.__setattr__(self, name, _real(coordinate))

    def __setattr__(self, name: str, value: object) -> None:
        raise AttributeError("a Point never changes; make another")

    def __delattr__(self, name: str) -> None:
        raise AttributeError("a Point never changes; make another")

    def __iter__(self) -> Iterator[float]:
        yield self.x
        yield self.y
        yield self.z

    def __len__(self) -> int:
        return 3

    def __getitem__(self, index: int) -> float:
        return (self.x, self.y, self.z)[index]

    def __eq__(self, other: object) -> bool:
        if isinstance(other, (Point, tuple)):
            return (self.x, self.y, self.z) == tuple(other)
        return NotImplemented

    def __hash__(self) -> int:
        return hash((self.x, self.y, self.z))

    def __reduce__(self) -> tuple[Any, ...]:
        return Point, (self.x, self.y, self.z)

    def __repr__(self) -> str:
        return f"Point(x={self.x!r}, y={self.y!r}, z={self.z!r})"

    def __str__(self) -> str:
        """The point as expression text; see `format_value`."""
        return format_value(self)

    def _repr_html_(self) -> str:
        return f"<code>{self}</code>"

    def __array__(self, dtype: Any = None, copy: bool | None = None) -> NDArray[np.float64]:
        import numpy

        return numpy.array((self.x, self.y, self.z), dtype=dtype)

    def __add__(self, other: Point) -> Point:
        if not isinstance(other, Point):
            return NotImplemented
        return Point(self.x + other.x, self.y + other.y, self.z + other.z)

    def __sub__(self, other: Point) -> Point:
        if not isinstance(other, Point):
            return NotImplemented
        return Point(self.x - other.x, self.y - other.y, self.z - other.z)

    @overload
    def __mul__(self, other: Point) -> float: ...
    @overload
    def __mul__(self, other: float) -> Point: ...
    def __mul__(self, other: Point | float) -> Point | float:
        if isinstance(other, Point):
            return 0.0 + self.x * other.x + self.y * other.y + self.z * other.z
        if not isinstance(other, Real):
            return NotImplemented
        factor = float(other)
        return Point(self.x * factor, self.y * factor, self.z * factor)

    def __rmul__(self, other: float) -> Point:
        if not isinstance(other, Real):
            return NotImplemented
        return Point(*(float(other) * coordinate for coordinate in self))

    def __truediv__(self, other: float) -> Point:
        if not isinstance(other, Real):
            return NotImplemented
        divisor = float(other)
        return Point(self.x / divisor, self.y / divisor, self.z / divisor)

    def __and__(self, other: Point) -> Point:
        if not isinstance(other, Point):
            return NotImplemented
        return Point(
            self.y * other.z - self.z * other.y,
            self.z * other.x - self.x * other.z,
            self.x * other.y - self.y * other.x,
        )

    def __neg__(self) -> Point:
        return Point(-self.x, -self.y, -self.z)

    def __abs__(self) -> float:
        return math.sqrt(self.x * self.x + self.y * self.y + self.z * self.z)


Value = float | Point


def _real(number: object) -> float:
    # Real covers what float() accepts except text: int, float, Fraction, and NumPy's scalars.
    if not isinstance(number, Real):
        raise TypeError(f"a value is a number or a mathexpr.Point, not {number!r}")
    return float(number)


def to_record(value: object) -> float | tuple[float, float, float]:
    """A number or a point's coordinates, for the native module; raises a TypeError for anything else."""
    if isinstance(value, Point):
        return value.x, value.y, value.z
    return _real(value)


def format_value(value: Value, digits: int | None = None) -> str:
    """Formats a value as text that an expression reads back.

    >>> format_value(1e5), format_value(1.5e-7), format_value(3e9), format_value(Point(1, 0.1))
    ('100000', '1.5*10^-7', '3000000000.0', '[1,0.1,0]')
    >>> format_value(0.1 + 0.2), format_value(0.1 + 0.2, 15)
    ('0.30000000000000004', '0.3')

    :param digits: significant digits, 1 to 17; by default the fewest that read back to the same value
    :raises ValueError: for any other number of digits
    """
    if digits is None:
        return _native.format_value(value)
    if not 1 <= digits <= 17:
        raise ValueError(f"a value is written with 1 to 17 digits, not {digits}")
    return _native.format_value(value, digits)
