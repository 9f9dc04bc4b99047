// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/** results.js - the lines' results in the editor's state. A changed line keeps its old result until the worker has answered. */
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

/** Moves results along with their lines when lines are inserted or removed. */
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
 * The result of a line; undefined unless it belongs to the line's present text.
 * @param {import("@codemirror/state").EditorState} state
 * @param {import("@codemirror/state").Line} line
 */
export function currentResult(state, line) {
  const result = state.field(resultsField)[line.number - 1];
  return result?.source === line.text ? result : undefined;
}

/** Number of the line being edited; 0 if the editor does not have the focus. */
export function activeLine(view) {
  return view.hasFocus ? view.state.doc.lineAt(view.state.selection.main.head).number : 0;
}
