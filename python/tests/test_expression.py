# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Values, variables, the resolver, limits, and the lifetime of an expression."""

import gc
import math
import pickle
import threading
import weakref
from fractions import Fraction

import mathexpr
import pytest
from mathexpr import Expression, Limits, Point


def test_numbers_and_points():
    number = mathexpr.evaluate("1/4")
    assert number == 0.25 and type(number) is float
    point = mathexpr.evaluate("[1,2]*2")
    assert point == (2, 4, 0) and type(point) is Point


@pytest.mark.parametrize("value", [1.5, -0.0, math.inf, 5e-324, Point(1, -0.0, math.inf)])
def test_a_value_goes_through_bit_for_bit(value):
    as_answered = Point(*map(float, value)) if isinstance(value, Point) else value
    assert repr(mathexpr.evaluate("x", {"x": value})) == repr(as_answered)


@pytest.mark.parametrize("value", [0.1 + 0.2, -0.0, 1e5, 3e9, 1.5e300, -5e-324, Point(1 / 3, -1e-7, 1e15)])
def test_the_text_of_a_value_is_an_expression(value):
    assert repr(mathexpr.evaluate(mathexpr.format_value(value))) == repr(value)
    assert str(Point(value) if isinstance(value, float) else value).startswith("[")


def test_the_text_of_what_no_expression_can_write():
    assert [mathexpr.format_value(number) for number in (math.nan, math.inf, -math.inf)] == ["nan", "inf", "-inf"]


def test_digits_of_a_text():
    assert mathexpr.format_value(Point(1 / 3, 2 / 3), 3) == "[0.333,0.667,0]"
    for digits in (0, 18, -1):
        with pytest.raises(ValueError, match="1 to 17 digits"):
            mathexpr.format_value(1.0, digits)


def test_not_a_number_goes_through():
    assert math.isnan(mathexpr.evaluate("x", {"x": math.nan}))
    assert math.isnan(mathexpr.evaluate("x", {"x": Point(0, 0, math.nan)}).z)


def test_what_is_a_number():
    assert mathexpr.evaluate("x", {"x": 3}) == 3
    assert mathexpr.evaluate("x", {"x": Fraction(1, 2)}) == 0.5


@pytest.mark.parametrize("value", ["3", None, [1, 2, 3], (1, 2, 3), 1j])
def test_what_is_no_value(value):
    expression = Expression()
    with pytest.raises(TypeError, match="a value is a number or a mathexpr.Point"):
        expression.variables["x"] = value
    assert not expression.variables
    with pytest.raises(TypeError, match="a value is a number or a mathexpr.Point"):
        mathexpr.evaluate("x", {"x": value})
    with pytest.raises(TypeError, match="a value is a number or a mathexpr.Point"):
        Point(0, value)


@pytest.mark.parametrize("text", [None, b"1+2", 3])
def test_what_is_no_text(text):
    with pytest.raises(TypeError, match="an expression is a str, not"):
        Expression().compile(text)


def test_a_text_that_no_encoding_holds_leaves_the_program():
    expression = Expression("1+2")
    with pytest.raises(ValueError, match="surrogates not allowed"):
        expression.compile("1\ud800")
    with pytest.raises(ValueError, match="zero"):
        expression.compile("1\0")
    assert expression.evaluate() == 3 and expression.text == "1+2"


def test_variables_are_a_mapping():
    variables = Expression(variables={"r": 2, "Centre": Point(1, 2)}).variables
    assert dict(variables) == {"r": 2.0, "Centre": Point(1, 2, 0)} == variables
    assert variables["R"] == variables.get("r") == 2 and "centre" in variables and len(variables) == 2
    assert variables.pop("R") == 2 and list(variables) == ["Centre"]
    variables.update(a=1, b=2)
    assert list(variables.values()) == [Point(1, 2, 0), 1, 2]
    variables.clear()
    assert not variables and variables.setdefault("n", 5) == 5


@pytest.mark.parametrize("name", ["missing", "", "pi", "a\0b", 3])
def test_what_is_not_there_is_a_key_error(name):
    variables = Expression().variables
    with pytest.raises(KeyError):
        variables[name]
    with pytest.raises(KeyError):
        del variables[name]
    assert name not in variables


def test_names_in_other_scripts():
    expression = Expression("\u03bb*2", {"\u03bb": 4})
    assert expression.evaluate() == 8 and expression.used_names == ["\u03bb"]


def test_a_program_without_its_variable_is_empty():
    expression = Expression("2*r", {"r": 1})
    del expression.variables["r"]
    with pytest.raises(RuntimeError, match="nothing to evaluate"):
        expression.evaluate()


def test_an_assignment_is_made_once_and_a_refused_one_forgotten():
    expression = Expression("a=2*b", {"b": 1})
    assert "a" not in expression.variables
    assert expression.evaluate() == 2 and expression.variables["a"] == 2
    expression.variables["b"] = 5
    assert expression.evaluate() == 10 and expression.variables["a"] == 2
    with pytest.raises(mathexpr.DefinitionError):
        expression.evaluate("pi=3")
    assert expression.evaluate("1+1") == 2


def test_a_converted_number_stays_one_in_the_expression():
    expression = Expression()
    expression.evaluate("a=m2cm(2)")
    assert expression.evaluate("a & a") == 1
    expression.variables["a"] = expression.variables["a"]  # a float has no flag
    assert expression.evaluate("a & a") == 0


def test_a_call_sets_variables():
    area = Expression("w*h", {"w": 0, "h": 0})
    assert area(w=2, h=3) == 6
    assert area(h=5) == 10


