#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Changes one operator, constant or condition of the library at a time, and counts which changes the tests notice.

Usage: mutate.py [--seed N] [--jobs N] [--again | --resume] [--only PREFIX]... FOLDER [COUNT]

Of all places where one of RULES applies, a seed chooses COUNT (560 unless given), in the files of any PREFIX. Each is changed
alone, in a copy of the working tree in FOLDER; what depends on it is built again, and the tests run until one fails, crashes,
or exceeds its time or its memory. Those that noticed the last mutants of the same folder run first. A change that does not
compile is no mutant. FOLDER/results.txt lists the outcomes; --resume continues with mutants that it does not contain, and
--again also tries its survivors again. survivors.txt beside this script lists accepted survivors with their reasons; --again
does not try them. Fails if less than 95 % of the mutants are noticed, or if one survives that is not listed.
"""

import argparse
import collections
import dataclasses
import filecmp
import hashlib
import os
import pathlib
import queue
import re
import resource
import shutil
import signal
import subprocess
import sys
import threading
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
SURVIVORS = pathlib.Path(__file__).with_name("survivors.txt")
QUICK = pathlib.Path(__file__).with_name("QuickToBuild.cmake")
MUTATED = ("MTParserLib/**/*.cpp", "MTParserLib/**/*.h", "mathexpr/**/*.cpp")
SKIPPED = ("Windows.cpp", "MinGW.cpp")  # not built here
SHARE = 0.08  # upper bound on the part of the mutants in one file: the table of conversions has hundreds of constants
ENOUGH = 0.95

# Quick to build and to run: this measures whether the tests notice, not how a change is optimised.
CONFIGURATION = ("-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=-O1", "-DCMAKE_CXX_FLAGS=-w -D_GLIBCXX_ASSERTIONS",
                 "-DCMAKE_C_COMPILER=clang", "-DCMAKE_CXX_COMPILER=clang++", "-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld",
                 "-DCMAKE_SHARED_LINKER_FLAGS=-fuse-ld=lld", "-DMATHEXPR_CHECK_HANDLES=ON")

# Test programs, in an order that notices mutants early; each is built only if those before it noticed nothing.
PROGRAMS = ("language_tests", "program_tests", "additions_tests", "engine_tests", "unit_tests", "failure_tests",
            "floating_point_tests", "robustness_tests", "registrar_shortage_tests", "message_display_tests",
            "memory_tests", "boundary_tests", "unicode_tests", "reference_tests", "vocabulary_tests",
            "c_thread_tests", "thread_tests", "value_text_tests", "end_of_process_tests", "unloading_tests",
            "cpp_host_tests", "editor_tests")
# Other tests of CTest. The longest texts are omitted, for their time, and so are tests of tools.
OTHERS = "^(c_tests|exported_names|calculator|fuzz|initialized_bytes|readme_host|vocabulary_page)"

# Numbers of generated texts to compare with the reference; those of ./dev test would take too long.
COMPARISONS = {"MATHEXPR_DIFFERENTIAL_EXPRESSIONS": "2000", "MATHEXPR_DIFFERENTIAL_COUNT": "1000",
               "MATHEXPR_DIFFERENTIAL_CALLS": "200"}
MEMORY = 6 << 30    # bytes of address space of a test
BUILD_SECONDS = 600
WALL_SECONDS = 300  # for a test that waits without using the processor

COMMENT_OR_TEXT = re.compile(
    r"""//[^\n]* | /\*.*?\*/ | L?"(?:\\.|[^"\\\n])*" | \bL?'(?:\\.|[^'\\\n])+' | ^[ ]*\#(?:\\\n|[^\n])*"""
    r"""| ^[ ]*template\b[^;{]*\bconcept\b[^;{]*(?:;|\{.*?^\};) | ^[ ]*(?:static_assert|template|using)\b[^;{]*""",
    re.VERBOSE | re.DOTALL | re.MULTILINE)  # fmt: skip
# As coverage has it, but for what compilers run, whose changes show.
NOT_COVERED = re.compile(r"^( *)[^\n]*// not covered: (?!runs while compiling)[^\n]*\n(?:\1 *\S[^\n]*\n)*", re.MULTILINE)


