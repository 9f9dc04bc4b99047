# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Editor services, which an edit box calls while its user types an expression.

Input: any text, also an incomplete or invalid one, and a cursor. Output: named tuples whose positions count characters.
The expression does not change.
"""

from __future__ import annotations

from collections.abc import Callable, Iterable
from typing import NamedTuple

from . import _native
from ._native import Session
from ._values import Value

# Indexed by MATHEXPR_TOKEN_... and MATHEXPR_VALUE_...
_KINDS = (
    "number",
    "constant",
    "function",
    "variable",
    "host name",
    "unknown name",
    "operator",
    "bracket",
    "separator",
    "assigned name",
    "assignment sign",
    "blank",
    "shorthand",
    "other",
)
_VALUE_KINDS = ("unknown", "number", "point", "either")


class Token(NamedTuple):
    """A token: a span of the text, as the compiler reads it."""

    #: "number", "constant", "function", "variable", "host name", "unknown name", "operator", "bracket", "separator",
    #: "assigned name", "assignment sign", "blank", "shorthand" or "other".
    kind: str
    text: str
    start: int
    depth: int  #: Number of brackets open around the token.
    partner: int | None  #: For a bracket, the index of the matching one; otherwise None.


class Completion(NamedTuple):
    """One proposal."""

    name: str
    kind: str  #: "constant", "function", "variable" or "host name".
    value_kind: str  #: "number", "point", "either" or "unknown".
    description: str  #: One line.
    value: Value | None  #: Value of a constant or variable.
    start: int  #: The span of the text to replace.
    length: int
    replacement: str  #: The name; for a function, a valid call.
    selection_start: int  #: What to select after the edit: a call's arguments, otherwise an empty span.
    selection_length: int

    def apply(self, text: str) -> str:
        """The text with the completion inserted."""
        return text[: self.start] + self.replacement + text[self.start + self.length :]


class Hover(NamedTuple):
    """The token under a cursor. Strings that do not apply are empty."""

    kind: str  #: As in `Token`.
    start: int
    length: int
    name: str
    help: str  #: The usage of an operator or function.
    description: str  #: One line.
    domain: str  #: The function's message for an argument outside its domain.
    unit: str  #: Unit of a function's argument.
    example: str  #: A valid call of the function.
    example_value: Value | None  #: Value of the example.
    value: Value | None  #: Value of a number, a constant, a name, a function call or a bracketed part.
    value_start: int  #: Span of the text that has this value.
    value_length: int


class EditorServices:
    """The methods of `Expression` for an edit box."""

    _session: Session

    def tokens(self, text: str) -> list[Token]:
        """Splits a text into tokens, which cover it without gaps.

        >>> from mathexpr import Expression
        >>> [(token.kind, token.text) for token in Expression().tokens("2*sin(30")]
        [('number', '2'), ('operator', '*'), ('function', 'sin'), ('bracket', '('), ('number', '30')]
        """
        found = self._session.tokens(text)
        stretch = _stretches(text)
        tokens = []
        for kind, start, length, depth, partner in found:
            start, length = stretch(start, length)
            tokens.append(Token(_KINDS[kind], text[start : start + length], start, depth, partner))
        return tokens

    def format(self, text: str) -> str:
        """Rewrites a text with uniform spacing. It compiles to the same program.

        >>> from mathexpr import Expression
        >>> Expression().format("max( 1,2 )*x+1")
        'max(1, 2) * x + 1'
        """
        return self._session.format(text)

    def hover(self, text: str, cursor: int, *, ask_resolver: bool = False) -> Hover | None:
        """Describes the token under a cursor; None if there is no token, or only a blank.

        >>> from mathexpr import Expression
        >>> under = Expression("r", {"r": 2}).hover("2*pi*sqrt(r)", 6)
        >>> under.help, under.value
        ('sqrt(x)', 1.4142135623730951)

        :param ask_resolver: whether the resolver may be called for unknown names
        """
        found = self._session.hover(text, _byte_of(text, cursor), ask_resolver)
        start, length = _stretches(text)(*found[1:3])
        if length == 0:
            return None
        return Hover(_KINDS[found[0]], start, length, *found[3:11], *_stretches(text)(*found[11:]))

    def complete(
        self, text: str, cursor: int | None = None, *, max_count: int = 200, recent: Iterable[str] = ()
    ) -> list[Completion]:
        """Proposes items that would be accepted at a cursor, the best first.

        >>> from mathexpr import Expression
        >>> first = Expression("1", {"width": 2}).complete("3*wi")[0]
        >>> first.name, first.value, first.apply("3*wi")
        ('width', 2.0, '3*width')

        :param cursor: by default the end of the text
        :param recent: recently chosen names, the newest first
        """
        if not 0 < max_count <= 0xFFFFFFFF:
            raise ValueError(f"max_count is {max_count}; it is a whole number from 1 on")
        place = _byte_of(text, len(text) if cursor is None else cursor)
        stretch = _stretches(text)
        completions = []
        for found in self._session.completions(text, place, max_count, tuple(recent)):
            kinds = _KINDS[found[1]], _VALUE_KINDS[found[2]]
            start, length = stretch(*found[5:7])
            afterwards = text[:start] + found[7] + text[start + length :]
            selection = _stretches(afterwards)(*found[8:])
            completions.append(Completion(found[0], *kinds, *found[3:5], start, length, found[7], *selection))
        return completions


    def to_latex(self, text: str | None = None) -> str:
        r"""Typesets a text, by default the compiled one, for LaTeX math mode with the package amsmath, MathJax or KaTeX.

        A text that is not an expression is set verbatim in a monospaced font. Notebooks show an `Expression` this way.

        >>> from mathexpr import Expression
        >>> print(Expression().to_latex("p_1/(1+x)^2"))
        \frac{p_{1}}{\left(1 + x\right)^{2}}
        """
        return self._session.typeset(self._session.text if text is None else text, _native.MATHEXPR_NOTATION_LATEX)

    def to_mathml(self, text: str | None = None) -> str:
        """Typesets a text as presentation MathML: one ``<math>`` element for a web page."""
        return self._session.typeset(self._session.text if text is None else text, _native.MATHEXPR_NOTATION_MATHML)

    def _repr_latex_(self) -> str | None:
        return rf"$\displaystyle {self.to_latex()}$" if self._session.text else None


def _byte_of(text: str, position: int) -> int:
    """Converts a position from characters to bytes of UTF-8.

    As in slices, negative positions count from the end, and positions out of range are clamped.
    """
    return len(text[:position].encode())


def _stretches(text: str) -> Callable[[int, int], tuple[int, int]]:
    """Returns a function that converts start and length of a span from bytes of UTF-8 to characters."""
    if text.isascii():
        return lambda start, length: (start, length)
    characters = [index for index, character in enumerate(text) for _ in character.encode()]
    characters.append(len(text))
    return lambda start, length: (characters[start], characters[start + length] - characters[start])
