# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Functions: numbers and arrays, by position and by name, broadcasting as in universal functions; threads; errors."""

import gc
import inspect
import pickle
import subprocess
import sys
import threading
import weakref
from fractions import Fraction

import mathexpr
import numpy as np
import pytest
from mathexpr import Expression, Limits, Point, function

XS = np.array([1.0, 2.0, 3.0])
POINTS = np.array([[3.0, 4.0, 0.0], [0.0, 5.0, 12.0]])


@pytest.fixture(name="area")
def make_area():
    return function("w*h", "w", "h")


def test_numbers_by_position_and_by_name(area):
    for value in (area(3.0, 4.0), area(3, 4), area(3, h=4), area(h=4, w=3), area(W=3, H=4), area(Fraction(3), np.int64(4))):
        assert value == 12 and type(value) is float


def test_every_value_is_that_of_an_evaluation():
    generator = np.random.default_rng(5)
    text = "sin(x*100)/y+x^3"
    by_function, expression = function(text, "x", "y"), Expression(text, {"x": 0, "y": 0})
    for x, y in generator.normal(size=(500, 2)).tolist():
        assert by_function(x, y).hex() == expression(x=x, y=y).hex()


def test_points_only_where_they_are_asked_for():
    distance = function("dist(p,[0,0,0])*k", "p", "k", points=["p"])
    assert distance(Point(3, 4), 2) == 10
    assert distance(POINTS, 2).tolist() == [10, 26]
    assert distance(POINTS, k=np.array([1, 2])).tolist() == [5, 26]
    assert distance(POINTS.tolist(), [1, 2]).tolist() == [5, 26]
    assert distance(POINTS[:, None, :], [[1.0, 2.0, 3.0]]).shape == (2, 3)
    table = np.arange(12.0).reshape(4, 3)
    assert function("2*x", "x")(table).tolist() == (2 * table).tolist()
    for wrong in (lambda: distance(3, 2), lambda: function("2*x", "x")(Point(1))):
        with pytest.raises(TypeError, match="points= says which are points"):
            wrong()
    with pytest.raises(ValueError, match=r"'p' is a point and has 3 coordinates on its last axis; got the shape \(2,\)"):
        distance(np.zeros(2), 1)


def test_results_that_are_points():
    moved = function("[x,2*x,0]+o", "x", variables={"o": Point(0, 0, 5)})
    assert moved(1) == Point(1, 2, 5)
    assert moved(np.array([1.0, 2.0])).tolist() == [[1, 2, 5], [2, 4, 5]]
    assert moved(np.ones((2, 2))).shape == (2, 2, 3)
    assert function("p*2", "p", points=["p"])(POINTS).tolist() == (POINTS * 2).tolist()
    out = np.empty((2, 2, 3))
    assert moved(np.ones((2, 2)), out=out) is out and out[1, 1].tolist() == [1, 2, 5]


@pytest.mark.parametrize(
    "shapes", [((), (3,)), ((3,), (1,)), ((4, 1), (3,)), ((2, 1, 3), (4, 1)), ((0,), (1,)), ((5, 0), (5, 1)), ((2, 3), (2, 3))]
)
def test_arrays_are_broadcast(area, shapes):
    first, second = (np.random.default_rng(1).normal(size=shape) for shape in shapes)
    values = area(first, second)
    assert values.shape == (first * second).shape and values.tobytes() == (first * second).tobytes()


def test_an_array_without_a_dimension_gives_a_number(area):
    value = area(np.array(3.0), np.array(4))
    assert value == 12 and isinstance(value, float)


def test_shapes_that_do_not_go_together(area):
    with pytest.raises(ValueError, match="different lengths: the argument 'w' has 3 rows, the argument 'h' has 2 rows"):
        area(XS, np.zeros(2))
    with pytest.raises(ValueError, match=r"shapes that do not go together: the argument 'w' \(3,\), the argument 'h' \(3, 2\)"):
        area(XS, np.zeros((3, 2)))
    with pytest.raises(ValueError, match="out"):
        area(XS, XS, out=np.zeros(4))


