# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Arrays: used in place; unusable arrays are refused, with nothing changed."""

import os
import signal
import threading
import tracemalloc

import mathexpr
import numpy as np
import pytest
from mathexpr import Expression, Point

NUMBERS = np.array([1.0, 2.0, 3.0])
POINTS = np.array([[3.0, 4.0, 0.0], [0.0, 5.0, 12.0], [1.0, 0.0, 0.0]])


def two_times():
    return Expression("2*x", {"x": 0})


def test_numbers_and_points_in_and_out():
    assert mathexpr.evaluate_arrays("2*x", {"x": NUMBERS}).tolist() == [2, 4, 6]
    assert mathexpr.evaluate_arrays("dist(p,[0,0,0])", {"p": POINTS}).tolist() == [5, 13, 1]
    assert mathexpr.evaluate_arrays("p*x", {"p": POINTS, "x": NUMBERS}).tolist() == (POINTS * NUMBERS[:, None]).tolist()


def test_values_that_hold_for_all_rows():
    columns = {"x": NUMBERS, "k": 10, "o": Point(0, 0, 1), "s": np.float64(0.5)}
    assert mathexpr.evaluate_arrays("(o*k+[x,0,0])*s", columns).tolist() == [[0.5, 0, 5], [1, 0, 5], [1.5, 0, 5]]


def test_every_row_is_what_a_single_evaluation_gives():
    generator = np.random.default_rng(8)
    xs, ps = generator.normal(size=5000), generator.normal(size=(5000, 3))
    expression = Expression("sin(x*100)+dist(p,[x,0,1])^x", {"x": 0, "p": Point(0)})
    values = expression.evaluate_arrays({"x": xs, "p": ps}, threads=2)
    single = [expression(x=x, p=Point(*p)) for x, p in zip(xs, ps)]
    assert values.tobytes() == np.array(single).tobytes()


@pytest.mark.parametrize(
    "array",
    [
        np.arange(20.0)[::2],
        np.arange(10.0)[::-1],
        np.arange(30.0).reshape(10, 3)[:, 1],
        np.broadcast_to(4.0, 10),
        np.zeros(10, [("name", "S8"), ("x", "f8")])["x"],
    ],
    ids=["every second", "backwards", "a column of a table", "one for all", "a field of records"],
)
def test_numbers_with_any_distance(array):
    assert two_times().evaluate_arrays({"x": array}).tolist() == (2 * array).tolist()


@pytest.mark.parametrize(
    "array", [np.asfortranarray(POINTS), POINTS[::-1], POINTS[:, ::-1], np.arange(24.0).reshape(4, 6)[:3, ::2]]
)
def test_points_with_any_distance(array):
    assert mathexpr.evaluate_arrays("p*2", {"p": array}).tolist() == (2 * array).tolist()


def test_the_results_go_where_they_should():
    out = np.full(3, 7.0)
    assert two_times().evaluate_arrays({"x": NUMBERS}, out=out) is out and out.tolist() == [2, 4, 6]
    table = np.zeros((3, 4))
    mathexpr.evaluate_arrays("[x,2*x,3*x]", {"x": NUMBERS}, out=table[::-1, 1:])
    assert table.tolist() == [[0, 3, 6, 9], [0, 2, 4, 6], [0, 1, 2, 3]]
    table[:, 0] = NUMBERS
    two_times().evaluate_arrays({"x": table[:, 0]}, out=table[:, 2])  # interleaved, without a common byte
    assert table[:, 2].tolist() == [2, 4, 6]


def test_the_results_may_replace_a_column():
    array = NUMBERS.copy()
    assert two_times().evaluate_arrays({"x": array}, out=array) is array and array.tolist() == [2, 4, 6]


