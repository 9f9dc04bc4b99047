# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Uses of the package for a type checker, which sees whether what is answered has the type that is promised. Never run."""

from typing import assert_type

import mathexpr
import numpy as np
from mathexpr import Point
from numpy.typing import NDArray


def values() -> None:
    assert_type(mathexpr.evaluate("1"), float | Point)
    assert_type(mathexpr.format_value(Point(1), 15), str)
    with mathexpr.Expression("r", {"r": 1}, resolver=lambda name: Point(1) if name == "p" else None) as expression:
        assert_type(expression.evaluate(), float | Point)
        assert_type(expression.variables["r"], float | Point)
        assert_type(expression.evaluate_arrays({"r": np.zeros(3), "k": 2.0}, threads=2), NDArray[np.float64])
        expression.variables["r"] = "1"  # type: ignore[assignment]
        mathexpr.evaluate_arrays("k", {"k": Point(1)}, thread=2)  # type: ignore[call-arg]


def errors(error: mathexpr.MathExprError) -> None:
    assert_type(error.start, int)
    assert_type(error.suggestions, tuple[str, ...])
