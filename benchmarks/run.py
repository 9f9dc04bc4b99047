#!/usr/bin/env python3
"""Runs the benchmarks and prints one table; the first version: evaluation only."""
import argparse
import json
import math
import os
import statistics
import subprocess
import sys

ENGINES = ["native", "mathexpr", "muparser", "muparserx", "fparser", "fparser optimized", "luajit"]


def run_json(command):
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
    if done.returncode != 0:
        sys.exit(f"{' '.join(command)}: {done.returncode}\n{done.stderr}")
    return json.loads(done.stdout)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("directory", help="where the benchmark programs are")
    parser.add_argument("--quick", action="store_true")
    parser.add_argument("--cpu", type=int, default=max(os.sched_getaffinity(0)))
    parser.add_argument("--formula", default="", help="numbers, such as 1,4")
    parser.add_argument("--engines", default=",".join(ENGINES))
    arguments = parser.parse_args()
    os.sched_setaffinity(0, {arguments.cpu})
    rounds, seconds = (7, 0.004) if arguments.quick else (15, 0.01)
    numbers = [int(n) for n in arguments.formula.split(",")] if arguments.formula else range(1, 19)
    engines = arguments.engines.split(",")

    print(f"{'ns per evaluation':28}" + "".join(f"{e:>12.12}" for e in engines) + f"{'x native':>10}{'best peer':>10}")
    ratios = {}
    for number in numbers:
        report = run_json([
            os.path.join(arguments.directory, "benchmark_evaluate"),
            f"--benchmark_filter=^{number}/({'|'.join(engines)})$", f"--benchmark_repetitions={rounds}",
            f"--benchmark_min_time={seconds}", "--benchmark_enable_random_interleaving=true",
            "--benchmark_format=json"])
        times, differing, title = {}, {}, report["context"][f"formula {number}"]
        for row in report["benchmarks"]:
            if row.get("run_type") == "aggregate" or row.get("error_occurred"):
                continue
            engine = row["name"].split("/")[1]
            times.setdefault(engine, []).append(row["cpu_time"])
            differing[engine] = row["differing"]
        medians = {e: statistics.median(t) for e, t in times.items()}
        line = f"{number:2} {title:25.25}"
        for engine in engines:
            mark = "~" if differing.get(engine) else " "
            line += f"{medians[engine]:11.2f}{mark}" if engine in medians else f"{'-':>11} "
        ours, native = medians.get("mathexpr"), medians.get("native")
        peers = [m for e, m in medians.items() if e not in ("native", "mathexpr")]
        if ours and native:
            ratios[number] = ours / native
            line += f"{ours / native:10.2f}"
            if peers:
                line += f"{ours / min(peers):10.2f}"
        print(line, flush=True)
    mean = [ratios[n] for n in range(1, 12) if n in ratios]
    if mean:
        print(f"geometric mean of {len(mean)}: {math.exp(statistics.fmean(map(math.log, mean))):.2f} x native "
              f"(~: not bit-exact)")


main()