def test_nothing_is_copied():
    row_count = 1_000_000
    xs, out, status = np.linspace(0, 1, row_count), np.empty(row_count), np.empty(row_count, np.uint32)
    before = out.__array_interface__["data"][0]
    expression = two_times()
    expression.evaluate_arrays({"x": xs[:10]}, out=out[:10])  # completes lazy imports
    tracemalloc.start()
    try:
        result = expression.evaluate_arrays({"x": xs}, out=out, row_status=status, threads=2)
        peak = tracemalloc.get_traced_memory()[1]
    finally:
        tracemalloc.stop()
    assert result is out and out.__array_interface__["data"][0] == before and out[-1] == 2
    assert peak < 20_000  # bytes, for arrays of eight million each


def test_without_out_only_the_results_are_made():
    xs = np.linspace(0, 1, 1_000_000)
    expression = two_times()
    expression.evaluate_arrays({"x": xs[:10]})
    tracemalloc.start()
    try:
        expression.evaluate_arrays({"x": xs})
        peak = tracemalloc.get_traced_memory()[1]
    finally:
        tracemalloc.stop()
    assert xs.nbytes <= peak < xs.nbytes + 20_000


def test_more_rows_than_go_into_one_call():
    row_count = (1 << 21) + 5
    xs = np.arange(row_count, dtype=float)
    xs[[1 << 20, row_count - 1]] = -1
    status = np.full(row_count, 99, np.uint32)
    with pytest.raises(mathexpr.RowsError) as caught:
        mathexpr.evaluate_arrays("sqrt(x+1)", {"x": xs}, row_status=status, threads=2)
    assert caught.value.failed_count == 2 and caught.value.first_failed == 1 << 20
    assert np.flatnonzero(status).tolist() == [1 << 20, row_count - 1]
    assert caught.value.values[row_count - 2] == np.sqrt(row_count - 1.0)


def test_rows_without_a_value():
    expression = Expression("ln(x)+k", {"x": 0, "k": 1})
    xs, status = np.array([1.0, -1.0, 0.0, np.e]), np.zeros(4, np.uint32)
    with pytest.raises(mathexpr.RowsError) as caught:
        expression.evaluate_arrays({"x": xs}, row_status=status)
    error = caught.value
    assert (error.failed_count, error.first_failed, error.message_number, error.start) == (2, 1, 8, 0)
    assert error.values[0] == 1 and np.isnan(error.values[1:3]).all() and error.values[3] == 2
    assert status.tolist() == [0, 8, 8, 0]
    assert str(error).startswith("2 of 4 rows have no value; row 1: ") and str(error).endswith("\nln(x)+k\n^^")
    assert expression.variables == {"x": 0, "k": 1}

    values = expression.evaluate_arrays({"x": xs}, strict=False)
    assert np.isnan(values).tolist() == [False, True, True, False]


def test_the_kind_of_result_is_that_of_any_row_with_a_value():
    xs = np.zeros(3000)
    xs[-1] = 4
    values = mathexpr.evaluate_arrays("[1,2,3]/x", {"x": xs}, strict=False)
    assert values.shape == (3000, 3) and values[-1].tolist() == [0.25, 0.5, 0.75] and np.isnan(values[:-1]).all()
    assert mathexpr.evaluate_arrays("[1,2,3]/x", {"x": xs[:5]}, strict=False).shape == (5,)  # no row has a value


def test_points_where_numbers_are_wanted():
    status = np.zeros(3, np.uint32)
    with pytest.raises(mathexpr.RowsError, match="the value is a point|The value is a point"):
        mathexpr.evaluate_arrays("p", {"p": POINTS}, out=np.empty(3), row_status=status)
    assert status.tolist() == [256] * 3


def test_no_rows():
    assert two_times().evaluate_arrays({"x": np.empty(0)}).shape == (0,)
    out = np.empty((0, 3))
    assert mathexpr.evaluate_arrays("[x,0,0]", {"x": np.empty(0)}, out=out) is out


def test_an_expression_without_columns():
    assert Expression("1+2").evaluate_arrays({}, out=np.empty(2)).tolist() == [3, 3]


