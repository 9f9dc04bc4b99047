# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Exceptions.

What is wrong with an expression brings a `MathExprError` with the diagnostic; what is wrong with an argument, such as an
array of another type, brings Python's own TypeError or ValueError.
"""

from __future__ import annotations

from dataclasses import dataclass
from typing import TYPE_CHECKING, Any

from . import _library

if TYPE_CHECKING:
    import numpy as np
    from numpy.typing import NDArray

_BLANKS = str.maketrans("\t\n\r", "   ")


@dataclass(frozen=True)
class Fix:
    """A correction: what to put in place of a stretch of the text. The text that this makes compiles."""

    position: int
    length: int
    replacement: str

    def apply(self, text: str) -> str:
        """The corrected text.

        >>> Fix(0, 3, "2*pi").apply("2pi+1")
        '2*pi+1'
        """
        return text[: self.position] + self.replacement + text[self.position + self.length :]


@dataclass(frozen=True)
class Diagnostic:
    """What went wrong, and where in the text. Positions count characters."""

    message: str  #: In the user's language, which the environment tells.
    message_number: int  #: 1 to 19; 0 where the library has no message for it.
    text: str  #: The expression, or the name, as it was given.
    start: int = 0
    length: int = 0  #: 0 where nothing in the text stands for the failure.
    kind: str = "refused"  #: "parsing", "definition" or "refused".
    code: int = 0  #: MATHEXPR_PARSING_... or MATHEXPR_DEFINITION_... of mathexpr.h.
    item: str = ""  #: The token, symbol or text concerned.
    conflict: str = ""  #: What stands in the way of a definition.
    expected: int = 0  #: What would have been accepted: bits of MATHEXPR_EXPECTED_... of mathexpr.h.
    arg_count: int = 0  #: How many arguments the item was given.
    accepted_arg_counts: tuple[int | None, ...] = ()  #: How many it takes, by overload; None is any number.
    suggestions: tuple[str, ...] = ()  #: For an unknown name: what may be meant, the nearest first.
    hints: tuple[str, ...] = ()  #: What helps along, as sentences in the user's language.
    fix: Fix | None = None  #: The correction that the last hint speaks of, where there is one that is plain.

    @property
    def caret(self) -> str:
        """The text, and below it the mark of what is wrong.

        >>> print(Diagnostic("no such function", 5, "1 + sine(30)", 4, 4).caret)
        1 + sine(30)
            ^^^^
        """
        return f"{self.text.translate(_BLANKS)}\n{' ' * self.start}{'^' * max(self.length, 1)}"


class MathExprError(Exception):
    """An expression that cannot be compiled or evaluated. Its diagnostic's members are its own, too.

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


class ParsingError(MathExprError):
    """The text does not compile, or a point stands where a number is needed."""


class DefinitionError(MathExprError):
    """The name that a text assigns to cannot be a variable."""


class RefusedError(MathExprError):
    """An item refused its arguments, as ``ln`` does with -1."""


class VariableNameError(MathExprError, ValueError):
    """A name that cannot be a variable."""


class RowsError(MathExprError):
    """Rows of arrays that have no value. All others have been computed: nothing is lost.

    ``diagnostic`` tells of the first of them.
    """

    def __init__(
        self, diagnostic: Diagnostic, values: NDArray[np.float64], failed_count: int, first_failed: int
    ) -> None:
        super().__init__(diagnostic)
        self.values = values  #: All results, NaN where there is none.
        self.failed_count = failed_count
        self.first_failed = first_failed  #: The first failed row, from 0.

    def __reduce__(self) -> tuple[Any, ...]:
        return type(self), (self.diagnostic, self.values, self.failed_count, self.first_failed)

    def __str__(self) -> str:
        failed = f"{self.failed_count} of {len(self.values)} rows have no value"
        return f"{failed}; row {self.first_failed}: {super().__str__()}"


# By MATHEXPR_KIND_...
_KINDS = {0: ("refused", RefusedError), 1: ("parsing", ParsingError), 2: ("definition", DefinitionError)}


def error_of_record(record: _library.DiagnosticRecord, utf8: bytes) -> MathExprError:
    """The exception for what the library tells of a text."""
    kind, exception = _KINDS[record.kind]
    start, length = record.start, record.length
    replacement = record.fix_replacement.decode()
    fix_start, fix_length = record.fix_start, record.fix_length
    fix = Fix(
        position=len(utf8[:fix_start].decode()),
        length=len(utf8[fix_start : fix_start + fix_length].decode()),
        replacement=replacement,
    )
    accepted = (record.accepted_arg_counts[index] for index in range(record.accepted_count))
    return exception(
        Diagnostic(
            message=record.text.decode(),
            message_number=record.message,
            text=utf8.decode(),
            start=len(utf8[:start].decode()),
            length=len(utf8[start : start + length].decode()),
            kind=kind,
            code=record.code,
            item=record.item.decode(),
            conflict=record.conflict.decode(),
            expected=record.expected,
            arg_count=record.arg_count,
            accepted_arg_counts=tuple(None if number == _library.ANY_ARG_COUNT else number for number in accepted),
            suggestions=tuple(record.suggestions[index].decode() for index in range(record.suggestion_count)),
            hints=tuple(record.hints[index].decode() for index in range(record.hint_count)),
            fix=fix if fix_length or replacement else None,
        )
    )


# By MATHEXPR_DEFINITION_...
_NAME_REFUSALS = {
    12: "a variable needs a name",
    13: "the name of a variable may not be a number",
    14: "the name is that of a constant",
    15: "the name holds a character that no name can hold",
}


def error_of_name(refusal: _library.NameRefusal, name: bytes) -> VariableNameError:
    """The exception for a name that cannot be a variable."""
    start, length = refusal.start, refusal.length
    return VariableNameError(
        Diagnostic(
            message=_NAME_REFUSALS[refusal.code],
            message_number=0,
            text=name.decode(),
            start=len(name[:start].decode()),
            length=len(name[start : start + length].decode()),
            kind="definition",
            code=refusal.code,
        )
    )


def error_of_status(status: int) -> Exception:
    """The exception for a status that no diagnostic tells about."""
    text = _library.status_text(status)
    if status == _library.OUT_OF_MEMORY:
        return MemoryError(text)
    if status == _library.ZERO_IN_TEXT:
        return ValueError(text)
    if status == _library.NO_PROGRAM:
        return RuntimeError("there is nothing to evaluate: compile a text first")
    if status == _library.BUSY:
        return RuntimeError("the expression waits for its resolver, which may not change or run it")
    return RuntimeError(f"{text} (status {status})")
