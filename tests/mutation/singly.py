# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Tries mutants one by one, in the tree of together.py: each replaces its source, what depends on it is built again, and the
tests run until one notices. For what cannot be chosen at run time: constants that the compiler evaluates, and changes that do
not compile within an expression."""

import collections
import os

from mutants import ROOT


class Singly:
    def __init__(self, together):
        self.together = together
        self.workspace = together.workspace
        self.changed = None
        self.noticing = collections.defaultdict(self.groups)  # by folder, tests that noticed last first

    def groups(self):
        """All tests. Those of CTest come last, since they need everything built."""
        return sorted(self.together.groups(self.together.tests), key=lambda group: group[1][0].program is None)

    def put(self, mutant):
        """Writes the mutant's source, and restores that of the previous mutant."""
        if self.changed not in (None, mutant.path):
            self.workspace.write(self.changed, self.together.sources[self.changed].text.encode("ascii"))
        self.workspace.write(mutant.path, mutant.apply((ROOT / mutant.path).read_text("ascii")).encode("ascii"))
        self.changed = mutant.path

    def fate(self, mutant):
        self.put(mutant)
        groups = self.noticing[os.path.dirname(mutant.path)]
        for place, (seconds, tests) in enumerate(groups):
            if not self.workspace.built(tests[0].program or "all", self.together.jobs):
                return "not compiled"
            result = self.together.outcome_of(tests, seconds, self.workspace.environment)
            if result is not None:
                groups.insert(0, groups.pop(place))
                return f"noticed, {tests[0].program or tests[0].name} {result}:"
        return "survived"
