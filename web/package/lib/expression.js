// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// expression.js - Expression, and evaluate() for a single text.
import * as C from "./layouts.js";
import { evaluateRows } from "./arrays.js";
import { EditorServices } from "./editor.js";
import { compileFunction } from "./function.js";
import { checkedText } from "./module.js";
import { dispose } from "./release.js";
import { Session } from "./session.js";
import { Point } from "./values.js";
import { Variables } from "./variables.js";

export class Expression extends EditorServices {
  #session;
  #text = "";

  constructor(text, variables = {}, options = {}) {
    const session = new Session(options);
    super(session);
    this.#session = session;
    this.variables = new Variables(session);
    try {
      for (const [name, value] of Object.entries(variables)) this.variables.set(name, value);
      if (text !== undefined) this.compile(text);
    } catch (error) {
      session.free();
      throw error;
    }
  }

  compile(text) {
    this.#text = checkedText(text);
    this.#session.compile(text);
  }

  evaluate(text) {
    if (text === undefined) return this.#session.evaluate(this.#text);
    this.#text = checkedText(text);
    return this.#session.evaluateText(text);
  }

  evaluateNumber(text) {
    const value = this.evaluate(text);
    if (typeof value !== "number") throw new TypeError(`mathexpr: the value is a point, ${value}`);
    return value;
  }

  evaluatePoint(text) {
    const value = this.evaluate(text);
    if (!(value instanceof Point)) throw new TypeError(`mathexpr: the value is a number, ${value}`);
    return value;
  }

  evaluateArrays(columns, options) {
    return evaluateRows(this.#session, columns, options);
  }

  fn(text, ...names) {
    return compileFunction(this.#session, checkedText(text), names);
  }

  get text() {
    return this.#text;
  }

  get usedNames() {
    return this.#session.names(C.MATHEXPR_NAMES_USED);
  }

  get hostNames() {
    return this.#session.names(C.MATHEXPR_NAMES_OF_HOST);
  }

  get limits() {
    return this.#session.limits;
  }

  set limits(limits) {
    this.#session.limits = limits;
  }

  free() {
    this.#session.free();
  }

  [dispose]() {
    this.free();
  }
}

export function evaluate(text, variables, options) {
  const expression = new Expression(undefined, variables, options);
  try {
    return expression.evaluate(text ?? checkedText(text));
  } finally {
    expression.free();
  }
}

export function fn(text, ...names) {
  const expression = new Expression();
  try {
    return expression.fn(text, ...names);
  } finally {
    expression.free();
  }
}
