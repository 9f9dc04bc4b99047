#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Computes the expected results of the unit conversions, with one plain double operation after another.

    conversions_reference.py FORMULAS OUTPUT

FORMULAS is conversion_formulas.txt. OUTPUT gets two kinds of lines, which ConversionTests.cpp reads:

    conversion SYMBOL KIND ROUNDING MISMATCH
        KIND is converted, flag-zero or copied. ROUNDING bounds the relative error that the operations and the constants'
        own rounding can cause, to first order. MISMATCH is how far the formula's constants are from the units' sizes.
    value SYMBOL ARGUMENT RESULT [HIGH LOW]
        The bits of x before and after. HIGH + LOW is the exact product of the argument and the units' ratio; both are
        absent where the argument is not of a common size.
"""

import math
import random
import struct
import sys
from fractions import Fraction

PI = Fraction("3.14159265358979323846264338327950288419716939937510582097494459")
HALF_UNIT = Fraction(1, 2**53)
SMALLEST_NORMAL = 2.0**-1022

COMMON = [1.0, 0.1, 2.0 / 3.0, -1.0, 3.0, 1000.0, 123456.789, -0.000123]
EXTREME = [
    0.0,
    -0.0,
    1e-300,
    -1e300,
    sys.float_info.max,
    SMALLEST_NORMAL,
    math.ulp(0.0),
    -(SMALLEST_NORMAL - math.ulp(0.0)),
    math.inf,
    -math.inf,
    math.nan,
]


def bits(value):
    return struct.pack(">d", value).hex()


def from_bits(pattern):
    return struct.unpack(">d", struct.pack(">Q", pattern))[0]


def exact(literal):
    return Fraction(648000) / PI if literal == "648000/pi" else Fraction(literal)


def read(path):
    sizes, factors, formulas, copied, excluded = {}, {}, {}, [], []
    with open(path, encoding="ascii") as lines:
        for line in lines:
            words = line.split("#")[0].split()
            if not words:
                continue
            if words[0] == "size":
                sizes[words[2]] = (words[1], words[3])
            elif words[0] == "factor":
                factors[words[1]] = words[2]
            elif words[0] == "copied-angles":
                copied = words[1:]
            elif words[0] == "no-conversions":
                excluded = words[1:]
            else:
                symbol, equals, *formula = words
                assert equals == "=" and symbol not in formulas, line
                formulas[symbol] = formula
    for source, source_factor in factors.items():
        for target, target_factor in factors.items():
            symbol = f"{source}2{target}"
            if symbol in copied:
                formulas[symbol] = ["copied"]
            elif symbol not in excluded:
                formulas[symbol] = ["x", "*", source_factor, "/", target_factor]
    return sizes, formulas


class Conversion:
    def __init__(self, symbol, formula, sizes):
        self.symbol = symbol
        self.kind = "converted"
        if formula == ["copied"]:
            self.kind, formula = "copied", ["x"]
        if formula[-2:] == ["flag", "0"]:
            self.kind, formula = "flag-zero", formula[:-2]
        assert formula[0] == "x" and len(formula) % 2 == 1, symbol
        self.steps = list(zip(formula[1::2], formula[2::2]))
        source, target = symbol.split("2")
        assert sizes[source][0] == sizes[target][0], symbol
        self.source_size = exact(sizes[source][1])
        self.ratio = self.source_size / exact(sizes[target][1])

    def compute(self, x):
        for operator, literal in self.steps:
            x = x * float(literal) if operator == "*" else x / float(literal)
        return x

    def constants(self):
        """Each constant as written, and its exact value. The exact value of the radian is irrational."""
        for operator, literal in self.steps:
            meant = exact("648000/pi") if literal == "206264.80624709636" else Fraction(literal)
            yield operator, literal, meant

    def rounding(self):
        total = Fraction(0)
        for _, literal, meant in self.constants():
            total += HALF_UNIT + abs(Fraction(float(literal)) - meant) / meant
        return total

    def mismatch(self):
        product = Fraction(1)
        for operator, _, meant in self.constants():
            product = product * meant if operator == "*" else product / meant
        return abs(product - self.ratio) / self.ratio

    def arguments(self):
        generator = random.Random(self.symbol)
        common = COMMON + [float(self.source_size)]
        common += [generator.uniform(-1, 1) * 10.0 ** generator.randint(-12, 12) for _ in range(16)]
        return common, EXTREME + [from_bits(generator.getrandbits(64)) for _ in range(16)]

    def lines(self):
        yield f"conversion {self.symbol} {self.kind} {float(self.rounding())!r} {float(self.mismatch())!r}"
        common, extreme = self.arguments()
        for x in common:
            product = Fraction(x) * self.ratio
            high = float(product)
            low = float(product - Fraction(high))
            yield f"value {self.symbol} {bits(x)} {bits(self.compute(x))} {bits(high)} {bits(low)}"
        for x in extreme:
            yield f"value {self.symbol} {bits(x)} {bits(self.compute(x))}"


def main():
    formulas_path, output_path = sys.argv[1:]
    sizes, formulas = read(formulas_path)
    with open(output_path, "w", encoding="ascii") as output:
        for symbol, formula in formulas.items():
            for line in Conversion(symbol, formula, sizes).lines():
                print(line, file=output)


if __name__ == "__main__":
    main()
