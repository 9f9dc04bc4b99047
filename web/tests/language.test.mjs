// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// language.test.mjs - runs the language tests of the library (tests/language/FORMAT.md) through the package: all rows whose
// host values and outcomes the package can represent. The others, such as host values with a flag, run in C++ only.
import assert from "node:assert/strict";
import { readFile, readdir } from "node:fs/promises";
import { join } from "node:path";
import { test } from "node:test";

import { Expression, MathExprError, init } from "mathexpr";

const folder = process.env.MATHEXPR_LANGUAGE_DATA;
const escapes = { t: "\t", n: "\n", "\\": "\\" };

function unescaped(written) {
  const text = written.trim();
  const inner = text.startsWith('"') && text.endsWith('"') && text.length > 1 ? text.slice(1, -1) : text;
  return inner.replace(/\\(?:u([0-9A-Fa-f]{4})|(.))/g, (_, unit, letter) =>
    unit ? String.fromCharCode(parseInt(unit, 16)) : (escapes[letter] ?? letter),
  );
}

/** Parses a number; undefined if it is not one. */
function numberOf(written) {
  if (/^0x[0-9a-f]{16}$/.test(written)) {
    return new Float64Array(new BigUint64Array([BigInt(written)]).buffer)[0];
  }
  if (/^-?inf$/.test(written)) return written === "inf" ? Infinity : -Infinity;
  if (written === "nan") return NaN;
  return /^-?[\d.]/.test(written) && !Number.isNaN(Number(written)) ? Number(written) : undefined;
}

/** Parses a value to an array of one or three numbers; undefined if it is not one. */
function valueOf(written) {
  const text = written.replace(/\/flag$/, "");
  const point = /^\[([^,]+),([^,]+),([^,]+)\]$/.exec(text);
  const numbers = (point ? point.slice(1) : [text.replace(/^number\[([^,]+),.*\]$/, "$1")]).map(numberOf);
  return numbers.includes(undefined) ? undefined : numbers;
}

/** The variables of a line `@host`; null if the package cannot represent them. */
function hostOf(definitions) {
  const host = new Map();
  for (const definition of definitions.split(" ").filter(Boolean)) {
    const [, name, written] = /^(.*?)=(.*)$/.exec(definition);
    const value = valueOf(written);
    if (value === undefined || /flag|number|nan|0x/.test(written)) return null;
    host.set(name, value.length === 1 ? value[0] : value);
  }
  return host;
}

/** The first expected outcome, as text; null if the package cannot represent it. */
function firstOutcome(written) {
  const [outcome] = written.split(/ ~> | \| | asked /);
  return /^\{/.test(outcome.trim()) ? null : outcome.trim();
}

function outcomeOf(expression, text) {
  try {
    const value = expression.evaluate(text);
    return typeof value === "number" ? [value] : [...value];
  } catch (error) {
    if (error instanceof MathExprError) return error;
    throw error;
  }
}

function assertOutcome(actual, expected, row) {
  const failure = /^!(message \d+|exception|false)(?: always)?(?: at evaluate)?(?: (parsing|definition) (\d+))?/.exec(expected);
  if (failure) {
    const [, form, kind, code] = failure;
    assert.ok(actual instanceof MathExprError, `${row}: ${actual}`);
    if (form.startsWith("message")) assert.equal(`message ${actual.messageNumber}`, form, row);
    if (kind) assert.deepEqual([actual.kind, actual.code], [kind, Number(code)], row);
    return;
  }
  assert.ok(Array.isArray(actual), `${row}: ${actual}`);
  const bounds = /^in (\S+) (\S+)$/.exec(expected);
  if (bounds) assert.ok(actual[0] >= Number(bounds[1]) && actual[0] <= Number(bounds[2]), row);
  else assert.deepEqual(actual, valueOf(expected), row);
}

test("the rows of the language tests", async () => {
  await init({ language: "en" });
  let ran = 0;
  let left = 0;
  for (const name of await readdir(folder)) {
    let host = new Map();
    let hasLimit = false;
    for (const row of (await readFile(join(folder, name), "utf8")).split("\n")) {
      if (row.startsWith("@host")) host = hostOf(row.slice(5));
      if (row.startsWith("@limit")) hasLimit = !row.includes("none");
      if (/^(#|@|\s*$)/.test(row)) continue;
      const steps = row.split(" ; ").map((step) => / *(.*?) => (.*)$/.exec(step));
      const outcomes = steps.map((step) => step && firstOutcome(step[2]));
      // The package drops a failed assignment.
      const assignsLater = steps.slice(0, -1).some((step, index) => outcomes[index]?.startsWith("!") && step[1].includes("="));
      if (host === null || hasLimit || outcomes.includes(null) || assignsLater) {
        left++;
        continue;
      }
      const expression = new Expression(undefined, {}, { resolver: (asked) => host.get(asked) });
      steps.forEach(([, text], step) => {
        assertOutcome(outcomeOf(expression, unescaped(text)), outcomes[step], `${name}: ${row}`);
      });
      expression.free();
      ran++;
    }
  }
  console.log(`# ${ran} rows through the package, ${left} left to the tests in C++`);
  assert.ok(ran >= 800);
});
