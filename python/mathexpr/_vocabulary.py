# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""The vocabulary: every constant, operator and function, for help and completion."""

from __future__ import annotations

import ctypes
from typing import NamedTuple

from . import _library
from ._errors import error_of_status
from ._library import LIBRARY

# By MATHEXPR_ITEM_... and MATHEXPR_FAMILY_...
_KINDS = ("constant", "operator", "function")
_FAMILIES = ("operators", "core mathematics", "angle", "length", "area", "volume", "geometry", "constants")


class VocabularyItem(NamedTuple):
    """One constant, operator or function."""

    kind: str  #: "constant", "operator" or "function".
    family: str
    symbol: str  #: As written in an expression. Overloads share it, as do two operators "-".
    help: str  #: The usage, such as "sin(x)"; empty for a constant.
    description: str  #: One line; empty for a constant.
    arg_count: int | None  #: Arguments or operands; None for any number.
    precedence: int  #: Of an operator, 0 to 4, the higher one binding tighter.
    unary: bool  #: An operator written before its one operand.
    pure: bool  #: The result depends on the arguments alone.
    value: float  #: Of a constant.


def vocabulary() -> tuple[VocabularyItem, ...]:
    """All items, in the order in which an expression knows them.

    >>> [item.help for item in vocabulary() if item.symbol == "min"]
    ['min(x,y)', 'min(x,y,z)', 'min(v1,v2,v3,...)']
    """
    items: list[VocabularyItem] = []
    while True:
        record = _library.VocabularyRecord()
        status = LIBRARY.mathexpr_get_vocabulary_item_utf8(len(items), ctypes.byref(record))
        if status == _library.NOT_FOUND:
            return tuple(items)
        if status != _library.OK:
            raise error_of_status(status)
        items.append(
            VocabularyItem(
                kind=_KINDS[record.kind],
                family=_FAMILIES[record.family],
                symbol=record.symbol.decode(),
                help=record.help.decode(),
                description=record.description.decode(),
                arg_count=None if record.arg_count == _library.ANY_ARG_COUNT else record.arg_count,
                precedence=record.precedence,
                unary=bool(record.unary),
                pure=bool(record.constant),
                value=record.value,
            )
        )
