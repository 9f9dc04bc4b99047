# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""An expression calculator for CAD applications: numbers and points, units, geometry, variables.

>>> import mathexpr
>>> mathexpr.evaluate("3*[1,2,0.5]")
Point(x=3.0, y=6.0, z=1.5)

`evaluate` computes one text. An `Expression` is compiled once and evaluated any number of times, for single values or,
with NumPy, for whole arrays, and keeps variables. An invalid text raises a `MathExprError` with the position.
"""

from ._editor import Completion, Hover, Token
from ._errors import (
    DefinitionError,
    Diagnostic,
    Fix,
    MathExprError,
    ParsingError,
    RefusedError,
    RowsError,
    VariableNameError,
)
from ._expression import Expression, Resolver, evaluate, evaluate_arrays, evaluate_number, evaluate_point
from ._function import Function, function
from ._limits import Limits
from ._native import VERSION as __version__
from ._values import Point, Value, format_value
from ._variables import Variables
from ._vocabulary import VocabularyItem, vocabulary

__all__ = [
    "Completion",
    "DefinitionError",
    "Diagnostic",
    "Expression",
    "Fix",
    "Function",
    "Hover",
    "Limits",
    "MathExprError",
    "ParsingError",
    "Point",
    "RefusedError",
    "Resolver",
    "RowsError",
    "Token",
    "Value",
    "VariableNameError",
    "Variables",
    "VocabularyItem",
    "evaluate",
    "evaluate_arrays",
    "evaluate_number",
    "evaluate_point",
    "format_value",
    "function",
    "vocabulary",
]

# Tracebacks, pickles and help() name classes as users import them.
for _name in __all__:
    if isinstance(globals()[_name], type):
        globals()[_name].__module__ = __name__
