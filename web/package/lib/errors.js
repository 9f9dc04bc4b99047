// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// errors.js - diagnostics of the library, and the errors made from them.
import * as C from "./layouts.js";
import { expectations, failureKinds } from "./kinds.js";
import { readPointer, readText, readTexts, u32 } from "./module.js";

export class MathExprError extends Error {
  constructor(diagnostic) {
    super(diagnostic.message);
    Object.assign(this, diagnostic);
  }

  get name() {
    return "MathExprError";
  }
}

export class RowsError extends Error {
  constructor(failedCount, firstFailed, rowStatus) {
    super(`${failedCount} rows have no value; the first is row ${firstFailed}, with status ${rowStatus[firstFailed]}`);
    this.failedCount = failedCount;
    this.firstFailed = firstFailed;
    this.rowStatus = rowStatus;
  }

  get name() {
    return "RowsError";
  }
}

export function applyEdit(text, { start, length, replacement }) {
  return text.slice(0, start) + replacement + text.slice(start + length);
}

/** Reads a span: its start, followed by its length. */
export function readSpan(address) {
  return { start: u32[address >> 2], length: u32[(address >> 2) + 1] };
}

/** Reads a structure of layout `edit`. */
export function readEdit(address) {
  const text = readPointer(address + C.edit.replacement);
  return { ...readSpan(address), replacement: readText(text, readPointer(address + C.edit.replacement_length)) };
}

/** Converts a mathexpr_diagnostic_utf16 of a text; null if there is no failure. */
export function readDiagnostic(address, text) {
  const at = (member) => u32[(address + C.diagnostic[member]) >> 2];
  if (at("message") === 0) return null;
  const fix = readEdit(address + C.diagnostic.fix_start);
  const counts = at("accepted_arg_counts") >> 2;
  return {
    message: readText(at("text"), at("text_length")),
    messageNumber: at("message"),
    kind: failureKinds[at("kind")],
    code: at("code"),
    text,
    span: readSpan(address + C.diagnostic.start),
    item: readText(at("item"), at("item_length")),
    conflict: readText(at("conflict"), at("conflict_length")),
    expected: expectations.filter((_, bit) => at("expected") & (1 << bit)),
    argCount: at("arg_count"),
    acceptedArgCounts: Array.from(u32.subarray(counts, counts + at("accepted_count")), readArgCount),
    suggestions: readTexts(at("suggestions"), at("suggestion_count")),
    hints: readTexts(at("hints"), at("hint_count")),
    fix: fix.length === 0 && fix.replacement === "" ? null : fix,
  };
}

/** Converts an argument count; "any number" becomes Infinity. */
export function readArgCount(count) {
  return count === 0xffffffff ? Infinity : count;
}

const nameReasons = new Map([
  [C.MATHEXPR_DEFINITION_NAME_EMPTY, "it is empty"],
  [C.MATHEXPR_DEFINITION_NAME_IS_NUMBER, "it is a number"],
  [C.MATHEXPR_DEFINITION_NAME_IS_CONSTANT, "it is a constant"],
  [C.MATHEXPR_DEFINITION_CONTAINS_SYNTAX_CHARACTER, "it holds a character of the syntax"],
]);

/** Converts a mathexpr_name_refusal, which has no message, to a diagnostic. */
export function nameDiagnostic(name, refusal) {
  const code = u32[(refusal + C.name_refusal.code) >> 2];
  const span = readSpan(refusal + C.name_refusal.start);
  return {
    message: `'${name}' cannot be the name of a variable: ${nameReasons.get(code)}`,
    messageNumber: 0,
    kind: "definition",
    code,
    text: name,
    span,
    item: name.slice(span.start, span.start + span.length),
    conflict: "",
    expected: ["new name"],
    argCount: 0,
    acceptedArgCounts: [],
    suggestions: [],
    hints: [],
    fix: null,
  };
}
