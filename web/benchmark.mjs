// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// benchmark.mjs - compares the package with mathjs and with JavaScript loops; prints tables for docs/web.md. Run it in the
// folder that tests/run creates, where both packages are installed.
//
// The contestants take turns in many short rounds. Each figure is the minimum, since other work on the machine can only add to
// a time.
import { all, create } from "mathjs";
import { performance } from "node:perf_hooks";

const begin = performance.now();
const processorBegin = process.cpuUsage();
const { Expression, MemoryArray, fn, init } = await import("mathexpr");
await init();
const readyAfter = performance.now() - begin;
const { user, system } = process.cpuUsage(processorBegin);

const mathjs = create(all);
const rounds = 100;
const secondsPerRound = 0.001;
const warmUpMilliseconds = 100;

const polynomial = Array.from({ length: 15 }, (_, index) => (15 - index) / 100).reduce(
  (text, coefficient) => `(${text})*x+${coefficient}`,
  "0.16",
);
const values = { x: 12.5, y: -48.25, z: 101.75, a: 2.5, b: 7.25, r: 4.5 };
const radians = (degrees) => (degrees * 3.14159265359) / 180;

/** The text, the text for mathjs if it differs, and a closure whose parameters are the variables used, in the above order. */
const formulas = [
  ["x+1", null, (x) => x + 1],
  ["a*b+r", null, (a, b, r) => a * b + r],
  ["(x+y)*(x-y)/2", null, (x, y) => ((x + y) * (x - y)) / 2],
  ["((x*2+y)*3-z)/(a+b*2)", null, (x, y, z, a, b) => ((x * 2 + y) * 3 - z) / (a + b * 2)],
  ["sqrt(x^2+y^2+z^2)", null, (x, y, z) => Math.sqrt(x ** 2 + y ** 2 + z ** 2)],
  ["sqrt(x*x+y*y+z*z)", null, (x, y, z) => Math.sqrt(x * x + y * y + z * z)],
  [
    "sin(x)*r+cos(y)*r",
    "sin(x*3.14159265359/180)*r+cos(y*3.14159265359/180)*r",
    (x, y, r) => Math.sin(radians(x)) * r + Math.cos(radians(y)) * r,
  ],
  ["min(a,b)*max(x,y)+abs(z)", null, (x, y, z, a, b) => Math.min(a, b) * Math.max(x, y) + Math.abs(z)],
  ["(x>y)*a+(x<=y)*b", null, (x, y, a, b) => Number(x > y) * a + Number(x <= y) * b],
  [polynomial, null, hornerOf(polynomial)],
  ["2*3+4*5-6/7", null, () => 2 * 3 + 4 * 5 - 6 / 7],
];

/** The polynomial as a closure. */
function hornerOf(text) {
  const coefficients = text.match(/[\d.]+/g).map(Number);
  const [first, ...others] = coefficients;
  return (x) => others.reduce((sum, coefficient) => sum * x + coefficient, first);
}

/** Mean time of a call, in seconds. */
function timeOf(call, count) {
  const start = performance.now();
  for (let i = 0; i < count; i++) call(i);
  return (performance.now() - start) / 1000 / count;
}

/** Repeats the call until JavaScript's compiler has optimised it. */
function warmUp(call) {
  for (const end = performance.now() + warmUpMilliseconds; performance.now() < end; ) timeOf(call, 20);
}

/** Minimum time of each contestant; the contestants take turns. */
function measure(contestants) {
  contestants.forEach(warmUp);
  const counts = contestants.map((call) => Math.max(1, Math.round(secondsPerRound / timeOf(call, 20))));
  const times = contestants.map(() => Infinity);
  for (let round = 0; round < rounds; round++) {
    contestants.forEach((call, index) => (times[index] = Math.min(times[index], timeOf(call, counts[index]))));
  }
  return times;
}

const nanoseconds = (seconds) => (seconds * 1e9).toFixed(seconds < 1e-7 ? 1 : 0);
const row = (...cells) => console.log(`| ${cells.join(" | ")} |`);
const isClose = (one, other) => Math.abs(one - other) <= 1e-9 * Math.max(1, Math.abs(other));
let sink = 0;

