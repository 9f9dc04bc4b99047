// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/** services.js - the editor's requests about a line: completions, the token at a position, the call around the cursor. */
import { Expression, formatValue } from "mathexpr";

/**
 * @param {import("./sheet.js").Names} names  visible in the line
 * @param {(expression: Expression) => T} ask
 * @template T
 */
function withNames(names, ask) {
  const expression = new Expression(undefined, {}, { resolver: names.get, names });
  try {
    return ask(expression);
  } finally {
    expression.free();
  }
}

const shortDigits = 6;
const shortText = (value) => (value === null || value === undefined ? "" : formatValue(value, shortDigits));

export function complete(names, text, cursor, recent) {
  const notes = (name) => {
    const value = names.get(name);
    return value === undefined ? null : { description: shortText(value), valueKind: kindOf(value) };
  };
  return withNames(names, (expression) =>
    expression.complete(text, cursor, { recent, notes }).map(({ name, kind, description, value, edit, selection }) => ({
      name,
      kind,
      description,
      value: shortText(value),
      edit: { start: edit.start, length: edit.length, replacement: edit.replacement },
      selection: { start: selection.start, length: selection.length },
    })),
  );
}

const kindOf = (value) => (typeof value === "number" ? "number" : "point");

export function explain(names, text, cursor) {
  return withNames(names, (expression) => {
    const found = expression.hover(text, cursor, { askResolver: true });
    if (!found) return null;
    const { span, valueSpan, name, help, description, domain, unit, example, exampleValue, value } = found;
    return {
      start: span.start,
      length: span.length,
      title: help || name,
      description,
      domain,
      unit,
      example: example && exampleValue !== null ? `${example} = ${shortText(exampleValue)}` : example,
      value: value === null ? "" : `${text.slice(valueSpan.start, valueSpan.start + valueSpan.length)} = ${shortText(value)}`,
    };
  });
}

export function signature(names, text, cursor) {
  return withNames(names, (expression) => {
    const found = expression.signature(text, cursor);
    if (!found) return null;
    const { description, parameters, parameterKind } = found.overloads[found.activeOverload];
    const kind = parameterKind === "point" ? "point " : "";
    return {
      name: found.function,
      description,
      parameters: parameters.map((parameter) => (parameter === "..." ? parameter : kind + parameter)),
      active: Math.min(found.argument, parameters.length - 1),
      unit: found.unit,
    };
  });
}
