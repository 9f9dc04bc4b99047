// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/** results.js - the results of the lines, kept in the editor's state. While the worker computes, a changed line keeps its old one. */
import { StateEffect, StateField } from "@codemirror/state";

/** @type {import("@codemirror/state").StateEffectType<import("../engine/line-results.js").LineResult[]>} */
export const setResults = StateEffect.define();

export const resultsField = StateField.define({
  create: () => [],
  update(results, transaction) {
    for (const effect of transaction.effects) if (effect.is(setResults)) return effect.value;
    return transaction.docChanged ? realign(results, transaction) : results;
  },
});

/** Lines that were added or removed move the results below them. */
function realign(results, { changes, startState, state }) {
  const aligned = [...results];
  changes.iterChangedRanges((fromA, toA, fromB, toB) => {
    const first = state.doc.lineAt(fromB).number - 1;
    const countBefore = startState.doc.lineAt(toA).number - startState.doc.lineAt(fromA).number + 1;
    const countAfter = state.doc.lineAt(toB).number - first;
    if (countBefore === countAfter) return;
    const kept = aligned.slice(first, first + Math.min(countBefore, countAfter));
    aligned.splice(first, countBefore, ...kept, ...new Array(countAfter - kept.length).fill(undefined));
  });
  return aligned;
}

/**
 * The result of a line, where it is that of the text as it stands.
 * @param {import("@codemirror/state").EditorState} state
 * @param {import("@codemirror/state").Line} line
 */
export function currentResult(state, line) {
  const result = state.field(resultsField)[line.number - 1];
  return result?.source === line.text ? result : undefined;
}

/** The line that is being edited; none where the editor has no focus. */
export function activeLine(view) {
  return view.hasFocus ? view.state.doc.lineAt(view.state.selection.main.head).number : 0;
}
