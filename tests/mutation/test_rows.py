# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Tests of rows.py."""

import unittest

from mutants import Mutant
from rows import FAILED_ROW, TABLE, Rows

PRINTED = """[ RUN      ] Conversions.YieldTheBitsOfTheWrittenSteps
tests/vocabulary/ConversionTests.cpp:159: Failure
Value of: yields(find(symbol), {argument}, expected)
  Actual: false
Google Test trace:
tests/vocabulary/ConversionTests.cpp:83: d2g
[  FAILED  ] Conversions.YieldTheBitsOfTheWrittenSteps (1 ms)
"""


def of_row(symbol, line, new):
    return Mutant(TABLE, line, 0, 0, "", f'CONVERSION(Angle,  Class, L"{symbol}", x * 2.0)', new, 1)


class Table(Rows):
    """Needs no build: a mutant shows if its line has an even number."""

    def __init__(self):
        self.builds = []
        self.workspace = self
        self.text = ""

    def write(self, _name, _content):
        pass

    def failing(self, mutants):
        self.builds.append(sorted(mutant.new for mutant in mutants))
        return {mutant.old.split('"')[1] for mutant in mutants if mutant.line % 2 == 0}


class RowsTest(unittest.TestCase):
    def test_failures_name_their_rows(self):
        self.assertEqual(FAILED_ROW.findall(PRINTED), ["d2g"])

    def test_only_rows_of_the_table_are_tried(self):
        self.assertTrue(Rows.holds(of_row("d2g", 1, "x")))
        self.assertFalse(Rows.holds(Mutant(TABLE, 1, 0, 0, "", "return x * 2.0;", "return x / 2.0;", 1)))
        self.assertFalse(Rows.holds(Mutant("Other.h", 1, 0, 0, "", 'CONVERSION(Angle, C, L"d2g", x)', "", 1)))

    def test_a_build_has_one_mutant_of_each_row(self):
        table, fates = Table(), {}
        table.tried([of_row("d2g", 2, "a"), of_row("d2g", 2, "b"), of_row("d2c", 3, "c")],
                    lambda fate, mutant: fates.update({mutant.new: fate}))
        self.assertEqual(sorted(len(build) for build in table.builds), [1, 2])
        self.assertEqual(sorted(sum(table.builds, [])), ["a", "b", "c"])
        self.assertEqual(fates, {"a": "noticed, vocabulary_tests failed:", "b": "noticed, vocabulary_tests failed:",
                                 "c": "survived"})


if __name__ == "__main__":
    unittest.main()
