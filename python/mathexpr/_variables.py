# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""The variables of an expression as a mapping."""

from __future__ import annotations

from collections.abc import Iterator, MutableMapping

from . import _native
from ._native import Session
from ._values import Value


class Variables(MutableMapping[str, Value]):
    """The variables of an expression. Names ignore the case of A to Z.

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
        return self._session.get_variable(name)

    def __setitem__(self, name: str, value: Value) -> None:
        self._session.set_variable(name, value)

    def __delitem__(self, name: str) -> None:
        self._session.remove_variable(name)

    def __iter__(self) -> Iterator[str]:
        return iter(self._session.names(_native.MATHEXPR_NAMES_DEFINED))

    def __len__(self) -> int:
        return len(self._session.names(_native.MATHEXPR_NAMES_DEFINED))

    def __repr__(self) -> str:
        return f"Variables({dict(self)})"

    def _repr_html_(self) -> str:
        from . import _html  # for notebooks

        return _html.of_variables(self)
