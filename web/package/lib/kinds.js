// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// kinds.js - JavaScript's names of the C interface's enumerators, in the order of the enumerators' values.

/** MATHEXPR_TOKEN_... */
export const tokenKinds = [
  "number",
  "constant",
  "function",
  "variable",
  "host name",
  "unknown name",
  "operator",
  "bracket",
  "separator",
  "assigned name",
  "assignment sign",
  "blank",
  "shorthand",
  "other",
];

/** MATHEXPR_VALUE_... */
export const valueKinds = ["unknown", "number", "point", "either"];

/** MATHEXPR_TYPING_... */
export const typingStates = ["complete", "unfinished", "wrong"];

/** MATHEXPR_RENAME_... */
export const renameRefusals = ["done", "not a name", "name taken", "read otherwise"];

/** MATHEXPR_ITEM_... */
export const itemKinds = ["constant", "operator", "function"];

/** MATHEXPR_FAMILY_... */
export const families = [
  "operators",
  "core math",
  "angle",
  "length",
  "area",
  "volume",
  "geometry",
  "constants",
];

/** MATHEXPR_KIND_... */
export const failureKinds = ["refused", "parsing", "definition"];

/** MATHEXPR_EXPECTED_..., from the lowest bit. */
export const expectations = [
  "value",
  "operator",
  "closing bracket",
  "separator",
  "end",
  "function",
  "known name",
  "new name",
  "other count",
  "number",
  "point",
  "same kind",
  "in domain",
  "smaller number",
  "less",
];

/** MATHEXPR_NOTATION_... */
export const notations = ["latex", "mathml"];
