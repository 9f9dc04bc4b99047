// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/**
 * limits.js - upper bounds on a sheet, whatever it comes from: typing, a file, a link. They keep every answer short; what takes
 * too long all the same is stopped by the watchdog of client.js.
 */

/** Characters of a sheet. */
export const maxSheetLength = 300_000;

/** Lines of a sheet. */
export const maxLines = 5_000;

/** Characters of a line that is computed. */
export const maxLineLength = 10_000;

/** Characters of a line that is typeset: laying out formulas of thousands of terms would hold up the page. */
export const maxTypesetLength = 500;

/** Characters of a line whose tokens are coloured. */
export const maxColouredLength = 2_000;

/** Milliseconds that one line may take. */
export const patience = 2_000;
