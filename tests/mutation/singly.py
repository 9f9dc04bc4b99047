# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Tries mutants one by one, in the tree of together.py: each replaces its source, what depends on it is built again, and the
tests run until one notices. For what cannot be chosen at run time: constants that the compiler evaluates, and changes that do
not compile within an expression.

Object files are compared with those of the unchanged source. They are equal if the change is in code of other systems or
compilers, or if the compiler evaluates both to the same value."""

import collections
import hashlib
import os

from mutants import ROOT


class Singly:
    def __init__(self, together):
        self.together = together
        self.workspace = together.workspace
        self.path = None  # of the source without choices at run time
        self.objects = {}  # digests of all object files while that source is unchanged
        self.noticing = collections.defaultdict(self.groups)  # by folder, tests that noticed last first

    def groups(self):
        """All tests. Those of CTest come last, since they need everything built."""
        return sorted(self.together.groups(self.together.tests), key=lambda group: group[1][0].program is None)

    def built(self, target):
        return self.workspace.built(target, self.together.jobs)

    def begin(self, path):
        """Restores the previous source, and builds everything with this one unchanged."""
        if self.path in self.together.sources:
            self.workspace.write(self.path, self.together.sources[self.path].text.encode("ascii"))
        elif self.path is not None:  # it has no choices at run time
            self.workspace.write(self.path, (ROOT / self.path).read_bytes())
        self.path = path
        self.workspace.write(path, (ROOT / path).read_bytes())
        if not self.built("all"):
            raise SystemExit(f"mutate: the tree does not build with {path} unchanged")
        self.objects = self.digests()

    def digests(self):
        return {file: hashlib.sha256(file.read_bytes()).digest() for file in self.workspace.build.rglob("*.o")}

    def fate(self, mutant):
        if mutant.path != self.path:
            self.begin(mutant.path)
        self.workspace.write(mutant.path, mutant.apply((ROOT / mutant.path).read_text("ascii")).encode("ascii"))
        if mutant.path.endswith(".cpp"):  # a header may also have an effect on the tests' own object files
            if not self.built("mathexpr"):
                return "not compiled"
            if self.digests() == self.objects:
                return "without effect"
        groups = self.noticing[os.path.dirname(mutant.path)]
        for place, (seconds, tests) in enumerate(groups):
            if not self.built(tests[0].program or "all"):
                return "not compiled"
            result = self.together.outcome_of(tests, seconds, self.workspace.environment)
            if result is not None:
                groups.insert(0, groups.pop(place))
                return f"noticed, {tests[0].program or tests[0].name} {result}:"
        return "without effect" if self.digests() == self.objects else "survived"
