# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Tests check.py: it accepts covered sources, finds lines that are not covered, and refuses stale reasons."""

import gzip
import json
import pathlib
import tempfile
import unittest

import check

SOURCE = """int sign(int x)
{
    if (x < 0)
    {
        return -1;
    }
    return 1;
}
"""


def segments(negative, positive):
    """A report of llvm-cov on SOURCE, with a count for each of the returning lines."""
    return [[2, 1, negative + positive, True, True, False], [3, 9, negative + positive, True, True, False],
            [3, 14, negative + positive, True, False, False], [3, 15, negative, True, True, True],
            [4, 5, negative, True, True, False],
            [6, 6, positive, True, False, True], [7, 5, positive, True, True, False], [8, 2, 0, False, False, False]]


def llvm(*files):
    return {"data": [{"files": [{"filename": name, "segments": parts, "branches": branches}
                                for name, parts, branches in files]}]}


def gcov(folder, lines):
    return {"current_working_directory": str(folder), "files": [{"file": "lib/sign.cpp", "lines": [
        {"line_number": number, "count": count,
         "branches": [{"count": taken, "throw": throw, "fallthrough": False} for taken, throw in branches]}
        for number, count, branches in lines]}]}


class Check(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name).resolve()
        (self.root / "lib").mkdir()
        self.write(SOURCE)

    def write(self, text, name="sign.cpp"):
        (self.root / "lib" / name).write_text(text, encoding="utf-8")
        return str(self.root / "lib" / name)

    def check_llvm(self, *copies):
        """Checks a report with the counts (negative, positive) of each compiled copy."""
        name = str(self.root / "lib" / "sign.cpp")
        branches = [[3, 9, 3, 14, negative, positive, 0, 0, 4] for negative, positive in copies]
        sums = [sum(copy[way] for copy in copies) for way in (0, 1)]
        return self.check_report(llvm((name, segments(*sums), branches)))

    def check_report(self, report):
        path = self.root / "report.json"
        path.write_text(json.dumps(report), encoding="utf-8")
        return list(check.check(self.root, path, ["lib"]))

    def check_gcov(self, *reports):
        folder = self.root / "gcov"
        folder.mkdir(exist_ok=True)
        for number, lines in enumerate(reports):
            data = gzip.compress(json.dumps(gcov(self.root, lines)).encode())
            (folder / f"{number}.gcov.json.gz").write_bytes(data)
        return list(check.check(self.root, folder, ["lib"]))

    def test_covered(self):
        self.assertEqual(self.check_llvm((1, 2)), [
            "lines: 7 of 7 (100.00 %), 0 excluded", "branches: 2 of 2 (100.00 %), 0 excluded", "covered"])

    def test_copies_count_together(self):
        self.assertEqual(self.check_llvm((1, 0), (0, 1))[-1], "covered")
        self.assertEqual(self.check_llvm((0, 3), (0, 1)), [
            "lib/sign.cpp:3: branch never true (column 9) not covered", "lib/sign.cpp:4: line not covered",
            "lib/sign.cpp:5: line not covered", "lib/sign.cpp:6: line not covered",
            "lines: 4 of 7 (57.14 %), 0 excluded", "branches: 1 of 2 (50.00 %), 0 excluded", "NOT COVERED"])

    def test_branch_alone(self):
        self.write("int sign(int x) { return x < 0 ? -1 : 1; }\n")
        report = llvm((str(self.root / "lib" / "sign.cpp"), [[1, 17, 5, True, True, False], [1, 45, 0, False, False, False]],
                       [[1, 26, 1, 31, 0, 5, 0, 0, 4]]))
        self.assertEqual(self.check_report(report)[0], "lib/sign.cpp:1: branch never true (column 26) not covered")

    def test_constants_are_no_branches(self):
        self.write("int one() { if constexpr (true) { return 1; } }\n")
        report = llvm((str(self.root / "lib" / "sign.cpp"), [[1, 11, 5, True, True, False], [1, 48, 0, False, False, False]],
                       [[1, 27, 1, 31, 0, 0, 0, 0, 4]]))
        self.assertEqual(self.check_report(report), [
            "lines: 1 of 1 (100.00 %), 0 excluded", "branches: 0 of 0 (0.00 %), 0 excluded", "covered"])

    def test_the_way_past_all_cases_is_no_branch(self):
        self.write("int same(Way way) { switch (way) { case One: return 1; case Two: return 2; } }\n")
        report = llvm((str(self.root / "lib" / "sign.cpp"), [[1, 19, 5, True, True, False], [1, 79, 0, False, False, False]],
                       [[1, 29, 1, 32, 0, 5, 0, 0, 4], [1, 36, 1, 44, 5, 0, 0, 0, 4], [1, 56, 1, 64, 0, 5, 0, 0, 4]]))
        self.assertEqual(self.check_report(report)[:-3], [
            "lib/sign.cpp:1: branch never false (column 36) not covered",
            "lib/sign.cpp:1: branch never true (column 56) not covered"])

    def test_reasons(self):
        self.write(SOURCE.replace("(x < 0)", "(x < 0)  // not covered: nobody asks"))
        self.assertEqual(self.check_llvm((0, 2)), [
            "not covered, with a reason, in 1 places:", "  lib/sign.cpp:3: nobody asks",
            "lines: 4 of 4 (100.00 %), 3 excluded", "branches: 1 of 1 (100.00 %), 1 excluded", "covered"])

    def test_a_reason_ends_with_its_block(self):
        self.write(SOURCE.replace("return -1;", "return -1;  // not covered: nobody asks"))
        self.assertEqual(self.check_llvm((0, 2))[:-3], [
            "lib/sign.cpp:3: branch never true (column 9) not covered", "lib/sign.cpp:4: line not covered",
            "lib/sign.cpp:6: line not covered",
            "not covered, with a reason, in 1 places:", "  lib/sign.cpp:5: nobody asks"])
        self.write(SOURCE.replace("{\n    if", "{  // not covered: nobody asks\n    if"))
        self.assertEqual(self.check_llvm((0, 2))[:2], [
            "lib/sign.cpp:2: marked as not covered, but covered",
            "lib/sign.cpp:3: branch never true (column 9) not covered"])

    def test_a_reason_above_a_block(self):
        self.write("// not covered: there is no host\nint zero()\n{\n    return 0;\n}\n\nint one() { return 1; }\n")
        report = llvm((str(self.root / "lib" / "sign.cpp"),
                       [[3, 1, 0, True, True, False], [5, 2, 0, False, False, False],
                        [7, 11, 0, True, True, False], [7, 24, 0, False, False, False]], []))
        self.assertEqual(self.check_report(report)[:-1], [
            "lib/sign.cpp:7: line not covered",
            "not covered, with a reason, in 1 places:", "  lib/sign.cpp:2: there is no host",
            "lines: 0 of 1 (0.00 %), 3 excluded", "branches: 0 of 0 (0.00 %), 0 excluded"])

    def test_a_reason_needs_words(self):
        self.write(SOURCE.replace("(x < 0)", "(x < 0)  // not covered:"))
        self.assertEqual(self.check_llvm((0, 2))[-1], "NOT COVERED")

    def test_a_reason_that_outlived_its_line(self):
        self.write(SOURCE.replace("return -1;", "return -1;  // not covered: nobody asks"))
        self.assertEqual([self.check_llvm((1, 2))[at] for at in (0, -1)], [
            "lib/sign.cpp:5: marked as not covered, but covered", "NOT COVERED"])

    def test_what_was_not_measured(self):
        self.write("int other() { return 0; }\n", "other.cpp")
        self.write("int system() { return 0; }\n", "otherWindows.cpp")
        self.write("int module() { return 0; }\n", "otherWasm.cpp")
        self.assertEqual([self.check_llvm((1, 2))[at] for at in (0, -1)], [
            "lib/other.cpp: not in the report", "NOT COVERED"])
        self.assertEqual(self.check_report(llvm())[-1], "NOT COVERED")

    def test_other_folders_are_not_looked_at(self):
        (self.root / "tests").mkdir()
        report = llvm((str(self.root / "lib" / "sign.cpp"), segments(1, 1), []),
                      (str(self.root / "tests" / "sign.cpp"), segments(0, 0), []))
        self.assertEqual(self.check_report(report)[-1], "covered")

    def test_gcov(self):
        covered = [(1, 3, []), (3, 3, [(2, False), (1, False)]), (5, 2, []), (7, 1, [(1, False), (0, True)])]
        self.assertEqual(self.check_gcov(covered), [
            "lines: 4 of 4 (100.00 %), 0 excluded", "branches: 2 of 2 (100.00 %), 0 excluded", "covered"])
        missed = [(1, 1, []), (3, 1, [(0, False), (1, False)]), (5, 0, []), (7, 1, [])]
        self.assertEqual(self.check_gcov(missed)[:-3], [
            "lib/sign.cpp:3: branch way 0 never taken not covered", "lib/sign.cpp:5: line not covered"])
        self.assertEqual(self.check_gcov(missed, covered)[-1], "covered")


if __name__ == "__main__":
    unittest.main()
