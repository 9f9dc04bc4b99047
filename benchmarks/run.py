#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Runs the benchmarks, prints the tables, and writes the page on performance.

./dev bench builds the programs and calls this script. While working on the engine, build them once with the preset "bench"
and call it directly, for example: benchmarks/run.py build/bench/bin --quick --only evaluate --formula 4,10
"""
import argparse
import os
import platform
import re
import subprocess
import sys
from pathlib import Path

sys.dont_write_bytecode = True  # leaves no files in the source folder

import charts
import measure
import report


def main():
    arguments = parse_arguments()
    os.sched_setaffinity(0, {arguments.cpu})
    effort = measure.QUICK if arguments.quick else measure.FULL
    programs = measure.Programs(arguments.directory, effort, progress)
    try:
        if arguments.only == "evaluate":
            tables = [evaluate_only(programs, arguments.formula)]
        elif arguments.only == "bulk":
            tables = [report.bulk_table(programs.bulk(), programs.titles)]
        elif arguments.only == "python":
            tables = report.python_tables(programs.python())
        else:
            figures = everything(programs)
            tables = report.tables(figures)
    except measure.Failed as failure:
        sys.exit(f"a benchmark program failed: {failure}")
    progress("")
    print("\n".join(table.text() for table in tables))
    print(f"{report.MARK}: results differ from native code in some bits; -: cannot compute the formula")
    if arguments.page and not arguments.quick and not arguments.only:
        write_page(Path(arguments.page), figures, tables, machine(arguments.cpu))


def parse_arguments():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("directory", help="folder of the benchmark programs")
    parser.add_argument("--quick", action="store_true", help="within a minute, with more noise")
    parser.add_argument("--only", choices=["evaluate", "bulk", "python"], help="measure only one of these")
    parser.add_argument("--formula", type=lambda text: [int(n) for n in text.split(",")],
                        default=list(range(1, measure.NB_FORMULAS + 1)), help="with --only evaluate: numbers, such as 1,4")
    parser.add_argument("--cpu", type=int, default=max(os.sched_getaffinity(0)), help="the processor to run on")
    parser.add_argument("--page", help="the page to write; only a full run writes it")
    return parser.parse_args()


def progress(text):
    if sys.stderr.isatty():
        print(f"\r\033[K{text}", end="", file=sys.stderr, flush=True)


def evaluate_only(programs, formulas):
    evaluated = programs.evaluate(formulas, [measure.NATIVE, measure.OURS, *measure.DOORS, *measure.PEERS])
    return report.evaluation_table(evaluated, programs.titles)


def everything(programs):
    interpreters = [measure.OURS, *measure.PEERS]
    engines = [measure.NATIVE, measure.OURS, *measure.DOORS, *measure.PEERS]
    figures = report.Figures(evaluated=programs.evaluate(range(1, measure.NB_FORMULAS + 1), engines),
                             bulk=programs.bulk(), compiled=programs.compile(interpreters),
                             scaled=programs.scale(interpreters), first_objects=programs.first_objects(),
                             resources=programs.resources(), package=programs.python(), titles=programs.titles)
    for formula, times in figures.package["bulk peers"].items():
        figures.bulk[int(formula)].update(times)
    return figures


def write_page(path, figures, tables, machine_text):
    """The page: pictures, method, the targets, the other figures, and the hand-written remarks."""
    template = Path(__file__).with_name("page.md").read_text(encoding="utf-8")
    path.write_text(template.format(machine=machine_text, summary=tables[-1].markdown(),
                                    tables="\n".join(table.markdown() for table in tables[:-1])), encoding="utf-8")
    for name, picture in [("one-row", charts.one_row(figures)), ("many-rows", charts.many_rows(figures))]:
        path.with_name(f"{path.stem}-{name}.svg").write_text(picture, encoding="utf-8")


def machine(cpu):
    model = re.search(r"model name\s*: (.*)", Path("/proc/cpuinfo").read_text(encoding="utf-8"))
    compiler = subprocess.run(["g++", "--version"], stdout=subprocess.PIPE, text=True, check=True).stdout.split("\n")[0]
    packages = ["libbenchmark-dev", "libmuparser-dev", "libmuparserx-dev", "libfparser-dev", "libluajit-5.1-dev",
                "libc6", "python3", "python3-numpy", "python3-numexpr"]
    lines = subprocess.run(["dpkg-query", "-W", "-f=${Package} ${Version}\n", *packages], stdout=subprocess.PIPE, text=True,
                           check=True).stdout.splitlines()
    versions = ", ".join(dict.fromkeys(lines))  # once per version, of all architectures
    return (f"{model.group(1) if model else platform.machine()}, {os.cpu_count()} processors, pinned to number {cpu}; "
            f"load average {os.getloadavg()[0]:.1f} at the end; {platform.system()} {platform.release()}; {compiler}; "
            f"{versions}.")


if __name__ == "__main__":
    main()
