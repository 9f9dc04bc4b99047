#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Checks that a run of the tests reached every line of the sources, and took every branch both ways.

Usage: check.py ROOT REPORT SOURCES...

REPORT is the output of `llvm-cov export --skip-functions`, or a folder with that of `gcov --json-format`. SOURCES are
folders and files below ROOT. Every .cpp file in them must be in the report, except those for another system.

A branch is a condition, or a part of one, at one position in a source. Templates and inline functions are compiled many
times; a branch counts as taken if any copy took it. Not counted as branches: expansions of macros; constants, as in
`if constexpr`; leaving a `switch` without a default by none of its cases, since compiler warnings ensure that it names all
values; and, in a report of gcov, the branches of exceptions.

A line that no test can reach says so, on the line or in a separate comment above it:

    // not covered: REASON

The reason also applies to the lines below that are not reached, up to a blank line or a smaller indentation. Such lines are
counted and printed. A reason at a line that the tests do reach is an error, so that no reason becomes stale.
"""

import collections
import gzip
import json
import pathlib
import re
import sys

REASON = re.compile(r"(?P<code>.*?)//\s*not covered:\s*(?P<reason>\S.*)")
OTHER_SYSTEM = {"llvm": re.compile(r"(Windows|MinGW|Wasm)\.cpp$"), "gcov": re.compile(r"Posix\.cpp$")}


class Coverage:
    """Execution counts of lines and branches, summed over all compiled copies."""

    def __init__(self):
        self.lines = collections.defaultdict(collections.Counter)  # path: {line: count}
        self.branches = collections.defaultdict(collections.Counter)  # path: {(line, column, way): count}


def llvm_line_counts(segments):
    """The count of each line, from the positions at which llvm-cov's count changes."""
    by_line = collections.defaultdict(list)
    for line, _, count, has_count, is_entry, is_gap in segments:
        by_line[line].append((count, has_count, is_entry, is_gap))
    wrapped = None  # the count at the end of the line before
    for line in range(segments[0][0], segments[-1][0] + 1) if segments else ():
        here = by_line[line]
        entries = [count for count, has_count, is_entry, is_gap in here if has_count and is_entry and not is_gap]
        starts_skipped = bool(here) and not here[0][1] and here[0][2]
        if not starts_skipped and (entries or (wrapped is not None and wrapped[1])):
            yield line, max(entries + ([wrapped[0]] if wrapped is not None and wrapped[1] else []))
        if here:
            wrapped = here[-1]


def is_switch(source, line, column):
    """Whether a branch is the one that llvm-cov adds for a switch in which no case matches."""
    return source[line - 1][:column - 1].endswith("switch (")


def read_llvm(report, relative):
    coverage = Coverage()
    for file in report["data"][0]["files"]:
        path = relative(file["filename"])
        if path is None:
            continue
        for line, count in llvm_line_counts(file["segments"]):
            coverage.lines[path][line] += count
        source = pathlib.Path(file["filename"]).read_text(encoding="utf-8").splitlines()
        for line, column, _, _, taken, not_taken, file_id, expanded_id, *_ in file["branches"]:
            if file_id == 0 and expanded_id == 0 and not is_switch(source, line, column):
                coverage.branches[path][line, column, "true"] += taken
                coverage.branches[path][line, column, "false"] += not_taken
    for branches in coverage.branches.values():
        drop_constants(branches)
    return coverage


def drop_constants(branches):
    """Whether a condition that was never evaluated is constant. Otherwise its line, or the condition before it, is reported
    as missed."""
    for line, column, _ in [key for key in branches if key[2] == "true"]:
        ways = [(line, column, way) for way in ("true", "false")]
        if not any(branches[way] for way in ways):
            for way in ways:
                del branches[way]


def read_gcov(reports, relative):
    coverage = Coverage()
    for report in reports:
        for file in report["files"]:
            path = relative(pathlib.Path(report["current_working_directory"], file["file"]))
            if path is None:
                continue
            for line in file["lines"]:
                number = line["line_number"]
                coverage.lines[path][number] += line["count"]
                ways = [branch for branch in line["branches"] if not branch["throw"]]
                for index, branch in enumerate(ways if len(ways) > 1 else ()):
                    coverage.branches[path][number, index, "way"] += branch["count"]
    return coverage


