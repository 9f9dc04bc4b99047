// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/** parts.test.mjs - tests without a browser: curves, differences of lists, texts of points, pasted columns, the view. */
import assert from "node:assert/strict";
import { test } from "node:test";
import { sampleCurve } from "../src/engine/curve.js";
import { applyDifference, difference } from "../src/engine/line-results.js";
import { drawnAlike, pointText, sceneOf } from "../src/picture/scene.js";
import { View, decimalsOf } from "../src/picture/view.js";
import { linesOfColumns } from "../src/sheet/columns.js";
import { literalOf } from "../src/sheet/literal.js";

const refused = 10;

/** Evaluates a function for rows of an array; undefined is a row without a value. */
const rowsOf = (formula) => (places) => {
  const values = Float64Array.from(places, (x) => formula(x) ?? NaN);
  return { values, status: Uint32Array.from(places, (x) => (formula(x) === undefined ? refused : 0)) };
};
const curveOf = (formula, from = -10, to = 10) => sampleCurve(rowsOf(formula), from, to, 200, 20);

test("a smooth curve is one piece", () => {
  const { pieces, gaps } = curveOf((x) => x * x);
  assert.equal(pieces.length, 1);
  assert.deepEqual(gaps, []);
  assert.deepEqual(pieces[0][0], [-10, 100]);
  assert.deepEqual(pieces[0].at(-1), [10, 100]);
});

test("a steep curve is not a jump", () => {
  assert.deepEqual(curveOf((x) => 1e6 * x).gaps, []);
  assert.deepEqual(curveOf((x) => Math.tanh(1e6 * x) * 1000).gaps, []);
});

test("a single x without a value between two samples is found", () => {
  const { pieces, gaps } = curveOf((x) => (x === 0.7 ? undefined : 1 / (x - 0.7)));
  assert.equal(pieces.length, 2);
  assert.equal(gaps.length, 1);
  assert.equal(gaps[0].place, 0.7);
  assert.equal(gaps[0].message, refused);
  assert.ok(pieces[0].at(-1)[0] <= 0.7 && pieces[1][0][0] >= 0.7);
});

test("the boundary of a domain is found to the last bit", () => {
  const { pieces, gaps } = curveOf((x) => (x > 1 / 3 ? Math.sqrt(x) : undefined));
  assert.equal(pieces.length, 1);
  assert.equal(gaps.length, 1);
  assert.equal(gaps[0].from, -10);
  assert.ok(Math.abs(gaps[0].to - 1 / 3) < 1e-12);
  assert.equal(gaps[0].place, null);
  assert.equal(gaps[0].message, refused);
});

test("a NaN is a gap without a message", () => {
  const { gaps } = curveOf((x) => (Math.abs(x) < 2 ? NaN : x));
  assert.equal(gaps.length, 1);
  assert.equal(gaps[0].message, 0);
  assert.ok(Math.abs(gaps[0].from + 2) < 1e-9 && Math.abs(gaps[0].to - 2) < 1e-9);
});

test("a step is a gap", () => {
  const { pieces, gaps } = curveOf((x) => (x < 1 ? 0 : 15));
  assert.equal(pieces.length, 2);
  assert.equal(gaps.length, 1);
  assert.ok(Math.abs(gaps[0].to - 1) < 1e-9);
});

test("a curve without any value is one gap", () => {
  const { pieces, gaps } = curveOf(() => undefined);
  assert.deepEqual(pieces, []);
  assert.deepEqual(gaps, [{ from: -10, to: 10, place: null, message: refused }]);
});

test("applying a difference to the first list gives the second", () => {
  const [a, b, c, d] = ["a", "b", "c", "d"];
  for (const [before, after] of [
    [[], [a]],
    [[a], []],
    [[a, b, c], [a, d, c]],
    [[a, a, a], [a, a]],
    [[a, b], [a, c, d, b]],
    [[a, b], [a, b]],
  ]) {
    const change = difference(before, after);
    assert.deepEqual(applyDifference(before, change), after);
    assert.ok(change.changed.length <= after.length);
  }
  assert.deepEqual(difference([a, b, c], [a, d, c]), { prefix: 1, suffix: 1, changed: [d] });
});

