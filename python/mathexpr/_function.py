# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""`function`: compiles a text to a callable of numbers or arrays."""

from __future__ import annotations

import functools
from collections.abc import Iterable, Mapping
from numbers import Real
from typing import TYPE_CHECKING, Any

from . import _native
from ._errors import error_of_unread_name
from ._limits import Limits, set_limits
from ._native import Session
from ._values import Point, Value

if TYPE_CHECKING:
    import inspect

_OPTIONS = {"out": None, "where": True, "threads": 1, "strict": True, "copy": True}


class Function(_native.Function):
    """A compiled text as a callable, created by `function`.

    Arguments are given by position or by name. Numbers yield a float or a `Point`; arrays yield an array of float64,
    computed row by row and broadcast like the arguments of NumPy's universal functions:

    - ``out`` receives the results, ``where`` selects the rows to compute
    - ``threads`` is the number of threads; the results do not depend on it
    - ``strict=False`` yields NaN for rows without a value, instead of raising a RowsError
    - ``copy=False`` raises an exception for arrays that need conversion

    Functions are hashed and compared by text, arguments and variables, and can be pickled. Any number of threads may
    call a function at the same time.
    """

    __slots__ = ("__weakref__", "_limits", "_points", "_text", "_variables")

    _text: str
    _points: tuple[str, ...]
    _variables: tuple[tuple[str, Value], ...]
    _limits: Limits | None

    @property
    def text(self) -> str:
        """The text as given to `function`."""
        return self._text

    @property
    def points(self) -> tuple[str, ...]:
        """Names of the arguments that are points."""
        return self._points

    @property
    def __signature__(self) -> inspect.Signature:
        import inspect

        kinds = inspect.Parameter
        arguments = [kinds(name, kinds.POSITIONAL_OR_KEYWORD) for name in self.arguments if name.isidentifier()]
        options = [kinds(name, kinds.KEYWORD_ONLY, default=default) for name, default in _OPTIONS.items()]
        return inspect.Signature(arguments + options)

    def _key(self) -> tuple[Any, ...]:
        return self._text, self.arguments, self._points, self._variables, self._limits

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, Function):
            return NotImplemented
        return self._key() == other._key()

    def __hash__(self) -> int:
        return hash(self._key())

    def __reduce__(self) -> tuple[Any, ...]:
        return _make, self._key()

    def __repr__(self) -> str:
        given = [repr(self._text), *map(repr, self.arguments)]
        if self._points:
            given.append(f"points={self._points!r}")
        if self._variables:
            given.append(f"variables={dict(self._variables)!r}")
        return f"mathexpr.function({', '.join(given)})"


def function(
    text: str,
    *arguments: str,
    points: Iterable[str] = (),
    variables: Mapping[str, Value] | None = None,
    limits: Limits | None = None,
) -> Function:
    """Compiles a text to a callable, whose arguments are given by position or by name.

    >>> area = function("pi/4*d^2", "d")
    >>> area(2.0), area(d=3)
    (3.14159265359, 7.0685834705775)
    >>> import numpy as np
    >>> area(np.array([1.0, 2.0]))
    array([0.78539816, 3.14159265])

    Arguments are numbers, except those in `points`. Arrays of points have their coordinates on the last axis:

    >>> distance = function("dist(p,[0,0,0])", "p", points=["p"])
    >>> distance(Point(3, 4)), distance(np.array([[3.0, 4.0, 0.0], [0.0, 5.0, 12.0]]))
    (5.0, array([ 5., 13.]))

    :param text: compiled at once
    :param arguments: names, by position; the text need not read all of them
    :param points: names of the arguments that are points
    :param variables: fixed values of other names in the text
    :param limits: upper bounds on the text
    :raises MathExprError: if the text does not compile
    """
    fixed = tuple((name, value) for name, value in (variables or {}).items())
    return _make(text, arguments, tuple(points), fixed, limits)


def _make(
    text: str,
    arguments: tuple[str, ...],
    points: tuple[str, ...],
    variables: tuple[tuple[str, Value], ...],
    limits: Limits | None,
) -> Function:
    for name in arguments:
        if name in _OPTIONS:
            raise ValueError(f"an argument cannot be called {name!r}, which is an option of calls")
    if len({_fold(name) for name in arguments}) < len(arguments):
        raise ValueError(f"two arguments have the same name: {', '.join(arguments)}; case makes no difference")
    for name in points:
        if name not in arguments:
            raise ValueError(f"the point {name!r} is none of the arguments: {', '.join(arguments) or 'there are none'}")
    session = Session()
    set_limits(session, limits)
    for name, value in variables:
        session.set_variable(name, value)
    for name in arguments:
        session.set_variable(name, Point(0) if name in points else 0.0)
    session.compile(text)
    made: Function = Function(session, text, arguments, tuple(name in points for name in arguments))
    made._text, made._points, made._variables, made._limits = text, points, variables, limits
    return made


# Texts that are evaluated repeatedly are compiled once. Only the compiled text is cached.
compiled = functools.lru_cache(maxsize=256)(_make)


def _fold(name: str) -> str:
    """The name with A to Z in lower case, since names ignore their case."""
    return "".join(letter.lower() if letter.isascii() else letter for letter in name)


def call(function: Function, positional: tuple[Any, ...], named: dict[str, Any] | None) -> Any:
    """Handles calls that the native module passes on: with options, with arrays that need conversion, or with an error."""
    options = {}
    values = dict(zip(function.arguments, positional))
    if len(positional) > len(function.arguments):
        known = ", ".join(function.arguments)
        raise TypeError(f"the function takes {len(function.arguments)} arguments ({known}); got {len(positional)}")
    for name, value in (named or {}).items():
        if name in _OPTIONS:
            options[name] = value
            continue
        known_name = next((known for known in function.arguments if _fold(known) == _fold(name)), None)
        if known_name is None:
            raise error_of_unread_name(name, function.arguments, "the function")
        if known_name in values:
            raise TypeError(f"the argument {name!r} is given twice")
        values[known_name] = value
    missing = [name for name in function.arguments if name not in values]
    if missing:
        raise TypeError(f"the function misses {', '.join(map(repr, missing))}")
    ordered = [values[name] for name in function.arguments]
    if options.get("out") is None and all(isinstance(value, (Real, Point)) for value in ordered):
        for name, value in values.items():
            if isinstance(value, Point) != (name in function.points):
                kind = "point" if name in function.points else "number"
                raise TypeError(f"the argument {name!r} is a {kind}, not {value!r}; points= says which are points")
        return function._value(tuple(ordered))
    from . import _arrays  # only this needs NumPy

    session = function._borrow()
    try:
        points = [name in function.points for name in function.arguments]
        return _arrays.evaluate(session, function.arguments, ordered, points, **options)
    finally:
        session.__exit__()
