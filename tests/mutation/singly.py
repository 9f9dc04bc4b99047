# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Tries mutants one by one, in the tree of together.py: each replaces its source, dependent files are built again, and
the tests run until one fails. Used for mutants that cannot be chosen at run time: constants that the compiler
evaluates, and changes that do not compile within an expression.

The library that is built is first compared with that of the unchanged source. They are equal if the change is in code of other
systems or compilers, or if the compiler makes the same code of both."""

import collections
import os

from mutants import ROOT


class Singly:
    def __init__(self, together):
        self.together = together
        self.workspace = together.workspace
        self.path = None  # of the source without choices at run time
        self.library = b""  # built while that source is unchanged
        self.noticing = collections.defaultdict(self.groups)  # by folder, tests that noticed last first

    def groups(self):
        """All tests. Those of CTest come last, since they need everything built."""
        return sorted(self.together.groups(self.together.tests), key=lambda group: group[1][0].program is None)

    def built(self, target):
        return self.workspace.built(target, self.together.jobs)

    def begin(self, path):
        """Restores the previous source, and builds the library with this one unchanged."""
        if self.path in self.together.sources:
            self.workspace.write(self.path, self.together.sources[self.path].text.encode("ascii"))
        elif self.path is not None:  # it has no choices at run time
            self.workspace.write(self.path, (ROOT / self.path).read_bytes())
        self.path = path
        self.workspace.write(path, (ROOT / path).read_bytes())
        if not self.built("mathexpr"):
            raise SystemExit(f"mutate: the library does not build with {path} unchanged")
        self.library = self.built_library()

    def built_library(self):
        return (self.workspace.build / "lib/libmathexpr.so").read_bytes()

    def fate_of_build(self, mutant):
        """Builds the library with a mutant. None if the outcome depends on the tests."""
        if mutant.path != self.path:
            self.begin(mutant.path)
        self.workspace.write(mutant.path, mutant.apply((ROOT / mutant.path).read_text("ascii")).encode("ascii"))
        if not self.built("mathexpr"):
            return "not compiled"
        return "without effect" if self.built_library() == self.library else None

    def fate(self, mutant):
        return self.fate_of_build(mutant) or self.fate_of_tests(mutant)

    def fate_of_tests(self, mutant):
        groups = self.noticing[os.path.dirname(mutant.path)]
        for place, (seconds, tests) in enumerate(groups):
            if not self.built(tests[0].program or "all"):
                return "not compiled"
            result = self.together.outcome_of(tests, seconds, self.workspace.environment)
            if result is not None:
                groups.insert(0, groups.pop(place))
                return f"noticed, {tests[0].program or tests[0].name} {result}:"
        return "survived"
