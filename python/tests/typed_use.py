# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Uses of the package, for type checkers; never run."""

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
        assert_type(expression.evaluate_number(), float)
        assert_type(expression.evaluate_point(), Point)
        expression.variables["r"] = "1"  # type: ignore[assignment]
        mathexpr.evaluate_arrays("k", {"k": Point(1)}, thread=2)  # type: ignore[call-overload]


def editing(expression: mathexpr.Expression) -> None:
    assert_type(expression.tokens("1")[0], mathexpr.Token)
    assert_type(expression.tokens("1")[0].partner, int | None)
    assert_type(expression.complete("1", 1, recent=["x"])[0].value, float | Point | None)
    assert_type(expression.complete("1")[0].apply("1"), str)
    assert_type(expression.hover("1", 0), mathexpr.Hover | None)
    assert_type(expression.format("1"), str)
    assert_type(expression.to_latex(), str)
    expression.hover("1")  # type: ignore[call-arg]


def functions() -> None:
    area = mathexpr.function("pi/4*d^2", "d", points=(), limits=mathexpr.Limits(100))
    assert_type(area(2.0), float)
    assert_type(area(d=2), float)
    assert_type(area.arguments, tuple[str, ...])
    assert_type(mathexpr.evaluate_number("r", {"r": 1}, limits=None), float)
    assert_type(mathexpr.evaluate_point("p", {"p": Point(1)}), Point)
    mathexpr.function(3)  # type: ignore[arg-type]


def points() -> None:
    assert_type(Point(1) + Point(2) - Point(3), Point)
    assert_type(Point(1) * Point(2), float)
    assert_type(Point(1) * 2, Point)
    assert_type(2 * Point(1) / 3, Point)
    assert_type(Point(1) & Point(2), Point)
    assert_type(abs(-Point(1)), float)
    Point(1) + (1, 2, 3)  # type: ignore[operator]


def errors(error: mathexpr.MathExprError) -> None:
    assert_type(error.start, int)
    assert_type(error.suggestions, tuple[str, ...])
