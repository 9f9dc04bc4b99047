# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Tries mutants that one build contains together, chosen at run time (schemata.py).

Each test first runs alone without a mutant, and its reach is recorded: the numbers of the mutants whose places it runs. A mutant
is then tried only with tests that reach it, quickest first. Mutants that the build cannot contain, or that no test
reaches, are left to singly.py: the compiler may have evaluated them. reach.json keeps the reach for a later run with
the same sources.
"""

import collections
import concurrent.futures
import itertools
import json
import os
import re
import subprocess

from mutants import ROOT
from schemata import Mutated
from workspace import OMITTED_TESTS, OTHERS, PROGRAMS, Workspace, exit_code, outcome

FLAGS = "-Wno-c++11-narrowing -fno-caret-diagnostics -ferror-limit=0"
SLOW = 0.3  # seconds; such a test runs in a process of its own, after quicker ones
PLACE = re.compile(r"^(?P<path>[^\s:]+):(?P<line>\d+):(?P<column>\d+): (?P<kind>(?:fatal )?error|note): ", re.MULTILINE)


class Test:
    """A test of a program of GoogleTest, or of CTest if the program is None."""

    def __init__(self, program, name, seconds=0.0, reach=()):
        self.program, self.name, self.seconds, self.reach = program, name, seconds, reach


class Together:
    def __init__(self, folder, mutants, jobs):
        self.workspace = Workspace(folder)
        self.mutants = dict(enumerate(mutants))
        self.numbers = {mutant: number for number, mutant in self.mutants.items()}
        self.jobs = jobs
        self.sources = {}
        self.left = set()  # numbers of mutants that the build does not hold
        self.left_before = folder / "left.txt"  # their names, of an earlier run
        self.tests = []
        self.reaching = collections.defaultdict(list)  # by number of a mutant, the tests
        self.start_seconds = {}  # by program, processor time of its quickest test

    def prepare(self):
        folder = self.workspace.folder
        folder.mkdir(parents=True, exist_ok=True)
        left_before = set(self.left_before.read_text().split("\n\n")) if self.left_before.exists() else ()
        self.left = {number for number, mutant in self.mutants.items() if mutant.name() in left_before}
        by_path = collections.defaultdict(dict)
        for number, mutant in self.mutants.items():
            if number not in self.left:
                by_path[mutant.path][number] = mutant
        for path, mutants in by_path.items():
            self.put(path, mutants)
        digest = self.workspace.copy({path: source.text for path, source in self.sources.items()})
        library = folder / "libMutantChoice.so"
        headers = self.workspace.tree / "tests/mutation"
        subprocess.run(["clang++", "-O1", "-shared", "-fPIC", "-o", library, headers / "MutantChoice.cpp"], check=True)
        self.workspace.configure(f"-DCMAKE_CXX_STANDARD_LIBRARIES={library}", flags=f"{FLAGS} -I{headers}")
        commands = [] if left_before else self.compile_commands()
        while commands := self.failing(commands):
            pass
        while not self.builds():
            pass
        reach = folder / "reach.json"
        known = json.loads(reach.read_text()) if reach.exists() else {}
        if known.get("digest") == digest:
            self.tests = [Test(*test) for test in known["tests"]]
        else:
            self.find_tests()
            self.record()
            reach.write_text(json.dumps({"digest": digest, "tests": [
                (test.program, test.name, test.seconds, sorted(test.reach)) for test in self.tests]}))
        for test in self.tests:
            self.start_seconds[test.program] = min(test.seconds, self.start_seconds.get(test.program, test.seconds))
            for number in test.reach:
                self.reaching[number].append(test)

    def compile_commands(self):
        """Those of the library's sources; tests that compile some of them again need a precompiled header, and are omitted."""
        entries = json.loads((self.workspace.build / "compile_commands.json").read_text())
        return [entry["command"] for entry in entries if "cmake_pch" not in entry["command"]
                and os.path.relpath(entry["file"], self.workspace.tree) in self.sources]

    def put(self, path, mutants):
        self.sources[path] = source = Mutated((ROOT / path).read_text("ascii"), mutants)
        self.left |= set(source.left)

    def failing(self, commands):
        """Those of the commands that do not compile; the mutants at fault are removed."""
        def compiled(command):
            return subprocess.run(f"{command} -fsyntax-only", cwd=self.workspace.build, stderr=subprocess.PIPE, shell=True,
                                  text=True, errors="replace")

        with concurrent.futures.ThreadPoolExecutor(self.jobs) as pool:
            processes = list(pool.map(compiled, commands))
        failed = [command for command, process in zip(commands, processes) if process.returncode != 0]
        if failed:
            self.remove_at_fault("".join(process.stderr for process in processes))
        return failed

    def builds(self):
        """Builds everything; the mutants at fault are removed if that fails, which only the tests' use of a header may cause."""
        process = subprocess.run(["cmake", "--build", self.workspace.build, f"-j{self.jobs}", "--", "-k", "0"],
                                 stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, errors="replace")
        if process.returncode != 0:
            self.remove_at_fault(process.stdout)
        return process.returncode == 0

    def remove_at_fault(self, messages):
        """Removes the mutants at which a compiler's errors point, themselves or by their notes."""
        at_fault = collections.defaultdict(set)
        places = list(PLACE.finditer(messages))
        for index, place in enumerate(places):
            if place["kind"] == "note":
                continue
            notes = itertools.takewhile(lambda other: other["kind"] == "note", places[index + 1 :])
            for other in (place, *notes):
                path = os.path.relpath(os.path.join(self.workspace.build, other["path"]), self.workspace.tree)
                found = path in self.sources and self.sources[path].at_fault(int(other["line"]), int(other["column"]))
                if found:
                    at_fault[path] |= found
                    break
        if not at_fault:
            raise SystemExit(f"mutate: the tree does not build\n{messages[-3000:]}")
        for path, numbers in at_fault.items():
            self.left |= numbers
            self.put(path, {number: mutant for number, mutant in self.mutants.items()
                            if mutant.path == path and number not in self.left})
            self.workspace.write(path, self.sources[path].text.encode("ascii"))
        self.left_before.write_text("\n\n".join(self.mutants[number].name() for number in sorted(self.left)))
        print(f"{sum(map(len, at_fault.values()))} mutants do not compile together with others", flush=True)

    def find_tests(self):
        for program in PROGRAMS:
            command = [self.workspace.build / "bin" / program, "--gtest_list_tests", f"--gtest_filter=-{OMITTED_TESTS}"]
            listed = subprocess.run(command, stdout=subprocess.PIPE, check=True, env=self.workspace.environment).stdout
            for line in listed.decode("latin-1").splitlines():
                if re.match(r"\S+\.", line):
                    suite = line.split()[0]
                elif line.startswith("  "):
                    self.tests.append(Test(program, suite + line.split()[0]))
        listed = subprocess.run(["ctest", "--test-dir", self.workspace.build, "--show-only=json-v1", "-R", OTHERS],
                                stdout=subprocess.PIPE, check=True, text=True).stdout
        self.tests += [Test(None, test["name"]) for test in json.loads(listed)["tests"]]

    def command(self, program, names):
        if program is None:
            return ["ctest", "--test-dir", self.workspace.build, "-R", f"^({'|'.join(map(re.escape, names))})$"]
        return [self.workspace.build / "bin" / program, "--gtest_brief=1", "--gtest_fail_fast",
                f"--gtest_filter={':'.join(names)}"]

    def record(self):
        """Runs each test alone on the unchanged library. All must pass."""
        def recorded(place, test):
            file = self.workspace.folder / f"reached-{place % self.jobs}-{os.getpid()}-{place}"
            file.write_bytes(bytes(len(self.mutants)))
            environment = dict(self.workspace.environment, MATHEXPR_MUTANTS_REACHED=str(file))
            code, test.seconds = timed(self.command(test.program, [test.name]), self.workspace.build, environment)
            test.reach = [number for number, reached in enumerate(file.read_bytes()) if reached]
            file.unlink()
            return None if code == 0 else test.name

        with concurrent.futures.ThreadPoolExecutor(self.jobs) as pool:
            failed = list(filter(None, pool.map(recorded, range(len(self.tests)), self.tests)))
        if failed:
            raise SystemExit(f"mutate: these tests fail although nothing is changed: {' '.join(failed)}")

    def holds(self, mutant):
        number = self.numbers[mutant]
        return number not in self.left and number in self.reaching

    def groups(self, tests):
        """Tests grouped by process, with the processor time of each group, quickest first."""
        by_program, slow = collections.defaultdict(list), []
        for test in tests:
            if test.seconds > SLOW or test.program is None:
                slow.append((test.seconds, [test]))
            else:
                by_program[test.program].append(test)
        quick = [(self.seconds_of(group), group) for group in by_program.values()]
        return sorted(quick + slow, key=lambda group: group[0])

    def seconds_of(self, tests):
        """Processor time of tests of one program in one process, which starts only once."""
        start = self.start_seconds[tests[0].program]
        return start + sum(test.seconds - start for test in tests)

    def fate(self, mutant):
        number = self.numbers[mutant]
        environment = dict(self.workspace.environment, MATHEXPR_MUTANT=str(number))
        for seconds, tests in self.groups(self.reaching[number]):
            result = self.outcome_of(tests, seconds, environment)
            if result is not None:
                return f"noticed, {tests[0].program or tests[0].name} {result}:"
        return "survived"

    def outcome_of(self, tests, seconds, environment):
        """How the tests of one process failed; None if they passed. seconds: their processor time without a mutant."""
        command = self.command(tests[0].program, [test.name for test in tests])
        return outcome(exit_code(command, self.workspace.build, environment, 2 + int(3 * seconds)))


def timed(command, folder, environment):
    """Exit code and processor time of a process and those that it starts."""
    process = subprocess.Popen(command, cwd=folder, env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                               stderr=subprocess.DEVNULL)
    _, status, usage = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(status)
    return process.returncode, usage.ru_utime + usage.ru_stime
