# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Formats the figures as tables, compares them with the targets, and writes docs/performance.md."""
import statistics
from dataclasses import dataclass, field

from measure import BULK_PEERS, DOORS, NATIVE, OURS, PEERS, SHAPES, TERMS

MARK = "~"  # a peer whose results differ from native code in some bits
MEAN_OF = range(1, 12)
NESTED_ARITHMETIC = 4
WIDE = "native O3"  # compiled for the processor at hand
POLYNOMIAL = 10
POINTS_WITH_TARGET = {14: ("p+q*2", 3.0), 15: ("dist(p,q)", 2.5), 16: ("vec1(p,q)*r", 2.5)}
CALLS_ALONE = {1, 2, 11}  # so short that the cost of the call dominates


@dataclass
class Figures:
    """All figures, as returned by measure.Programs."""
    evaluated: dict
    bulk: dict
    compiled: dict
    scaled: dict
    first_objects: dict
    resources: dict
    package: dict
    titles: dict


@dataclass
class Table:
    title: str
    header: list
    rows: list = field(default_factory=list)

    def text(self):
        cells = [self.header, *self.rows]
        widths = [max(len(row[i]) for row in cells) for i in range(len(self.header))]
        lines = ["  ".join(c.ljust(w) if i == 0 else c.rjust(w) for i, (c, w) in enumerate(zip(row, widths)))
                 for row in cells]
        return "\n".join([self.title, lines[0], "-" * len(lines[0]), *lines[1:]]) + "\n"

    def markdown(self):
        rule = ["---"] + ["---:"] * (len(self.header) - 1)
        lines = ["| " + " | ".join(cell.replace("|", "\\|") for cell in row) + " |"
                 for row in [self.header, rule, *self.rows]]
        return f"**{self.title}**\n\n" + "\n".join(lines) + "\n"


def number(value):
    if value is None:
        return "-"
    if isinstance(value, int):
        return str(value)
    return f"{value:.0f}" if value >= 100 else f"{value:.1f}" if value >= 10 else f"{value:.2f}"


def marked(figure):
    return "-" if figure is None else number(figure[0]) + (MARK if figure[1] else "")


def ratio(figures, other, ours=OURS):
    """Ratio of our figure to the other's; None if one is missing."""
    if ours not in figures or other not in figures:
        return None
    return figures[ours][0] / figures[other][0]


def fastest(figures, exact_only=False):
    """The name of the fastest peer, or None."""
    peers = [e for e in figures if e in PEERS and not (exact_only and figures[e][1])]
    return min(peers, key=lambda e: figures[e][0], default=None)


def evaluation_table(evaluated, titles):
    engines = [NATIVE, OURS, *DOORS, *PEERS]
    table = Table("Evaluate once, ns", ["formula", *engines, "x native", "x fastest peer", "x fastest exact peer"])
    for formula, figures in evaluated.items():
        table.rows.append([f"{formula} {titles[f'formula {formula}']}", *[marked(figures.get(e)) for e in engines],
                           number(ratio(figures, NATIVE)), number(ratio(figures, fastest(figures))),
                           number(ratio(figures, fastest(figures, True)))])
    return table


def bulk_table(bulk, titles):
    table = Table("Bulk evaluation, ns per row",
                  ["formula", NATIVE, WIDE, OURS, "row by row", *BULK_PEERS, "x native", f"x {WIDE}",
                   "row by row x ours", "1 thread", "2 threads", "1 thread x 2"])
    for formula, times in bulk.items():
        figures = [number(times.get(way)) + (MARK if way in times.get("inexact", ()) else "")
                   for way in [NATIVE, WIDE, OURS, "row by row", *BULK_PEERS]]
        table.rows.append([f"{formula} {titles[f'formula {formula}']}", *figures,
                           number(times[OURS] / times[NATIVE]), number(times[OURS] / times[WIDE]),
                           number(times["row by row"] / times[OURS]), number(times["1 thread"]),
                           number(times["2 threads"]),
                           number(times["1 thread"] / times["2 threads"])])
    return table


def compile_table(compiled, titles):
    table = Table("Compile and evaluate once on an existing object, ns",
                  ["formula", OURS, *PEERS, "x fparser", "muparser x ours"])
    for formula in compiled_formulas(compiled):
        figures = compiled[f"compile/{formula}"]
        inverse = ratio(figures, "muparser")
        table.rows.append([f"{formula} {titles[f'formula {formula}']}",
                           *[marked(figures.get(e)) for e in [OURS, *PEERS]], number(ratio(figures, "fparser")),
                           number(1 / inverse if inverse else None)])
    return table


