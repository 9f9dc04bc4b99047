# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Measures a formula over a table, with the calculator and with other programs that compute tables. Prints a table in
Markdown: the time relative to mawk's, and the peak memory.

Usage: tables.py CALCULATOR [ROWS [ROUNDS]]

The table has six columns of numbers and ROWS rows, by default 5,000,000. In each of the ROUNDS, by default 5, every program
runs once, one after the other; the shortest of its times counts. All programs write to a file, and the sums of their results
must agree. Programs that are not installed are omitted, except mawk: apt-get install mawk miller python3-pandas.
"""

import math
import os
import random
import shutil
import subprocess
import sys
import tempfile
import threading
import time
from pathlib import Path

HEADINGS = "x,y,z,a,b,c"
FORMULA = "((x*2+y)*3-z)/(a+b*2)"
AWK = 'NR == 1 { print "result"; next } { printf "%.17g\\n", (($1*2+$2)*3-$3)/($4+$5*2) }'
MILLER = 'emit {"result":(($x*2+$y)*3-$z)/($a+$b*2)}'
PANDAS = f"""
import sys, pandas
table = pandas.read_csv(sys.argv[1])
table.eval("result={FORMULA}")[["result"]].to_csv(sys.stdout, index=False)
"""


def programs(calculator, table):
    """Name and command of each installed program."""
    calculation = [calculator, "--table", table, FORMULA]
    found = {
        "mawk": ["mawk", "-F,", AWK, table],
        "mathexpr, one thread": calculation,
        "mathexpr, two threads": [*calculation, "--threads", "2"],
    }
    if shutil.which("gawk"):
        found["gawk"] = ["gawk", "-F,", AWK, table]
    if shutil.which("mlr"):
        found["Miller"] = ["mlr", "--csv", "put", "-q", MILLER, table]
    for python in ("/usr/bin/python3", sys.executable):
        if subprocess.run([python, "-c", "import pandas"], capture_output=True, check=False).returncode == 0:
            found["pandas"] = [python, "-c", PANDAS, table]
            break
    return found


def write_table(path, rows):
    source = random.Random(1)
    with open(path, "w", encoding="ascii") as file:
        file.write(HEADINGS + "\n")
        for _ in range(rows):
            file.write(",".join(f"{source.uniform(1, 1000):.6g}" for _ in range(6)) + "\n")


def watch_memory(running, highest):
    """Tracks the peak memory of the program in KB until it ends."""
    status = Path("/proc", str(running.pid), "status")
    while running.returncode is None:
        try:
            for line in status.read_text(encoding="ascii").splitlines():
                if line.startswith("VmHWM:"):
                    highest[0] = max(highest[0], int(line.split()[1]))
        except OSError:
            return
        time.sleep(0.02)


def run(command, output):
    """The time in seconds, and the peak memory in MB."""
    highest = [0]
    with open(output, "wb") as file:
        begin = time.perf_counter()
        with subprocess.Popen(command, stdout=file, env={**os.environ, "LC_ALL": "C"}) as running:
            watcher = threading.Thread(target=watch_memory, args=(running, highest))
            watcher.start()
            running.wait()
            taken = time.perf_counter() - begin
            watcher.join()
    if running.returncode != 0:
        raise RuntimeError(f"{command[0]} ended with {running.returncode}")
    return taken, highest[0] / 1024


def sum_of(output):
    with open(output, encoding="ascii") as file:
        next(file)
        return math.fsum(float(line) for line in file)


def main(calculator, rows="5000000", rounds="5"):
    with tempfile.TemporaryDirectory() as folder:
        table, output = str(Path(folder, "table.csv")), str(Path(folder, "results.csv"))
        write_table(table, int(rows))
        times, memory, sums = {}, {}, {}
        for _ in range(int(rounds)):
            for name, command in programs(calculator, table).items():
                taken, memory[name] = run(command, output)
                times[name] = min(taken, times.get(name, taken))
                sums[name] = sums.get(name) or sum_of(output)
    for name, result in sums.items():
        if not math.isclose(result, sums["mawk"], rel_tol=1e-9):
            raise RuntimeError(f"{name} computes something else: {result} instead of {sums['mawk']}")
    print(f"| {int(rows):,} rows, `{FORMULA}` | time beside mawk | memory, MB |\n| --- | ---: | ---: |")
    for name, taken in sorted(times.items(), key=lambda item: item[1]):
        print(f"| {name} | {taken / times['mawk']:.2f} | {memory[name]:.0f} |")


if __name__ == "__main__":
    main(*sys.argv[1:])
