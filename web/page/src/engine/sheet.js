// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/**
 * sheet.js - evaluates a sheet from top to bottom: a line can use the variables of the lines above it, and `ans`.
 *
 * Each line has its own expression, whose resolver records the names that it looks up. A line is computed again only if its
 * text or the value of one of these names has changed.
 */
import { Expression, MathExprError, evaluate, formatValue } from "mathexpr";
import { constructionsOf, isWhole } from "./constructions.js";
import { maxColouredLength, maxLineLength, maxTypesetLength } from "./limits.js";

/** The free variable of a plotted line. */
export const freeName = "x";

/** Names ignore the case of the letters A to Z. */
const keyOf = (name) => name.replace(/[A-Z]/g, (letter) => letter.toLowerCase());

/** The variables that the lines above define. */
export class Names {
  #values = new Map();

  /** @returns {import("mathexpr").Value | undefined} */
  get = (name) => this.#values.get(keyOf(name))?.value;

  set(name, value) {
    this.#values.set(keyOf(name), { name, value });
  }

  /** The names, spelled as in their definitions. */
  *[Symbol.iterator]() {
    for (const { name } of this.#values.values()) yield name;
  }

  copy() {
    const copy = new Names();
    copy.#values = new Map(this.#values);
    return copy;
  }
}

/** @typedef {import("./line-results.js").LineResult} LineResult */

/**
 * @typedef {object} Computed  the result of a line, and the names that it depends on
 * @property {LineResult} result
 * @property {import("mathexpr").Value | undefined} value
 * @property {Map<string, import("mathexpr").Value | undefined>} asked
 */

export class Sheet {
  /** @type {Map<string, Computed[]>} by the line's text: one for each occurrence */
  #known = new Map();
  /** @type {string[]} */
  #lines = [];
  #digits = 15;
  /** Texts of lines that took too long. */
  #stopped = new Set();
  #beforeLine;

  /** @param {(source: string) => void} beforeLine  called before a line is computed */
  constructor(beforeLine) {
    this.#beforeLine = beforeLine;
  }

  /** Discards all results, so that every line is computed again. */
  forget() {
    this.#known.clear();
  }

  /** @param {number} digits  significant digits of values; 0: the fewest that read back as the same value */
  set digits(digits) {
    this.#digits = digits;
    this.forget();
  }

  /** Excludes a line that took too long from computation. */
  stop(source) {
    this.#stopped.add(source);
  }

  /**
   * @param {string[]} lines
   * @returns {LineResult[]}
   */
  evaluate(lines) {
    this.#lines = lines;
    const known = new Map();
    const results = [];
    this.#walk(lines.length, (source, names) => {
      const computed = this.#reuse(source, names) ?? this.#compute(source, names);
      const places = known.get(source);
      if (places) places.push(computed);
      else known.set(source, [computed]);
      results.push(computed.result);
      return computed;
    });
    this.#known = known;
    return results;
  }

  /**
   * The names that are visible in a line.
   * @param {number} line  from 0
   */
  namesAt(line) {
    return this.#walk(line, (source, names) => this.#reuse(source, names) ?? this.#compute(source, names));
  }

  /**
   * @param {number} end
   * @param {(source: string, names: Names) => Computed} computedOf
   */
  #walk(end, computedOf) {
    const names = new Names();
    for (let line = 0; line < Math.min(end, this.#lines.length); ++line) {
      const { result, value } = computedOf(this.#lines[line], names);
      if (value === undefined) continue;
      if (result.name) names.set(result.name, value);
      names.set("ans", value);
    }
    return names;
  }

  #reuse(source, names) {
    const same = (computed) => [...computed.asked].every(([name, value]) => sameValue(names.get(name), value));
    return this.#known.get(source)?.find(same);
  }

  /** @returns {Computed} */
  #compute(source, names) {
    const asked = new Map();
    const result = emptyResult(source);
    if (isBlank(source)) return { result, value: undefined, asked };
    if (isComment(source)) return { result: { ...result, kind: "comment" }, value: undefined, asked };
    if (this.#stopped.has(source)) return { result: { ...result, kind: "stopped" }, value: undefined, asked };
    this.#beforeLine(source);
    const resolver = (name) => {
      const value = names.get(name);
      asked.set(keyOf(name), value);
      return value;
    };
    const expression = new Expression(undefined, {}, { resolver, limits });
    try {
      const value = expression.evaluate(source);
      return { result: { ...result, ...this.#partsOf(expression, source, value, resolver) }, value, asked };
    } catch (error) {
      if (!(error instanceof MathExprError)) throw error;
      const parts = isCurve(source, asked, names) ? curveParts(expression, source) : problemParts(error, source, names);
      return { result: { ...result, ...parts }, value: undefined, asked };
    } finally {
      expression.free();
    }
  }

  #partsOf(expression, source, value, resolver) {
    const tokens = expression.tokens(source);
    return {
      kind: "value",
      tokens: shownTokens(source, tokens),
      value: this.#text(value),
      name: assignedName(tokens),
      point: typeof value === "number" ? null : [value.x, value.y, value.z],
      mathml: typeset(expression, source),
      handles: handlesOf(expression, source, tokens),
      constructions: constructionsOf(source, tokens, (text) => valueOrNothing(text, resolver)),
    };
  }

  #text(value) {
    return this.#digits ? formatValue(value, this.#digits) : formatValue(value);
  }
}

