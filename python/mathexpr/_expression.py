# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""`Expression`: compiles a text, evaluates it as often as wanted, and keeps variables from one text to the next."""

from __future__ import annotations

from collections.abc import Callable, Iterable, Mapping
from typing import TYPE_CHECKING, Any, NoReturn, overload

from . import _native
from ._editor import EditorServices
from ._function import compiled
from ._limits import Limits, set_limits
from ._native import Session
from ._values import Point, Value
from ._variables import Variables

if TYPE_CHECKING:
    import numpy as np
    from numpy.typing import NDArray


Resolver = Callable[[str], Value | None]

Columns = Any  # Mapping[str, ArrayLike | Point], or a DataFrame; what it really is gets checked


class Expression(EditorServices):
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
        #: The variables, which may be read, set and removed.
        self.variables = Variables(self._session)
        set_limits(self._session, limits)
        if variables is not None:
            self.variables.update(variables)
        if text is not None:
            self.compile(text)

    def compile(self, text: str) -> None:
        """Compiles another text. After a failure there is nothing to evaluate; the variables stay.

        :raises MathExprError: if it does not compile
        """
        self._session.compile(text)

    def evaluate(self, text: str | None = None) -> Value:
        """The value of the compiled text, or of another one, which is compiled first.

        An assignment such as ``a=2`` is made by the first evaluation that succeeds; one that fails is forgotten.

        >>> expression = Expression()
        >>> expression.evaluate("width=2.5"), expression.evaluate("width*[1,2,0]")
        (2.5, Point(x=2.5, y=5.0, z=0.0))
        """
        return self._session.evaluate(text)

    def evaluate_number(self, text: str | None = None) -> float:
        """The same for a value that is a number; a TypeError where it is a point."""
        return as_number(self._session.evaluate(text))

    def evaluate_point(self, text: str | None = None) -> Point:
        """The same for a value that is a point; a TypeError where it is a number."""
        return as_point(self._session.evaluate(text))

    def __call__(self, **variables: Value) -> Value:
        """Sets variables, all of which the text reads, and evaluates.

        >>> area = Expression("width*height", {"width": 0, "height": 0})
        >>> area(width=2, height=3), area(height=4)
        (6.0, 8.0)
        >>> area(heigth=4)
        Traceback (most recent call last):
        TypeError: the expression does not read 'heigth'; did you mean 'height'? It reads width, height
        """
        return self._session.call(variables)

    @overload
    def evaluate_arrays(
        self,
        columns: Mapping[str, NDArray[np.float64] | Value],
        *,
        out: NDArray[np.float64] | None = None,
        row_status: NDArray[np.uint32] | None = None,
        threads: int = 1,
        strict: bool = True,
        copy: bool = True,
    ) -> NDArray[np.float64]: ...
    @overload
    def evaluate_arrays(
        self,
        columns: Columns,
        *,
        out: NDArray[np.float64] | None = None,
        row_status: NDArray[np.uint32] | None = None,
        threads: int = 1,
        strict: bool = True,
        copy: bool = True,
    ) -> Any: ...
    def evaluate_arrays(
        self,
        columns: Columns,
        *,
        out: NDArray[np.float64] | None = None,
        row_status: NDArray[np.uint32] | None = None,
        threads: int = 1,
        strict: bool = True,
        copy: bool = True,
    ) -> Any:
        """Evaluates the compiled text for each row of arrays, a table or lists.

        >>> import numpy as np
        >>> volume = Expression("pi/4*d^2*h", {"d": 0, "h": 0})
        >>> volume.evaluate_arrays({"d": np.array([1.0, 2.0]), "h": 10})
        array([ 7.85398163, 31.41592654])

        :param columns: the values of variables that were known when the text was compiled: anything that NumPy reads as
            numbers with the shape (n,), or (n, 3) where the variable is a `Point`; or one value for all rows. A DataFrame
            is the mapping of its columns. Aligned arrays of float64 are read where they are, with any strides; others are
            converted in blocks.
        :param out: where the values go, float64, (n,) or (n, 3); else an array is made. It may be the array of a column
            of numbers, but overlap none in any other way.
        :param row_status: uint32, (n,): receives 0 for each row that has a value, else the number of the message, 1 to
            19, or 256 where the value is a point and `out` takes numbers, or the other way round
        :param threads: how many threads compute; the results do not depend on it
        :param strict: whether rows that have no value are an error. Otherwise they are NaN, and `row_status` tells.
        :param copy: False refuses arrays that would have to be converted
        :returns: `out`, or a new array of float64; a Series for a Series, and a masked array for one
        :raises RowsError: when rows have no value; all others have been computed
        :raises TypeError, ValueError: for arrays that cannot be used; nothing has been changed then
        """
        if out is None and row_status is None and strict and isinstance(columns, dict):
            answer = self._session.compute(tuple(columns), tuple(columns.values()), threads)
            if answer is not NotImplemented:
                return answer
        from ._arrays import evaluate  # only this needs NumPy

        variables = self.variables
        labels = _labels(columns)
        for name in labels:
            if name not in variables and not _is_table(columns):
                raise ValueError(f"the column {name!r} is no variable of the expression")
        names = tuple(name for name in labels if name in variables)
        with self._session as session:
            return evaluate(
                session,
                names,
                [columns[name] for name in names],
                [None if isinstance(variables[name], Point) else _point_of(columns[name]) for name in names],
                out=out,
                row_status=row_status,
                threads=threads,
                strict=strict,
                copy=copy,
                what="the column",
            )

    @property
    def text(self) -> str:
        """The text that was compiled last, whether or not it compiles."""
        return self._session.text

    @property
    def used_names(self) -> list[str]:
        """The variables that the compiled text reads, in the order of first use.

        >>> Expression("b*a+b", {"a": 1, "b": 2}).used_names
        ['b', 'a']
        """
        return self._session.names(_native.MATHEXPR_NAMES_USED)

    @property
    def host_names(self) -> list[str]:
        """The variables that the resolver has answered."""
        return self._session.names(_native.MATHEXPR_NAMES_OF_HOST)

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
        return Limits(*self._session.get_limits())

    @limits.setter
    def limits(self, limits: Limits) -> None:
        set_limits(self._session, limits)

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
    limits: Limits | None = None,
) -> Value:
    """The value of one text. The last 256 texts stay compiled.

    >>> evaluate("[1,2,0]+[3,4,0]")
    Point(x=4.0, y=6.0, z=0.0)
    >>> evaluate("2*r", {"r": 1.5})
    3.0
    """
    if resolver is None and not names and "=" not in text:  # an assignment is carried out below
        given = variables or {}
        keys = tuple(given)
        values = tuple(given.values())
        points = tuple([key for key, value in zip(keys, values) if isinstance(value, Point)])
        try:
            function = compiled(text, keys, points, (), limits)
        except (TypeError, ValueError):  # told below, or a name that no function takes
            pass
        else:
            return function._value(values)
    with Expression(text, variables, resolver=resolver, names=names, limits=limits) as expression:
        return expression.evaluate()