def test_the_results_go_where_they_should(area):
    out = np.zeros((2, 3))
    assert area(XS, 2, out=out) is out and out.tolist() == [[2, 4, 6]] * 2
    assert area(2, 3, out=out).tolist() == [[6] * 3] * 2
    backwards = np.zeros((3, 2))
    area(XS, [[1], [2]], out=backwards.T[:, ::-1])
    assert backwards.T.tolist() == [[3, 2, 1], [6, 4, 2]]
    values = XS.copy()
    assert area(values, 2, out=values) is values and values.tolist() == [2, 4, 6]
    table = np.arange(6.0).reshape(2, 3)
    assert area(table, 2, out=table) is table and table.tolist() == [[0, 2, 4], [6, 8, 10]]
    with pytest.raises(ValueError, match="out overlaps the argument 'w'"):
        area(table[:, ::-1], 2, out=table)


def test_where(area):
    out = np.full(3, 7.0)
    assert area(XS, 2, out=out, where=[True, False, True]).tolist() == [2, 7, 6]
    logarithm = function("ln(x)", "x")
    xs = np.array([-1.0, 1.0, -2.0])
    assert logarithm(xs, where=xs > 0)[1] == 0
    with pytest.raises(mathexpr.RowsError) as caught:
        logarithm(xs, where=[False, True, True])
    assert caught.value.first_failed == 2 and caught.value.failed_count == 1
    with pytest.raises(TypeError, match="where must hold bools"):
        logarithm(xs, where=[1, 0, 1])


def test_rows_without_a_value(area):
    quotient = function("1/(x-y)", "x", "y")
    with pytest.raises(mathexpr.RowsError) as caught:
        quotient(XS, 2)
    error = caught.value
    assert (error.failed_count, error.first_failed, error.start, error.length) == (1, 1, 1, 1)
    assert error.values[0] == -1 and np.isnan(error.values[1])
    assert np.isnan(quotient(XS, 2, strict=False)).tolist() == [False, True, False]
    with pytest.raises(mathexpr.RowsError) as caught:
        quotient(np.array([[1, 2], [3, 4]]), 4)
    assert caught.value.first_failed == 3
    with pytest.raises(mathexpr.RefusedError) as refused:
        quotient(2, 2)
    assert refused.value.start == 1 and refused.value.message_number == error.message_number
    assert area(XS, 2).tolist() == [2, 4, 6]


def test_threads_and_large_arrays_give_the_same_values():
    generator = np.random.default_rng(2)
    curve = function("sin(x*50)^2+y", "x", "y")
    xs, ys = generator.normal(size=(2, 300_000))
    expected = curve(xs, ys)
    assert curve(xs, ys, threads=2).tobytes() == expected.tobytes()
    singles = xs.astype("f4")
    assert curve(singles, ys, threads=2).tobytes() == curve(singles.astype(float), ys).tobytes()
    for threads in (0, -1, 2**40):
        with pytest.raises(ValueError, match=f"threads is {threads}; it is a whole number from 1 on"):
            curve(xs, ys, threads=threads)
    with pytest.raises(ValueError, match="threads is 1.5"):
        curve(xs, ys, threads=1.5)


MISTAKES = {
    "an unknown keyword": (lambda f: f(3, height=4), "the function does not read 'height'. It reads w, h"),
    "a misspelt keyword": (lambda f: function("2*width", "width")(widht=3), "did you mean 'width'"),
    "one is missing": (lambda f: f(3), "the function misses 'h'"),
    "both are missing": (lambda f: f(), "the function misses 'w', 'h'"),
    "too many": (lambda f: f(1, 2, 3), r"takes 2 arguments \(w, h\); got 3"),
    "twice": (lambda f: f(1, 2, w=3), "the argument 'w' is given twice"),
    "text": (lambda f: f("1", 2), "the argument 'w' holds <U1, not numbers"),
    "nothing": (lambda f: f(None, 2), "the argument 'w' holds Python objects"),
}


