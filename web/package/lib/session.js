// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// session.js - an expression of the C interface: its handle, its host, and the conversion of statuses to errors.
import * as C from "./layouts.js";
import { errorOf, readTexts, u32, wasm, withFrame } from "./module.js";
import { MathExprError, nameDiagnostic, readDiagnostic } from "./errors.js";
import { Host } from "./host.js";
import { releaseWith } from "./release.js";
import { readValue, writeValue } from "./values.js";

const isFailure = (status) => status >= C.MATHEXPR_PARSING_ERROR && status <= C.MATHEXPR_REFUSED;

const handles = releaseWith(({ handle }) => {
  wasm.mathexpr_destroy(handle);
});

export class Session {
  /** Owned resources, separate from this object, so that its finalizer can free them. */
  #owned = { handle: 0 };
  host;

  constructor({ resolver, names, limits } = {}) {
    this.host = new Host(resolver, names);
    withFrame((frame) => {
      const handle = frame.bytes(4);
      const status = wasm.web_create(0, handle);
      if (status !== C.MATHEXPR_OK) throw errorOf(status);
      this.#owned.handle = u32[handle >> 2];
    });
    handles.register(this, this.#owned);
    if (limits !== undefined) this.limits = limits;
  }

  get handle() {
    if (this.#owned.handle === 0) throw new Error("mathexpr: the expression has been freed");
    return this.#owned.handle;
  }

  /** @throws while a callback of this expression runs */
  free() {
    if (this.#owned.handle === 0) return;
    this.check(wasm.mathexpr_destroy(this.#owned.handle));
    this.#owned.handle = 0;
    handles.unregister(this);
  }

  /**
   * Calls the library for this expression's host, with a frame and the handle.
   * @param text  the text that a failure refers to
   */
  call(use, text) {
    const { handle } = this;
    return withFrame((frame) => this.check(this.host.during(() => use(frame, handle)), text));
  }

  /** Like call(), for a function that fills a structure. */
  fill(layout, use, read) {
    return withFrame((frame) => {
      const structure = frame.structure(layout);
      this.call((_, handle) => use(handle, structure, frame));
      return read(structure);
    });
  }

  check(status, text) {
    if (status === C.MATHEXPR_OK) return;
    if (status === C.MATHEXPR_NO_PROGRAM) throw new Error("mathexpr: there is no compiled text to evaluate");
    if (status === C.MATHEXPR_BUSY) throw new Error("mathexpr: the expression cannot be used by its own callbacks");
    throw isFailure(status) ? new MathExprError(this.#diagnostic(text)) : errorOf(status);
  }

  #diagnostic(text) {
    return this.fill(
      C.diagnostic,
      (handle, diagnostic) => wasm.mathexpr_get_diagnostic_utf16(handle, diagnostic),
      (diagnostic) => readDiagnostic(diagnostic, text),
    );
  }

  /** Drops the pending assignment if the attempt fails. */
  withoutAssignment(attempt) {
    try {
      return attempt();
    } catch (error) {
      if (this.#owned.handle !== 0) wasm.mathexpr_drop_assignment(this.#owned.handle);
      throw error;
    }
  }

  compile(text) {
    this.withoutAssignment(() =>
      this.call(
        (frame, handle) => wasm.mathexpr_set_expression_utf16(handle, frame.text(text), text.length),
        text,
      ),
    );
  }

  /** @param compiled  the compiled text, for diagnostics */
  evaluate(compiled) {
    return this.#value((_, handle, record) => wasm.mathexpr_evaluate(handle, record), compiled);
  }

  /** Compiles a text, and evaluates it. */
  evaluateText(text) {
    return this.#value(
      (frame, handle, record) => wasm.mathexpr_evaluate_text_utf16(handle, frame.text(text), text.length, record),
      text,
    );
  }

  /** @param compute  calls the library, which writes the value to a record */
  #value(compute, text) {
    return this.withoutAssignment(() => {
      let value;
      this.call((frame, handle) => {
        const record = frame.bytes(C.value.bytes);
        const status = compute(frame, handle, record);
        if (status === C.MATHEXPR_OK) value = readValue(record);
        return status;
      }, text);
      return value;
    });
  }

  names(which) {
    return this.fill(
      C.names,
      (handle, names) => wasm.mathexpr_get_names_utf16(handle, which, names),
      (names) => readTexts(u32[(names + C.names.names) >> 2], u32[(names + C.names.name_count) >> 2]),
    );
  }

  /** Value of a variable; undefined if it does not exist. */
  getVariable(name) {
    return withFrame((frame) => {
      const record = frame.bytes(C.value.bytes);
      const status = wasm.mathexpr_get_variable_utf16(this.handle, frame.text(name), name.length, record);
      if (status === C.MATHEXPR_NOT_FOUND) return undefined;
      this.check(status);
      return readValue(record);
    });
  }

  setVariable(name, value) {
    withFrame((frame) => {
      const record = frame.bytes(C.value.bytes);
      writeValue(record, value);
      const refusal = frame.structure(C.name_refusal);
      const { handle } = this;
      const status = wasm.mathexpr_set_variable_utf16(handle, frame.text(name), name.length, record, refusal);
      if (status === C.MATHEXPR_DEFINITION_ERROR) throw new MathExprError(nameDiagnostic(name, refusal));
      this.check(status);
    });
  }

  removeVariable(name) {
    return withFrame((frame) => {
      const status = wasm.mathexpr_remove_variable_utf16(this.handle, frame.text(name), name.length);
      if (status === C.MATHEXPR_NOT_FOUND) return false;
      this.check(status);
      return true;
    });
  }

  get limits() {
    return this.fill(
      C.limits,
      (handle, limits) => wasm.mathexpr_get_limits(handle, limits),
      (limits) => ({
        maxTextLength: u32[(limits + C.limits.max_text_length) >> 2],
        maxRecords: u32[(limits + C.limits.max_records) >> 2],
        maxNesting: u32[(limits + C.limits.max_nesting) >> 2],
      }),
    );
  }

  set limits({ maxTextLength = 0, maxRecords = 0, maxNesting = 0 }) {
    for (const bound of [maxTextLength, maxRecords, maxNesting]) {
      if (!Number.isInteger(bound) || bound < 0 || bound > 0xffffffff) {
        throw new RangeError(`mathexpr: a limit is a whole number from 0 on, not ${bound}`);
      }
    }
    this.call((frame, handle) => {
      const limits = frame.structure(C.limits);
      u32[(limits + C.limits.max_text_length) >> 2] = maxTextLength;
      u32[(limits + C.limits.max_records) >> 2] = maxRecords;
      u32[(limits + C.limits.max_nesting) >> 2] = maxNesting;
      return wasm.mathexpr_set_limits(handle, limits);
    });
  }
}
