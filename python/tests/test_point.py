# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""A Point has the arithmetic of expressions, and is not a tuple."""

import pickle

import mathexpr
import numpy as np
import pytest
from mathexpr import Point

A, B = Point(1 / 3, -2, 3e10), Point(7, 1 / 7, -0.0)


@pytest.mark.parametrize(
    "text, value",
    [
        ("a+b", A + B),
        ("a-b", A - B),
        ("a*b", A * B),
        ("a*k", A * 0.3),
        ("k*a", 0.3 * A),
        ("a/k", A / 0.3),
        ("a&b", A & B),
        ("-a", -A),
        ("abs(a)", abs(A)),
    ],
)
def test_every_bit_is_that_of_the_expression(text, value):
    assert repr(mathexpr.evaluate(text, {"a": A, "b": B, "k": 0.3})) == repr(value)


@pytest.mark.parametrize(
    "use",
    [
        lambda: A + 1,
        lambda: 1 + A,
        lambda: A + (1, 2, 3),
        lambda: (1, 2, 3) + A,
        lambda: A - 1,
        lambda: 1 / A,
        lambda: A / B,
        lambda: A * "2",
        lambda: A & 1,
        lambda: A ** 2,
        lambda: A < B,
        lambda: Point("1"),
        lambda: Point(1, None),
    ],
)
def test_what_the_language_does_not_compute(use):
    with pytest.raises(TypeError):
        use()


def test_division_by_zero():
    with pytest.raises(ZeroDivisionError):
        A / 0


def test_a_value_of_its_own():
    assert not isinstance(A, tuple) and tuple(Point(1, 2)) == (1, 2, 0) == Point(1, 2)
    assert hash(Point(1, 2)) == hash((1, 2, 0)) and Point(1) != Point(2) and Point(1) != [1, 0, 0]
    assert len(A) == 3 and A[1] == A.y == -2 and A[-1] == A.z
    assert pickle.loads(pickle.dumps(A)) == A and repr(Point(1)) == "Point(x=1.0, y=0.0, z=0.0)"
    with pytest.raises(AttributeError):
        A.x = 1
    with pytest.raises(AttributeError):
        del A.x
    match A:
        case Point(x, y, z):
            assert (x, y, z) == A


def test_with_numpy():
    array = np.asarray(Point(1, 2))
    assert array.dtype == float and array.tolist() == [1, 2, 0]
    assert np.asarray([Point(1), Point(2)]).shape == (2, 3)
    assert np.float64(2) * Point(1, 2) == Point(2, 4) == Point(1, 2) * np.float64(2)
