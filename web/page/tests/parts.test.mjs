// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/** parts.test.mjs - parts that need no browser: sampling of curves, differences of lists, texts of moved points, the view. */
import assert from "node:assert/strict";
import { test } from "node:test";
import { sampleCurve } from "../src/engine/curve.js";
import { applyDifference, difference } from "../src/engine/line-results.js";
import { coordinateText, pointText } from "../src/picture/scene.js";
import { View, decimalsOf } from "../src/picture/view.js";

const refused = 10;

/** A function as rows of an array: undefined is a refused row. */
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

test("a steep curve is not taken for a jump", () => {
  assert.deepEqual(curveOf((x) => 1e6 * x).gaps, []);
  assert.deepEqual(curveOf((x) => Math.tanh(1e6 * x) * 1000).gaps, []);
});

test("a refused place between two samples is found, and named", () => {
  const { pieces, gaps } = curveOf((x) => (x === 0.7 ? undefined : 1 / (x - 0.7)));
  assert.equal(pieces.length, 2);
  assert.equal(gaps.length, 1);
  assert.equal(gaps[0].place, 0.7);
  assert.equal(gaps[0].message, refused);
  assert.ok(pieces[0].at(-1)[0] <= 0.7 && pieces[1][0][0] >= 0.7);
});

test("the end of a domain is found to the last bit", () => {
  const { pieces, gaps } = curveOf((x) => (x > 1 / 3 ? Math.sqrt(x) : undefined));
  assert.equal(pieces.length, 1);
  assert.equal(gaps.length, 1);
  assert.equal(gaps[0].from, -10);
  assert.ok(Math.abs(gaps[0].to - 1 / 3) < 1e-12);
  assert.equal(gaps[0].place, null);
  assert.equal(gaps[0].message, refused);
});

test("what is not a number is left open without a message", () => {
  const { gaps } = curveOf((x) => (Math.abs(x) < 2 ? NaN : x));
  assert.equal(gaps.length, 1);
  assert.equal(gaps[0].message, 0);
  assert.ok(Math.abs(gaps[0].from + 2) < 1e-9 && Math.abs(gaps[0].to - 2) < 1e-9);
});

test("a step is left open", () => {
  const { pieces, gaps } = curveOf((x) => (x < 1 ? 0 : 15));
  assert.equal(pieces.length, 2);
  assert.equal(gaps.length, 1);
  assert.ok(Math.abs(gaps[0].to - 1) < 1e-9);
});

test("a curve that is refused everywhere is one gap", () => {
  const { pieces, gaps } = curveOf(() => undefined);
  assert.deepEqual(pieces, []);
  assert.deepEqual(gaps, [{ from: -10, to: 10, place: null, message: refused }]);
});

test("a difference leads from one list to the other", () => {
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

test("coordinates are written as the language reads them", () => {
  assert.equal(coordinateText(1.25, 1), "1.3");
  assert.equal(coordinateText(-0.01, 1), "0");
  assert.equal(coordinateText(100, 0), "100");
  assert.equal(coordinateText(2.5, 6), "2.5");
  assert.equal(coordinateText(3e9, 0), "3000000000.0");
  assert.equal(coordinateText(-3e9, 2), "-3000000000.0");
  const source = "A=[1, 2,7.5]";
  assert.equal(pointText(source, { start: 2, length: 10, at: [1, 2, 7.5] }, 3, 4, 0), "[3,4,7.5]");
  assert.equal(pointText("[1,2]", { start: 0, length: 5, at: [1, 2, 0] }, 3, 4.26, 1), "[3,4.3]");
});

test("zooming keeps the place under the mouse", () => {
  const view = Object.assign(new View(), { width: 400, height: 300 });
  view.fit([0, 10], [0, 10], true);
  const before = view.toPlan(100, 50);
  view.zoom(3, 100, 50);
  const after = view.toPlan(100, 50);
  assert.ok(Math.hypot(after[0] - before[0], after[1] - before[1]) < 1e-12);
  assert.equal(view.scale[0], view.scale[1]);
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
