// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/** assistance.js - completion and hover explanations, supplied by the library's editor services. */
import { acceptCompletion, autocompletion, completionStatus, moveCompletionSelection, selectedCompletion } from "@codemirror/autocomplete";
import { hoverTooltip } from "@codemirror/view";

/**
 * @callback Ask
 * @param {"complete" | "explain" | "signature"} kind
 * @param {object} parameters
 * @returns {Promise<any>}
 */

/** Maximum number of listed completions; few enough that the list does not scroll. */
const shownOptions = 8;

/** Recently chosen names, the newest first. */
const recent = [];
const maxRecent = 20;

function remember(name) {
  const at = recent.indexOf(name);
  if (at >= 0) recent.splice(at, 1);
  recent.unshift(name);
  recent.length = Math.min(recent.length, maxRecent);
}

/** @param {Ask} ask */
export function completion(ask) {
  const source = async (context) => {
    const { state, pos, explicit } = context;
    const line = state.doc.lineAt(pos);
    const cursor = pos - line.from;
    const typed = /[^\s.,()[\]=+\-*/%^<>!&|]+$/.exec(line.text.slice(0, cursor));
    if (/^\s*#/.test(line.text) || (!explicit && (!typed || /^\d/.test(typed[0])))) return null;
    const found = await ask("complete", { line: line.number - 1, text: line.text, cursor, recent });
    if (context.aborted || found.length === 0) return null;
    return {
      from: line.from + found[0].edit.start,
      to: pos,
      filter: false,
      options: found.map((item) => ({
        label: item.name,
        detail: item.value || item.description,
        type: item.kind.replace(" ", "-"),
        apply: (view) => insert(view, line.from, item),
      })),
    };
  };
  return autocompletion({ override: [source], icons: false, selectOnOpen: false, maxRenderedOptions: shownOptions });
}

function insert(view, lineStart, { name, edit, selection }) {
  remember(name);
  const from = lineStart + edit.start;
  view.dispatch({
    changes: { from, to: from + edit.length, insert: edit.replacement },
    selection: { anchor: lineStart + selection.start, head: lineStart + selection.start + selection.length },
    userEvent: "input.complete",
    scrollIntoView: true,
  });
}

/** Accepts the selected completion, or the first one if none is selected. */
export function acceptFirst(view) {
  if (completionStatus(view.state) !== "active") return false;
  if (!selectedCompletion(view.state)) moveCompletionSelection(true)(view);
  return acceptCompletion(view);
}

/** @param {Ask} ask */
export function explanation(ask) {
  return hoverTooltip(async (view, position) => {
    const line = view.state.doc.lineAt(position);
    const found = await ask("explain", { line: line.number - 1, text: line.text, cursor: position - line.from });
    if (!found || !(found.title || found.value)) return null;
    return {
      pos: line.from + found.start,
      end: line.from + found.start + found.length,
      above: true,
      create: () => ({ dom: explanationOf(found) }),
    };
  });
}

function explanationOf({ title, description, domain, unit, example, value }) {
  const dom = document.createElement("div");
  dom.className = "explanation";
  const code = document.createElement("code");
  code.textContent = title;
  dom.append(code);
  for (const text of [description, domain, unit, example, value]) {
    if (!text) continue;
    const row = document.createElement("div");
    row.textContent = text;
    dom.append(row);
  }
  return dom;
}