def evaluate_number(
    text: str,
    variables: Mapping[str, Value] | None = None,
    *,
    resolver: Resolver | None = None,
    names: Iterable[str] = (),
    limits: Limits | None = None,
) -> float:
    """The value of one text that is a number; a TypeError where it is a point.

    >>> evaluate_number("2*r", {"r": 1.5})
    3.0
    """
    return as_number(evaluate(text, variables, resolver=resolver, names=names, limits=limits))


def evaluate_point(
    text: str,
    variables: Mapping[str, Value] | None = None,
    *,
    resolver: Resolver | None = None,
    names: Iterable[str] = (),
    limits: Limits | None = None,
) -> Point:
    """The value of one text that is a point; a TypeError where it is a number.

    >>> evaluate_point("[1,2]*2")
    Point(x=2.0, y=4.0, z=0.0)
    """
    return as_point(evaluate(text, variables, resolver=resolver, names=names, limits=limits))


def as_number(value: Value) -> float:
    """The value, which is a number."""
    if isinstance(value, Point):
        raise TypeError(f"the value is a point, {value}; evaluate_point answers points")
    return value


def as_point(value: Value) -> Point:
    """The value, which is a point."""
    if not isinstance(value, Point):
        raise TypeError(f"the value is a number, {value}; evaluate_number answers numbers")
    return value


@overload
def evaluate_arrays(
    text: str,
    columns: Mapping[str, NDArray[np.float64] | Value],
    *,
    points: Iterable[str] | None = None,
    out: NDArray[np.float64] | None = None,
    row_status: NDArray[np.uint32] | None = None,
    threads: int = 1,
    strict: bool = True,
    copy: bool = True,
    limits: Limits | None = None,
) -> NDArray[np.float64]: ...
@overload
def evaluate_arrays(
    text: str,
    columns: Columns,
    *,
    points: Iterable[str] | None = None,
    out: NDArray[np.float64] | None = None,
    row_status: NDArray[np.uint32] | None = None,
    threads: int = 1,
    strict: bool = True,
    copy: bool = True,
    limits: Limits | None = None,
) -> Any: ...
def evaluate_arrays(
    text: str,
    columns: Columns,
    *,
    points: Iterable[str] | None = None,
    out: NDArray[np.float64] | None = None,
    row_status: NDArray[np.uint32] | None = None,
    threads: int = 1,
    strict: bool = True,
    copy: bool = True,
    limits: Limits | None = None,
) -> Any:
    """The values of one text for each row of arrays, a table or lists; see `Expression.evaluate_arrays`.

    >>> import numpy as np
    >>> evaluate_arrays("dist(p,[0,0,0])", {"p": np.array([[3.0, 4.0, 0.0], [0.0, 5.0, 12.0]])})
    array([ 5., 13.])

    :param points: which columns are points; without it, those with the shape (n, 3). Of a DataFrame only the columns that
        the text reads are looked at.
    """
    chosen = None if points is None else frozenset(points)

    def kind(name: str) -> float | Point:
        column = columns[name]
        is_point = isinstance(column, Point) or (_looks_like_points(column) if chosen is None else name in chosen)
        return Point(0) if is_point else 0.0

    if _is_table(columns):
        labels = [label for label in _labels(columns) if isinstance(label, str)]
        expression = Expression(resolver=lambda name: kind(name) if name in labels else None, names=labels, limits=limits)
    else:
        expression = Expression(limits=limits)
        for name in columns:
            expression.variables[name] = kind(name)
    with expression:
        expression.compile(text)
        return expression.evaluate_arrays(
            columns, out=out, row_status=row_status, threads=threads, strict=strict, copy=copy
        )


def _is_table(columns: object) -> bool:
    """Whether columns are those of a DataFrame, which may hold any."""
    return not isinstance(columns, Mapping)


def _labels(columns: Any) -> Iterable[str]:
    """The names of columns; a table's own iterator may go through something else."""
    labels: Iterable[str] = columns.columns if _is_table(columns) else columns
    return labels


def _looks_like_points(column: Any) -> bool:
    """Whether a column has the shape (n, 3)."""
    if isinstance(column, (list, tuple)):
        import numpy

        column = numpy.asarray(column)
    return getattr(column, "ndim", 1) == 2


def _point_of(column: object) -> bool | None:
    """What a column for a number is: told by a value, an array of numbers otherwise."""
    return None if isinstance(column, Point) else False