def object_table(compiled, first_objects, titles):
    table = Table("Objects, ns", ["", OURS, *PEERS, "x muparser"])
    for name, figures in compiled.items():
        if name.startswith("compile/"):
            continue
        title = "construct and destroy" if name == "construct" else "one shot " + titles[name.replace("/", " ")]
        table.rows.append([title, *[marked(figures.get(e)) for e in [OURS, *PEERS]],
                           number(ratio(figures, "muparser"))])
    first = {engine: (time, 0) for engine, time in first_objects.items()}
    table.rows.append(["first object of a process", *[marked(first.get(e)) for e in [OURS, *PEERS]],
                       number(ratio(first, "muparser"))])
    return table


def scale_table(scaled):
    table = Table("Compile and evaluate once, ns per term", ["shape, engine", *[f"{t:,}" for t in TERMS]])
    for shape in SHAPES:
        for engine, figures in scaled[shape].items():
            cells = [figures.get(t) for t in TERMS]
            table.rows.append([f"{shape}, {engine}", *[c if isinstance(c, str) else number(c) for c in cells]])
    return table


def memory_table(resources):
    table = Table("Memory of an object that has compiled nothing, bytes", ["", *resources["bytes of an object"]])
    table.rows.append(["object", *[str(b) for b in resources["bytes of an object"].values()]])
    table.rows.append(["shared by all objects, once", str(resources["bytes shared by all objects"]),
                       *["-"] * (len(table.header) - 2)])
    return table


PYTHON_ROWS = ["1,000 rows", "1,000,000 rows, 1 thread", "1,000,000 rows, 2 threads"]


def python_tables(figures):
    """The Python package: calls compared with a lambda; arrays compared with numexpr, NumPy and a plain copy."""
    native = figures["calls"]["lambda(3.0, 4.0)"]
    calls = Table("Python, single calls, ns", ["call", "ns", "x lambda"])
    for call, time in figures["calls"].items():
        calls.rows.append([call, number(time), number(time / native)])
    tables = [calls]
    for title in PYTHON_ROWS:
        ways = ["mathexpr", "numexpr", "copy"] + (["numpy"] if title == PYTHON_ROWS[0] else [])
        table = Table(f"Python, {title}, us", ["formula", *ways, "x numexpr", "copy x numexpr"])
        for formula, times in figures[title].items():
            table.rows.append([formula, *[number(times[way] / 1000) for way in ways],
                               number(times["mathexpr"] / times["numexpr"]), number(times["copy"] / times["numexpr"])])
        tables.append(table)
    return tables


def python_targets(row, figures):
    """The target of an array formula depends on the time of a plain copy: if that is most of numexpr's time, no library can
    be faster."""
    calls = figures["calls"]
    native = calls["lambda(3.0, 4.0)"]
    row("Python, f(3.0, 4.0), x lambda", calls["f(3.0, 4.0)"] / native, 1.5)
    row("Python, f(x=3.0, y=4.0), x lambda", calls["f(x=3.0, y=4.0)"] / native, 2.5)
    row("Python, evaluate(text, variables) again", calls["evaluate(text, variables)"] / 1000, 5, unit=" us")
    for title in PYTHON_ROWS:
        for formula, times in figures[title].items():
            is_copy = title != PYTHON_ROWS[0] and times["copy"] > times["numexpr"] / 2
            target = 1 if title == PYTHON_ROWS[0] else 1.05 if is_copy else 0.5
            row(f"Python, {title}, {formula}, x numexpr", times["mathexpr"] / times["numexpr"], target)
    row("Python, import", figures["import"], 20, unit=" ms")


def compiled_formulas(compiled):
    return sorted(int(name.split("/")[1]) for name in compiled if name.startswith("compile/"))


def geometric_mean(evaluated, other=NATIVE, ours=OURS):
    return statistics.geometric_mean(ratio(evaluated[f], other, ours) for f in MEAN_OF)


def tables(figures):
    """All tables; the last one has the targets."""
    evaluated, bulk, titles = figures.evaluated, figures.bulk, figures.titles
    return [evaluation_table(evaluated, titles), bulk_table(bulk, titles), compile_table(figures.compiled, titles),
            object_table(figures.compiled, figures.first_objects, titles), scale_table(figures.scaled),
            memory_table(figures.resources), *python_tables(figures.package),
            summary(figures)]


