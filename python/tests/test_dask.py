# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""The example of a partitioned table: all rows or a clear failure, also when workers die, and on its command line.

A worker that dies in the middle is one that this process kills while it computes; the closures that wait for that are
sent to the workers with their code.
"""

import os
import signal
import subprocess
import sys
import threading
import time
from pathlib import Path

import dask
import mathexpr
import numpy as np
import pandas
import pytest
from distributed import Client, KilledWorker, LocalCluster

EXAMPLE = Path(__file__).resolve().parents[2] / "examples" / "dask" / "partitioned.py"
sys.path.insert(0, str(EXAMPLE.parent))
import partitioned  # noqa: E402

NB_PARTS, ROWS_PER_PART = 6, 1000


@pytest.fixture(name="table")
def make_table(tmp_path):
    generator = np.random.default_rng(3)
    (tmp_path / "table").mkdir()
    for index in range(NB_PARTS):
        columns = {"width": generator.uniform(1, 9, ROWS_PER_PART), "height": generator.uniform(1, 9, ROWS_PER_PART)}
        pandas.DataFrame(columns).to_csv(tmp_path / "table" / f"{index}.csv", index=False)
    return tmp_path / "table"


@pytest.fixture(name="client", scope="module")
def make_client(tmp_path_factory):
    with (
        dask.config.set({"distributed.scheduler.allowed-failures": 1}),
        LocalCluster(
            n_workers=2,
            threads_per_worker=1,
            dashboard_address=None,
            local_directory=str(tmp_path_factory.mktemp("workers")),
        ) as cluster,
        Client(cluster) as client,
    ):
        yield client


def rows_of(folder):
    parts = [pandas.read_csv(path, float_precision="round_trip") for path in sorted(folder.iterdir())]
    return pandas.concat(parts, ignore_index=True)


def check(result, table, column="result", value=lambda rows: rows.width * rows.height):
    """The result has all rows of the table, in their order, with the right values."""
    computed, rows = rows_of(result), rows_of(table)
    assert len(computed) == NB_PARTS * ROWS_PER_PART
    assert (computed[["width", "height"]] == rows).all(axis=None) and (computed[column] == value(rows)).all()


def left_behind(folder):
    return sorted(path.name for path in folder.iterdir())


def test_all_rows(client, table, tmp_path):
    assert partitioned.run(client, table, tmp_path / "result", "width*height") == NB_PARTS * ROWS_PER_PART
    check(tmp_path / "result", table)
    assert left_behind(tmp_path) == ["result", "table"]


def test_points(client, table, tmp_path):
    partitioned.run(client, table, tmp_path / "result", "[0,width,0]*2")
    check(tmp_path / "result", table, "result_y", lambda rows: rows.width * 2)


def test_a_worker_that_is_killed_in_the_middle(client, table, tmp_path):
    begun = tmp_path / "begun"

    def compute(part, text):
        if len(part) > 1 and not begun.exists():
            begun.write_text(str(os.getpid()))
            time.sleep(60)
        return partitioned.compute(part, text)

    def kill():
        while not (begun.exists() and begun.read_text()):
            time.sleep(0.01)
        os.kill(int(begun.read_text()), signal.SIGKILL)

    killer = threading.Thread(target=kill)
    killer.start()
    row_count = partitioned.run(client, table, tmp_path / "result", "width*height", compute)
    killer.join()
    assert row_count == NB_PARTS * ROWS_PER_PART and begun.exists()
    check(tmp_path / "result", table)


def test_a_partition_that_kills_every_worker(client, table, tmp_path):
    deaths = tmp_path / "deaths"
    fatal = pandas.read_csv(table / "3.csv", float_precision="round_trip").width[0]

    def compute(part, text):
        if len(part) > 1 and part.width.iloc[0] == fatal:
            with deaths.open("a") as log:
                log.write("x")
            os.kill(os.getpid(), signal.SIGKILL)
        return partitioned.compute(part, text)

    with pytest.raises(KilledWorker):
        partitioned.run(client, table, tmp_path / "result", "width*height", compute)
    assert deaths.read_text() == "xx"  # once more than is allowed
    assert left_behind(tmp_path) == ["deaths", "table"]


def test_a_row_without_a_value(client, table, tmp_path):
    with pytest.raises(mathexpr.RowsError, match="ln needs a number greater than 0") as caught:
        partitioned.run(client, table, tmp_path / "result", "width+ln(8-width)")
    assert caught.value.failed_count > 1 and caught.value.start == 6
    assert left_behind(tmp_path) == ["table"]


def test_a_wrong_expression_ends_the_run_before_it_begins(client, table, tmp_path):
    with pytest.raises(mathexpr.ParsingError) as caught:
        partitioned.run(client, table, tmp_path / "result", "width*heigth")
    assert caught.value.suggestions == ("height",)
    assert left_behind(tmp_path) == ["table"]


def run_example(*arguments):
    return subprocess.run([sys.executable, EXAMPLE, *arguments], capture_output=True, text=True, check=False)


def test_the_command_line(table, tmp_path):
    done = run_example(table, tmp_path / "result", "width*height")
    assert (done.returncode, done.stdout) == (0, f"{NB_PARTS * ROWS_PER_PART} rows\n")
    check(tmp_path / "result", table)


def test_a_running_cluster(client, table, tmp_path):
    done = run_example(table, tmp_path / "result", "width*height", "--scheduler", client.scheduler.address)
    assert (done.returncode, done.stdout) == (0, f"{NB_PARTS * ROWS_PER_PART} rows\n")
    again = run_example(table, tmp_path / "result", "width/height", "--scheduler", client.scheduler.address)
    assert again.returncode == 1 and "result is there already" in again.stderr
    check(tmp_path / "result", table)
