// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/**
 * line-results.js - the results that the worker sends to the page, one per line, and differences between two lists of results.
 *
 * @typedef {[number, number, number]} Coordinates
 *
 * @typedef {object} Problem
 * @property {string} message
 * @property {string[]} hints
 * @property {number} start  position in the line
 * @property {number} length
 * @property {{start: number, length: number, replacement: string} | null} fix
 * @property {boolean} unfinished  the line is valid so far, but incomplete
 *
 * @typedef {object} Handle  a literal point in the line
 * @property {number} start
 * @property {number} length
 * @property {Coordinates} at
 * @property {boolean} whole  it is the whole line, apart from an assignment
 *
 * @typedef {object} Construction  a call whose arguments are drawn
 * @property {"dist" | "vec" | "ill"} kind
 * @property {Coordinates[]} at  its arguments
 * @property {string} text  its value
 * @property {boolean} whole  it is the whole line, apart from an assignment
 *
 * @typedef {object} LineResult
 * @property {string} source
 * @property {"blank" | "comment" | "value" | "curve" | "problem" | "stopped"} kind
 * @property {{kind: string, start: number, length: number, partner: number | null}[]} tokens
 * @property {string} value  as text
 * @property {string} name  the assigned name; empty if there is none
 * @property {Coordinates | null} point  the value if it is a point
 * @property {string} mathml  empty if the line is not typeset
 * @property {Handle[]} handles
 * @property {Construction[]} constructions
 * @property {Problem | null} problem
 */

/**
 * The difference of two lists: the lengths of their common prefix and suffix, and the results between.
 * @template T
 * @param {T[]} before
 * @param {T[]} after
 */
export function difference(before, after) {
  const most = Math.min(before.length, after.length);
  let prefix = 0;
  while (prefix < most && before[prefix] === after[prefix]) ++prefix;
  let suffix = 0;
  while (suffix < most - prefix && before[before.length - 1 - suffix] === after[after.length - 1 - suffix]) ++suffix;
  return { prefix, suffix, changed: after.slice(prefix, after.length - suffix) };
}

/**
 * Applies a difference to a list.
 * @template T
 * @param {T[]} before
 * @param {{prefix: number, suffix: number, changed: T[]}} change
 */
export function applyDifference(before, { prefix, suffix, changed }) {
  return [...before.slice(0, prefix), ...changed, ...before.slice(before.length - suffix)];
}
