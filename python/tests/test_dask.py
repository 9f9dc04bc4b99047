# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""The example of a partitioned table, and its command line: all rows or a clear failure, even if workers die.

Workers die because this process kills them while they compute. The closures that wait to be killed are sent to
the workers with their code.
"""

import os
import shutil
import signal
import subprocess
import sys
import threading
import time
from pathlib import Path

import dask
import dask.array
import dask.dataframe
import mathexpr
import mathexpr.dask
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
    """Checks that the result has all rows of the table, in order, with the right values."""
    computed, rows = rows_of(result), rows_of(table)
    assert len(computed) == NB_PARTS * ROWS_PER_PART
    assert (computed[["width", "height"]] == rows).all(axis=None) and (computed[column] == value(rows)).all()


def left_behind(folder):
    return sorted(path.name for path in folder.iterdir())


def after(step):
    """Returns an evaluation that runs another step first, on the same worker."""

    def evaluate(frame, assignment):
        return mathexpr.dask.evaluate(frame.map_partitions(step, meta=frame._meta), assignment)

    return evaluate


def test_all_rows(client, table, tmp_path):
    assert partitioned.run(client, table, tmp_path / "result", "width*height") == NB_PARTS * ROWS_PER_PART
    check(tmp_path / "result", table)
    assert left_behind(tmp_path) == ["result", "table"]


def test_points(client, table, tmp_path):
    partitioned.run(client, table, tmp_path / "result", "[0,width,0]*2")
    check(tmp_path / "result", table, "result_y", lambda rows: rows.width * 2)


def test_a_worker_that_is_killed_in_the_middle(client, table, tmp_path):
    begun = tmp_path / "begun"

    def wait_once(part):
        if not begun.exists():
            begun.write_text(str(os.getpid()))
            time.sleep(60)
        return part

    def kill():
        while not (begun.exists() and begun.read_text()):
            time.sleep(0.01)
        os.kill(int(begun.read_text()), signal.SIGKILL)

    killer = threading.Thread(target=kill)
    killer.start()
    row_count = partitioned.run(client, table, tmp_path / "result", "width*height", after(wait_once))
    killer.join()
    assert row_count == NB_PARTS * ROWS_PER_PART and begun.exists()
    check(tmp_path / "result", table)


def test_a_partition_that_kills_every_worker(client, table, tmp_path):
    deaths = tmp_path / "deaths"
    fatal = pandas.read_csv(table / "3.csv", float_precision="round_trip").width[0]

    def die(part):
        if part.width.iloc[0] == fatal:
            with deaths.open("a") as log:
                log.write("x")
            os.kill(os.getpid(), signal.SIGKILL)
        return part

    with pytest.raises(KilledWorker):
        partitioned.run(client, table, tmp_path / "result", "width*height", after(die))
    assert deaths.read_text() == "xx"  # one more than allowed
    assert left_behind(tmp_path) == ["deaths", "table"]


def test_nothing_is_left_of_what_a_worker_writes_meanwhile(tmp_path, monkeypatch):
    unfinished = tmp_path / "unfinished"
    (unfinished / "drafts").mkdir(parents=True)
    remove_all = shutil.rmtree

    def lose_the_race(folder, ignore_errors):
        """Simulates a file that appears after the folder was listed for removal."""
        (folder / "drafts" / "late").write_text("1")
        assert ignore_errors
        monkeypatch.setattr(shutil, "rmtree", remove_all)

    monkeypatch.setattr(shutil, "rmtree", lose_the_race)
    partitioned.remove(unfinished)
    assert left_behind(tmp_path) == []


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


# ----- mathexpr.dask ---------------------------------------------------------

BOXES = pandas.DataFrame({"w": [1, 2, 3, 4], "h": [3.0, 4.0, 5.0, 6.0], "name": list("abcd")}, index=[5, 6, 7, 8])


def test_columns_are_added_lazily_and_partitions_stay():
    frame = dask.dataframe.from_pandas(BOXES, npartitions=2)
    result = mathexpr.dask.evaluate(frame, "area=w*h", "twice=2*area", "p=[w,area]", "k=n+1", variables={"n": 6})
    assert isinstance(result, dask.dataframe.DataFrame) and result.divisions == frame.divisions
    assert list(result.columns) == ["w", "h", "name", "area", "twice", "p_x", "p_y", "p_z", "k"]
    computed = result.compute(scheduler="sync")
    assert (computed.dtypes == result.dtypes).all() and computed[list(BOXES)].equals(BOXES)
    assert computed.area.to_dict() == {5: 3, 6: 8, 7: 15, 8: 24} and (computed.twice == 2 * computed.area).all()
    assert computed.p_y.equals(computed.area.rename("p_y")) and (computed.k == 7).all()
    dask.dataframe.utils.assert_eq(result, computed, scheduler="sync")


def test_partitions_without_rows():
    frame = dask.dataframe.from_pandas(BOXES, npartitions=2)
    result = mathexpr.dask.evaluate(frame[frame.w > 2], "p=[w,h]", "q=w/h")
    parts = dask.compute(*result.to_delayed(), scheduler="sync")
    assert [len(part) for part in parts] == [0, 2] and all((part.dtypes == result.dtypes).all() for part in parts)


def test_missing_values_stay_missing_in_partitions():
    boxes = pandas.DataFrame({"w": pandas.array([1, None, 3], dtype="Int64")})
    result = mathexpr.dask.evaluate(dask.dataframe.from_pandas(boxes, npartitions=3), "v=ln(w)")
    assert str(result.v.dtype) == "Float64" and result.v.compute(scheduler="sync").isna().tolist() == [False, True, False]


@pytest.mark.parametrize(
    "assignment, error, message",
    [
        ("area=w*q", mathexpr.ParsingError, "A name is not known"),
        ("area", ValueError, "'area' assigns to no column"),
        ("w==3", ValueError, "assigns to no column"),
        ("twice=name*2", TypeError, "the column 'name' holds Python objects"),
    ],
)
def test_what_is_wrong_is_told_before_anything_is_computed(assignment, error, message):
    frame = dask.dataframe.from_pandas(BOXES, npartitions=2)
    with pytest.raises(error, match=message):
        mathexpr.dask.evaluate(frame, assignment)
    with pytest.raises(mathexpr.ParsingError):
        mathexpr.dask.evaluate(frame, "area=w+h+w", limits=mathexpr.Limits(max_records=3))


def test_arrays_block_by_block(client):
    curve = mathexpr.function("x^2+k*y", "x", "y", "k")
    xs = dask.array.arange(1000, chunks=300, dtype="f4")
    result = mathexpr.dask.map_blocks(curve, xs, xs.astype(float)[::-1].rechunk(300), 2)
    assert result.chunks == xs.chunks and result.dtype == np.float64
    numbers = np.arange(1000.0)
    for scheduler in ("sync", "threads", client):
        assert (result.compute(scheduler=scheduler) == numbers**2 + 2 * numbers[::-1]).all()
    with pytest.raises(mathexpr.RowsError):
        mathexpr.dask.map_blocks(mathexpr.function("ln(x)", "x"), xs).compute(scheduler="sync")
    with pytest.raises(TypeError, match="map_blocks takes functions of numbers"):
        mathexpr.dask.map_blocks(mathexpr.function("abs(p)", "p", points=["p"]), xs)


def test_a_frame_on_workers(client):
    result = mathexpr.dask.evaluate(dask.dataframe.from_pandas(BOXES, npartitions=3), "area=w*h")
    assert client.compute(result.area.sum()).result() == 50
    with pytest.raises(mathexpr.RowsError) as caught:
        client.compute(mathexpr.dask.evaluate(dask.dataframe.from_pandas(BOXES, npartitions=2), "v=1/(w-3)")).result()
    assert caught.value.first_failed == 0 and caught.value.failed_count == 1


MEMORY_LIMIT = 1_200_000_000

LARGE = f"""
import resource
resource.setrlimit(resource.RLIMIT_AS, ({MEMORY_LIMIT}, {MEMORY_LIMIT}))
import dask, dask.dataframe, numpy as np, pandas, mathexpr.dask

