#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Computes the exact results of the platform's mathematical functions: the double nearest to the true value.

    reference.py OUTPUT

OUTPUT gets lines EXPRESSION ARGUMENT [ARGUMENT] RESULT, with numbers as the bits of doubles, which PlatformMathTests.cpp
reads. The argument is that of the expression. The library's multiplications before and after the platform's function are
double operations here, too.
"""
import math
import random
import struct
import sys
from decimal import Decimal, getcontext

getcontext().prec = 80
SHORT_PI = 3.14159265359
PI = Decimal("3.14159265358979323846264338327950288419716939937510582097494459230781640628620899862803482534211706798")
NEGLIGIBLE = Decimal(10) ** -90


def bits(value):
    return struct.pack(">d", value).hex()


def series(first, following):
    """The sum of quickly decreasing terms, each computed from the previous one."""
    total, term, index = Decimal(0), first, 0
    while abs(term) > NEGLIGIBLE:
        total += term
        index += 1
        term = following(term, index)
    return total


def sin(x):
    x = x.remainder_near(2 * PI)
    return series(x, lambda term, n: -term * x * x / (2 * n * (2 * n + 1)))


def cos(x):
    x = x.remainder_near(2 * PI)
    return series(Decimal(1), lambda term, n: -term * x * x / (2 * n * (2 * n - 1)))


def atan(x):
    if abs(x) > 1:
        return (PI / 2).copy_sign(x) - atan(1 / x)
    for _ in range(4):  # halves the angle, to shorten the series
        x = x / (1 + (1 + x * x).sqrt())
    power = series_of_atan(x)
    return 16 * power


def series_of_atan(x):
    total, power, index = Decimal(0), x, 0
    while abs(power) > NEGLIGIBLE:
        total += power / (2 * index + 1)
        power *= -x * x
        index += 1
    return total


def asin(x):
    return (PI / 2).copy_sign(x) if abs(x) == 1 else atan(x / (1 - x * x).sqrt())


def acos(x):
    return PI / 2 - asin(x)


def sinh(x):
    if abs(x) < 1:  # the difference would lose precision
        return series(x, lambda term, n: term * x * x / (2 * n * (2 * n + 1)))
    return (x.exp() - (-x).exp()) / 2


def cosh(x):
    return (x.exp() + (-x).exp()) / 2


def power(x, y):
    return (y * x.ln()).exp()


def of_degrees(function):
    return lambda x: float(function(Decimal(x * SHORT_PI / 180.0)))


def in_degrees(function):
    return lambda x: float(function(Decimal(x))) * 180.0 / SHORT_PI


def plain(function):
    return lambda *arguments: float(function(*map(Decimal, arguments)))


ANGLES = ("angle", 300)
FUNCTIONS = {
    "sin(x)": (of_degrees(sin), *ANGLES),
    "cos(x)": (of_degrees(cos), *ANGLES),
    "tan(x)": (of_degrees(lambda x: sin(x) / cos(x)), *ANGLES),
    "asin(x)": (in_degrees(asin), "ratio", 300),
    "acos(x)": (in_degrees(acos), "ratio", 300),
    "atan(x)": (in_degrees(atan), "any", 300),
    "sinh(x)": (of_degrees(sinh), *ANGLES),
    "cosh(x)": (of_degrees(cosh), *ANGLES),
    "tanh(x)": (of_degrees(lambda x: sinh(x) / cosh(x)), *ANGLES),
    "exp(x)": (plain(Decimal.exp), "exponent", 300),
    "ln(x)": (plain(Decimal.ln), "positive", 300),
    "log(x)": (plain(Decimal.log10), "positive", 300),
    "exp10(x)": (plain(lambda x: Decimal(10) ** x), "small", 300),
    "pow(x,y)": (plain(power), "power", 300),
    "x^y": (plain(power), "power", 300),
}

# Difficult arguments: near multiples of a right angle, near 1, tiny, large.
SPECIAL = {
    "angle": [30.0, 45.0, 60.0, 89.9999, 90.0, 120.0, 179.99999, 180.0, 270.0, 360.0, 720.0, 1e-9, -1e-5, 1e5, -36000.5],
    "ratio": [0.5, -0.5, 1.0, -1.0, 0.999999999, 1e-9, -0.70710678118654757],
    "any": [1.0, -1.0, 1e-9, 1e9, -0.4142135623730951],
    "exponent": [1.0, -1.0, 1e-9, 700.0, -700.0],
    "positive": [2.0, 10.0, 1.0000001, 0.9999999, 1e-300, 1e300, 1000.0],
    "small": [1.0, 2.0, -2.0, 0.5, 300.0, -300.0],
    "power": [(10.0, -2.0), (2.0, 0.5), (10.0, 22.0), (1.0000001, 1e7), (0.1, 3.0), (9.99999, 100.5)],
}


def arguments(kind, count, source):
    draw = {
        "angle": lambda: source.choice([source.uniform(-360, 360), source.uniform(-1e5, 1e5), source.gauss(0, 1)]),
        "ratio": lambda: source.uniform(-1, 1),
        "any": lambda: source.gauss(0, 1) * 10.0 ** source.randint(-6, 6),
        "exponent": lambda: source.choice([source.uniform(-700, 700), source.gauss(0, 2)]),
        "positive": lambda: source.choice([source.uniform(0.5, 2), 10.0 ** source.uniform(-300, 300)]),
        "small": lambda: source.choice([source.uniform(-300, 300), float(source.randint(-300, 300))]),
        "power": lambda: (10.0 ** source.uniform(-3, 3), source.uniform(-90, 90)),
    }[kind]
    for value in SPECIAL[kind] + [draw() for _ in range(count)]:
        yield value if isinstance(value, tuple) else (value,)


def main():
    source = random.Random(1)
    with open(sys.argv[1], "w", encoding="ascii") as output:
        for expression, (function, kind, count) in FUNCTIONS.items():
            for values in arguments(kind, count, source):
                try:
                    result = function(*values)
                except OverflowError:
                    continue
                if math.isfinite(result) and abs(result) > sys.float_info.min:
                    print(expression, *map(bits, values), bits(result), file=output)


main()
