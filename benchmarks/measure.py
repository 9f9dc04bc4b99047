# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Runs the benchmark programs and collects their figures: medians in nanoseconds of processor time.

Everything is pinned to one processor. Evaluation: one process per formula, in which Google Benchmark interleaves the
engines at random. Compilation: a separate process per engine, in rounds, so that the engines alternate. Long texts: one
process per text, so that a failure does not affect the others.
"""
import contextlib
import json
import os
import statistics
import subprocess
from dataclasses import dataclass
from pathlib import Path

NATIVE = "native"
OURS = "mathexpr"
DOORS = ["C interface", "bound function"]  # of this library, in addition to the class's evaluate
PEERS = ["muparser", "muparserx", "fparser", "fparser optimized", "luajit"]
NB_FORMULAS = 19
BULK_PEERS = ["numexpr", "numpy"]
BULK_FORMULAS = [1, 4, 6, 7, 9, 10, 14, 15, 16, 19]
SHAPES = ["flat", "nested", "right-nested"]
TERMS = [100, 1000, 10_000, 100_000, 1_000_000]


@dataclass
class Effort:
    """The extent of the measurements."""
    evaluate_rounds: int
    evaluate_seconds: float  # of each repetition
    compile_rounds: int
    compile_seconds: float
    scale_rounds: int
    scale_timeout: float
    scale_peer_terms: int  # the largest text for peers


FULL = Effort(15, 0.01, 9, 0.008, 5, 10.0, 1_000_000)
QUICK = Effort(5, 0.004, 3, 0.002, 2, 3.0, 1000)


class Failed(Exception):
    """A benchmark program reported no figures."""


class Programs:
    """The benchmark programs in a build directory."""

    def __init__(self, directory, effort, progress):
        self.directory = directory
        self.effort = effort
        self.progress = progress
        self.titles = {}  # of formulas and one-shot texts, as reported by the programs

    def run(self, program, *arguments, timeout=None):
        command = [os.path.join(self.directory, program), *arguments]
        done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, timeout=timeout,
                              check=False)
        if done.returncode != 0:
            signal = f"signal {-done.returncode}" if done.returncode < 0 else f"status {done.returncode}"
            raise Failed(f"{signal}\n{done.stderr}".strip())
        return json.loads(done.stdout)

    def benchmark(self, program, pattern, seconds, repetitions=1, timeout=None):
        """The results of the single repetitions."""
        report = self.run(program, f"--benchmark_filter={pattern}", f"--benchmark_min_time={seconds}",
                          f"--benchmark_repetitions={repetitions}", "--benchmark_enable_random_interleaving=true",
                          "--benchmark_format=json", timeout=timeout)
        self.titles.update({k: v for k, v in report["context"].items() if k.startswith(("formula ", "oneshot "))})
        return [row for row in report["benchmarks"] if row.get("run_type") != "aggregate"]

    def evaluate(self, formulas, engines):
        """{formula: {engine: (ns, differing results)}}, without engines that cannot compute the formula."""
        result = {}
        for formula in formulas:
            self.progress(f"evaluate {formula}")
            rows = self.benchmark("benchmark_evaluate", f"^{formula}/({'|'.join(engines)})$",
                                  self.effort.evaluate_seconds, self.effort.evaluate_rounds)
            result[formula] = medians(rows, lambda name: name[1])
        return result

    def bulk(self):
        """{formula: {way: ns per row}}: processor time on one thread, and elapsed time on one and on two."""
        result = {}
        for formula in BULK_FORMULAS:
            self.progress(f"bulk {formula}")
            rows = self.benchmark("benchmark_bulk", f"^{formula}/(native|native O3|mathexpr|row by row)$",
                                  self.effort.evaluate_seconds, self.effort.evaluate_rounds)
            result[formula] = {way: time for way, (time, _) in medians(rows, lambda name: name[1]).items()}
        with self.on_all_processors():
            for formula in BULK_FORMULAS:
                self.progress(f"bulk on threads {formula}")
                rows = self.benchmark("benchmark_bulk", f"^{formula}/. threads?/real_time$",
                                      self.effort.evaluate_seconds, self.effort.evaluate_rounds)
                elapsed = medians(rows, lambda name: name[1], "real_time")
                result[formula].update({way: time for way, (time, _) in elapsed.items()})
        return result

    def python(self):
        """The figures of python_package.py, run by the Python of the environment beside the programs."""
        self.progress("the Python package")
        script = Path(__file__).with_name("python_package.py")
        with self.on_all_processors():
            return self.run(os.path.join("..", "python", "bin", "python"), str(script), str(self.effort.evaluate_rounds))

    @contextlib.contextmanager
    def on_all_processors(self):
        """Programs started in this context are not pinned."""
        pinned = os.sched_getaffinity(0)
        os.sched_setaffinity(0, range(os.cpu_count()))
        try:
            yield
        finally:
            os.sched_setaffinity(0, pinned)

    def compile(self, engines):
        """{"compile/FORMULA" or "construct" or "oneshot/NUMBER": {engine: (ns, differing results)}}"""
        rows = []
        for round_number in range(self.effort.compile_rounds):
            self.progress(f"compile, round {round_number + 1}")
            for engine in engines:
                rows += self.benchmark("benchmark_compile", f"^(compile|construct|oneshot)(/[0-9]+)?/{engine}$",
                                       self.effort.compile_seconds)
        by_measurement = {}
        for row in rows:
            by_measurement.setdefault(row["name"].rsplit("/", 1)[0], []).append(row)
        return {name: medians(some, lambda name: name[-1]) for name, some in by_measurement.items()}

    def scale(self, engines):
        """{shape: {engine: {terms: ns per term, or the reason why there is no figure}}}"""
        result = {shape: {engine: {} for engine in engines} for shape in SHAPES}
        for shape in SHAPES:
            for engine in engines:
                for terms in TERMS:
                    if engine != OURS and terms > self.effort.scale_peer_terms:
                        break
                    self.progress(f"scale {shape} {engine} {terms}")
                    figure = self.one_scale(shape, terms, engine)
                    result[shape][engine][terms] = figure
                    if isinstance(figure, str):
                        break
        return result

    def one_scale(self, shape, terms, engine):
        rounds = self.effort.scale_rounds if engine == OURS else 1
        try:
            rows = self.benchmark("benchmark_compile", f"^scale/{shape}/{terms}/{engine}$", 0.02, rounds,
                                  timeout=self.effort.scale_timeout)
        except subprocess.TimeoutExpired:
            return f"over {self.effort.scale_timeout:.0f} s"
        except Failed as failure:
            return "crashes" if str(failure).startswith("signal") else "fails"
        if rows[0].get("error_occurred"):
            return "wrong" if "something else" in rows[0]["error_message"] else "refuses"
        return statistics.median(row["cpu_time"] for row in rows) / terms

    def first_objects(self):
        """{engine: median ns to create the first object of a process}"""
        self.progress("first objects")
        engines = [OURS, *(peer for peer in PEERS if " " not in peer)]
        rounds = [{engine: self.run("benchmark_first_object", engine)["ns"] for engine in engines}
                  for _ in range(4 * self.effort.compile_rounds)]
        return {engine: statistics.median(times[engine] for times in rounds) for engine in engines}

    def resources(self):
        """The output of benchmark_resources."""
        self.progress("resources")
        return self.run("benchmark_resources")


def medians(rows, engine_of, time="cpu_time"):
    """{engine: (median ns, differing results)} without failed rows; per item if items are counted."""
    times, differing = {}, {}
    for row in rows:
        if row.get("error_occurred"):
            continue
        engine = engine_of(row["name"].split("/"))
        times.setdefault(engine, []).append(row[time] / row.get("items", 1))
        differing[engine] = int(row.get("differing", 0))
    return {engine: (statistics.median(some), differing[engine]) for engine, some in times.items()}