def swap(*pairs):
    """Rules that replace a binary operator by its counterpart. The formatter puts blanks around those, and only those."""
    return [(re.compile(rf"(?<= ){re.escape(a)}(?= |\n)"), lambda m, b=b: b) for pair in pairs for a, b in (pair, pair[::-1])]


def next_number(match):
    return str(int(match[0]) + 1)


RULES = [
    *swap(("==", "!="), ("<", "<="), (">", ">="), ("+", "-"), ("*", "/"), ("&&", "||"), ("+=", "-="), ("*=", "/=")),
    (re.compile(r"\btrue\b"), lambda _: "false"),
    (re.compile(r"\bfalse\b"), lambda _: "true"),
    (re.compile(r"\+\+"), lambda _: "--"),
    (re.compile(r"--"), lambda _: "++"),
    (re.compile(r"(?<![\w.'])\d+(?![\w'])"), next_number),              # also the digits before the decimal point
    (re.compile(r"(?<=[(! ])!(?=[\w(])"), lambda _: ""),
    (re.compile(r"(?<=^)(?P<indent> +)[\w.>:-]+\([^;{}\n]*\);$", re.MULTILINE), lambda m: m["indent"] + ";"),
]
CONDITION = re.compile(r"\b(?:if|while) (?:constexpr )?\(")


@dataclasses.dataclass(frozen=True, order=True)
class Mutant:
    path: str
    line: int
    start: int
    end: int
    after: str
    old: str  # the line before and after the change
    new: str
    occurrence: int  # 1 unless the same change can be made to an equal line before it

    def place(self):
        return self.path if self.occurrence == 1 else f"{self.path}#{self.occurrence}"

    def key(self):
        """A unique key, which is stable when the file changes elsewhere."""
        return self.place(), self.old, self.new

    def apply(self, text):
        return text[: self.start] + self.after + text[self.end :]

    def __str__(self):
        return f"{self.place()}:{self.line}\n- {self.old}\n+ {self.new}\n"


def masked(text):
    """The text with blanks in place of everything that is not code, or never runs."""
    for hidden in (NOT_COVERED, COMMENT_OR_TEXT):
        text = hidden.sub(lambda match: re.sub(r"[^\n]", "\0", match[0]), text)
    return text


def closing(text, opening):
    """Position at which the bracket opened at a position is closed."""
    depth = 0
    for place in range(opening, len(text)):
        depth += {"(": 1, ")": -1}.get(text[place], 0)
        if depth == 0:
            return place
    raise ValueError("a bracket is not closed")


def mutants_of(path, text):
    code = masked(text)
    changes = [(match.start(), match.end(), after(match)) for pattern, after in RULES for match in pattern.finditer(code)]
    for match in CONDITION.finditer(code):
        end = closing(code, match.end() - 1)
        changes.append((match.end(), end, f"!({text[match.end() : end]})"))
    occurrences = collections.Counter()
    for start, end, after in sorted(changes):
        line = text.count("\n", 0, start)
        changed = text[:start] + after + text[end:]
        old, new = text.split("\n")[line].strip(), changed.split("\n")[line].strip()
        occurrences[old, new] += 1
        yield Mutant(path, line + 1, start, end, after, old, new, occurrences[old, new])


def all_mutants():
    for pattern in MUTATED:
        for source in sorted(ROOT.glob(pattern)):
            if not source.name.endswith(SKIPPED):
                yield from mutants_of(source.relative_to(ROOT).as_posix(), source.read_text("ascii"))


def chosen(mutants, count, seed):
    """Chooses mutants, with no file above its share. They are ordered by a hash, so that the choice hardly changes when a
    source does, and --resume and --again find most of it tried already."""
    mutants = sorted(mutants, key=lambda mutant: hashlib.sha256(f"{seed} {mutant.key()}".encode()).digest())
    taken = collections.Counter()
    choice = []
    for mutant in mutants:
        if len(choice) < count and taken[mutant.path] < max(1, count * SHARE):
            taken[mutant.path] += 1
            choice.append(mutant)
    return choice


def earlier_fates(results):
    """The outcomes of mutants in an earlier run, by their keys."""
    blocks = re.findall(r"^(.*) (\S+):\d+\n- (.*)\n\+ (.*)$", results.read_text(), re.MULTILINE)
    return {(path, old, new): fate for fate, path, old, new in blocks}