test("numbers are written as literals of expressions", () => {
  for (const [value, text] of [
    [2.5, "2.5"],
    [-0, "0"],
    [2147483647, "2147483647"],
    [3e9, "3000000000.0"],
    [-3e9, "-3000000000.0"],
    [1e21, "1e+21"],
    [1e-7, "0.0000001"],
    [-1.25e-8, "-0.0000000125"],
  ]) {
    assert.equal(literalOf(value), text);
    assert.ok(Object.is(Number(text) + 0, value + 0), text);
  }
});

test("the text of a moved point", () => {
  const source = "A=[1, 2,7.5]";
  const handle = { start: 2, length: 10, at: [1, 2, 7.5] };
  assert.equal(pointText(source, handle, [3, 4, 7.5], 0), "[3,4,7.5]");
  assert.equal(pointText(source, handle, [3, 4, 8.26], 1), "[3,4,8.3]");
  const flat = { start: 0, length: 5, at: [1, 2, 0] };
  assert.equal(pointText("[1,2]", flat, [3, 4.26, 0], 1), "[3,4.3]");
  assert.equal(pointText("[1,2]", flat, [-0.01, 2, 5], 1), "[0,2,5]");
});

test("spreadsheet columns become points", () => {
  assert.deepEqual(linesOfColumns("0\t1.5\r\n10\t-2\r\n", "en"), ["[0,1.5]", "[10,-2]"]);
  assert.deepEqual(linesOfColumns("x\ty\tz\n1\t2\t3\n4e3\t.5\t+6\n", "en"), ["# x, y, z", "[1,2,3]", "[4000,0.5,6]"]);
  assert.deepEqual(linesOfColumns("0,5\t1\n\u22122\t3000000000", "de"), ["[0.5,1]", "[-2,3000000000.0]"]);
});

test("other texts are not columns", () => {
  for (const text of [
    "",
    "1+2",
    "a=1\nb=2",
    "1\t2", // one row
    "x\ty\n1\t2",
    "1\t2\n3", // a cell is missing
    "1\t2\n3\t",
    "1\t2\t3\t4\n1\t2\t3\t4",
    "1\t2\n3\ta",
    "1\ta\n3\t4",
    "1,234\t2\n3\t4", // a comma that separates thousands
    "1\t2\n0x10\tInfinity",
  ]) {
    assert.equal(linesOfColumns(text, "en"), null, JSON.stringify(text));
  }
});

/** The result of a line that is a literal point. */
const cornerOf = (x, name = "") => ({
  source: `[${x},0]`,
  kind: "value",
  name,
  point: [x, 0, 0],
  handles: [{ start: 0, length: 5, at: [x, 0, 0], whole: true }],
  constructions: [],
});
const number = () => ({ source: "1", kind: "value", name: "", point: null, handles: [], constructions: [] });

test("literal points on consecutive lines are a polyline", () => {
  const { polylines, points } = sceneOf([cornerOf(1), cornerOf(2), number(), cornerOf(3), cornerOf(4, "A"), cornerOf(5), cornerOf(6), cornerOf(7)]);
  assert.deepEqual(polylines, [
    { label: "Line 1–2", at: [[1, 0, 0], [2, 0, 0]] },
    { label: "Line 6–8", at: [[5, 0, 0], [6, 0, 0], [7, 0, 0]] },
  ]);
  const labels = new Map(points.map(({ line, label }) => [line, label]));
  assert.deepEqual([...labels].sort(), [[0, ""], [1, ""], [3, "Line 4"], [4, "A"], [5, ""], [6, ""], [7, ""]]);
  assert.ok(points.every(({ handle }) => handle !== null));
});

test("corners of a long polyline are not movable", () => {
  const { polylines, points } = sceneOf(Array.from({ length: 51 }, (_, index) => cornerOf(index)));
  assert.equal(polylines[0].at.length, 51);
  assert.deepEqual(points, []);
});

