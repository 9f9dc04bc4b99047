# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""partitioned.py - one expression over a table that may be larger than a machine, with Dask.

    partitioned.py TABLE RESULT EXPRESSION [--scheduler ADDRESS | --workers N]

TABLE is a folder of CSV files with the same headings, which are the names in the expression. RESULT is a folder that must
not exist yet. It receives the same rows with an additional column `result`, or `result_x`, `result_y` and `result_z` if
the expression yields points.

At the end, either RESULT contains all rows, or it does not exist and the exit status is 1. Rows are first written to a
folder RESULT.unfinished-..., which is renamed last. If a worker dies, others compute its partitions again. A partition
that has killed several workers ends the run, as does a row for which the expression has no value.

Without --scheduler, the workers are N processes on this machine. With it, they are those of a cluster. In that case

- TABLE and RESULT must be folders that all machines see under the same path,
- the package mathexpr must be installed where the workers run (`pip wheel ./python` builds a file to distribute),
- nothing else changes: workers receive the text, and compile it for each partition.
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
    """Computes all rows, and returns their number. Raises an exception on failure, and leaves no result behind."""
    if result.exists():
        raise FileExistsError(f"{result} is there already")
    # Without round_trip, pandas may read a number as a neighbouring double.
    rows = dask.dataframe.read_csv(str(table / "*.csv"), dtype=float, float_precision="round_trip")
    computed = evaluate(rows, f"result={text}")  # raises errors in the expression before the work begins

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
    """Removes a folder to which workers may still write: a file may appear while it is emptied. Once it is removed, writing
    fails."""
    deadline = time.monotonic() + 10
    while folder.exists() and time.monotonic() < deadline:
        shutil.rmtree(folder, ignore_errors=True)


def write(part, drafts, path):
    """Writes a partition, completely or not at all, even if another worker writes it too. Returns its number of rows."""
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
