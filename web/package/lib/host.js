// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// host.js - the callbacks of the library. They call the host of the running call. An exception of the host is stored, and
// rethrown after the library's call has returned: no exception propagates through the module.
import * as C from "./layouts.js";
import { allocateText, readText, u32, wasm } from "./module.js";
import { valueKinds } from "./kinds.js";
import { writeValue } from "./values.js";

/** The callbacks of a host. */
export class Host {
  /** @param names  an iterable of the names that the resolver knows */
  constructor(resolver, names) {
    this.resolver = resolver;
    this.names = names;
    this.notes = null; // set during a completion
    this.iterator = null;
    this.texts = []; // addresses on the heap, freed when the call returns
    this.thrown = null;
  }

  /** Runs a call of the library with this host, then rethrows the exception of a callback, if any. */
  during(call) {
    const outer = current;
    current = this;
    try {
      return call();
    } finally {
      current = outer;
      while (this.texts.length !== 0) wasm.free(this.texts.pop());
      this.iterator = null;
      if (this.thrown !== null) {
        const { error } = this.thrown;
        this.thrown = null;
        throw error;
      }
    }
  }

  /** Calls the host; returns `otherwise` if the host throws. */
  ask(question, otherwise) {
    try {
      return question();
    } catch (error) {
      this.thrown ??= { error };
      return otherwise;
    }
  }

  /** Allocates a text that lives as long as the call. */
  keep(text) {
    const address = allocateText(text);
    this.texts.push(address);
    return address;
  }
}

/** The host of the innermost call. */
let current = null;

/** The functions that the module imports; see host.h. */
export const callbacks = {
  lookup(_, name, length, value) {
    const host = current;
    if (host.resolver === undefined) return C.MATHEXPR_LOOKUP_NOT_KNOWN;
    return host.ask(() => {
      const answer = host.resolver(readText(name, length));
      if (answer === null || answer === undefined) return C.MATHEXPR_LOOKUP_NOT_KNOWN;
      writeValue(value, answer);
      return C.MATHEXPR_LOOKUP_FOUND;
    }, C.MATHEXPR_LOOKUP_REFUSED);
  },

  getName(_, index) {
    const host = current;
    if (host.names === undefined || host.thrown !== null) return 0;
    return host.ask(() => {
      if (index === 0) host.iterator = host.names[Symbol.iterator]();
      const { done, value } = host.iterator.next();
      return done ? 0 : host.keep(String(value));
    }, 0);
  },

  getNotes(_, name, length, notes) {
    const host = current;
    if (!host.notes) return C.MATHEXPR_LOOKUP_NOT_KNOWN;
    return host.ask(() => {
      const known = host.notes(readText(name, length));
      if (known === null || known === undefined) return C.MATHEXPR_LOOKUP_NOT_KNOWN;
      const kind = valueKinds.indexOf(known.valueKind ?? "unknown");
      if (kind < 0) throw new TypeError(`mathexpr: there is no kind of value '${known.valueKind}'`);
      const description = host.keep(known.description ?? "");
      const unavailable = host.keep(known.unavailable ?? "");
      u32[(notes + C.name_notes.value_kind) >> 2] = kind;
      u32[(notes + C.name_notes.description) >> 2] = description;
      u32[(notes + C.name_notes.unavailable) >> 2] = unavailable;
      return C.MATHEXPR_LOOKUP_FOUND;
    }, C.MATHEXPR_LOOKUP_REFUSED);
  },
};
