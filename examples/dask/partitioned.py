# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""partitioned.py - one expression over a table that may be larger than a machine, with Dask.

    partitioned.py TABLE RESULT EXPRESSION [--scheduler ADDRESS | --workers N]

TABLE is a folder of CSV files with the same headings, whose names the expression reads. RESULT is a folder that may not
be there yet; it receives the same rows with one column more, `result`, or `result_x`, `result_y` and `result_z` where
the expression yields points.

Either RESULT holds all rows in the end, or it is not there and the exit status is 1. The rows are gathered in a folder
RESULT.unfinished-..., which takes its name last. When a worker dies, its partitions are computed again by others; a
partition that has ended several workers ends the run, as does a row for which the expression has no value.

Without --scheduler the workers are N processes of this machine. With it they are those of a cluster. Then

- TABLE and RESULT are folders that all machines see, at the same place,
- the package mathexpr is installed where the workers run; `pip wheel ./python` makes a file that can be handed around,
- nothing else changes: what travels is the text of the expression, and each partition makes an expression of its own.
"""

import argparse
import shutil
import sys
import tempfile
import time
import uuid
from pathlib import Path

import dask.dataframe
import mathexpr.dask
from distributed import Client, LocalCluster


def run(client, table, result, text, evaluate=mathexpr.dask.evaluate):
    """Computes all rows, and answers how many there are. What goes wrong is raised, with no result left behind."""
    if result.exists():
        raise FileExistsError(f"{result} is there already")
    # Without round_trip a number may be read as the neighbour of what is written.
    rows = dask.dataframe.read_csv(str(table / "*.csv"), dtype=float, float_precision="round_trip")
    computed = evaluate(rows, f"result={text}")  # what is wrong with the expression is told before the work begins

    unfinished = result.with_name(f"{result.name}.unfinished-{uuid.uuid4().hex}")
    drafts = unfinished / "drafts"
    drafts.mkdir(parents=True)
    futures = client.compute([
        dask.delayed(write)(part, drafts, unfinished / f"part-{index:05}.csv")
        for index, part in enumerate(computed.to_delayed())
    ])
    try:
        counts = client.gather(futures)
        shutil.rmtree(drafts)
        unfinished.rename(result)
    except BaseException:
        client.cancel(futures)
        remove(unfinished)
        raise
    return sum(counts)


def remove(folder):
    """Removes a folder that workers may still be writing to: a file may appear while it is emptied. Once it is gone, writing
    fails."""
    deadline = time.monotonic() + 10
    while folder.exists() and time.monotonic() < deadline:
        shutil.rmtree(folder, ignore_errors=True)


def write(part, drafts, path):
    """Writes one partition, whole or not at all, whoever else may be writing it, and answers how many rows it has."""
    draft = drafts / uuid.uuid4().hex
    part.to_csv(draft, index=False)
    draft.rename(path)
    return len(part)


def main():
    parser = argparse.ArgumentParser(description="Computes an expression for each row of a partitioned table.")
    parser.add_argument("table", type=Path)
    parser.add_argument("result", type=Path)
    parser.add_argument("expression")
    where = parser.add_mutually_exclusive_group()
    where.add_argument("--scheduler", metavar="ADDRESS", help="of a cluster, such as tcp://host:8786")
    where.add_argument("--workers", type=int, default=2, metavar="N", help="processes of this machine")
    options = parser.parse_args()
    cluster = options.scheduler or LocalCluster(n_workers=options.workers, threads_per_worker=1, dashboard_address=None,
                                                local_directory=tempfile.gettempdir())
    with Client(cluster) as client:
        try:
            row_count = run(client, options.table, options.result, options.expression)
        except Exception as error:
            sys.exit(f"partitioned.py: nothing was computed: {type(error).__name__}: {error}")
    print(f"{row_count} rows")


if __name__ == "__main__":
    main()