class Drawing:
    """A host that knows one name."""

    def __init__(self):
        self.asked = []

    def __call__(self, name):
        self.asked.append(name)
        return {"width": 2.5, "corner": Point(1, 2, 3)}.get(name)


def test_the_resolver_is_asked_once_for_each_name():
    drawing = Drawing()
    expression = Expression("width*2+width", resolver=drawing)
    assert expression.evaluate() == 7.5 and expression.evaluate("corner+[0,0,1]") == (1, 2, 4)
    assert drawing.asked == ["width", "corner"] and expression.host_names == ["width", "corner"]


def test_a_name_that_the_resolver_does_not_know():
    with pytest.raises(mathexpr.ParsingError) as caught:
        Expression("2*widht", resolver=Drawing(), names=["width", "corner"])
    assert caught.value.suggestions == ("width",) and caught.value.code == 11


@pytest.mark.parametrize("raised", [OSError("gone"), KeyboardInterrupt(), mathexpr.MathExprError])
def test_what_the_resolver_raises_comes_out_as_it_is(raised):
    def resolver(name):
        if raised is mathexpr.MathExprError:
            return mathexpr.evaluate("ln(-1)")
        raise raised

    expression = Expression("1+2", resolver=resolver)
    with pytest.raises(type(raised) if isinstance(raised, BaseException) else raised) as caught:
        expression.compile("width*2")
    assert not isinstance(raised, BaseException) or caught.value is raised
    with pytest.raises(RuntimeError, match="nothing to evaluate"):
        expression.evaluate()
    assert expression.evaluate("3") == 3


def test_a_resolver_that_answers_no_value():
    with pytest.raises(TypeError, match="a value is a number or a mathexpr.Point, not 'wide'"):
        Expression("width", resolver=lambda name: "wide")


def test_names_that_raise():
    def names():
        yield "width"
        raise OSError("gone")

    with pytest.raises(OSError, match="gone"):
        Expression("widht", names=names())
    with pytest.raises(TypeError, match="a name is a str, not int"):
        Expression("widht", names=[3])


def test_the_resolver_may_read_the_expression_and_not_change_it():
    def resolver(name):
        assert expression.variables["r"] == 2
        for change in (lambda: expression.evaluate("1"), expression.close, lambda: expression.variables.clear()):
            with pytest.raises(RuntimeError, match="waits for its resolver"):
                change()
        return mathexpr.evaluate("4")

    expression = Expression(variables={"r": 2}, resolver=resolver)
    assert expression.evaluate("r*height") == 8 and expression.text == "r*height"


def test_limits():
    expression = Expression(limits=Limits(max_text_length=10, max_records=5, max_nesting=2))
    assert expression.limits == Limits(10, 5, 2)
    with pytest.raises(mathexpr.ParsingError) as caught:
        expression.evaluate("1+2+3+4+5+6")
    assert caught.value.code == 17 and caught.value.diagnostic.kind == "parsing"
    expression.limits = Limits()
    assert expression.evaluate("1+2+3+4+5+6") == 21
    for limit in (-1, 1 << 32):
        with pytest.raises(ValueError, match="the limit max_records is"):
            expression.limits = Limits(max_records=limit)
    assert expression.limits == Limits()


def test_a_closed_expression():
    with Expression("1") as expression:
        pass
    expression.close()
    for use in (expression.evaluate, lambda: expression.compile("2"), lambda: len(expression.variables)):
        with pytest.raises(ValueError, match="closed"):
            use()


def test_an_expression_ends_with_its_last_reference_also_in_a_circle():
    class Host:
        def __init__(self):
            self.expression = Expression(resolver=self.resolve)

        def resolve(self, name):
            return len(name)

    host = Host()
    assert host.expression.evaluate("four") == 4
    seen = weakref.ref(host.expression)
    del host
    gc.collect()
    assert seen() is None


def test_two_threads_in_one_expression():
    inside, done = threading.Event(), threading.Event()

    def resolver(name):
        inside.set()
        assert done.wait(10)
        return 1

    expression = Expression(resolver=resolver)
    answers = []
    thread = threading.Thread(target=lambda: answers.append(expression.evaluate("a+1")))
    thread.start()
    assert inside.wait(10)
    for use in (expression.evaluate, lambda: expression.variables["a"], expression.close):
        with pytest.raises(RuntimeError, match="in another thread"):
            use()
    done.set()
    thread.join()
    assert answers == [2] and expression.evaluate() == 2


def test_each_thread_its_own():
    def work(number):
        with Expression("n*n", {"n": 0}) as square:
            sums[number] = sum(square(n=n) for n in range(number * 500, number * 500 + 500))

    sums = [0, 0, 0, 0]
    threads = [threading.Thread(target=work, args=(number,)) for number in range(4)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert sum(sums) == sum(n * n for n in range(2000))


def test_an_expression_stays_in_its_process():
    with pytest.raises(TypeError, match="send its text"):
        pickle.dumps(Expression("1"))


def test_the_vocabulary():
    items = mathexpr.vocabulary()
    by_symbol = {}
    for item in items:
        by_symbol.setdefault(item.symbol, []).append(item)
    assert by_symbol["pi"][0].value == 3.14159265359 and by_symbol["pi"][0].kind == "constant"
    assert [item.unary for item in by_symbol["-"]] in ([True, False], [False, True])
    assert by_symbol["dist"][0].family == "geometry" and by_symbol["dist"][0].arg_count == 2
    assert by_symbol["sum"][0].arg_count is None and not by_symbol["rand"][0].pure
    assert {item.kind for item in items} == {"constant", "operator", "function"}
    assert len({item.family for item in items}) == 8