const limits = { maxTextLength: maxLineLength };

/** The value of a part of a line; undefined if it has none. */
function valueOrNothing(text, resolver) {
  try {
    return evaluate(text, {}, { resolver });
  } catch (error) {
    if (error instanceof MathExprError) return undefined;
    throw error;
  }
}

export const isBlank = (source) => /^\s*$/.test(source);
export const isComment = (source) => /^[ \t]*#/.test(source);

/** Whether a line compiles once the free variable has a value, that is, without any other unknown name. */
function isCurve(source, asked, names) {
  if (!asked.has(freeName) || names.get(freeName) !== undefined) return false;
  const expression = new Expression(undefined, { [freeName]: 1 }, { resolver: names.get });
  try {
    expression.compile(source);
    return true;
  } catch (error) {
    if (error instanceof MathExprError) return false;
    throw error;
  } finally {
    expression.free();
  }
}

function curveParts(expression, source) {
  const tokens = expression.tokens(source);
  return {
    kind: "curve",
    tokens: shownTokens(source, tokens),
    name: assignedName(tokens),
    mathml: typeset(expression, source),
  };
}

/**
 * The problem of a line. Only this expression receives all names, for suggestions: passing them for every line would make long
 * sheets slow.
 */
function problemParts(error, source, names) {
  const expression = new Expression(undefined, {}, { resolver: names.get, names, limits });
  try {
    const { state, diagnostic } = expression.diagnose(source, { askResolver: true });
    const tokens = shownTokens(source, expression.tokens(source));
    // A line that fails only during evaluation has no diagnostic.
    return { kind: "problem", tokens, problem: problemOf(diagnostic ?? error, state === "unfinished") };
  } finally {
    expression.free();
  }
}

/** @returns {LineResult} */
function emptyResult(source) {
  return {
    source,
    kind: "blank",
    tokens: [],
    value: "",
    name: "",
    point: null,
    mathml: "",
    handles: [],
    constructions: [],
    problem: null,
  };
}

/** The tokens to colour, with only the members that the page uses. */
function shownTokens(source, tokens) {
  if (source.length > maxColouredLength) return [];
  return tokens.map(({ kind, start, length, partner }) => ({ kind, start, length, partner }));
}

const typeset = (expression, source) => (source.length > maxTypesetLength ? "" : expression.typeset(source, "mathml"));

function assignedName(tokens) {
  return tokens.find(({ kind }) => kind === "assigned name")?.text.replace(/\s/g, "") ?? "";
}

function handlesOf(expression, source, tokens) {
  return expression
    .literals(source)
    .filter(({ value }) => typeof value !== "number")
    .map(({ start, length, value }) => ({
      start,
      length,
      at: [value.x, value.y, value.z],
      whole: isWhole(tokens, start, start + length),
    }));
}

/** @returns {import("./line-results.js").Problem} */
function problemOf(error, unfinished) {
  const { message, hints, span, fix } = error;
  return {
    message,
    hints: [...hints],
    start: span.start,
    length: span.length,
    fix: fix && { start: fix.start, length: fix.length, replacement: fix.replacement },
    unfinished,
  };
}

function sameValue(a, b) {
  if (typeof a === "object" && typeof b === "object") {
    return Object.is(a.x, b.x) && Object.is(a.y, b.y) && Object.is(a.z, b.z);
  }
  return Object.is(a, b);
}
