// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/** vocabulary.js - the vocabulary as the page lists it: each item with an example and its value. */
import { Expression, formatValue } from "mathexpr";

/** Significant digits of an example's value. */
const digits = 6;

/** Unique key of an item; overloads share a symbol. */
export const keyOf = ({ symbol, help }) => help || symbol;

/** @param {import("mathexpr").VocabularyItem} item */
export function describe(item) {
  const { kind, family, symbol, description, value } = item;
  const about = { key: keyOf(item), family, symbol, description, unit: "", domain: "", example: "", value: "" };
  if (kind === "constant") return { ...about, example: symbol, value: formatValue(value, digits) };
  if (kind === "operator") return about;
  const expression = new Expression();
  try {
    const found = expression.hover(`${symbol}(1)`, 0);
    if (!found) return about;
    const { unit, domain, example, exampleValue } = found;
    return { ...about, unit, domain, example, value: exampleValue === null ? "" : formatValue(exampleValue, digits) };
  } finally {
    expression.free();
  }
}
