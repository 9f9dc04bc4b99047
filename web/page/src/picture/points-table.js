// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/** points-table.js - the table of the sheet's points. */
import { texts } from "../texts.js";

/**
 * @param {HTMLElement} host
 * @param {import("../engine/line-results.js").LineResult[]} results
 */
export function showPoints(host, results) {
  const rows = results.flatMap(({ point, name, value }, line) => (point ? [[line + 1, name, ...coordinatesOf(value)]] : []));
  if (rows.length === 0) {
    const none = document.createElement("p");
    none.className = "empty";
    none.textContent = texts.noPoints;
    host.replaceChildren(none);
    return;
  }
  const table = document.createElement("table");
  const head = table.createTHead().insertRow();
  for (const column of texts.columns) {
    const cell = document.createElement("th");
    cell.scope = "col";
    cell.textContent = column;
    head.append(cell);
  }
  const body = table.createTBody();
  for (const values of rows) {
    const row = body.insertRow();
    for (const value of values) row.insertCell().textContent = String(value);
  }
  host.replaceChildren(table);
}

/** Splits the text of a point, which is in square brackets, into its coordinates. */
const coordinatesOf = (value) => value.slice(1, -1).split(",");
