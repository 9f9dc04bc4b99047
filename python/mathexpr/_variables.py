# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""The variables of an expression as a mapping."""

from __future__ import annotations

import ctypes
from collections.abc import Iterator, MutableMapping

from . import _library
from ._errors import error_of_name, error_of_status
from ._library import LIBRARY
from ._session import Session, utf8
from ._values import Value, from_record, to_record


class Variables(MutableMapping[str, Value]):
    """The variables of an expression. Names are compared without regard to the case of A to Z.

    >>> import mathexpr
    >>> variables = mathexpr.Expression().variables
    >>> variables["r"] = 2
    >>> variables["centre"] = mathexpr.Point(1, 2)
    >>> variables["R"], list(variables), "x" in variables
    (2.0, ['r', 'centre'], False)
    >>> del variables["r"]
    >>> variables
    Variables({'centre': Point(x=1.0, y=2.0, z=0.0)})
    """

    def __init__(self, session: Session) -> None:
        self._session = session

    def __getitem__(self, name: str) -> Value:
        return from_record(self.record(name))

    def __setitem__(self, name: str, value: Value) -> None:
        self.set_record(name, to_record(value))

    def __delitem__(self, name: str) -> None:
        self._find(name, LIBRARY.mathexpr_remove_variable_utf8)

    def __iter__(self) -> Iterator[str]:
        return iter(self._session.names(_library.NAMES_DEFINED))

    def __len__(self) -> int:
        return len(self._session.names(_library.NAMES_DEFINED))

    def __repr__(self) -> str:
        return f"Variables({dict(self)})"

    def record(self, name: str) -> _library.Record:
        """A variable with the flag by which ``&`` tells converted numbers."""
        record = _library.Record()
        self._find(name, LIBRARY.mathexpr_get_variable_utf8, ctypes.byref(record))
        return record

    def set_record(self, name: str, record: _library.Record) -> None:
        """Sets a variable from a record."""
        encoded = utf8(name, "the name of a variable")
        refusal = _library.NameRefusal()
        status = self._session.status(
            LIBRARY.mathexpr_set_variable_utf8, encoded, len(encoded), ctypes.byref(record), ctypes.byref(refusal)
        )
        if status == _library.DEFINITION_ERROR:
            raise error_of_name(refusal, encoded)
        if status != _library.OK:
            raise error_of_status(status)

    def _find(self, name: object, function: object, *arguments: object) -> None:
        if not isinstance(name, str):
            raise KeyError(name)
        encoded = name.encode()
        status = self._session.status(function, encoded, len(encoded), *arguments)
        if status in (_library.NOT_FOUND, _library.ZERO_IN_TEXT):
            raise KeyError(name)
        if status != _library.OK:
            raise error_of_status(status)