def accepted_survivors():
    """The reasons, by the keys of the mutants."""
    blocks = re.findall(r"^(\S+)\n- (.*)\n\+ (.*)\n((?:  .*\n)+)", SURVIVORS.read_text(), re.MULTILINE)
    return {(path, old, new): " ".join(reason.split()) for path, old, new, reason in blocks}


class Copy:
    """A built copy of the working tree, in which mutants are tried one after the other."""

    def __init__(self, folder):
        self.tree = folder / "tree"
        self.build = folder / "build"
        self.environment = dict(os.environ, **COMPARISONS, LOCPATH=str(self.build / "tests/unit/locales"),
                                CCACHE_BASEDIR=str(folder), CCACHE_NOHASHDIR="1")  # shared by the copies
        self.seconds = {}  # upper bound on the processor time of a test
        self.changed = None
        self.noticing = collections.defaultdict(lambda: list((*PROGRAMS, OTHERS)))  # by folder, what noticed last first

    def prepare(self):
        """Copies the tree, and builds it."""
        names = subprocess.run(["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"], cwd=ROOT,
                               stdout=subprocess.PIPE, check=True, text=True).stdout
        for name in filter(None, names.split("\0")):
            source, target = ROOT / name, self.tree / name
            target.parent.mkdir(parents=True, exist_ok=True)
            if source.exists() and not (target.exists() and filecmp.cmp(source, target, shallow=False)):
                shutil.copy(source, target)  # as new: an earlier run may have left a mutant there, and its object
        configuration = [*CONFIGURATION, f"-DCMAKE_PROJECT_INCLUDE={QUICK}"]
        if shutil.which("ccache"):
            configuration.append("-DCMAKE_CXX_COMPILER_LAUNCHER=ccache")
        subprocess.run(["cmake", *configuration, "-S", self.tree, "-B", self.build], check=True,
                       stdout=subprocess.DEVNULL)
        if not self.built("all", os.cpu_count()):
            raise SystemExit("mutate: the tree does not build")
        self.environment["CCACHE_DISABLE"] = "1"  # no mutant is compiled twice

    def measure(self):
        """Runs all tests on the unchanged tree: they must pass, and their times are recorded."""
        for test in (*PROGRAMS, OTHERS):
            before = resource.getrusage(resource.RUSAGE_CHILDREN)
            outcome = self.outcome_of(test, 3600)
            if outcome is not None:
                raise SystemExit(f"mutate: {test} {outcome} although nothing is changed")
            after = resource.getrusage(resource.RUSAGE_CHILDREN)
            self.seconds[test] = 10 + 10 * int(after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime)

    def built(self, target, jobs=1):
        command = ["cmake", "--build", self.build, f"-j{jobs}", "--target", target]
        return self.exit_code(command, BUILD_SECONDS * jobs) == 0

    def outcome_of(self, test, seconds):
        """How a test failed; None if it passed."""
        if test == OTHERS:
            command = ["ctest", "--test-dir", self.build, "--stop-on-failure", "-R", OTHERS]
        else:
            command = [self.build / "bin" / test, "--gtest_brief=1", "--gtest_fail_fast",
                       "--gtest_filter=-Generator.*"]  # a test of the tests themselves
        code = self.exit_code(command, WALL_SECONDS, seconds)
        return {0: None, None: "waited", -signal.SIGXCPU: "hung", -signal.SIGKILL: "hung"}.get(
            code, "failed" if code is None or code > 0 else "crashed")  # fmt: skip

    def exit_code(self, command, wall_seconds, seconds=None):
        """None if the time is exceeded."""
        def limit():
            resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
            if seconds is not None:
                resource.setrlimit(resource.RLIMIT_CPU, (seconds, seconds + 5))
                resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))

        process = subprocess.Popen(command, cwd=self.build, env=self.environment, stdin=subprocess.DEVNULL,
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, start_new_session=True,
                                   preexec_fn=limit)
        try:
            return process.wait(wall_seconds)
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, signal.SIGKILL)
            process.wait()
            return None

    def put(self, path, text):
        """Writes the mutant's file, and restores that of the previous mutant."""
        if self.changed not in (None, path):
            (self.tree / self.changed).write_text((ROOT / self.changed).read_text("ascii"), "ascii")
        (self.tree / path).write_text(text, "ascii")
        self.changed = path

    def fate(self, mutant):
        self.put(mutant.path, mutant.apply((ROOT / mutant.path).read_text("ascii")))
        tests = self.noticing[os.path.dirname(mutant.path)]
        for place, test in enumerate(tests):
            if not self.built("all" if test == OTHERS else test):
                return "not compiled"
            outcome = self.outcome_of(test, self.seconds[test])
            if outcome is not None:
                tests.insert(0, tests.pop(place))
                return f"noticed, {'the others' if test == OTHERS else test} {outcome}:"
        return "survived"


