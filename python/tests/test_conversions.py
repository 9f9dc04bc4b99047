# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Accepted inputs: other types of numbers, lists, tables, masked arrays, containers of arrays."""

import array
import tracemalloc

import mathexpr
import numpy as np
import pandas
import pytest
from mathexpr import function

DOUBLE = function("2*x", "x")
SUM = function("x+y", "x", "y")
ONE_TO_THREE = np.array([1.0, 2.0, 3.0])


def read_only(values):
    values.flags.writeable = False
    return values


class HasArray:
    def __array__(self, dtype=None, copy=None):
        return np.array([1, 2, 3], dtype=dtype)


class Polars:
    """Behaves like a column of polars."""

    def __init__(self, values, nulls=0):
        self.values, self.nulls = values, nulls

    def null_count(self):
        return self.nulls

    def __array__(self, dtype=None, copy=None):
        return np.asarray(self.values, dtype)


TAKEN = {
    "a list": [1, 2, 3],
    "a tuple": (1.0, 2.0, 3.0),
    "bools and ints": [True, 2, 3],
    **{kind: ONE_TO_THREE.astype(kind) for kind in ("i1", "i2", "i4", "i8", "u1", "u2", "u4", "u8", "f2", "f4", "g")},
    "the other byte order": ONE_TO_THREE.astype(">f8"),
    "ints of the other byte order": ONE_TO_THREE.astype(">i4"),
    "read-only": read_only(ONE_TO_THREE.copy()),
    "not aligned": np.frombuffer(b"\0" + ONE_TO_THREE.tobytes(), np.uint8)[1:].view(np.float64),
    "a field of packed records": np.array([(0, 1), (0, 2), (0, 3)], [("pad", "u1"), ("x", "<f8")])["x"],
    "an array of the standard library": array.array("d", [1, 2, 3]),
    "small integers of the standard library": array.array("h", [1, 2, 3]),
    "a view of memory": memoryview(array.array("f", [1, 2, 3])),
    "an object with __array__": HasArray(),
    "a column of polars": Polars([1, 2, 3]),
    "a range": range(1, 4),
}


@pytest.mark.parametrize("values", TAKEN.values(), ids=TAKEN)
def test_what_is_taken(values):
    for result in (DOUBLE(values), mathexpr.evaluate_arrays("2*x", {"x": values})):
        assert type(result) is np.ndarray and result.dtype == np.float64 and result.tolist() == [2, 4, 6]


def test_bools():
    assert DOUBLE(np.array([True, False])).tolist() == [2, 0]


def test_every_number_is_the_one_that_numpy_converts():
    generator = np.random.default_rng(4)
    for values in (generator.integers(-(2**63), 2**63 - 1, 70_000), generator.normal(size=70_000).astype("f4")):
        assert function("x", "x")(values).tobytes() == values.astype(float).tobytes()


REFUSED = {
    "text": (["1", "2"], "holds <U1, not numbers"),
    "complex": ([1j], "holds complex128, not numbers"),
    "dates": (pandas.Series(pandas.to_datetime(["2020-01-01"])), "holds datetime64"),
    "categories": (pandas.Series(["a"], dtype="category"), "holds category, not numbers"),
    "strings of pandas": (pandas.Series(["a"], dtype="string"), "holds string, not numbers"),
    "objects": (pandas.Series([1.0, pandas.NA], dtype=object), r"missing values becomes one with \.astype\('Float64'\)"),
    "nothing in a list": ([1.0, None], r"\.astype\(float\)"),
    "nulls of polars": (Polars([1.0, float("nan")], 1), r"holds nulls; fill them, or drop their rows, .*\.drop_nulls\(\)"),
}


@pytest.mark.parametrize("values, message", REFUSED.values(), ids=REFUSED)
def test_what_is_refused(values, message):
    with pytest.raises(TypeError, match=message):
        DOUBLE(values)
    with pytest.raises(TypeError, match=message):
        mathexpr.evaluate_arrays("2*x", {"x": values})


def test_rows_of_different_lengths_in_a_list():
    with pytest.raises(ValueError):
        DOUBLE([[1, 2], [3]])


# ----- pandas ----------------------------------------------------------------

FRAME = pandas.DataFrame({"width": [1, 2, 3], "height": [4.0, 5.0, 6.0], "name": list("abc")}, index=[10, 20, 30])


def test_a_series_for_a_series():
    values = SUM(FRAME.width, FRAME.height)
    assert isinstance(values, pandas.Series) and values.dtype == np.float64
    assert values.to_dict() == {10: 5, 20: 7, 30: 9}
    assert SUM(FRAME.width, 1).index.equals(FRAME.index)
    assert SUM(FRAME.width, np.zeros(3)).to_dict() == {10: 1, 20: 2, 30: 3}


def test_a_frame_is_the_mapping_of_its_columns():
    values = mathexpr.evaluate_arrays("width*height", FRAME)
    assert isinstance(values, pandas.Series) and values.to_dict() == {10: 4, 20: 10, 30: 18}
    expression = mathexpr.Expression("width*k", {"width": 0, "k": 2})
    assert expression.evaluate_arrays(FRAME).tolist() == [2, 4, 6]
    with pytest.raises(mathexpr.ParsingError) as caught:
        mathexpr.evaluate_arrays("width*heigth", FRAME)
    assert caught.value.suggestions == ("height",)
    with pytest.raises(TypeError, match="the column 'name' holds"):
        mathexpr.evaluate_arrays("name*2", FRAME)


