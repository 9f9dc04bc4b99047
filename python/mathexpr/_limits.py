# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Upper bounds on an accepted text."""

from __future__ import annotations

from typing import NamedTuple

from ._native import Session


class Limits(NamedTuple):
    """Upper bounds on an accepted text; 0 means no limit."""

    max_text_length: int = 0  #: Characters as typed.
    max_records: int = 0  #: Values, operators and function calls, counted at each use.
    max_nesting: int = 0  #: Nesting depth of brackets and prefix operators.


def set_limits(session: Session, limits: Limits | None) -> None:
    """Sets the limits of a session; None leaves them unchanged."""
    if limits is None:
        return
    for name, limit in zip(Limits._fields, limits):
        if not 0 <= limit <= 0xFFFFFFFF:
            raise ValueError(f"the limit {name} is {limit}; it is 0 to 4294967295")
    session.set_limits(Limits(*limits))
