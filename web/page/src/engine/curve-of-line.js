// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/** curve-of-line.js - computes the curve of a line with one free variable, and the reasons for its gaps. */
import { Expression, MathExprError } from "mathexpr";
import { sampleCurve } from "./curve.js";
import { freeName } from "./sheet.js";

/**
 * @param {string} source
 * @param {import("./sheet.js").Names} names
 * @param {{from: number, to: number, count: number, height: number}} range
 */
export function curveOf(source, names, { from, to, count, height }) {
  const expression = new Expression(undefined, { [freeName]: 1 }, { resolver: names.get });
  try {
    expression.compile(source);
    const compute = (places) => {
      const status = new Uint32Array(places.length);
      const values = expression.evaluateArrays({ [freeName]: places }, { rowStatus: status, strict: false });
      return { values, status };
    };
    const { pieces, gaps } = sampleCurve(compute, from, to, count, height);
    return { pieces, gaps: gaps.map((gap) => ({ ...gap, reason: reasonOf(gap, source, names) })) };
  } finally {
    expression.free();
  }
}

/** The message for a position without a value; empty if the value is not a number or jumps. */
function reasonOf({ place, from, to, message }, source, names) {
  if (message === 0) return "";
  const expression = new Expression(undefined, { [freeName]: place ?? (from + to) / 2 }, { resolver: names.get });
  try {
    expression.evaluate(source);
    return "";
  } catch (error) {
    if (error instanceof MathExprError) return error.message;
    throw error;
  } finally {
    expression.free();
  }
}