@pytest.mark.parametrize("use, message", MISTAKES.values(), ids=MISTAKES)
def test_mistakes(area, use, message):
    with pytest.raises(TypeError, match=message):
        use(area)
    assert area(3, 4) == 12


def test_what_is_no_function():
    with pytest.raises(mathexpr.ParsingError) as caught:
        function("2*widht", "width")
    assert caught.value.suggestions == ("width",)
    with pytest.raises(mathexpr.VariableNameError):
        function("2", "a b")
    with pytest.raises(ValueError, match="two arguments have the same name"):
        function("2*x", "x", "X")
    with pytest.raises(ValueError, match="the point 'p' is none of the arguments: x"):
        function("2*x", "x", points=["p"])
    with pytest.raises(ValueError, match="'out'"):
        function("2*out", "out")
    with pytest.raises(mathexpr.ParsingError):
        function("1+2+3", limits=Limits(max_records=2))
    with pytest.raises(TypeError, match="an expression is a str, not bytes"):
        function(b"1")


def test_many_arguments():
    names = [f"x{index}" for index in range(40)]
    total = function("+".join(names), *names)
    assert total(*range(40)) == sum(range(40)) == total(**dict(zip(names, range(40))))
    assert total(*[np.arange(3.0)] * 40).tolist() == [0, 40, 80]


def test_no_arguments():
    assert function("2*pi")() == 6.28318530718


def test_a_function_is_a_value():
    first = function("k*p", "p", points=["p"], variables={"k": 2})
    again = pickle.loads(pickle.dumps(first))
    assert again == first and hash(again) == hash(first) and again(Point(1)) == Point(2)
    assert first != function("k*p", "p", variables={"k": 2}) and first != "k*p"
    assert len({first, again}) == 1 and first.text == "k*p" and first.arguments == ("p",) and first.points == ("p",)
    assert repr(first) == "mathexpr.function('k*p', 'p', points=('p',), variables={'k': 2})"
    assert str(inspect.signature(first)) == "(p, *, out=None, where=True, threads=1, strict=True, copy=True)"


def test_a_random_number_is_drawn_for_each_call():
    draw = function("rand(0,x)", "x")
    assert len({draw(1) for _ in range(20)}) > 1


def test_a_dot_product_does_not_grow():
    dot = function("p*q", "p", "q", points=["p", "q"])
    assert dot(Point(1, 2, 3), Point(4, 5, 6)) == dot(Point(1, 2, 3), Point(4, 5, 6)) == 32
    assert mathexpr.evaluate("p*q", {"p": Point(1), "q": Point(2)}) == mathexpr.evaluate("p*q", {"p": Point(1), "q": Point(2)})


