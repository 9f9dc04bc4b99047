// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/** store.js - stores the sheet and the settings in the browser. A failure of the browser's storage is ignored. */

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
    // The storage is full or disabled.
  }
}
