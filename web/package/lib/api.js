// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// api.js - the exports that all entries of the package share, besides init().
import { readBytes, needInstance, u8, wasm } from "./module.js";

export { MemoryArray } from "./arrays.js";
export { applyEdit, MathExprError, RowsError } from "./errors.js";
export { evaluate, Expression, fn } from "./expression.js";
export { initSync, setLanguage } from "./start.js";
export { formatValue, Point } from "./values.js";
export { find, vocabulary } from "./vocabulary.js";

export function version() {
  needInstance();
  const address = wasm.mathexpr_version_text();
  return readBytes(address, u8.indexOf(0, address) - address);
}
