// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/**
 * constructions.js - finds the calls of a line whose arguments are drawn: a distance, a vector between two points, an intersection
 * of two lines.
 *
 *     2*dist(A, [3,4])    dist with the values of "A" and "[3,4]"
 */

import { formatValue } from "mathexpr";

/** Significant digits of the text on a dimension line. */
const digits = 6;

/** Number of points that each function takes. */
const pointCounts = new Map([
  ["dist", 2],
  ["vec", 2],
  ["ill", 4],
]);

/**
 * @param {string} source
 * @param {{kind: string, start: number, length: number, partner: number | null}[]} tokens
 * @param {(text: string) => import("mathexpr").Value | undefined} evaluate
 * @returns {import("./line-results.js").Construction[]}
 */
export function constructionsOf(source, tokens, evaluate) {
  const textBetween = (start, end) => source.slice(start, end);
  const found = [];
  tokens.forEach((token, index) => {
    const kind = textBetween(token.start, token.start + token.length);
    if (token.kind !== "function" || !pointCounts.has(kind)) return;
    const open = nextBracket(tokens, index);
    const close = tokens[open]?.partner;
    if (close === null || close === undefined) return;
    const at = argumentsOf(tokens, open, close).map(([start, end]) => coordinates(evaluate(textBetween(start, end))));
    if (at.length !== pointCounts.get(kind) || at.includes(null)) return;
    const end = tokens[close].start + tokens[close].length;
    const value = evaluate(textBetween(token.start, end));
    if (value === undefined) return;
    found.push({ kind, at, text: formatValue(value, digits), whole: isWhole(tokens, token.start, end) });
  });
  return found;
}

/** Index of the first token after a function's name that is not a blank. */
function nextBracket(tokens, index) {
  return tokens.findIndex(({ kind }, other) => other > index && kind !== "blank");
}

/** Spans of the arguments of a call: [start, end] each. */
function argumentsOf(tokens, open, close) {
  const stretches = [];
  let start = tokens[open].start + tokens[open].length;
  for (let index = open + 1; index < close; ++index) {
    const { kind, partner } = tokens[index];
    if (partner !== null && partner > index) {
      index = partner;
    } else if (kind === "separator") {
      stretches.push([start, tokens[index].start]);
      start = tokens[index].start + tokens[index].length;
    }
  }
  return [...stretches, [start, tokens[close].start]];
}

/** Whether a span is the whole line, apart from blanks and an assignment. */
export function isWhole(tokens, start, end) {
  const around = ["blank", "assigned name", "assignment sign"];
  return tokens.every((token) => (token.start >= start && token.start < end) || around.includes(token.kind));
}

function coordinates(value) {
  return typeof value === "object" ? [value.x, value.y, value.z] : null;
}
