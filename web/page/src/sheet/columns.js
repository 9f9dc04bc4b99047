// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/**
 * columns.js - converts two or three columns of numbers, copied from a spreadsheet, to lines of the sheet: one point per row.
 *
 *     x <tab> y          # x, y
 *     0 <tab> 1.5        [0,1.5]
 *     10 <tab> 2         [10,2]
 */
import { literalOf } from "./literal.js";

/** Whether the decimal sign of a locale is a comma. */
const usesComma = (locale) => new Intl.NumberFormat(locale).format(1.5).includes(",");

/** The number of a cell as a literal of an expression; null if the cell is not a number. */
function literalOfCell(cell, locale) {
  const text = usesComma(locale) ? cell.replace(",", ".") : cell;
  return /^[-+\u2212]?(\d+\.?\d*|\.\d+)(e[-+]?\d+)?$/i.test(text) ? literalOf(Number(text.replace("\u2212", "-"))) : null;
}

/**
 * @param {string} text
 * @param {string} [locale]  by default the browser's
 * @returns {string[] | null}  null if the text is not such columns
 */
export function linesOfColumns(text, locale) {
  const rows = text
    .replace(/\s+$/, "")
    .split(/\r\n?|\n/)
    .map((row) => row.split("\t").map((cell) => cell.trim()));
  const count = rows[0].length;
  if (count < 2 || count > 3 || rows.some(({ length }) => length !== count)) return null;
  const points = rows.map((cells) => cells.map((cell) => literalOfCell(cell, locale)));
  const heading = points[0].every((literal) => literal === null) ? [`# ${rows[0].join(", ")}`] : [];
  const values = points.slice(heading.length);
  if (values.length < 2 || values.flat().includes(null)) return null;
  return [...heading, ...values.map((literals) => `[${literals.join(",")}]`)];
}
