# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Editor services: what an edit box needs while its user types an expression.

In: any text, broken or half typed, and a cursor. Out: named tuples whose positions count characters. Nothing in the
expression changes.
"""

from __future__ import annotations

from collections.abc import Callable, Iterable
from typing import NamedTuple

from . import _native
from ._native import Session
from ._values import Value

# By MATHEXPR_TOKEN_... and MATHEXPR_VALUE_...
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
    """A stretch of a text, as the compiler will take it."""

    #: "number", "constant", "function", "variable", "host name", "unknown name", "operator", "bracket", "separator",
    #: "assigned name", "assignment sign", "blank", "shorthand" or "other".
    kind: str
    text: str
    start: int
    depth: int  #: How many brackets are open around it.
    partner: int | None  #: Of a bracket: the index of the token that it pairs with.


class Completion(NamedTuple):
    """What may be put at a cursor."""

    name: str
    kind: str  #: "constant", "function", "variable" or "host name".
    value_kind: str  #: "number", "point", "either" or "unknown".
    description: str  #: One line.
    value: Value | None  #: Of a constant or variable.
    start: int  #: The stretch of the text that is replaced.
    length: int
    replacement: str  #: A function is inserted as a call that works.
    selection_start: int  #: What to select in the text afterwards: the arguments, to be typed over; else a place.
    selection_length: int

    def apply(self, text: str) -> str:
        """The text with the completion."""
        return text[: self.start] + self.replacement + text[self.start + self.length :]


class Hover(NamedTuple):
    """What stands under a cursor. Texts are empty where there is nothing to say."""

    kind: str  #: As of a `Token`.
    start: int
    length: int
    name: str
    help: str  #: The usage of an operator or function.
    description: str  #: One line.
    domain: str  #: The message of an argument that a function is not defined for.
    unit: str  #: Of a function's argument.
    example: str  #: A call of a function.
    example_value: Value | None  #: What the example computes.
    value: Value | None  #: Of a number, constant or name, of the call of a function, or of what a bracket encloses.
    value_start: int  #: What has this value.
    value_length: int


class EditorServices:
    """What `Expression` offers to an edit box."""

    _session: Session

    def tokens(self, text: str) -> list[Token]:
        """The tokens of any text, which cover it without a gap.

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
        """The text with even spacing. It compiles to the same program.

        >>> from mathexpr import Expression
        >>> Expression().format("max( 1,2 )*x+1")
        'max(1, 2) * x + 1'
        """
        return self._session.format(text)

    def hover(self, text: str, cursor: int, *, ask_resolver: bool = False) -> Hover | None:
        """What is under a cursor, or None where that is nothing or a blank.

        >>> from mathexpr import Expression
        >>> under = Expression("r", {"r": 2}).hover("2*pi*sqrt(r)", 6)
        >>> under.help, under.value
        ('sqrt(x)', 1.4142135623730951)

        :param ask_resolver: whether names that nothing else knows may be looked up by the resolver
        """
        found = self._session.hover(text, _byte_of(text, cursor), ask_resolver)
        start, length = _stretches(text)(*found[1:3])
        if length == 0:
            return None
        return Hover(_KINDS[found[0]], start, length, *found[3:11], *_stretches(text)(*found[11:]))

    def complete(
        self, text: str, cursor: int | None = None, *, max_count: int = 200, recent: Iterable[str] = ()
    ) -> list[Completion]:
        """What may stand at a cursor and would be accepted, the best first.

        >>> from mathexpr import Expression
        >>> first = Expression("1", {"width": 2}).complete("3*wi")[0]
        >>> first.name, first.value, first.apply("3*wi")
        ('width', 2.0, '3*width')

        :param cursor: the end of the text, unless given
        :param recent: names that the user has chosen lately, the newest first
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
        r"""A text, or the compiled one, as LaTeX for math mode with the package amsmath, as MathJax and KaTeX take it.

        What is no expression is set as it was typed, in the letters of a typewriter. A notebook shows an `Expression` so.

        >>> from mathexpr import Expression
        >>> print(Expression().to_latex("p_1/(1+x)^2"))
        \frac{p_{1}}{\left(1 + x\right)^{2}}
        """
        return self._session.typeset(self._session.text if text is None else text, _native.MATHEXPR_NOTATION_LATEX)

    def to_mathml(self, text: str | None = None) -> str:
        """The same as presentation MathML, one element ``<math>`` for a web page."""
        return self._session.typeset(self._session.text if text is None else text, _native.MATHEXPR_NOTATION_MATHML)

    def _repr_latex_(self) -> str | None:
        return rf"$\displaystyle {self.to_latex()}$" if self._session.text else None


def _byte_of(text: str, position: int) -> int:
    """A position in the text's UTF-8. Negative ones count from the end, as in slices; those beyond an end are the end."""
    return len(text[:position].encode())


def _stretches(text: str) -> Callable[[int, int], tuple[int, int]]:
    """What turns the start and the length of a stretch in UTF-8 into those in characters."""
    if text.isascii():
        return lambda start, length: (start, length)
    characters = [index for index, character in enumerate(text) for _ in character.encode()]
    characters.append(len(text))
    return lambda start, length: (characters[start], characters[start + length] - characters[start])
