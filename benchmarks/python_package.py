#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""python_package.py ROUNDS - measures the Python package beside Python itself, NumPy and numexpr, and prints the figures as JSON.

Run it with the Python of an environment that has the package and numexpr. The compared ways take turns in each round. A
figure is the median of all rounds, in nanoseconds per call: processor time on one thread, elapsed time on two. First, the
results are compared: this package must agree with NumPy, bit for bit if only arithmetic is involved.
"""

import json
import re
import statistics
import subprocess
import sys
import time
import timeit

import mathexpr
import numexpr
import numpy

ROUNDS = int(sys.argv[1])
ROUND_SECONDS = 0.01  # per way; at least one call

DEGREE = "3.14159265359/180"
LENGTH = "(px-qx)*(px-qx)+(py-qy)*(py-qy)+(pz-qz)*(pz-qz)"


def horner():
    text = "0.16"
    for coefficient in range(15, 0, -1):
        text = f"({text})*x+{coefficient / 100:g}"
    return text


# By number of the formula: the text, its arguments, the text for numexpr, and whether numexpr's bits are the same.
FORMULAS = {
    "1 x+1": ("x+1", "x", "x+1", True),
    "4 ((x*2+y)*3-z)/(a+b*2)": ("((x*2+y)*3-z)/(a+b*2)", "xyzab", "((x*2+y)*3-z)/(a+b*2)", True),
    "6 sqrt(x*x+y*y+z*z)": ("sqrt(x*x+y*y+z*z)", "xyz", "sqrt(x*x+y*y+z*z)", True),
    "7 sin(x)*r+cos(y)*r": ("sin(x)*r+cos(y)*r", "xyr", f"sin(x*{DEGREE})*r+cos(y*{DEGREE})*r", False),
    "10 polynomial of degree 15": (horner(), "x", horner(), True),
    "15 dist(p,q)": ("dist(p,q)", "pq", f"sqrt({LENGTH})", True),
}


def compare(ways, clock):
    """{name: ns}: the median of rounds in which the ways take turns."""
    calls = {}
    for name, way in ways.items():
        timer = timeit.Timer(way, timer=clock)
        once = max(timer.timeit(1), 1e-9)
        count = max(1, int(ROUND_SECONDS / max(min(timer.timeit(5) / 5, once), 1e-8)))
        calls[name] = (timer, count)
    times = {name: [] for name in ways}
    for _ in range(ROUNDS):
        for name, (timer, count) in calls.items():
            times[name].append(timer.timeit(count) / count * 1e9)
    return {name: statistics.median(figures) for name, figures in times.items()}


def calls():
    """Calls with single numbers, and of a lambda of the same formula. The loop contains no further lambda."""
    formula = "((x*2+y)*3-x)/(y+x*2)"
    names = {
        "native": eval(f"lambda x, y: {formula}"),
        "function": mathexpr.function(formula, "x", "y"),
        "expression": mathexpr.Expression(formula, {"x": 3, "y": 4}),
        "evaluate": mathexpr.evaluate,
        "formula": formula,
        "variables": {"x": 3.0, "y": 4.0},
        "compiled": compile(formula, "formula", "eval"),
        "x": 3.0,
        "y": 4.0,
    }
    assert names["function"](3.0, 4.0) == names["native"](3.0, 4.0) == names["expression"]()
    texts = {
        "lambda(3.0, 4.0)": "native(3.0, 4.0)",
        "f(3.0, 4.0)": "function(3.0, 4.0)",
        "f(x=3.0, y=4.0)": "function(x=3.0, y=4.0)",
        "expression.evaluate()": "expression.evaluate()",
        "expression(x=3.0, y=4.0)": "expression(x=3.0, y=4.0)",
        "evaluate(text, variables)": "evaluate(formula, variables)",
        "eval of compiled Python": "eval(compiled, None, variables)",
    }
    times = {name: [] for name in texts}
    timers = {name: timeit.Timer(text, timer=time.process_time, globals=names) for name, text in texts.items()}
    for _ in range(ROUNDS):
        for name, timer in timers.items():
            times[name].append(timer.timeit(20_000) / 20_000 * 1e9)
    return {name: statistics.median(figures) for name, figures in times.items()}


def inputs(arguments, row_count):
    """The columns of a formula by name, for this package and for numexpr."""
    generator = numpy.random.default_rng(1)
    ours, theirs = [], {}
    for name in arguments:
        if name in "pq":
            points = generator.uniform(1, 9, (row_count, 3))
            ours.append(points)
            theirs.update({name + axis: points[:, index].copy() for index, axis in enumerate("xyz")})
        else:
            column = generator.uniform(1, 9, row_count)
            ours.append(column)
            theirs[name] = column
    return ours, theirs


def rows(row_count, threads):
    """{formula: {way: ns per call}} for arrays; numexpr's compilation is not measured."""
    figures = {}
    numexpr.set_num_threads(threads)
    for title, (text, arguments, peer_text, is_exact) in FORMULAS.items():
        ours, theirs = inputs(arguments, row_count)
        function = mathexpr.function(text, *arguments, points=[name for name in arguments if name in "pq"])
        expected = eval(peer_text, {"sin": numpy.sin, "cos": numpy.cos, "sqrt": numpy.sqrt}, theirs)
        values = function(*ours, threads=threads)
        if is_exact and values.tobytes() != expected.tobytes() or not numpy.allclose(values, expected, rtol=1e-12):
            sys.exit(f"{title}: the results differ from NumPy's")
        numpy.testing.assert_allclose(numexpr.evaluate(peer_text, local_dict=theirs), expected, rtol=1e-12)
        only = next(iter(theirs.values()))
        ways = {
            "mathexpr": (lambda: function(*ours)) if threads == 1 else (lambda: function(*ours, threads=threads)),
            "numexpr": lambda: numexpr.re_evaluate(local_dict=theirs),
            "copy": only.copy,
        }
        if row_count == 1000:
            code = compile(peer_text, "formula", "eval")
            scope = {"sin": numpy.sin, "cos": numpy.cos, "sqrt": numpy.sqrt}
            ways["numpy"] = lambda: eval(code, scope, theirs)
        figures[title] = compare(ways, time.process_time if threads == 1 else time.perf_counter)
    return figures


