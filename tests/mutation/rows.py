# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Tries the mutants of the table of conversions, in the tree of together.py. The compiler evaluates the constants of a
row, so no mutant can be chosen at run time. But rows are independent, and the test of their values names each row that
fails. So one build contains a mutant of every row."""

import re
import subprocess

from mutants import ROOT

TABLE = "MTParserLib/vocabulary/ConversionTable.h"
PROGRAM = "vocabulary_tests"
TEST = "Conversions.YieldTheBitsOfTheWrittenSteps"
ROW = re.compile(r'CONVERSION\(\w+, *\w+, *L"(?P<symbol>\w+)"')
FAILED_ROW = re.compile(r"^Google Test trace:\n\S+: (?P<symbol>\w+)$", re.MULTILINE)


class Rows:
    def __init__(self, together):
        self.workspace = together.workspace
        self.jobs = together.jobs
        self.text = together.sources[TABLE].text

    @staticmethod
    def holds(mutant):
        return mutant.path == TABLE and ROW.match(mutant.old) is not None

    def tried(self, mutants, report):
        """Tries mutants of rows, in as many builds as the row with most of them has mutants."""
        waiting = sorted(mutants)
        while waiting:
            by_line = {mutant.line: mutant for mutant in waiting}
            failed = self.failing(by_line.values())
            for mutant in by_line.values():
                if ROW.match(mutant.old)["symbol"] in failed:
                    report(f"noticed, {PROGRAM} failed:", mutant)
                else:
                    report("survived", mutant)
            waiting = [mutant for mutant in waiting if mutant not in by_line.values()]
        self.workspace.write(TABLE, self.text.encode("ascii"))

    def failing(self, mutants):
        """The symbols of the rows whose values are wrong in a build with these mutants."""
        text = (ROOT / TABLE).read_text("ascii")
        for mutant in sorted(mutants, key=lambda mutant: mutant.start, reverse=True):
            text = mutant.apply(text)
        self.workspace.write(TABLE, text.encode("ascii"))
        if not self.workspace.built(PROGRAM, self.jobs):
            raise SystemExit(f"mutate: {PROGRAM} does not build with changes of the conversions")
        command = [self.workspace.build / "bin" / PROGRAM, f"--gtest_filter={TEST}"]
        printed = subprocess.run(command, cwd=self.workspace.build, env=self.workspace.environment, stdout=subprocess.PIPE,
                                 check=False, text=True).stdout
        failed = {row["symbol"] for row in FAILED_ROW.finditer(printed)}
        unchanged = failed - {ROW.match(mutant.old)["symbol"] for mutant in mutants}
        if unchanged:
            raise SystemExit(f"mutate: these conversions fail without a change: {' '.join(sorted(unchanged))}")
        return failed