const processorTime = ((user + system) / 1000).toFixed(1);
console.log(`ready ${readyAfter.toFixed(1)} ms after the import begins, and ${processorTime} ms of a processor's time\n`);
row("Formula", "compile and evaluate, ns", "mathjs", "times", "call, ns", "closure", "times");
row("---", "---:", "---:", "---:", "---:", "---:", "---:");
for (const [text, textOfMathjs, closure] of formulas) {
  const expression = new Expression(undefined, values);
  const peer = textOfMathjs ?? text;
  const scope = { ...values };
  const names = Object.keys(values).filter((name) => new RegExp(`\\b${name}\\b`).test(text));
  const compiled = fn(text, ...names);
  const positional = names.map((name) => values[name]);
  const expected = closure(...positional);
  for (const value of [expression.evaluate(text), Number(mathjs.evaluate(peer, scope)), compiled(...positional)]) {
    if (!isClose(value, expected)) throw new Error(`${text} is ${value}, and ${expected} is expected`);
  }
  const [own, others] = measure([
    () => (sink += expression.evaluate(text)),
    () => (sink += Number(mathjs.compile(peer).evaluate(scope))),
  ]);
  const [call, plain] = measure([compiled, closure].map((called) => callOf(called, positional)));
  row(
    text === polynomial ? "polynomial of degree 15" : `\`${text}\``,
    ...[nanoseconds(own), nanoseconds(others), (others / own).toFixed(1)],
    ...[nanoseconds(call), nanoseconds(plain), (call / plain).toFixed(1)],
  );
  compiled.free();
  expression.free();
}

/** A call with positional arguments, the first of which changes in each call. */
function callOf(called, [a, b, c, d, e]) {
  return [
    () => (sink += called()),
    (i) => (sink += called(a + i)),
    (i) => (sink += called(a + i, b)),
    (i) => (sink += called(a + i, b, c)),
    (i) => (sink += called(a + i, b, c, d)),
    (i) => (sink += called(a + i, b, c, d, e)),
  ][called.length];
}

const rows = 100000;
const columns = Object.fromEntries(
  Object.entries(values).map(([name, value]) => [name, Float64Array.from({ length: rows }, (_, i) => value + i / rows)]),
);
const loops = {
  "x+1": ({ x }, out) => {
    for (let i = 0; i < rows; i++) out[i] = x[i] + 1;
  },
  "(x+y)*(x-y)/2": ({ x, y }, out) => {
    for (let i = 0; i < rows; i++) out[i] = ((x[i] + y[i]) * (x[i] - y[i])) / 2;
  },
  "sqrt(x*x+y*y+z*z)": ({ x, y, z }, out) => {
    for (let i = 0; i < rows; i++) out[i] = Math.sqrt(x[i] * x[i] + y[i] * y[i] + z[i] * z[i]);
  },
  "sin(x)*r+cos(y)*r": ({ x, y, r }, out) => {
    for (let i = 0; i < rows; i++) out[i] = Math.sin(radians(x[i])) * r[i] + Math.cos(radians(y[i])) * r[i];
  },
};

console.log("");
row(`${rows} rows`, "in the module's memory, us", "copied", "loop", "times the loop", "copied");
row("---", "---:", "---:", "---:", "---:", "---:");
for (const [text, loop] of Object.entries(loops)) {
  const expression = new Expression(text, values);
  const names = expression.usedNames;
  const used = Object.fromEntries(names.map((name) => [name, columns[name]]));
  const inside = Object.fromEntries(names.map((name) => [name, new MemoryArray(columns[name])]));
  const out = new MemoryArray(rows);
  const copy = new Float64Array(rows);
  const native = new Float64Array(rows);
  const [own, copied, plain] = measure([
    () => expression.evaluateArrays(inside, { out }),
    () => expression.evaluateArrays(used, { out: copy }),
    () => loop(columns, native),
  ]);
  if (!out.values.every((value, i) => value === copy[i] && isClose(value, native[i]))) throw new Error(`${text} differs`);
  const microseconds = (seconds) => (seconds * 1e6).toFixed(0);
  row(
    `\`${text}\``,
    ...[own, copied, plain].map(microseconds),
    ...[(own / plain).toFixed(2), (copied / plain).toFixed(2)],
  );
}
if (Number.isNaN(sink)) throw new Error("a value is no number");