# By number of the formula: its text and arguments; for NumPy; for numexpr, a text per coordinate of the result.
BULK_FORMULAS = {
    1: ("x+1", "x", "x+1", ["x+1"]),
    4: ("((x*2+y)*3-z)/(a+b*2)", "xyzab", "((x*2+y)*3-z)/(a+b*2)", ["((x*2+y)*3-z)/(a+b*2)"]),
    6: ("sqrt(x*x+y*y+z*z)", "xyz", "sqrt(x*x+y*y+z*z)", ["sqrt(x*x+y*y+z*z)"]),
    7: ("sin(x)*r+cos(y)*r", "xyr", f"sin(x*{DEGREE})*r+cos(y*{DEGREE})*r", [f"sin(x*{DEGREE})*r+cos(y*{DEGREE})*r"]),
    9: ("(x>y)*a+(x<=y)*b", "xyab", "(x>y)*a+(x<=y)*b", ["where(x>y,1.0,0.0)*a+where(x<=y,1.0,0.0)*b"]),
    10: (horner(), "x", horner(), [horner()]),
    14: ("p+q*2", "pq", "p+q*2", [f"p{axis}+q{axis}*2" for axis in "xyz"]),
    15: ("dist(p,q)", "pq", f"sqrt({LENGTH})", [f"sqrt({LENGTH})"]),
    16: ("vec1(p,q)*r", "pqr", f"(q-p)/sqrt({LENGTH})[:,None]*r[:,None]",
         [f"(q{axis}-p{axis})/sqrt({LENGTH})*r" for axis in "xyz"]),
    19: ("[x,y,x+y]", "xy", "column_stack((x,y,x+y))", ["x", "y", "x+y"]),
}


def bulk_peers(row_count=10_000):
    """{formula: {peer: ns per row, "inexact": peers whose bits differ}}. NumPy creates intermediate arrays; numexpr's
    compilation is not measured, and it writes to existing arrays."""
    figures = {}
    numexpr.set_num_threads(1)
    for number, (text, arguments, numpy_text, numexpr_texts) in BULK_FORMULAS.items():
        ours, columns = inputs(arguments, row_count)
        scope = {name: getattr(numpy, name) for name in ("sin", "cos", "sqrt", "column_stack")}
        scope.update(columns, **dict(zip(arguments, ours)))
        code = compile(numpy_text, "formula", "eval")
        expected = mathexpr.function(text, *arguments, points=[name for name in arguments if name in "pq"])(*ours)
        results = numpy.empty_like(expected)
        coordinates = [results] if results.ndim == 1 else list(results.T)
        programs = []
        for one, result in zip(numexpr_texts, coordinates):
            names = sorted(name for name in columns if re.search(rf"\b{name}\b", one))
            program = numexpr.NumExpr(one, [(name, numpy.float64) for name in names])
            programs.append((program, [columns[name] for name in names], result))

        def run_numexpr():
            for program, operands, result in programs:
                program(*operands, out=result, order="K", casting="safe", ex_uses_vml=False)

        run_numexpr()
        computed = {"numexpr": results, "numpy": eval(code, scope)}
        for peers_results in computed.values():
            numpy.testing.assert_allclose(peers_results, expected, rtol=1e-12)
        times = compare({"numexpr": run_numexpr, "numpy": lambda: eval(code, scope)}, time.process_time)
        figures[number] = {peer: figure / row_count for peer, figure in times.items()}
        figures[number]["inexact"] = [peer for peer, peers_results in computed.items()
                                      if peers_results.tobytes() != expected.tobytes()]
    return figures


def import_time():
    """Median processor time of the import in a new process, in milliseconds."""
    program = "import time; before = time.process_time(); import mathexpr; print((time.process_time() - before) * 1e3)"
    times = [float(subprocess.run([sys.executable, "-c", program], stdout=subprocess.PIPE, text=True, check=True).stdout)
             for _ in range(max(ROUNDS, 5))]
    return statistics.median(times)


print(json.dumps({
    "calls": calls(),
    "1,000 rows": rows(1000, 1),
    "1,000,000 rows, 1 thread": rows(1_000_000, 1),
    "1,000,000 rows, 2 threads": rows(1_000_000, 2),
    "bulk peers": bulk_peers(),
    "import": import_time(),
    "versions": {"python": sys.version.split()[0], "numpy": numpy.__version__, "numexpr": numexpr.__version__},
}, indent=1))