def test_one_function_in_sixteen_threads():
    curve = function("sin(x)^2+k", "x", "k")
    xs = np.linspace(0, 90, 50_000)
    expected, start, wrong = [curve(xs, k).tobytes() for k in range(16)], threading.Barrier(16), []

    def work(k):
        start.wait()
        try:
            for _ in range(20):
                if curve(xs, k).tobytes() != expected[k] or curve(30.0, k) != curve(np.array([30.0]), k)[0]:
                    wrong.append(k)
        except BaseException as error:
            wrong.append(error)

    threads = [threading.Thread(target=work, args=(k,)) for k in range(16)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert not wrong


def test_a_function_that_is_called_by_its_own_call():
    values = []

    class Number:
        """Calls the function during its conversion."""

        def __array__(self, dtype=None, copy=None):
            values.append(double(np.arange(3.0)).tolist())
            return np.array([5.0])

    double = function("2*x", "x")
    assert double(Number()).tolist() == [10] and values == [[0, 2, 4]]


def test_nothing_that_is_handed_over_is_kept_alive():
    xs, out = np.zeros(1000), np.zeros(1000)
    seen = [weakref.ref(xs), weakref.ref(out)]
    double = function("2*x", "x")
    double(xs)
    double(xs, out=out)
    mathexpr.evaluate_arrays("2*x", {"x": xs}, out=out)
    with pytest.raises(mathexpr.RowsError):
        function("1/x", "x")(xs)
    del xs, out
    gc.collect()
    assert [reference() for reference in seen] == [None, None]


def test_the_last_texts_stay_compiled():
    from mathexpr._function import compiled

    compiled.cache_clear()
    for number in range(300):
        assert mathexpr.evaluate(f"{number}+x", {"x": 1}) == number + 1
    assert mathexpr.evaluate("299+x", {"x": 2}) == 301
    information = compiled.cache_info()
    assert (information.currsize, information.hits) == (256, 1)


def test_a_text_that_stays_compiled_is_told_by_names_and_kinds():
    assert mathexpr.evaluate("2*x", {"x": 3}) == 6
    assert mathexpr.evaluate("2*x", {"x": Point(1)}) == Point(2)
    assert mathexpr.evaluate("2*x", {"y": 1, "x": 4}) == 8
    assert mathexpr.evaluate("2*x", {"X": 1, "x": 5}) == 10  # the last one wins
    with pytest.raises(mathexpr.ParsingError):
        mathexpr.evaluate("2*x", {"y": 1})
    with pytest.raises(mathexpr.ParsingError):
        mathexpr.evaluate("2*x", {"x": 3}, limits=Limits(max_text_length=2))
    for _ in range(2):
        with pytest.raises(mathexpr.RefusedError) as caught:
            mathexpr.evaluate("1/x", {"x": 0})
        assert caught.value.start == 1


def test_exact_types():
    assert mathexpr.evaluate_number("2*x", {"x": 3}) == 6 and mathexpr.evaluate_point("[1,2]") == Point(1, 2)
    with pytest.raises(TypeError, match=r"the value is a point, \[1,2,0\]; evaluate_point answers points"):
        mathexpr.evaluate_number("[1,2]")
    with pytest.raises(TypeError, match="the value is a number, 3.0; evaluate_number answers numbers"):
        mathexpr.evaluate_point("1+2")
    expression = Expression("x", {"x": Point(1)})
    assert expression.evaluate_point() == Point(1) and expression.evaluate_number("1+2") == 3


def test_a_keyword_that_the_text_does_not_read():
    expression = Expression("2*height", {"height": 1, "width": 1})
    for name in ("heigth", "width", "x"):
        with pytest.raises(TypeError, match=f"the expression does not read '{name}'"):
            expression(**{name: 50})
    with pytest.raises(TypeError, match="did you mean 'height'"):
        expression(heigth=50)
    assert expression() == 2 and expression(HEIGHT=50) == 100


FORKS = """
import os, threading
import mathexpr, numpy as np

curve = mathexpr.function("sin(x)^2+k", "x", "k")
xs = np.linspace(0, 90, 50_000)
expected = curve(xs, 1).tobytes()
done = threading.Event()

def work():
    while not done.is_set():
        curve(xs, 2)

threads = [threading.Thread(target=work) for _ in range(3)]
for thread in threads:
    thread.start()
for _ in range(5):
    child = os.fork()
    if child == 0:
        os._exit(0 if curve(xs, 1).tobytes() == expected and curve(xs, 1, threads=2).tobytes() == expected else 1)
    assert os.waitstatus_to_exitcode(os.waitpid(child, 0)[1]) == 0
done.set()
for thread in threads:
    thread.join()
print("done")
"""


def test_a_fork_while_other_threads_compute():
    done = subprocess.run([sys.executable, "-c", FORKS], capture_output=True, text=True, timeout=300, check=False)
    assert done.stdout == "done\n", done.stderr
