// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/**
 * problems.js - lines without a value: underlined, with the message below. On the line being edited a problem is shown only after a
 * pause in typing, and an unfinished expression only if it has a fix.
 */
import { setDiagnostics } from "@codemirror/lint";
import { Facet, StateEffect, StateField } from "@codemirror/state";
import { Decoration, EditorView, ViewPlugin } from "@codemirror/view";
import { activeLine, currentResult, resultsField, setResults } from "./results.js";
import { ProblemWidget } from "./widgets.js";

/** Language of the messages. */
export const messageLanguage = Facet.define({ combine: (values) => values[0] ?? "en" });

const pause = 700;

/** Effect that sets the decorations of the shown problems. */
const showProblems = StateEffect.define();

const problemsField = StateField.define({
  create: () => Decoration.none,
  update(problems, transaction) {
    for (const effect of transaction.effects) if (effect.is(showProblems)) return effect.value;
    return problems.map(transaction.changes);
  },
  provide: (field) => EditorView.decorations.from(field),
});

const overseer = ViewPlugin.fromClass(
  class {
    constructor(view) {
      this.view = view;
      this.active = activeLine(view);
      this.shownOnActive = false;
      this.timer = 0;
    }

    update(update) {
      const active = activeLine(update.view);
      const moved = active !== this.active;
      this.active = active;
      if (moved) this.shownOnActive = false;
      if (update.docChanged) this.startPause();
      const isNew = update.transactions.some(({ effects }) => effects.some((effect) => effect.is(setResults)));
      if (moved || isNew) this.schedule();
    }

    /** Calls show() after the current update, during which the editor cannot be changed. */
    schedule() {
      this.scheduled ??= Promise.resolve().then(() => {
        this.scheduled = undefined;
        this.show();
      });
    }

    startPause() {
      clearTimeout(this.timer);
      this.timer = setTimeout(() => {
        this.shownOnActive = true;
        this.show();
      }, pause);
    }

    show() {
      const { state } = this.view;
      const found = problemLines(state).filter(
        ({ line, problem }) => line.number !== this.active || (this.shownOnActive && (!problem.unfinished || problem.fix)),
      );
      if (this.active && currentResult(state, state.doc.line(this.active))?.problem === null) this.shownOnActive = false;
      if (found.length === 0 && state.field(problemsField).size === 0) return;
      const language = state.facet(messageLanguage);
      const applyFix = (problem) => fixProblem(this.view, problem);
      const blocks = found.map(({ line, problem }) =>
        Decoration.widget({ widget: new ProblemWidget(problem, language, applyFix), block: true, side: 2 }).range(line.to),
      );
      this.view.dispatch({ effects: showProblems.of(Decoration.set(blocks)) }, setDiagnostics(state, found.flatMap(underlines)));
    }

    destroy() {
      clearTimeout(this.timer);
    }
  },
);

function problemLines(state) {
  return state.field(resultsField).flatMap((result, index) => {
    if (!result?.problem || index >= state.doc.lines) return [];
    const line = state.doc.line(index + 1);
    return line.text === result.source ? [{ line, problem: result.problem }] : [];
  });
}

function underlines({ line, problem }) {
  const { start, length, message } = problem;
  if (length === 0) return [];
  return [{ from: line.from + start, to: line.from + start + length, severity: "error", message }];
}

function fixProblem(view, problem) {
  const found = problemLines(view.state).find((other) => other.problem === problem);
  if (!found || !problem.fix) return false;
  const { start, length, replacement } = problem.fix;
  const from = found.line.from + start;
  view.dispatch({
    changes: { from, to: from + length, insert: replacement },
    selection: { anchor: from + replacement.length },
    userEvent: "input.fix",
    scrollIntoView: true,
  });
  view.focus();
  return true;
}

/** Applies the fix of the line that contains the cursor. */
export function fixLine(view) {
  const result = currentResult(view.state, view.state.doc.lineAt(view.state.selection.main.head));
  return result?.problem ? fixProblem(view, result.problem) : false;
}

export const problems = [problemsField, overseer];