def summary(figures):
    """The targets with their figures. A target is an upper bound unless it says "at least"."""
    evaluated, bulk, compiled, resources = figures.evaluated, figures.bulk, figures.compiled, figures.resources
    table = Table("Targets", ["what", "figure", "target", "reached"])

    def row(what, figure, target, at_least=False, unit=""):
        reached = figure >= target if at_least else figure <= target
        shown = number(figure)
        if not reached and float(shown) == target:
            shown = f"{figure:.3f}"  # two decimals would look like the target
        table.rows.append([what, shown + unit, ("at least " if at_least else "at most ") + f"{target:g}{unit}",
                           "yes" if reached else "no"])

    worst_peer = max((ratio(evaluated[f], fastest(evaluated[f])), f) for f in MEAN_OF)
    worst_exact = max((ratio(evaluated[f], fastest(evaluated[f], True)), f) for f in MEAN_OF
                      if fastest(evaluated[f], True))
    row("evaluate, formulas 1 to 11, geometric mean, x native", geometric_mean(evaluated), 2.5)
    row("mathexpr_evaluate of the C interface, formulas 1 to 11, geometric mean, x evaluate of the class",
        geometric_mean(evaluated, OURS, "C interface"), 1.2)
    row("bound function, formulas 1 to 11, geometric mean, x native",
        geometric_mean(evaluated, NATIVE, "bound function"), 1.9)
    worst_function = max((ratio(evaluated[f], fastest(evaluated[f], True), "bound function"), f) for f in MEAN_OF
                         if f not in CALLS_ALONE and fastest(evaluated[f], True))
    row(f"bound function, formulas 3 to 10, worst (formula {worst_function[1]}), x fastest bit-exact peer",
        worst_function[0], 1)
    row(f"evaluate, formulas 1 to 11, worst (formula {worst_peer[1]}), x fastest peer", worst_peer[0], 1)
    row(f"the same, bit-exact peers only (formula {worst_exact[1]})", worst_exact[0], 1)
    row("evaluate, polynomial, x native", ratio(evaluated[POLYNOMIAL], NATIVE), 6)
    for formula, (title, target) in POINTS_WITH_TARGET.items():
        row(f"evaluate, {title}, x native", ratio(evaluated[formula], NATIVE), target)
    nested = bulk[NESTED_ARITHMETIC]
    worst_bulk = max((times[OURS] / times[NATIVE], formula) for formula, times in bulk.items())
    row(f"bulk evaluation, worst (formula {worst_bulk[1]}), x native loop", worst_bulk[0], 1)
    row("bulk evaluation, geometric mean, x native loop with -O3 for the processor",
        statistics.geometric_mean(times[OURS] / times[WIDE] for times in bulk.values()), 1.5)
    row("bulk evaluation, ((x*2+y)*3-z)/(a+b*2), evaluate for each row x bulk", nested["row by row"] / nested[OURS], 2, at_least=True)
    formulas = [compiled[f"compile/{f}"] for f in compiled_formulas(compiled)]
    row("compile and evaluate once, worst formula, x fparser", max(ratio(f, "fparser") for f in formulas), 1)
    row("compile and evaluate once, worst formula, muparser x ours",
        min(1 / ratio(f, "muparser") for f in formulas), 20, at_least=True)
    for shape in SHAPES:
        times = figures.scaled[shape][OURS].values()
        if any(isinstance(f, str) for f in times):
            table.rows.append([f"compile, {shape}, 100 to 1,000,000 terms", "fails", "at most 1.5", "no"])
        else:
            row(f"compile, {shape}, time per term, slowest x fastest of 100 to 1,000,000 terms",
                max(times) / min(times), 1.5)
    row("construct and destroy, full vocabulary, x muparser", ratio(compiled["construct"], "muparser"), 1)
    row("first object of a process, x muparser", figures.first_objects[OURS] / figures.first_objects["muparser"], 1)
    row("one shot, worst, x muparser",
        max(ratio(f, "muparser") for n, f in compiled.items() if n.startswith("oneshot/")), 0.5)
    row("allocations in 1000 evaluations", resources["allocations per 1000 evaluations"], 0)
    row("allocations for compiling again", resources["allocations per compile"], 0)
    row("memory of an expression object", resources["bytes of an object"][OURS], 65536, unit=" bytes")
    row("memory of compiled ((x*2+y)*3-z)/(a+b*2)", resources["bytes of the program"], 1536, unit=" bytes")
    python_targets(row, figures.package)
    return table