test("a picture is redrawn if a drawn line has changed", () => {
  const [a, b, one] = [cornerOf(1), cornerOf(2), number()];
  assert.ok(drawnAlike([a, one], [a, number()]));
  assert.ok(!drawnAlike([a, one], [b, one]));
  assert.ok(!drawnAlike([a, one], [a, b]));
  assert.ok(!drawnAlike([a, b], [a, one]));
  assert.ok(!drawnAlike([a], [a, one]), "the lines' numbers have changed");
});

test("zooming keeps the point under the mouse in place", () => {
  const view = Object.assign(new View(), { width: 400, height: 300 });
  for (const isSpace of [false, true]) {
    view.isSpace = isSpace;
    view.fit([[0, 10], [0, 10], [0, 5]], true);
    const before = view.toLevel(100, 50);
    view.zoom(3, 100, 50);
    const after = view.toLevel(100, 50, before[2]);
    assert.ok(Math.hypot(after[0] - before[0], after[1] - before[1]) < 1e-12);
    assert.equal(view.scale[0], view.scale[1]);
  }
});

/** A view in space that is fitted to a box. */
function spaceView(box = [[0, 10], [0, 10], [0, 10]]) {
  const view = Object.assign(new View(), { width: 400, height: 300 });
  view.isSpace = true;
  view.fit(box, true);
  return view;
}
const assertNear = (actual, expected) => {
  assert.equal(actual.length, expected.length);
  actual.forEach((value, index) => assert.ok(Math.abs(value - expected[index]) < 1e-9, `${actual} ${expected}`));
};

test("a box in space is fitted to the screen, its centre at the centre", () => {
  const view = spaceView([[0, 40], [0, 30], [5, 20]]);
  for (let step = 0; step < 20; ++step) {
    view.orbit(31, step % 2 ? 17 : -23);
    view.fit([[0, 40], [0, 30], [5, 20]], true);
    for (const x of [0, 40]) for (const y of [0, 30]) for (const z of [5, 20]) {
      const [left, top] = view.toScreen([x, y, z]);
      assert.ok(left > 47.9 && left < 352.1 && top > 47.9 && top < 252.1, `${left} ${top}`);
    }
    assertNear(view.toScreen([20, 15, 12.5]), [200, 150]);
  }
});

test("toLevel() inverts toScreen(), and a point follows the pointer when panned", () => {
  const view = spaceView();
  const place = [3, 7, 2.5];
  assertNear(view.toLevel(...view.toScreen(place), 2.5), place);
  const before = view.toScreen(place);
  view.pan(30, -12);
  assertNear(view.toScreen(place), [before[0] + 30, before[1] - 12]);
});

test("the tilt is limited to the range from plan to 85 degrees", () => {
  const view = spaceView();
  view.orbit(-30, -500);
  const plan = Object.assign(new View(), { width: 400, height: 300, center: view.center, scale: view.scale });
  assertNear(view.toScreen([1, 2, 3]), plan.toScreen([1, 2, 3]));
  view.orbit(0, 500);
  assert.ok(view.direction(1)[1] > 0.08 && view.direction(2)[1] < 1);
  view.isSpace = false;
  assertNear(view.toScreen([1, 2, 3]), plan.toScreen([1, 2, 3]));
});

test("the grid has steps of 1, 2 and 5", () => {
  const view = Object.assign(new View(), { width: 1000, height: 1000 });
  for (const [scale, step] of [[100, 1], [40, 2], [20, 5], [1, 100], [700, 0.1]]) {
    view.scale = [scale, scale];
    assert.ok(Math.abs(view.gridStep(0) / step - 1) < 1e-9, `${scale}: ${view.gridStep(0)}`);
  }
  assert.equal(decimalsOf(0.1), 1);
  assert.equal(decimalsOf(0.25), 1);
  assert.equal(decimalsOf(20), 0);
});
