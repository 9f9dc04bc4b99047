# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""`Expression`: compiles a text, evaluates it as often as wanted, and keeps variables from one text to the next."""

from __future__ import annotations

import ctypes
from collections.abc import Iterable, Mapping
from typing import TYPE_CHECKING, NamedTuple, NoReturn

from . import _library
from ._errors import MathExprError
from ._library import LIBRARY
from ._session import Resolver, Session, utf8
from ._values import Point, Value, from_record
from ._variables import Variables

if TYPE_CHECKING:
    import numpy as np
    from numpy.typing import NDArray


class Limits(NamedTuple):
    """Upper bounds on an accepted text; 0 is no limit."""

    max_text_length: int = 0  #: Characters as typed.
    max_records: int = 0  #: Values, operators and function calls, each as often as it stands in the text.
    max_nesting: int = 0  #: Nesting depth: brackets, and operators before an operand.


class Expression:
    """A text and its variables.

    >>> with Expression("2*pi*r", {"r": 1}) as circumference:
    ...     circumference.evaluate()
    ...     circumference.variables["r"] = 2
    ...     circumference.evaluate()
    6.28318530718
    12.56637061436

    An expression is used in one thread at a time; another thread that comes meanwhile gets a RuntimeError. Two
    expressions share nothing that changes.

    :param text: compiled at once; without it, `compile` or `evaluate` give one later
    :param variables: set before the text is compiled, since names have to be known then
    :param resolver: asked, while a text is compiled, for a name that is neither a constant nor a variable; answers a
        value, or None where it does not know the name. What it answers is a variable from then on. An exception in it
        comes out of the call as it is.
    :param names: that the resolver would answer, for suggestions; gone through anew for each failure
    :raises MathExprError: if the text does not compile
    """

    def __init__(
        self,
        text: str | None = None,
        variables: Mapping[str, Value] | None = None,
        *,
        resolver: Resolver | None = None,
        names: Iterable[str] = (),
        limits: Limits | None = None,
    ) -> None:
        self._session = Session(resolver, names)
        self._value = _library.Record()
        #: The variables, which may be read, set and removed.
        self.variables = Variables(self._session)
        if limits is not None:
            self.limits = limits
        if variables is not None:
            self.variables.update(variables)
        if text is not None:
            self.compile(text)

    def compile(self, text: str) -> None:
        """Compiles another text. After a failure there is nothing to evaluate; the variables stay.

        :raises MathExprError: if it does not compile
        """
        self._session.compile(utf8(text, "an expression"))

    def evaluate(self, text: str | None = None) -> Value:
        """The value of the compiled text, or of another one, which is compiled first.

        An assignment such as ``a=2`` is made by the first evaluation that succeeds; one that fails is forgotten.

        >>> expression = Expression()
        >>> expression.evaluate("width=2.5"), expression.evaluate("width*[1,2,0]")
        (2.5, Point(x=2.5, y=5.0, z=0.0))
        """
        with self._session as session:
            if text is not None:
                self.compile(text)
            try:
                session.call(LIBRARY.mathexpr_evaluate, ctypes.byref(self._value))
            except MathExprError:
                session.call(LIBRARY.mathexpr_drop_assignment)
                raise
            return from_record(self._value)

    def __call__(self, **variables: Value) -> Value:
        """Sets variables and evaluates.

        >>> area = Expression("width*height", {"width": 0, "height": 0})
        >>> area(width=2, height=3), area(height=4)
        (6.0, 8.0)
        """
        with self._session:
            self.variables.update(variables)
            return self.evaluate()

    def evaluate_arrays(
        self,
        columns: Mapping[str, NDArray[np.float64] | Value],
        *,
        out: NDArray[np.float64] | None = None,
        row_status: NDArray[np.uint32] | None = None,
        threads: int = 1,
        strict: bool = True,
    ) -> NDArray[np.float64]:
        """Evaluates the compiled text for each row of arrays, which are read and written where they are.

        >>> import numpy as np
        >>> volume = Expression("pi/4*d^2*h", {"d": 0, "h": 0})
        >>> volume.evaluate_arrays({"d": np.array([1.0, 2.0]), "h": 10})
        array([ 7.85398163, 31.41592654])

        :param columns: the values of variables that were known when the text was compiled: arrays of float64 with the
            shape (n,), or (n, 3) for points, with any strides; or one number or Point for all rows. Nothing is
            converted and nothing copied.
        :param out: where the values go, (n,) or (n, 3); else an array is made. It may be the array of a column of
            numbers, but overlap none in any other way.
        :param row_status: uint32, (n,): receives 0 for each row that has a value, else the number of the message, 1 to
            19, or 256 where the value is a point and `out` takes numbers, or the other way round
        :param threads: how many threads compute; the results do not depend on it
        :param strict: whether rows that have no value are an error. Otherwise they are NaN, and `row_status` tells.
        :returns: `out`, or the new array
        :raises RowsError: when rows have no value; all others have been computed
        :raises TypeError, ValueError: for arrays that cannot be used; nothing has been changed then
        """
        from ._arrays import evaluate_arrays  # only this needs NumPy

        return evaluate_arrays(self._session, self.variables, columns, out, row_status, threads, strict)

    @property
    def text(self) -> str:
        """The text that was compiled last, whether or not it compiles."""
        return self._session.text.decode()

    @property
    def used_names(self) -> list[str]:
        """The variables that the compiled text reads, in the order of first use.

        >>> Expression("b*a+b", {"a": 1, "b": 2}).used_names
        ['b', 'a']
        """
        return self._session.names(_library.NAMES_USED)

    @property
    def host_names(self) -> list[str]:
        """The variables that the resolver has answered."""
        return self._session.names(_library.NAMES_OF_HOST)

    @property
    def limits(self) -> Limits:
        """The limits, in force from the next text that is compiled.

        >>> expression = Expression(limits=Limits(max_nesting=3))
        >>> expression.evaluate("1+((((2))))")
        Traceback (most recent call last):
        mathexpr.ParsingError: The expression is not valid: check its operators, brackets, commas and names.
        1+((((2))))
             ^
        """
        record = _library.LimitsRecord()
        self._session.call(LIBRARY.mathexpr_get_limits, ctypes.byref(record))
        return Limits(record.max_text_length, record.max_records, record.max_nesting)

    @limits.setter
    def limits(self, limits: Limits) -> None:
        for name, limit in zip(Limits._fields, limits):
            if not 0 <= limit <= 0xFFFFFFFF:
                raise ValueError(f"the limit {name} is {limit}; it is 0 to 4294967295")
        record = _library.LimitsRecord(**Limits(*limits)._asdict())
        self._session.call(LIBRARY.mathexpr_set_limits, ctypes.byref(record))

    def close(self) -> None:
        """Gives up what the library holds; any later use is a ValueError. Leaving a ``with`` block does the same."""
        self._session.close()

    def __enter__(self) -> Expression:
        return self

    def __exit__(self, *exception: object) -> None:
        self.close()

    def __repr__(self) -> str:
        return f"Expression({self.text!r})"

    def __reduce__(self) -> NoReturn:
        raise TypeError("an expression belongs to its process; send its text, and make another there")


