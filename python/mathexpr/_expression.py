# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""`Expression`: compiles a text, evaluates it any number of times, and keeps variables from one text to the next."""

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

Columns = Any  # Mapping[str, ArrayLike | Point], or a DataFrame; checked at run time


class Expression(EditorServices):
    """A text and its variables.

    >>> with Expression("2*pi*r", {"r": 1}) as circumference:
    ...     circumference.evaluate()
    ...     circumference.variables["r"] = 2
    ...     circumference.evaluate()
    6.28318530718
    12.56637061436

    Use an expression from one thread at a time; a concurrent call raises a RuntimeError. Separate expressions share no
    mutable state.

    :param text: compiled at once; if omitted, pass one to `compile` or `evaluate` later
    :param variables: set before the text is compiled, since names must be known then
    :param resolver: called while a text is compiled, for a name that is neither a constant nor a variable. It returns a
        value, which becomes a variable of that name, or None for an unknown name. Its exceptions propagate unchanged.
    :param names: names that the resolver knows, for suggestions; iterated over for each failure
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
        #: The variables, as a mutable mapping.
        self.variables = Variables(self._session)
        set_limits(self._session, limits)
        if variables is not None:
            self.variables.update(variables)
        if text is not None:
            self.compile(text)

    def compile(self, text: str) -> None:
        """Compiles another text. After a failure, no text is compiled. Variables are kept in both cases.

        :raises MathExprError: if it does not compile
        """
        self._session.compile(text)

    def evaluate(self, text: str | None = None) -> Value:
        """Evaluates the compiled text, or compiles and evaluates another one.

        An assignment such as ``a=2`` takes effect at the first successful evaluation. A failed evaluation
        discards it.

        >>> expression = Expression()
        >>> expression.evaluate("width=2.5"), expression.evaluate("width*[1,2,0]")
        (2.5, Point(x=2.5, y=5.0, z=0.0))
        """
        return self._session.evaluate(text)

    def evaluate_number(self, text: str | None = None) -> float:
        """Like `evaluate`, for a number; raises a TypeError if the value is a point."""
        return as_number(self._session.evaluate(text))

    def evaluate_point(self, text: str | None = None) -> Point:
        """Like `evaluate`, for a point; raises a TypeError if the value is a number."""
        return as_point(self._session.evaluate(text))

    def __call__(self, **variables: Value) -> Value:
        """Sets variables, all of which the text must read, and evaluates.

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

        :param columns: values of variables that existed when the text was compiled: anything that NumPy converts to
            numbers of shape (n,), or (n, 3) if the variable is a `Point`; or one value for all rows. A DataFrame maps
            names to its columns. Aligned arrays of float64 are read in place, with any strides; others are converted
            in blocks.
        :param out: receives the values, float64, (n,) or (n, 3); by default a new array. It may be the array of a column
            of numbers, but must not overlap columns in any other way.
        :param row_status: uint32, (n,): receives 0 for each row with a value, otherwise the number of the message, 1 to
            19, or 256 if the value is a point and `out` holds numbers, or vice versa
        :param threads: number of threads; the results do not depend on it
        :param strict: whether rows without a value are an error. Otherwise they are NaN; see `row_status`.
        :param copy: if False, arrays that need conversion raise an exception
        :returns: `out`, or a new array of float64; a Series for a Series, a masked array for a masked array
        :raises RowsError: if rows have no value; all others have been computed
        :raises TypeError, ValueError: for unusable arrays, before anything is written
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
        """The last text given to compile, valid or not."""
        return self._session.text

    @property
    def used_names(self) -> list[str]:
        """Names of the variables that the compiled text reads, in the order of first use.

        >>> Expression("b*a+b", {"a": 1, "b": 2}).used_names
        ['b', 'a']
        """
        return self._session.names(_native.MATHEXPR_NAMES_USED)

    @property
    def host_names(self) -> list[str]:
        """Names of the variables that the resolver supplied."""
        return self._session.names(_native.MATHEXPR_NAMES_OF_HOST)

    @property
    def limits(self) -> Limits:
        """The limits; changes apply to texts compiled afterwards.

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
        """Releases the library's memory; any later use raises a ValueError. Leaving a ``with`` block does the same."""
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
    """Evaluates a text. The 256 most recently used texts stay compiled.

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
        except (TypeError, ValueError):  # raised again below, or a name that a function refuses
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
    """Evaluates a text to a number; raises a TypeError if the value is a point.

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
    """Evaluates a text to a point; raises a TypeError if the value is a number.

    >>> evaluate_point("[1,2]*2")
    Point(x=2.0, y=4.0, z=0.0)
    """
    return as_point(evaluate(text, variables, resolver=resolver, names=names, limits=limits))


def as_number(value: Value) -> float:
    """Checks that the value is a number."""
    if isinstance(value, Point):
        raise TypeError(f"the value is a point, {value}; evaluate_point answers points")
    return value


def as_point(value: Value) -> Point:
    """Checks that the value is a point."""
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
    """Evaluates a text for each row of arrays, a table or lists; see `Expression.evaluate_arrays`.

    Columns of a DataFrame that the text does not read are ignored.

    >>> import numpy as np
    >>> evaluate_arrays("dist(p,[0,0,0])", {"p": np.array([[3.0, 4.0, 0.0], [0.0, 5.0, 12.0]])})
    array([ 5., 13.])

    :param points: names of the columns of points; by default those of shape (n, 3)
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
    """Whether columns is a DataFrame, which may also have columns of other types."""
    return not isinstance(columns, Mapping)


def _labels(columns: Any) -> Iterable[str]:
    """The names of the columns; iterating over a table may yield the columns themselves."""
    labels: Iterable[str] = columns.columns if _is_table(columns) else columns
    return labels


def _looks_like_points(column: Any) -> bool:
    """Whether a column has two dimensions, as points do."""
    if isinstance(column, (list, tuple)):
        import numpy

        column = numpy.asarray(column)
    return getattr(column, "ndim", 1) == 2


def _point_of(column: object) -> bool | None:
    """Whether a column for a number variable holds points: None (undeclared) for a Point, otherwise False."""
    return None if isinstance(column, Point) else False
