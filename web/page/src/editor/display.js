// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/**
 * display.js - decorations of the visible lines: colours of tokens, values, matching brackets, and the typeset form, which replaces
 * the text of a line unless the cursor is in it.
 */
import { Facet } from "@codemirror/state";
import { Decoration, ViewPlugin } from "@codemirror/view";
import { texts } from "../texts.js";
import { activeLine, currentResult, resultsField, setResults } from "./results.js";
import { TypesetWidget, ValueWidget } from "./widgets.js";

/** Whether the typeset form is shown. */
export const typesetting = Facet.define({ combine: (values) => values[0] ?? true });

const tokenMark = new Map(
  ["number", "constant", "function", "unknown name", "operator", "bracket", "assigned name"].map((kind) => [
    kind,
    Decoration.mark({ class: `token-${kind.replace(" ", "-")}` }),
  ]),
);
const commentMark = Decoration.mark({ class: "token-comment" });
const pairMark = Decoration.mark({ class: "pair" });

export const display = ViewPlugin.fromClass(
  class {
    constructor(view) {
      this.decorations = decorate(view);
    }

    update(update) {
      const { view, docChanged, viewportChanged, focusChanged, selectionSet, transactions } = update;
      const isNew = transactions.some(({ effects }) => effects.some((effect) => effect.is(setResults)));
      const reconfigured = update.startState.facet(typesetting) !== update.state.facet(typesetting);
      if (isNew || viewportChanged || focusChanged || selectionSet || reconfigured) this.decorations = decorate(view);
      else if (docChanged) this.decorations = this.decorations.map(update.changes);
    }
  },
  { decorations: (plugin) => plugin.decorations },
);

function decorate(view) {
  const { state } = view;
  const active = activeLine(view);
  const results = state.field(resultsField);
  const decorations = [];
  for (const { from, to } of view.visibleRanges) {
    for (let position = from; position <= to; ) {
      const line = state.doc.lineAt(position);
      const result = currentResult(state, line);
      const isActive = line.number === active;
      if (result?.mathml && !isActive && state.facet(typesetting)) {
        decorations.push(Decoration.replace({ widget: new TypesetWidget(line.text, result.mathml) }).range(line.from, line.to));
      } else if (result) {
        decorations.push(...marksOf(result, line, isActive ? state.selection.main : null));
      }
      const value = valueOf(results[line.number - 1], isActive);
      if (value) decorations.push(Decoration.widget({ widget: value, side: 1 }).range(line.to));
      position = line.to + 1;
    }
  }
  return Decoration.set(decorations, true);
}

function marksOf(result, line, selection) {
  const { kind, tokens } = result;
  if (kind === "comment") return line.length ? [commentMark.range(line.from, line.to)] : [];
  const paired = selection?.empty ? pairAt(tokens, selection.head - line.from) : [];
  return tokens.flatMap((token, index) => {
    const [from, to] = [line.from + token.start, line.from + token.start + token.length];
    const mark = tokenMark.get(token.kind);
    return [...(mark ? [mark.range(from, to)] : []), ...(paired.includes(index) ? [pairMark.range(from, to)] : [])];
  });
}

/** The bracket at a cursor and its matching bracket. */
function pairAt(tokens, cursor) {
  const at = tokens.findIndex(
    ({ partner, start, length }) => partner !== null && (start === cursor || start + length === cursor),
  );
  return at < 0 ? [] : [at, tokens[at].partner];
}

function valueOf(result, isActive) {
  switch (result?.kind) {
    case "value":
      return new ValueWidget(result.value, "known");
    case "curve":
      return new ValueWidget(texts.plotted, "said");
    case "stopped":
      return new ValueWidget(texts.stopped, "wrong");
    case "problem":
      return isActive && result.problem.unfinished ? new ValueWidget("…", "said") : null;
    default:
      return null;
  }
}
