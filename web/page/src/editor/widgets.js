// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/** widgets.js - the widgets of the editor: values, typeset lines, problems. */
import { WidgetType } from "@codemirror/view";
import { texts } from "../texts.js";

const mathMl = "http://www.w3.org/1998/Math/MathML";

function element(tag, className, text = "") {
  const made = document.createElement(tag);
  made.className = className;
  made.textContent = text;
  return made;
}

/** The value of a line, at its right. */
export class ValueWidget extends WidgetType {
  constructor(text, kind) {
    super();
    this.text = text;
    this.kind = kind;
  }

  eq(other) {
    return other.text === this.text && other.kind === this.kind;
  }

  toDOM() {
    const value = element("span", `value ${this.kind}`, this.text);
    value.title = this.text;
    return value;
  }
}

/** A typeset line. If it is too wide, the line's text is shown instead, since formulas do not wrap. */
export class TypesetWidget extends WidgetType {
  constructor(source, mathml) {
    super();
    this.source = source;
    this.mathml = mathml;
  }

  eq(other) {
    return other.source === this.source && other.mathml === this.mathml;
  }

  toDOM(view) {
    const typeset = element("span", "typeset");
    typeset.append(mathOf(this.mathml));
    view.requestMeasure({
      read: () => typeset.scrollWidth > typeset.clientWidth,
      write: (isTooWide) => {
        if (isTooWide) typeset.replaceChildren(this.source);
      },
    });
    return typeset;
  }

  ignoreEvent() {
    return false;
  }
}

/** Converts the library's MathML to an element; throws if it contains anything else. */
function mathOf(source) {
  const { documentElement } = new DOMParser().parseFromString(source, "application/xml");
  const elements = [documentElement, ...documentElement.querySelectorAll("*")];
  if (elements.some(({ namespaceURI }) => namespaceURI !== mathMl)) throw new Error("no MathML");
  const math = document.importNode(documentElement, true);
  for (const column of math.querySelectorAll("mtable")) column.replaceWith(rowOf(column));
  for (const sign of math.querySelectorAll("mo")) {
    if (/^[()]$/.test(sign.textContent) && !sign.parentElement.querySelector(tall)) sign.setAttribute("stretchy", "false");
  }
  return math;
}

/** Elements that brackets stretch to. Around a mere descender, brackets of some fonts would stretch to two lines. */
const tall = "mfrac, msqrt, mroot, msup, msub, msubsup, munder, mover";

/** Sets a point's coordinates side by side: as a column they would take several lines of the sheet. */
function rowOf(column) {
  const row = document.createElementNS(mathMl, "mrow");
  for (const { firstElementChild: cell } of column.children) {
    if (row.childElementCount) row.append(separator());
    row.append(...cell.childNodes);
  }
  return row;
}

function separator() {
  const comma = document.createElementNS(mathMl, "mo");
  comma.setAttribute("separator", "true");
  comma.textContent = ",";
  return comma;
}

/** The message below a line without a value, with its hints and the button that applies its fix. */
export class ProblemWidget extends WidgetType {
  constructor(problem, language, applyFix) {
    super();
    this.problem = problem;
    this.language = language;
    this.applyFix = applyFix;
    this.key = JSON.stringify([problem, language]);
  }

  eq(other) {
    return other.key === this.key;
  }

  toDOM() {
    const { message, hints, fix } = this.problem;
    const shown = element("div", "problem");
    const said = element("span", "message", message);
    said.lang = this.language;
    shown.append(said);
    for (const hint of hints) {
      const advice = element("span", "hint", hint);
      advice.lang = this.language;
      shown.append(" ", advice);
    }
    if (fix) {
      const button = element("button", "fix", texts.fix(fix.replacement));
      button.type = "button";
      button.title = "Alt+Enter";
      button.onclick = () => this.applyFix(this.problem);
      shown.append(" ", button);
    }
    return shown;
  }
}
