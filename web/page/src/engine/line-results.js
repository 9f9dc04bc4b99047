// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/**
 * line-results.js - what passes from the worker to the page: one result per line, and the difference of two lists of them.
 *
 * @typedef {[number, number, number]} Coordinates
 *
 * @typedef {object} Problem
 * @property {string} message
 * @property {string[]} hints
 * @property {number} start  in the line, as the next one
 * @property {number} length
 * @property {{start: number, length: number, replacement: string} | null} fix
 * @property {boolean} unfinished  something has to follow; there is no mistake yet
 *
 * @typedef {object} Handle  a point that is written out in the line
 * @property {number} start
 * @property {number} length
 * @property {Coordinates} at
 * @property {boolean} whole  nothing but an assignment stands around it
 *
 * @typedef {object} Construction  a call whose arguments are drawn
 * @property {"dist" | "vec" | "ill"} kind
 * @property {Coordinates[]} at  its arguments
 * @property {string} text  its value, where it has one
 * @property {boolean} whole  nothing but an assignment stands around it
 *
 * @typedef {object} LineResult
 * @property {string} source
 * @property {"blank" | "comment" | "value" | "curve" | "problem" | "stopped"} kind
 * @property {{kind: string, start: number, length: number, partner: number | null}[]} tokens
 * @property {string} value  as text
 * @property {string} name  that the line gives its value to; else empty
 * @property {Coordinates | null} point  the value, where it is a point
 * @property {string} mathml  empty where the line is not typeset
 * @property {Handle[]} handles
 * @property {Construction[]} constructions
 * @property {Problem | null} problem
 */

/**
 * The difference of two lists: how many results they share at the beginning and at the end, and those between.
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
 * The list that a difference leads to.
 * @template T
 * @param {T[]} before
 * @param {{prefix: number, suffix: number, changed: T[]}} change
 */
export function applyDifference(before, { prefix, suffix, changed }) {
  return [...before.slice(0, prefix), ...changed, ...before.slice(before.length - suffix)];
}
