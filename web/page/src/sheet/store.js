// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/** store.js - the sheet and the settings, kept in the browser between visits. A browser that keeps nothing is no failure. */

/** @param {string} name */
const keyOf = (name) => `mathexpr.${name}`;

/** @returns {string | null} */
export function load(name) {
  try {
    return localStorage.getItem(keyOf(name));
  } catch {
    return null;
  }
}

export function store(name, text) {
  try {
    localStorage.setItem(keyOf(name), text);
  } catch {
    // Full, or forbidden.
  }
}