class PolarsFrame:
    """Behaves like a table of polars: iterates over its columns, not over their names."""

    columns = ["width", "name"]

    def __getitem__(self, name):
        return {"width": Polars([1, 2, 3]), "name": Polars(["a", "b", "c"])}[name]

    def __iter__(self):
        return map(self.__getitem__, self.columns)


def test_a_frame_of_polars():
    assert mathexpr.evaluate_arrays("2*width", PolarsFrame()).tolist() == [2, 4, 6]
    assert mathexpr.Expression("2*width", {"width": 0}).evaluate_arrays(PolarsFrame()).tolist() == [2, 4, 6]


def test_labels_that_are_no_names_do_no_harm():
    frame = pandas.DataFrame({"w": [1, 2], 3: [4, 5], "unit price": [6, 7], "pi": [8, 9]})
    assert mathexpr.evaluate_arrays("w+1", frame).tolist() == [2, 3]


def test_points_from_a_frame_and_for_a_series():
    points = mathexpr.evaluate_arrays("[width,height]", FRAME)
    assert isinstance(points, pandas.DataFrame) and list(points.columns) == ["x", "y", "z"]
    assert points.loc[20].tolist() == [2, 5, 0]
    lengths = function("abs(p)", "p", points=["p"])(points)
    assert isinstance(lengths, pandas.Series) and lengths[10] == 17**0.5


def test_missing_values_stay_missing():
    values = SUM(pandas.Series([1, pandas.NA, 3], dtype="Int64", index=[7, 8, 9]), 1)
    assert str(values.dtype) == "Float64" and values.isna().tolist() == [False, True, False] and values[9] == 4
    values = SUM(pandas.Series([1.5, None], dtype="Float64"), pandas.Series([None, 1], dtype="Int8"))
    assert values.isna().tolist() == [True, True]
    assert np.isnan(DOUBLE(pandas.Series([1, np.nan]))).tolist() == [False, True]  # NaN is a value, not a missing one


def test_a_missing_value_is_no_row_that_fails():
    values = function("ln(x)", "x")(pandas.Series([1, pandas.NA], dtype="Int64"))
    assert values[0] == 0 and values.isna().tolist() == [False, True]
    with pytest.raises(mathexpr.RowsError) as caught:
        function("ln(x)", "x")(pandas.Series([1, pandas.NA, -1], dtype="Int64"))
    assert caught.value.first_failed == 2


def test_indices_that_differ():
    with pytest.raises(ValueError, match="the argument 'x' and the argument 'y' have different indices; align them"):
        SUM(FRAME.width, FRAME.height.reset_index(drop=True))


# ----- masked arrays ---------------------------------------------------------


def test_a_mask_is_kept():
    values = np.ma.array([1.0, -1.0, 3.0], mask=[False, True, False])
    result = function("ln(x)", "x")(values)
    assert isinstance(result, np.ma.MaskedArray) and result.mask.tolist() == [False, True, False] and result[0] == 0
    both = SUM(values, np.ma.array([[1], [2]], mask=[[True], [False]]))
    assert both.mask.tolist() == [[True] * 3, [False, True, False]] and both[1, 0] == 3
    assert SUM(np.ma.array([1.0]), 1).mask.tolist() == [False]
    points = function("[x,0,0]", "x")(values)
    assert points.shape == (3, 3) and points.mask.tolist() == [[False] * 3, [True] * 3, [False] * 3]


# ----- copies ----------------------------------------------------------------


def test_no_whole_copy_is_made():
    values = np.ones(4_000_000, "f4")
    out = np.empty(len(values))
    DOUBLE(values[:10], out=out[:10])
    tracemalloc.start()
    try:
        DOUBLE(values, out=out)
        peak = tracemalloc.get_traced_memory()[1]
    finally:
        tracemalloc.stop()
    assert out[-1] == 2 and peak < out.nbytes / 20


def test_refused_without_a_copy():
    for values, message in (
        ([1.0, 2.0], "must be a NumPy array of float64; got list; leave out copy=False"),
        (pandas.Series([1.0]), "got Series"),
        (ONE_TO_THREE.astype("f4"), r"got <f4; \.astype\(float\) converts it"),
        (np.ma.array([1.0]), "got MaskedArray"),
    ):
        with pytest.raises(TypeError, match=message):
            DOUBLE(values, copy=False)
    assert DOUBLE(ONE_TO_THREE[::-1], copy=False).tolist() == [6, 4, 2]


def test_points_only_where_the_column_is_said_to_be_of_them():
    table = np.ones((4, 3))
    assert mathexpr.evaluate_arrays("abs(p)", {"p": table}).shape == (4,)
    assert mathexpr.evaluate_arrays("abs(p)", {"p": table}, points=["p"]).shape == (4,)
    assert mathexpr.evaluate_arrays("2*p", {"p": table}, points=()).shape == (4, 3)
    assert mathexpr.Expression("2*p", {"p": 0}).evaluate_arrays({"p": table}).shape == (4, 3)
    assert mathexpr.Expression("abs(p)", {"p": mathexpr.Point(0)}).evaluate_arrays({"p": table}).shape == (4,)
