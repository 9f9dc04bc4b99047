# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Tests the page on performance and its charts, with made-up figures."""
import sys
import tempfile
import unittest
import xml.etree.ElementTree
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parents[2] / "benchmarks"))

import charts
import measure
import report
import run

SVG = "{http://www.w3.org/2000/svg}"
ENGINES = [measure.NATIVE, measure.OURS, *measure.DOORS, *measure.PEERS]
INTERPRETERS = [measure.OURS, *measure.PEERS]


def figures():
    """Figures: every engine takes as many nanoseconds as its index; fparser is inexact, and muparserx lacks formula 9."""
    times = {engine: (float(place + 1), 7 if engine == "fparser" else 0) for place, engine in enumerate(ENGINES)}
    evaluated = {formula: dict(times) for formula in range(1, measure.NB_FORMULAS + 1)}
    del evaluated[9]["muparserx"]
    ways = [measure.NATIVE, report.WIDE, measure.OURS, "row by row", "1 thread", "2 threads", *measure.BULK_PEERS]
    bulk = {formula: {way: place + 1.0 for place, way in enumerate(ways)} for formula in measure.BULK_FORMULAS}
    bulk[7]["inexact"] = ["numpy"]
    compiled = {name: {engine: times[engine] for engine in INTERPRETERS}
                for name in [*(f"compile/{formula}" for formula in range(1, 14)), "construct", "oneshot/1"]}
    rows = {"1 x+1": {"mathexpr": 1.0, "numexpr": 2.0, "copy": 0.5, "numpy": 3.0}}
    package = {"calls": {"lambda(3.0, 4.0)": 1.0, "f(3.0, 4.0)": 1.0, "f(x=3.0, y=4.0)": 1.0, "evaluate(text, variables)": 1.0},
               "import": 1.0, **{title: rows for title in report.PYTHON_ROWS}}
    resources = {"allocations per 1000 evaluations": 0, "allocations per compile": 0, "bytes shared by all objects": 1,
                 "bytes of the program": 1,
                 "bytes of an object": {"mathexpr": 1, "muparser": 1, "muparserx": 1, "fparser": 1}}
    titles = {f"formula {formula}": f"text<{formula}>" for formula in evaluated}
    scaled = {shape: {engine: {terms: 1.0 for terms in measure.TERMS} for engine in INTERPRETERS} for shape in measure.SHAPES}
    return report.Figures(evaluated=evaluated, bulk=bulk, compiled=compiled, scaled=scaled,
                          first_objects={"mathexpr": 1.0, "muparser": 2.0}, resources=resources, package=package,
                          titles={**titles, "oneshot 1": "2*3"})


def marks(picture):
    """[(x, y, is hollow, tooltip)] of all marks in a chart."""
    return [(*map(float, path.get("transform")[len("translate("):-1].split(",")), path.get("fill") is None,
             path.find(SVG + "title").text)
            for path in xml.etree.ElementTree.fromstring(picture).iter(SVG + "path") if path.get("transform")]


def line_of_native(picture):
    """The x coordinate of the line of value 1."""
    [line] = [path for path in xml.etree.ElementTree.fromstring(picture).iter(SVG + "path") if path.get("class") == "line"]
    return float(line.get("d")[1:].split(",")[0])


class Charts(unittest.TestCase):
    def test_a_mark_stands_where_its_value_is_on_the_scale(self):
        engines = {"a": charts.Engine("A", "circle", "#000000"), "b": charts.Engine("B", "bar", "#111111")}
        picture = charts.chart("Title", "Subtitle", "x native", engines,
                               [("first", {"a": charts.Mark(1.0), "b": charts.Mark(10.0)}),
                                ("second", {"a": charts.Mark(0.1, exact=False)})])
        ten, one, tenth = marks(picture)[2:]
        self.assertEqual(one[0], line_of_native(picture))
        self.assertAlmostEqual(ten[0] - one[0], one[0] - tenth[0], places=3)
        self.assertGreater(ten[0], one[0])
        self.assertEqual([mark[3] for mark in (ten, one, tenth)], ["B: 10", "A: 1", "A: 0.1"])
        self.assertEqual([mark[2] for mark in (ten, one, tenth)], [False, False, True])
        self.assertEqual((one[1], tenth[1]), (ten[1], ten[1] + charts.ROW_HEIGHT))

    def test_a_chart_of_equal_values_has_a_scale(self):
        engines = {"a": charts.Engine("A", "circle", "#000000")}
        picture = charts.chart("Title", "Subtitle", "x", engines, [("first", {"a": charts.Mark(1.0)})])
        self.assertEqual(marks(picture)[1][0], line_of_native(picture))

    def test_every_formula_has_its_engines(self):
        picture = charts.one_row(figures())
        root = xml.etree.ElementTree.fromstring(picture)
        texts = [text.text for text in root.iter(SVG + "text")]
        self.assertIn("19  text<19>", texts)
        self.assertIn("1  text<1>", texts)
        for engine in charts.ONE_ROW.values():
            self.assertIn(engine.title, texts)
        expected = len(charts.ONE_ROW) * (measure.NB_FORMULAS + 1) - 1  # the legend counts; one engine lacks a formula
        self.assertEqual(len(marks(picture)), expected)
        self.assertEqual({mark[3] for mark in marks(picture) if mark[2]}, {"fparser: 7"})

    def test_ways_of_many_rows_stand_beside_the_native_loop(self):
        picture = charts.many_rows(figures())
        told = [mark[3] for mark in marks(picture)]
        self.assertEqual(told.count("native, -O3 -march=native: 2"), len(measure.BULK_FORMULAS))
        self.assertEqual(told.count("NumPy: 8"), len(measure.BULK_FORMULAS))
        self.assertEqual([mark[3] for mark in marks(picture) if mark[2]], ["NumPy: 8"])

    def test_colours_follow_the_reader(self):
        picture = charts.many_rows(figures())
        self.assertIn("@media (prefers-color-scheme: dark)", picture)


class Page(unittest.TestCase):
    def test_the_page_begins_with_its_pictures(self):
        with tempfile.TemporaryDirectory() as folder:
            path = Path(folder) / "performance.md"
            measured = figures()
            run.write_page(path, measured, report.tables(measured), "A machine")
            page = path.read_text(encoding="utf-8")
            for name in ("performance-one-row.svg", "performance-many-rows.svg"):
                self.assertTrue((path.parent / name).read_text(encoding="utf-8").startswith("<svg "))
                self.assertLess(page.index(f"]({name})"), page.index("## "))
        self.assertIn("One run of one machine: A machine", page)
        self.assertIn("| C interface | bound function |", page)
        self.assertIn("| 9 text<9> | 1.00 | 2.00 | 3.00 | 4.00 | 5.00 | - |", page)
        self.assertIn("| bound function, formulas 1 to 11, geometric mean, x native | 4.00 | at most 1.9 | no |", page)
        self.assertIn("| numexpr | numpy |", page)
        self.assertIn("| 7 text<7> | 1.00 | 2.00 | 3.00 | 4.00 | 7.00 | 8.00~ |", page)


if __name__ == "__main__":
    unittest.main()
