// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/**
 * editor.js - the worksheet's editor. It is in a shadow root, where its styles are adopted style sheets: the page's policy
 * forbids <style> elements.
 */
import { defaultKeymap, history, historyKeymap } from "@codemirror/commands";
import { lintKeymap, linter } from "@codemirror/lint";
import { Compartment, EditorState } from "@codemirror/state";
import { EditorView, drawSelection, highlightActiveLine, highlightActiveLineGutter, keymap, lineNumbers } from "@codemirror/view";
import { maxLines, maxSheetLength } from "../engine/limits.js";
import { linesOfColumns } from "../sheet/columns.js";
import { texts } from "../texts.js";
import { acceptFirst, completion, explanation } from "./assistance.js";
import { display, typesetting } from "./display.js";
import { fixLine, messageLanguage, problems } from "./problems.js";
import { resultsField, setResults } from "./results.js";
import { theme } from "./theme.js";

export class SheetEditor {
  #view;
  /** The current text, which the view may not show yet. */
  #doc;
  #typesetting = new Compartment();
  #language = new Compartment();
  #extensions;

  /**
   * @param {HTMLElement} parent
   * @param {object} host
   * @param {string} host.text
   * @param {boolean} host.typeset
   * @param {string} host.language  of messages
   * @param {import("./assistance.js").Ask} host.ask
   * @param {() => void} host.onChange
   * @param {() => void} host.onTooLong  called when a change is refused because the sheet would become too long
   * @param {() => void} host.onCursor  called when the cursor or the text around it has changed
   */
  constructor(parent, { text, typeset, language, ask, onChange, onTooLong, onCursor }) {
    const root = parent.attachShadow({ mode: "open" });
    this.#extensions = [
      lineNumbers(),
      history(),
      drawSelection(),
      highlightActiveLine(),
      highlightActiveLineGutter(),
      EditorView.lineWrapping,
      EditorView.contentAttributes.of({ "aria-label": texts.editor, tabindex: "0", autocapitalize: "off", autocorrect: "off", spellcheck: "false" }),
      EditorState.changeFilter.of(({ newDoc }) => {
        const isShort = newDoc.length <= maxSheetLength && newDoc.lines <= maxLines;
        if (!isShort) onTooLong();
        return isShort;
      }),
      EditorView.clipboardInputFilter.of(pastedText),
      resultsField,
      display,
      problems,
      linter(null, { tooltipFilter: () => [] }), // the message is shown below the line
      completion(ask),
      explanation(ask),
      this.#typesetting.of(typesetting.of(typeset)),
      this.#language.of(messageLanguage.of(language)),
      theme,
      keymap.of([
        { key: "Tab", run: acceptFirst },
        { key: "Alt-Enter", run: fixLine },
        ...historyKeymap,
        ...lintKeymap,
        ...defaultKeymap,
      ]),
      EditorView.updateListener.of((update) => {
        if (update.docChanged || update.selectionSet || update.focusChanged) onCursor();
      }),
    ];
    const state = this.#stateOf(text);
    this.#doc = state.doc;
    // onChange comes first, so that the worker computes while the view updates.
    const dispatchTransactions = (transactions, view) => {
      const isChanged = transactions.some(({ docChanged }) => docChanged);
      this.#doc = transactions.at(-1)?.newDoc ?? this.#doc;
      if (isChanged) onChange();
      view.update(transactions);
    };
    this.#view = new EditorView({ state, parent: root, root, dispatchTransactions });
  }

  #stateOf(text) {
    return EditorState.create({ doc: text, extensions: this.#extensions });
  }

  get text() {
    return this.#doc.toString();
  }

  get lines() {
    return this.text.split("\n");
  }

  /** The line that contains the cursor, and the cursor's position in it. */
  get cursor() {
    const { head } = this.#view.state.selection.main;
    const line = this.#view.state.doc.lineAt(head);
    return { line: line.number - 1, text: line.text, cursor: head - line.from, hasFocus: this.#view.hasFocus };
  }

  focus() {
    this.#view.focus();
  }

  /** Replaces the whole text. The user can undo it. */
  replaceAll(text) {
    const { state } = this.#view;
    this.#view.dispatch({ changes: { from: 0, to: state.doc.length, insert: text }, selection: { anchor: 0 } });
  }

  /** Appends a line and moves the cursor to its end. */
  append(text) {
    const { doc } = this.#view.state;
    const insert = doc.line(doc.lines).length ? `\n${text}` : text;
    const end = doc.length + insert.length;
    this.#view.dispatch({ changes: { from: doc.length, insert }, selection: { anchor: end }, scrollIntoView: true });
  }

  /** Replaces a span of a line; returns false if the text of the line is no longer `source`. */
  rewrite(line, source, { start, length }, insert) {
    const { doc } = this.#view.state;
    if (line >= doc.lines || doc.line(line + 1).text !== source) return false;
    const from = doc.line(line + 1).from + start;
    // Without a user event, the history joins all changes of a drag into one step.
    this.#view.dispatch({ changes: { from, to: from + length, insert } });
    return true;
  }

  /** @param {import("../engine/line-results.js").LineResult[]} results */
  showResults(results) {
    this.#view.dispatch({ effects: setResults.of(results) });
  }

  set typeset(typeset) {
    this.#view.dispatch({ effects: this.#typesetting.reconfigure(typesetting.of(typeset)) });
  }

  set language(language) {
    this.#view.dispatch({ effects: this.#language.reconfigure(messageLanguage.of(language)) });
  }
}

/** Converts spreadsheet columns to points, on separate lines; other text is unchanged. */
function pastedText(text, state) {
  const lines = linesOfColumns(text);
  if (!lines) return text;
  const { from, to } = state.selection.main;
  const [first, last] = [state.doc.lineAt(from), state.doc.lineAt(to)];
  const before = state.sliceDoc(first.from, from).trim() ? [""] : [];
  const after = state.sliceDoc(to, last.to).trim() ? [""] : [];
  return [...before, ...lines, ...after].join("\n");
}
