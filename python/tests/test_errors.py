# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""The contents of exceptions, and their transfer to another process."""

import pickle

import mathexpr
import numpy as np
import pytest


def failure(text, variables=None):
    with pytest.raises(mathexpr.MathExprError) as caught:
        mathexpr.evaluate(text, variables)
    return caught.value


def test_an_unknown_function():
    error = failure("1 + sine(30)")
    assert type(error) is mathexpr.ParsingError
    assert (error.code, error.message_number, error.start, error.length) == (10, 4, 4, 4)
    assert error.diagnostic.kind == "parsing" and error.diagnostic.item == "sine"
    assert error.suggestions == ("sin", "sinh")
    assert str(error) == (
        "The text before ( is not a function: check its name, or write * to multiply.\n"
        "1 + sine(30)\n"
        "    ^^^^\n"
        "Did you mean sin or sinh?"
    )


def test_a_correction():
    error = failure("\u03bb+2\u03bb", {"\u03bb": 1})
    assert error.hints == ("Multiplication is written with *. Did you mean \u03bb+2*\u03bb?",)
    assert error.fix == mathexpr.Fix(2, 2, "2*\u03bb")
    assert error.fix.apply(error.text) == "\u03bb+2*\u03bb"
    assert str(error).endswith("\n  ^^\n" + error.hints[0])


def test_no_correction():
    error = failure("1,500")
    assert error.fix is None and len(error.hints) == 1 and "1.500 or 1500" in error.hints[0]


def test_an_item_that_refuses():
    error = failure("2 * ln(x)", {"x": -1})
    assert type(error) is mathexpr.RefusedError
    assert (error.message_number, error.start, error.length) == (8, 4, 2) and error.diagnostic.kind == "refused"


def test_a_name_that_is_assigned_to():
    error = failure("pi = 3")
    assert type(error) is mathexpr.DefinitionError
    assert error.code == 14 and error.start == 0 and error.diagnostic.conflict == "pi"


def test_a_count_of_arguments():
    diagnostic = failure("dist([1,2,3])").diagnostic
    assert diagnostic.code == 7 and diagnostic.arg_count == 1 and diagnostic.accepted_arg_counts == (2,)


def test_positions_count_characters_whatever_they_take():
    error = failure("\u03bb + \U0001d706 + sine(1)", {"\u03bb": 1, "\U0001d706": 2})
    assert (error.start, error.length) == (8, 4)
    assert error.caret.endswith("\n        ^^^^")


def test_the_empty_text():
    error = failure("")
    assert error.code == 8 and error.caret == "\n^"


def test_the_caret_stands_below_a_tabulator():
    assert failure("1\t+2").caret == "1 +2\n^^"


@pytest.mark.parametrize(
    "name, code, position, length",
    [("", 12, 0, 0), ("2", 13, 0, 1), ("pi", 14, 0, 2), ("a+b", 15, 1, 1), ("\u00e9t\u00e9(1)", 15, 3, 1)],
)
def test_a_name_that_cannot_be_a_variable(name, code, position, length):
    expression = mathexpr.Expression("r", {"r": 1})
    with pytest.raises(mathexpr.VariableNameError) as caught:
        expression.variables[name] = 3
    error = caught.value
    assert isinstance(error, ValueError) and (error.code, error.start, error.length) == (code, position, length)
    assert expression.variables == {"r": 1} and expression.evaluate() == 1


def test_a_name_that_is_no_text():
    with pytest.raises(TypeError, match="the name of a variable is a str, not int"):
        mathexpr.Expression().variables[3] = 1


def test_exceptions_travel():
    error = failure("1+sine(30)")
    again = pickle.loads(pickle.dumps(error))
    assert type(again) is type(error) and again.diagnostic == error.diagnostic and str(again) == str(error)

    with pytest.raises(mathexpr.RowsError) as caught:
        mathexpr.evaluate_arrays("ln(x)", {"x": np.array([1.0, 0.0])})
    again = pickle.loads(pickle.dumps(caught.value))
    assert again.failed_count == 1 and again.first_failed == 1 and np.isnan(again.values[1]) and again.values[0] == 0
    assert str(again) == str(caught.value)