def test_a_variable_without_a_column_keeps_its_value():
    expression = Expression("k*x", {"k": 5, "x": 0})
    assert expression.evaluate_arrays({"x": NUMBERS}).tolist() == [5, 10, 15]
    assert expression.variables == {"k": 5, "x": 0}


FORTY_BYTES = np.zeros(5, [("pad", "u1"), ("x", "<f8")])  # packed: 9 bytes from one number to the next

REFUSED_WITHOUT_COPY = {
    "a list": ([1.0, 2.0, 3.0], TypeError, "the column 'x' must be a NumPy array of float64; got list; leave out copy=False"),
    "text": ("abc", TypeError, "got str"),
    "float32": (NUMBERS.astype("f4"), TypeError, r"must be an array of float64; got <f4; .astype\(float\) converts it"),
    "int64": (np.arange(3), TypeError, "got <i8"),
    "the other byte order": (NUMBERS.astype(">f8"), TypeError, "got >f8"),
    "masked": (np.ma.array(NUMBERS, mask=[0, 1, 0]), TypeError, "got MaskedArray"),
    "no dimension": (np.array(1.0), ValueError, r"different lengths|do not go together"),
    "one row": (np.zeros(1), ValueError, "the column 'x' has 1 rows, out has 3 rows"),
    "not aligned": (FORTY_BYTES["x"][:3], ValueError, "the column 'x' is not aligned to 8 bytes"),
}

REFUSED_COLUMNS = {
    "text": ("abc", TypeError, "the column 'x' holds <U3, not numbers"),
    "complex": (NUMBERS.astype(complex), TypeError, "the column 'x' holds complex128, not numbers"),
    "dates": (np.zeros(3, "M8[s]"), TypeError, "not numbers"),
    "objects": (NUMBERS.astype(object), TypeError, r"holds Python objects, not numbers; .*\.astype\(float\)"),
    "nothing among numbers": ([1.0, None, 3.0], TypeError, "holds Python objects"),
    "pairs": (np.zeros((3, 2)), ValueError, "shapes that do not go together"),
    "three dimensions": (np.zeros((3, 3, 3)), ValueError, "shapes that do not go together"),
    "too long": (np.zeros(4), ValueError, "the column 'x' has 4 rows, out has 3 rows"),
    "points for a number": (np.zeros((3, 3)), ValueError, "shapes that do not go together"),
    "a complex number": (1j, TypeError, "holds complex128, not numbers"),
}


@pytest.mark.parametrize("array, error, message", REFUSED_WITHOUT_COPY.values(), ids=REFUSED_WITHOUT_COPY)
def test_columns_that_are_refused_without_a_copy(array, error, message):
    expression, out = two_times(), np.full(3, 7.0)
    with pytest.raises(error, match=message):
        expression.evaluate_arrays({"x": array}, out=out, copy=False)
    assert out.tolist() == [7, 7, 7] and expression.variables == {"x": 0} and expression(x=4) == 8


@pytest.mark.parametrize("array, error, message", REFUSED_COLUMNS.values(), ids=REFUSED_COLUMNS)
def test_refused_columns(array, error, message):
    expression, out = two_times(), np.full(3, 7.0)
    with pytest.raises(error, match=message):
        expression.evaluate_arrays({"x": array}, out=out)
    assert out.tolist() == [7, 7, 7] and expression.variables == {"x": 0} and expression(x=4) == 8


def read_only():
    array = np.zeros(3)
    array.flags.writeable = False
    return array


REFUSED_OUTS = {
    "a list": ([0.0] * 3, TypeError, "out must be a NumPy array of float64; got list"),
    "float32": (np.zeros(3, "f4"), TypeError, "out must be an array of float64; got <f4"),
    "too short": (np.zeros(2), ValueError, "the column 'x' has 3 rows, out has 2 rows"),
    "four numbers a row": (np.zeros((3, 4)), ValueError, r"out \(3, 4\)"),
    "read-only": (read_only(), ValueError, "out is read-only"),
    "one place for all": (
        np.lib.stride_tricks.as_strided(np.zeros(1), (3,), (0,)),
        ValueError,
        "out has rows that share memory",
    ),
    "not aligned": (FORTY_BYTES["x"][:3], ValueError, "out is not aligned"),
}


