# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Tests of schemata.py: where the operands of a mutant begin and end, and what is left out."""

import unittest

from mutants import mutants_of
from schemata import Mutated

HEAD = "// licence\nvoid f()\n{\n"
TAIL = "\n}\n"


def mutated(code, *news):
    """The statement with the mutants whose changed line is one of `news`, numbered from 0 in the order of the text; and whether
    all of them fit."""
    text = HEAD + code + TAIL
    lines = {line.strip() for line in news}
    mutants = dict(enumerate(mutant for mutant in mutants_of("file.cpp", text) if mutant.new in lines))
    assert len(mutants) == len(lines), [mutant.new for mutant in mutants_of("file.cpp", text)]
    result = Mutated(text, mutants)
    assert result.text.startswith('#include "MutantChoice.h"\nvoid f()\n{\n') and result.text.endswith(TAIL)
    return result.text[len('#include "MutantChoice.h"') + len(HEAD) - len("// licence") : -len(TAIL)], not result.left


class Extents(unittest.TestCase):
    def check(self, code, new, expected):
        self.assertEqual(mutated(code, new), (expected, True))

    def test_precedence_bounds_operands(self):
        self.check("x = a + b * c - d;", "x = a + b / c - d;", "x = a + (isMutant(0) ? b / c : b * c) - d;")
        self.check("x = a + b * c - d;", "x = a + b * c + d;", "x = (isMutant(0) ? a + b * c + d : a + b * c - d);")
        self.check("x = a + b * c - d;", "x = a - b * c - d;", "x = (isMutant(0) ? a - b * c : a + b * c) - d;")
        self.check("return a && b == c;", "return a && b != c;", "return a && (isMutant(0) ? b != c : b == c);")
        self.check("x = c ? a + b : d;", "x = c ? a - b : d;", "x = c ? (isMutant(0) ? a - b : a + b) : d;")

    def test_brackets_belong_to_operands(self):
        self.check("x = std::pair<int, int>(a, b) + c[i];", "x = std::pair<int, int>(a, b) - c[i];",
                   "x = (isMutant(0) ? std::pair<int, int>(a, b) - c[i] : std::pair<int, int>(a, b) + c[i]);")
        self.check("x = S{a} == [&](int c) { return S{c}; }(d);", "x = S{a} != [&](int c) { return S{c}; }(d);",
                   "x = (isMutant(0) ? S{a} != [&](int c) { return S{c}; }(d) : S{a} == [&](int c) { return S{c}; }(d));")

    def test_shifts_are_no_brackets(self):
        self.check("x = a && b >> c == d;", "x = a && b >> c != d;", "x = a && (isMutant(0) ? b >> c != d : b >> c == d);")

    def test_statements_bound_operands(self):
        self.check("{\n}\na += b;", "a -= b;", "{\n}\n(isMutant(0) ? a -= b : a += b);")
        self.check("for (; i < n; ++i)\n{\n}", "for (; i <= n; ++i)", "for (; (isMutant(0) ? i <= n : i < n); ++i)\n{\n}")

    def test_increments(self):
        self.check("*p.q++ = r;", "*p.q-- = r;", "*(isMutant(0) ? p.q-- : p.q++) = r;")
        self.check("++a[i].b;", "--a[i].b;", "(isMutant(0) ? --a[i].b : ++a[i].b);")

    def test_conditions_and_negations(self):
        self.check("if (a)\n{\n}", "if (!(a))", "if (isMutant(0) != static_cast<bool>(a))\n{\n}")
        self.check("x = !a.b(c) && d;", "x = a.b(c) && d;", "x = (isMutant(0) != !a.b(c)) && d;")

    def test_constants(self):
        self.check("x = 1.5e3;", "x = 2.5e3;", "x = (isMutant(0) ? 2.5e3 : 1.5e3);")
        self.check("x = true;", "x = false;", "x = (isMutant(0) ? false : true);")

    def test_removed_calls(self):
        self.check("    a.b(c);", ";", "    { if (!isMutant(0)) a.b(c); }")

    def test_nested_mutants(self):
        code, fits = mutated("if (a + 1 == b)\n{\n}", "if (a - 1 == b)", "if (a + 2 == b)", "if (a + 1 != b)",
                             "if (!(a + 1 == b))")
        self.assertTrue(fits)
        self.assertEqual(code, "if (isMutant(0) != static_cast<bool>((isMutant(3) ? a + 1 != b : "
                               "(isMutant(1) ? a - 1 : a + (isMutant(2) ? 2 : 1)) == b)))\n{\n}")

    def test_lines_keep_their_numbers(self):
        self.check("x = a  // first\n    + b;", "- b;", "x = (isMutant(0) ? a       - b : a  // first\n    + b);")

    def test_a_declared_variable_does_not_fit(self):
        self.assertFalse(mutated("if (int* a = b())\n{\n}", "if (!(int* a = b()))")[1])

    def test_what_the_compiler_runs_does_not_fit(self):
        self.assertFalse(mutated("int g()  // not covered: runs while compiling\n    x = a + b;", "x = a - b;")[1])


class Faults(unittest.TestCase):
    def test_an_error_is_about_the_innermost_mutant_or_its_line(self):
        text = HEAD + "x = a + 1;\ny = 2;" + TAIL
        result = Mutated(text, dict(enumerate(mutants_of("file.cpp", text))))
        line = result.text.split("\n")[3]
        self.assertEqual(result.at_fault(4, line.index("? 2 : 1") + 3), {1})
        self.assertEqual(result.at_fault(4, line.index("a + ") + 1), {0})
        self.assertEqual(result.at_fault(4, 1), {0, 1})
        self.assertEqual(result.at_fault(2, 1), set())


if __name__ == "__main__":
    unittest.main()