def read_report(path, relative):
    """Returns the kind of a report, and its coverage."""
    if path.is_dir():
        texts = (gzip.decompress(file.read_bytes()) for file in sorted(path.rglob("*.gcov.json.gz")))
        return "gcov", read_gcov((json.loads(text) for text in texts), relative)
    return "llvm", read_llvm(json.loads(path.read_bytes()), relative)


def indentation(line):
    return len(line) - len(line.lstrip())


def reasons_of(source):
    """The lines with a reason for not being covered, and the reason."""
    reasons = {}
    for number, line in enumerate(source, 1):
        match = REASON.match(line)
        if match:
            reasons[number if match["code"].strip() else number + 1] = match["reason"]
    return reasons


def block_from(source, first, missed, counted):
    """The missed lines to which a reason at the first one applies."""
    for number in range(first, len(source) + 1):
        line = source[number - 1]
        if not line.strip() or indentation(line) < indentation(source[first - 1]):
            return
        if number in missed:
            yield number
        elif number in counted:
            return


def sources_below(root, names, kind):
    """The sources that must be in a report."""
    for name in names:
        for file in sorted((root / name).rglob("*.cpp")) if (root / name).is_dir() else [root / name]:
            if not OTHER_SYSTEM[kind].search(file.name):
                yield file.relative_to(root).as_posix()


def column_of(column, way):
    return f"never {way} (column {column})" if way != "way" else f"way {column} never taken"


def check(root, report, names):
    """Yields lines to print; those that begin with a path are faults. The last one is the summary."""
    root = root.resolve()
    chosen = tuple(name + "/" if (root / name).is_dir() else name for name in names)

    def relative(path):
        path = pathlib.Path(path).resolve()
        within = path.relative_to(root).as_posix() if path.is_relative_to(root) else ""
        return within if within.startswith(chosen) else None

    kind, coverage = read_report(report, relative)
    faults, excluded = [], []
    totals = collections.Counter()
    for path in sources_below(root, names, kind):
        if path not in coverage.lines:
            faults.append(f"{path}: not in the report")
    for path in sorted(coverage.lines):
        lines, branches = coverage.lines[path], coverage.branches[path]
        totals.update(lines=len(lines), branches=len(branches))
        missed = collections.defaultdict(list)
        for number in (number for number, count in lines.items() if count == 0):
            missed[number].append("line")
        for number, column, way in (key for key, count in branches.items() if count == 0):
            missed[number].append("branch " + column_of(column, way))
        source = (root / path).read_text(encoding="utf-8").splitlines()
        explained = set()
        for first, reason in sorted(reasons_of(source).items()):
            block = set(block_from(source, first, missed, lines))
            explained |= block
            if block:
                excluded.append(f"  {path}:{first}: {reason}")
            elif first in lines:
                faults.append(f"{path}:{first}: marked as not covered, but covered")
        for number in sorted(missed):
            fate = "excluded" if number in explained else "missed"
            totals[fate + "_lines"] += missed[number].count("line")
            totals[fate + "_branches"] += sum(what != "line" for what in missed[number])
            if number not in explained:
                faults.extend(f"{path}:{number}: {what} not covered" for what in sorted(missed[number]))

    yield from faults
    if excluded:
        yield f"not covered, with a reason, in {len(excluded)} places:"
        yield from excluded
    for what in ("lines", "branches"):
        counted = totals[what] - totals["excluded_" + what]
        covered = counted - totals["missed_" + what]
        percent = 100 * covered / counted if counted else 0
        yield f"{what}: {covered} of {counted} ({percent:.2f} %), {totals['excluded_' + what]} excluded"
    yield "covered" if not faults and totals["lines"] else "NOT COVERED"


def main():
    last = ""
    for last in check(pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]), sys.argv[3:]):
        print(last)
    return 0 if last == "covered" else 1


if __name__ == "__main__":
    sys.exit(main())
