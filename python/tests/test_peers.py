# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Checks the page on migration from eval, simpleeval, asteval and numexpr, row by row, with these packages."""

import math
import re
from pathlib import Path

import mathexpr
import numpy as np
import pytest

asteval = pytest.importorskip("asteval")
numexpr = pytest.importorskip("numexpr")
simpleeval = pytest.importorskip("simpleeval")

PAGE = Path(__file__).resolve().parents[2] / "docs" / "python-from-others.md"
pytestmark = pytest.mark.skipif(not PAGE.is_file(), reason="a source distribution has no pages")

NUMBERS = {"x": 2.0, "y": 7.0, "z": 5.0, "a": 1.0, "b": 0.0, "c": 1.0}


def table(heading):
    """The rows of the table below a heading, without the header."""
    lines = PAGE.read_text(encoding="utf-8").partition(f"## {heading}\n")[2].partition("\n## ")[0].splitlines()
    rows = [[cell.strip() for cell in line.strip("|").split(" | ")] for line in lines if line.startswith("|")]
    return [[cell.strip(" |") for cell in row] for row in rows[2:]]


def codes(cell):
    return re.findall(r"`([^`]+)`", cell)


def ours(text, **more):
    return mathexpr.evaluate(text, {**NUMBERS, **more})


def theirs(text, **more):
    """The value in Python, which simpleeval and asteval agree with; math is for Python alone."""
    values = {**NUMBERS, **more}
    value = eval(text, {"math": math, "sin": math.sin}, values)
    if "math." not in text:
        interpreter = asteval.Interpreter(symtable={**values, "sin": math.sin, "round": round}, use_numpy=False)
        assert interpreter(text) == value and not interpreter.error
        if "//" not in text and "," not in text:  # not supported by simpleeval
            peer = simpleeval.SimpleEval(names=values, functions={"sin": math.sin, "round": round})
            assert peer.eval(text) == value
    return value


SAME_CALLS = table("The same call") if PAGE.is_file() else []
SAME_TEXTS = table("The same text") if PAGE.is_file() else []


@pytest.mark.parametrize("peer, yours, here", [row for row in SAME_CALLS if "set_num_threads" not in row[1]])
def test_the_same_call(peer, yours, here):
    names = {"mathexpr": mathexpr, "ws": np.array([3.0, 4.0]), "simple_eval": simpleeval.simple_eval,
             "np": np, "Interpreter": asteval.Interpreter, "NumExpr": numexpr.NumExpr, "evaluate": numexpr.evaluate}
    assert (peer == "numexpr") == ("ws" in yours)
    expected, value = eval(codes(yours)[0], names), eval(codes(here)[0], names)
    assert np.array_equal(value, expected) and np.array_equal(value, np.array([6.0, 8.0]) if "ws" in yours else 6.0)


def test_threads_of_numexpr_are_set_once_and_here_for_a_call():
    row = next(row for row in SAME_CALLS if "set_num_threads" in row[1])
    before = numexpr.set_num_threads(2)
    numexpr.set_num_threads(before)
    xs = np.arange(50_000.0)
    assert codes(row[2]) == ["threads=2"]
    assert np.array_equal(mathexpr.function("x+1", "x")(xs, threads=2), numexpr.evaluate("xs+1"))


def test_numexpr_takes_names_from_the_caller():
    w = 3  # noqa: F841
    assert numexpr.evaluate("2*w") == 6
    with pytest.raises(mathexpr.ParsingError):
        mathexpr.evaluate("2*w")


# Rows whose cells are evaluated literally: both agree, or each yields its documented result.
COMPARED = {
    "x**2", "2**3**2", "-2**2", "1e-3", "-7 % 3", "7 // 2", "0.0**0", "a and b", "1 < x < 3", "x if c else y", "math.log(x)",
    "round(2.5)",
}


@pytest.mark.parametrize("row", [row for row in SAME_TEXTS if codes(row[0])[:1] and codes(row[0])[0] in COMPARED])
def test_the_same_text(row):
    python, here = (re.fullmatch(r"`([^`]+)`(?: is (-?\d+))?", cell) for cell in row[:2])
    values = theirs(python[1]), ours(here[1])
    if python[2] is None:
        assert values[0] == values[1]
    else:
        assert values == (float(python[2]), float(here[2])) and values[0] != values[1]


def test_comparisons_and_choices_for_other_values():
    for x in (1.0, 2.0, 3.0):
        assert ours("(1<x)*(x<3)", x=x) == theirs("1 < x < 3", x=x)
    for c in (0.0, 1.0):
        assert ours("c*x+(!c)*y", c=c) == theirs("x if c else y", c=c)


def test_every_other_row():
    others = {row[0]: row for row in SAME_TEXTS if not (codes(row[0])[:1] and codes(row[0])[0] in COMPARED)}
    assert set(others) == {
        "`sin(x)` of radians", "`1e3`", "`math.pi`", "`Width` and `width`", "`(x, y, z)`",
        "text, lists, attributes, calls of yours",
    }
    assert ours("sin(30)") == pytest.approx(0.5, abs=1e-12) and theirs("sin(x)", x=30.0) == math.sin(30)
    assert ours("sin(r2d(x))", x=0.7) == pytest.approx(math.sin(0.7), abs=1e-11)
    assert codes(others["`1e3`"][1]) == ["1.5e+3"] and (theirs("1e3"), ours("1.5e+3")) == (1000, 1500)
    with pytest.raises(mathexpr.ParsingError):
        ours("1e3")
    assert ours("pi") == float(others["`math.pi`"][2].split(",")[0]) == round(math.pi, 11)
    assert mathexpr.evaluate("Width+width", {"width": 1}) == 2
    with pytest.raises(mathexpr.ParsingError):
        ours("SIN(30)")
    assert ours("[x,y,z]") == mathexpr.Point(*theirs("(x, y, z)"))
    for text in ("'text'", "{1:2}", "x.real", "f(x)", "lambda:1"):
        with pytest.raises(mathexpr.ParsingError):
            ours(text)


def test_what_numexpr_answers_with_infinity_is_refused_here():
    zeros = {"x": np.array([1.0, 0.0])}
    assert np.isinf(numexpr.evaluate("1/x", local_dict=zeros)[1]) and np.isinf(numexpr.evaluate("log(x)", local_dict=zeros)[1])
    for text in ("1/x", "ln(x)", "sqrt(x)"):
        with pytest.raises(mathexpr.RowsError) as caught:
            mathexpr.evaluate_arrays(text, zeros)
        assert math.isnan(caught.value.values[1]) and not math.isnan(caught.value.values[0])


def test_results_are_doubles_as_numexpr_s_are_not():
    for kind in (np.int64, np.float32):
        column = {"x": np.array([1, 2], kind)}
        assert numexpr.evaluate("x+x", local_dict=column).dtype == kind
        assert mathexpr.evaluate_arrays("x+x", column).dtype == np.float64