def evaluate(
    text: str,
    variables: Mapping[str, Value] | None = None,
    *,
    resolver: Resolver | None = None,
    names: Iterable[str] = (),
) -> Value:
    """The value of one text.

    >>> evaluate("[1,2,0]+[3,4,0]")
    Point(x=4.0, y=6.0, z=0.0)
    >>> evaluate("2*r", {"r": 1.5})
    3.0
    """
    with Expression(text, variables, resolver=resolver, names=names) as expression:
        return expression.evaluate()


def evaluate_arrays(
    text: str,
    columns: Mapping[str, NDArray[np.float64] | Value],
    *,
    out: NDArray[np.float64] | None = None,
    row_status: NDArray[np.uint32] | None = None,
    threads: int = 1,
    strict: bool = True,
) -> NDArray[np.float64]:
    """The values of one text for each row of arrays; see `Expression.evaluate_arrays`.

    >>> import numpy as np
    >>> evaluate_arrays("dist(p,[0,0,0])", {"p": np.array([[3.0, 4.0, 0.0], [0.0, 5.0, 12.0]])})
    array([ 5., 13.])
    """
    with Expression() as expression:
        for name, column in columns.items():
            is_point = isinstance(column, Point) or getattr(column, "ndim", 1) == 2
            expression.variables[name] = Point(0) if is_point else 0
        expression.compile(text)
        return expression.evaluate_arrays(columns, out=out, row_status=row_status, threads=threads, strict=strict)
