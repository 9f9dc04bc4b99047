# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""The vocabulary: every constant, operator and function, for help and completion."""

from __future__ import annotations

from typing import NamedTuple

from . import _native

# Indexed by MATHEXPR_ITEM_... and MATHEXPR_FAMILY_...
_KINDS = ("constant", "operator", "function")
_FAMILIES = ("operators", "core mathematics", "angle", "length", "area", "volume", "geometry", "constants")


class VocabularyItem(NamedTuple):
    """One constant, operator or function."""

    kind: str  #: "constant", "operator" or "function".
    family: str
    symbol: str  #: As written in an expression; shared by overloads, and by the two operators "-".
    help: str  #: The usage, such as "sin(x)"; empty for a constant.
    description: str  #: One line; empty for a constant.
    arg_count: int | None  #: Number of arguments or operands; None for any number.
    precedence: int  #: Precedence of an operator, 0 to 4; a higher number binds tighter.
    unary: bool  #: Whether it is a prefix operator.
    pure: bool  #: Whether the result depends only on the arguments.
    value: float  #: Value of a constant.


class Vocabulary(tuple[VocabularyItem, ...]):
    """All items. Notebooks show them as a searchable table."""

    __slots__ = ()

    def _repr_html_(self) -> str:
        from . import _html  # for notebooks

        return _html.of_vocabulary(self)


def vocabulary() -> Vocabulary:
    """All items, in the order of registration.

    >>> [item.help for item in vocabulary() if item.symbol == "min"]
    ['min(x,y)', 'min(x,y,z)', 'min(v1,v2,v3,...)']
    """
    items: list[VocabularyItem] = []
    while (record := _native.vocabulary_item(len(items))) is not None:
        items.append(VocabularyItem(_KINDS[record[0]], _FAMILIES[record[1]], *record[2:]))
    return Vocabulary(items)