def tried(copies, mutants, report):
    """Yields the outcome of each mutant. Mutants of a file are consecutive, so that fewer files are compiled again."""
    portions = queue.Queue()
    mutants = sorted(mutants)
    for first in range(0, len(mutants), 12):
        portions.put(mutants[first : first + 12])
    fates = {}

    def work(copy):
        while True:
            try:
                portion = portions.get_nowait()
            except queue.Empty:
                return
            for mutant in portion:
                fates[mutant] = copy.fate(mutant)
                report(fates[mutant], mutant, len(fates))

    workers = []
    for copy in copies:
        copy.prepare()
        if copy is copies[0]:
            copy.measure()
        copy.seconds = copies[0].seconds
        workers.append(threading.Thread(target=work, args=(copy,), daemon=True))
        workers[-1].start()
    for worker in workers:
        worker.join()
    return fates


def main():
    parser = argparse.ArgumentParser(description="Counts which changes of the library the tests notice.")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--again", action="store_true", help="as --resume, and try the survivors again")
    parser.add_argument("--resume", action="store_true", help="continue with mutants that FOLDER/results.txt does not contain")
    parser.add_argument("--only", action="append", metavar="PREFIX", help="only in files whose path begins with PREFIX")
    parser.add_argument("folder", type=pathlib.Path)
    parser.add_argument("count", type=int, nargs="?", default=560)
    options = parser.parse_args()

    folder = options.folder.resolve()
    folder.mkdir(parents=True, exist_ok=True)
    results = folder / "results.txt"
    mutants = list(all_mutants())
    accepted = accepted_survivors()
    for key in accepted.keys() - {mutant.key() for mutant in mutants}:
        raise SystemExit("mutate: survivors.txt holds a change that cannot be made any more:\n{}\n- {}\n+ {}".format(*key))
    mutants = [mutant for mutant in mutants if mutant.path.startswith(tuple(options.only or [""]))]
    choice = chosen(mutants, options.count, options.seed)
    known = earlier_fates(results) if options.resume or options.again else {}
    fates = {mutant: known[mutant.key()] for mutant in choice if mutant.key() in known}
    if options.again:
        fates = {mutant: fate for mutant, fate in fates.items() if fate != "survived" or mutant.key() in accepted}
    left = [mutant for mutant in choice if mutant not in fates]

    os.nice(10)
    copies = [Copy(folder / str(number)) for number in range(options.jobs)]
    print(f"{len(choice)} of {len(mutants)} changes, {len(left)} of them now, once the tree is built", flush=True)
    start = time.monotonic()
    with results.open("a" if known else "w") as log:
        def report(fate, mutant, done):
            print(f"{done}/{len(left)} {time.monotonic() - start:.0f} s  {fate} {mutant}", end="", flush=True)
            print(f"{fate} {mutant}", file=log, flush=True)

        fates |= tried(copies, left, report)

    compiled = [mutant for mutant, fate in fates.items() if fate != "not compiled"]
    survived = sorted(mutant for mutant in compiled if fates[mutant] == "survived")
    unlisted = [mutant for mutant in survived if mutant.key() not in accepted]
    for mutant in survived:
        print(f"\nsurvived {mutant}  {accepted.get(mutant.key(), 'NOT LISTED')}")
    noticed = len(compiled) - len(survived)
    print(f"\n{len(fates)} changes, of which {len(fates) - len(compiled)} do not compile. Of {len(compiled)} mutants "
          f"{noticed} are noticed ({100 * noticed / max(1, len(compiled)):.1f} %); of the {len(survived)} survivors "
          f"{len(unlisted)} are not listed.")
    return 0 if compiled and noticed >= ENOUGH * len(compiled) and not unlisted else 1


if __name__ == "__main__":
    sys.exit(main())
