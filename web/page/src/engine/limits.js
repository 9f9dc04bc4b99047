// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/**
 * limits.js - upper bounds on a sheet, whether typed, from a file or from a link. They bound the time of most answers; the watchdog
 * of client.js stops a line that takes too long nevertheless.
 */

/** Maximum number of characters in a sheet. */
export const maxSheetLength = 300_000;

/** Maximum number of lines in a sheet. */
export const maxLines = 5_000;

/** Maximum length of a computed line, in characters. */
export const maxLineLength = 10_000;

/** Maximum length of a typeset line: the layout of formulas of thousands of terms would block the page. */
export const maxTypesetLength = 500;

/** Maximum length of a line whose tokens are coloured. */
export const maxColouredLength = 2_000;

/** Maximum time for one line, in milliseconds. */
export const patience = 2_000;