@pytest.mark.parametrize("out, error, message", REFUSED_OUTS.values(), ids=REFUSED_OUTS)
def test_refused_results(out, error, message):
    with pytest.raises(error, match=message):
        two_times().evaluate_arrays({"x": NUMBERS}, out=out)


def test_results_that_overlap_a_column_otherwise():
    array = np.arange(6.0)
    for out in (array[1:4], array[2::-1], array[:6:2]):
        with pytest.raises(ValueError, match="out overlaps the column 'x'"):
            two_times().evaluate_arrays({"x": array[:3]}, out=out)
    points = POINTS.copy()
    with pytest.raises(ValueError, match="out overlaps the column 'p'"):
        mathexpr.evaluate_arrays("p*2", {"p": points}, out=points)
    assert array.tolist() == [0, 1, 2, 3, 4, 5] and (points == POINTS).all()


def test_refused_calls():
    expression = two_times()
    for threads in (0, -1, 1.5, "2", 1 << 32):
        with pytest.raises(ValueError, match="threads is"):
            expression.evaluate_arrays({"x": NUMBERS}, threads=threads)
    with pytest.raises(ValueError, match="the number of rows is not known"):
        expression.evaluate_arrays({"x": 1})
    with pytest.raises(ValueError, match="the column 'y' is no variable of the expression"):
        expression.evaluate_arrays({"x": NUMBERS, "y": NUMBERS})
    with pytest.raises(ValueError, match="the column '[xX]' occurs twice"):
        expression.evaluate_arrays({"x": NUMBERS, "X": NUMBERS})
    for status in (np.zeros(3), np.zeros(2, np.uint32), np.zeros(6, np.uint32)[::2], [0, 0, 0]):
        with pytest.raises((TypeError, ValueError), match="row_status"):
            expression.evaluate_arrays({"x": NUMBERS}, row_status=status)
    with pytest.raises(RuntimeError, match="nothing to evaluate"):
        Expression(variables={"x": 0}).evaluate_arrays({"x": NUMBERS})
    with pytest.raises(mathexpr.VariableNameError):
        mathexpr.evaluate_arrays("2", {"a b": NUMBERS})
    with pytest.raises(mathexpr.ParsingError):
        mathexpr.evaluate_arrays("2*", {"x": NUMBERS})


def test_an_interrupt_ends_a_long_evaluation_between_two_calls():
    row_count = 12 << 20
    out = np.full(row_count, 7.0)
    long = Expression("+".join(["sin(x)^1.5"] * 8), {"x": 0})
    interrupt = threading.Timer(0.1, os.kill, (os.getpid(), signal.SIGINT))
    before = signal.signal(signal.SIGINT, signal.default_int_handler)  # a shell's background jobs ignore it
    try:
        interrupt.start()
        with pytest.raises(KeyboardInterrupt):
            long.evaluate_arrays({"x": np.broadcast_to(1.0, row_count)}, out=out)
        interrupt.join()
    finally:
        signal.signal(signal.SIGINT, before)
    assert out[-1] == 7  # the last row was not computed
    assert long(x=90) == 8


def test_other_threads_run_while_arrays_are_computed():
    xs, ticks, done = np.linspace(0, 1, 3_000_000), [], threading.Event()

    def tick():
        while not done.wait(0.001):
            ticks.append(None)

    thread = threading.Thread(target=tick)
    thread.start()
    mathexpr.evaluate_arrays("sin(x)^1.5+cos(x)^1.5", {"x": xs})
    done.set()
    thread.join()
    assert len(ticks) > 5
