# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Exceptions.

An invalid expression raises a `MathExprError` with the diagnostic; an invalid argument, such as an array of the wrong
type, raises Python's TypeError or ValueError.
"""

from __future__ import annotations

from collections.abc import Iterable
from typing import TYPE_CHECKING, Any, NamedTuple

if TYPE_CHECKING:
    import numpy as np
    from numpy.typing import NDArray

_BLANKS = str.maketrans("\t\n\r", "   ")


class Fix(NamedTuple):
    """A correction: replaces a span of the text. The corrected text compiles."""

    position: int
    length: int
    replacement: str

    def apply(self, text: str) -> str:
        """The corrected text.

        >>> Fix(0, 3, "2*pi").apply("2pi+1")
        '2*pi+1'
        """
        return text[: self.position] + self.replacement + text[self.position + self.length :]


class Diagnostic(NamedTuple):
    """A failure and its position in the text. Positions count characters."""

    message: str  #: In the language that the environment selects.
    message_number: int  #: 1 to 19; 0 if the library has no message for the failure.
    text: str  #: The expression or name, as given.
    start: int = 0
    length: int = 0  #: 0 if the failure has no span.
    kind: str = "refused"  #: "parsing", "definition" or "refused".
    code: int = 0  #: MATHEXPR_PARSING_... or MATHEXPR_DEFINITION_... of mathexpr.h.
    item: str = ""  #: The token, symbol or text concerned.
    conflict: str = ""  #: What a definition conflicts with.
    expected: int = 0  #: What would have been accepted: bits of MATHEXPR_EXPECTED_... of mathexpr.h.
    arg_count: int = 0  #: Number of arguments given to the item.
    accepted_arg_counts: tuple[int | None, ...] = ()  #: Argument counts of its overloads; None is any number.
    suggestions: tuple[str, ...] = ()  #: For an unknown name: similar names, the nearest first.
    hints: tuple[str, ...] = ()  #: Sentences in the user's language that help to correct the text.
    fix: Fix | None = None  #: The correction that the last hint describes, if it is unambiguous.

    @property
    def caret(self) -> str:
        """The text with carets below the failed span.

        >>> print(Diagnostic("no such function", 5, "1 + sine(30)", 4, 4).caret)
        1 + sine(30)
            ^^^^
        """
        return f"{self.text.translate(_BLANKS)}\n{' ' * self.start}{'^' * max(self.length, 1)}"


class MathExprError(Exception):
    """An expression cannot be compiled or evaluated. The exception has the diagnostic's main members.

    >>> import mathexpr
    >>> try:
    ...     mathexpr.evaluate("1 + sine(30)")
    ... except mathexpr.MathExprError as error:
    ...     print(error.code, error.start, error.length, error.suggestions)
    10 4 4 ('sin', 'sinh')
    """

    def __init__(self, diagnostic: Diagnostic) -> None:
        super().__init__(diagnostic)
        self.diagnostic = diagnostic
        self.message = diagnostic.message
        self.message_number = diagnostic.message_number
        self.text = diagnostic.text
        self.start = diagnostic.start
        self.length = diagnostic.length
        self.code = diagnostic.code
        self.suggestions = diagnostic.suggestions
        self.hints = diagnostic.hints
        self.fix = diagnostic.fix
        self.caret = diagnostic.caret

    def __str__(self) -> str:
        return "\n".join((self.message, self.caret, *self.hints))

    def _repr_html_(self) -> str:
        from . import _html  # for notebooks

        return _html.of_diagnostic(self.diagnostic)


class ParsingError(MathExprError):
    """The text does not compile, or a function received a point instead of a number."""


class DefinitionError(MathExprError):
    """The name that a text assigns to cannot be a variable."""


class RefusedError(MathExprError):
    """An item refused its arguments, for example ``ln(-1)``."""


class VariableNameError(MathExprError, ValueError):
    """A name that cannot be a variable."""


class RowsError(MathExprError):
    """Some rows of the arrays have no value. All others have been computed.

    ``diagnostic`` describes the first failed row.
    """

    def __init__(
        self, diagnostic: Diagnostic, values: NDArray[np.float64], failed_count: int, first_failed: int
    ) -> None:
        super().__init__(diagnostic)
        self.values = values  #: All results; NaN for failed rows.
        self.failed_count = failed_count
        self.first_failed = first_failed  #: The first failed row, from 0.

    def __reduce__(self) -> tuple[Any, ...]:
        return type(self), (self.diagnostic, self.values, self.failed_count, self.first_failed)

    def __str__(self) -> str:
        failed = f"{self.failed_count} of {len(self.values)} rows have no value"
        return f"{failed}; row {self.first_failed}: {super().__str__()}"


# Indexed by MATHEXPR_KIND_...
_KINDS = (("refused", RefusedError), ("parsing", ParsingError), ("definition", DefinitionError))


def _characters(text: str, start: int, length: int) -> tuple[int, int]:
    """Converts a span from bytes of UTF-8 to characters."""
    utf8 = text.encode()
    return len(utf8[:start].decode()), len(utf8[start : start + length].decode())


def error_of_diagnostic(text: str, members: dict[str, Any]) -> MathExprError:
    """The exception for a diagnostic of the library, given as members of `Diagnostic`; positions count bytes."""
    start, length = _characters(text, members["start"], members["length"])
    kind, exception = _KINDS[members["kind"]]
    position, replaced, replacement = members["fix"]
    fix = Fix(*_characters(text, position, replaced), replacement) if replaced or replacement else None
    members.update(fix=fix, text=text, start=start, length=length, kind=kind)
    return exception(Diagnostic(**members))


# Messages by MATHEXPR_DEFINITION_...
_NAME_REFUSALS = {
    12: "a variable needs a name",
    13: "the name of a variable may not be a number",
    14: "the name is that of a constant",
    15: "the name contains a character that is not allowed in names",
}


def error_of_name(name: str, code: int, start: int, length: int) -> VariableNameError:
    """The exception for a name that cannot be a variable; positions count bytes."""
    start, length = _characters(name, start, length)
    return VariableNameError(
        Diagnostic(
            message=_NAME_REFUSALS[code],
            message_number=0,
            text=name,
            start=start,
            length=length,
            kind="definition",
            code=code,
        )
    )


def error_of_unread_name(name: str, known: Iterable[str], what: str = "the expression") -> TypeError:
    """The exception for a keyword argument that the text does not read.

    >>> error_of_unread_name("heigth", ["width", "height"])
    TypeError("the expression does not read 'heigth'; did you mean 'height'? It reads width, height")
    """
    import difflib  # takes longer to import than the package

    known = list(known)
    near = difflib.get_close_matches(name, known, n=1)
    meant = f"; did you mean {near[0]!r}?" if near else "."
    return TypeError(f"{what} does not read {name!r}{meant} It reads {', '.join(known) or 'no name'}")


# Values of mathexpr_status.
_ZERO_IN_TEXT = 7
_BUSY = 4
_NO_PROGRAM = 23
_OUT_OF_MEMORY = 40


def error_of_status(status: int, text: str) -> Exception:
    """The exception for a status without a diagnostic."""
    if status == _OUT_OF_MEMORY:
        return MemoryError(text)
    if status == _ZERO_IN_TEXT:
        return ValueError(text)
    if status == _NO_PROGRAM:
        return RuntimeError("there is nothing to evaluate: compile a text first")
    if status == _BUSY:
        return RuntimeError("the expression waits for its resolver, which may not change or run it")
    return RuntimeError(f"{text} (status {status})")


# Messages by MATHEXPR_BULK_...
_REFUSED_COLUMNS = {
    4: "is not a name",
    5: "occurs twice: names are compared without regard to case",
}
_REFUSED_RESULTS = {
    12: "out is not aligned to 8 bytes, or row_status not to 4",
    13: "out has rows that share memory",
}


def error_of_refused_arrays(error: int, column: str | None) -> ValueError:
    """The exception for arrays that the library refuses."""
    if error in _REFUSED_RESULTS:
        return ValueError(_REFUSED_RESULTS[error])
    return ValueError(f"the column {column!r} {_REFUSED_COLUMNS.get(error, f'is refused (error {error})')}")