ROWS, PARTS = 1_000_000, 50

@dask.delayed
def part(index):
    first = np.arange(index * ROWS, (index + 1) * ROWS, dtype=float)
    return pandas.DataFrame({{"w": first, "h": first % 7, "l": 2.0}})

frame = dask.dataframe.from_delayed([part(index) for index in range(PARTS)], meta={{"w": float, "h": float, "l": float}})
result = mathexpr.dask.evaluate(frame, "volume=w*h*l", "edge=12*(w+h+l)")

@dask.delayed
def summary(part):
    return len(part), int(part.memory_usage(index=False).sum()), float(part.volume.sum()), float(part.edge.sum())

parts = dask.compute(*map(summary, result.to_delayed()), scheduler="sync")
print(*map(sum, zip(*parts)))
"""


def test_fifty_million_rows_that_do_not_fit_the_memory():
    environment = {**os.environ, "OPENBLAS_NUM_THREADS": "1", "OMP_NUM_THREADS": "1"}
    done = subprocess.run([sys.executable, "-c", LARGE], env=environment, capture_output=True, text=True, check=False)
    assert done.returncode == 0, done.stderr
    row_count, size, volume, edge = done.stdout.split()
    assert int(row_count) == 50_000_000 and int(size) > MEMORY_LIMIT
    sixes = sum(range(7))
    expected_edge = 12 * (sum(range(50_000_000)) + 50_000_000 // 7 * sixes + sum(range(50_000_000 % 7)) + 2 * 50_000_000)
    assert float(edge) == pytest.approx(expected_edge, rel=1e-12)
    whole = 50_000_000 // 7
    expected_volume = 2 * sum(r * (7 * whole * (whole - 1) // 2 + r * whole) for r in range(7))
    expected_volume += 2 * sum(n * (n % 7) for n in range(7 * whole, 50_000_000))
    assert float(volume) == pytest.approx(expected_volume, rel=1e-12)
