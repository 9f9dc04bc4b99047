// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// variables.js - the variables of an expression, with the methods of a Map.
import * as C from "./layouts.js";
import { checkedText } from "./module.js";

export class Variables {
  #session;

  constructor(session) {
    this.#session = session;
  }

  get size() {
    return this.#session.names(C.MATHEXPR_NAMES_DEFINED).length;
  }

  get(name) {
    return this.#session.getVariable(checkedText(name, "a name"));
  }

  has(name) {
    return this.get(name) !== undefined;
  }

  set(name, value) {
    this.#session.setVariable(checkedText(name, "a name"), value);
    return this;
  }

  delete(name) {
    return this.#session.removeVariable(checkedText(name, "a name"));
  }

  *keys() {
    yield* this.#session.names(C.MATHEXPR_NAMES_DEFINED);
  }

  *values() {
    for (const name of this.keys()) yield this.get(name);
  }

  *entries() {
    for (const name of this.keys()) yield [name, this.get(name)];
  }

  [Symbol.iterator]() {
    return this.entries();
  }
}
