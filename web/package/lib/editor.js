// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// editor.js - editor services. They accept any text, including an incomplete or invalid one, and do not change the expression.
import * as C from "./layouts.js";
import { readDiagnostic, readEdit, readSpan } from "./errors.js";
import { notations, renameRefusals, tokenKinds, typingStates, valueKinds } from "./kinds.js";
import { checkedText, readArray, readPointer, readText, readTexts, readZeroTerminated, u32, wasm } from "./module.js";
import { readValue } from "./values.js";

/** Reads a 32-bit member of a structure: a number or an address. */
const member = (address, layout, name) => readPointer(address + layout[name]);

/** Reads the zero-terminated text that a member points to. */
const textOf = (address, layout, name) => readZeroTerminated(member(address, layout, name));

/** Clamps a cursor to the text. */
const cursorIn = (text, cursor) => Math.min(Math.max(Math.trunc(cursor), 0), text.length);

const noPartner = 0xffffffff; // MATHEXPR_NO_PARTNER

function readToken(address, text) {
  const { start, length } = readSpan(address + C.token.start);
  const partner = member(address, C.token, "partner");
  return {
    kind: tokenKinds[member(address, C.token, "kind")],
    text: text.slice(start, start + length),
    start,
    length,
    depth: member(address, C.token, "depth"),
    partner: partner === noPartner ? null : partner,
  };
}

function readCompletion(address) {
  return {
    name: textOf(address, C.completion, "name"),
    kind: tokenKinds[member(address, C.completion, "kind")],
    valueKind: valueKinds[member(address, C.completion, "value_kind")],
    description: textOf(address, C.completion, "description"),
    value: member(address, C.completion, "has_value") ? readValue(address + C.completion.value) : null,
    edit: readEdit(address + C.completion.edit),
    selection: readSpan(address + C.completion.selection),
    unavailable: textOf(address, C.completion, "unavailable"),
  };
}

function readOverload(address) {
  return {
    help: textOf(address, C.overload, "help"),
    description: textOf(address, C.overload, "description"),
    parameters: readTexts(
      member(address, C.overload, "parameters"),
      member(address, C.overload, "parameter_count"),
    ),
    parameterKind: valueKinds[member(address, C.overload, "parameter_kind")],
  };
}

function readSignature(address) {
  const count = member(address, C.signature, "overload_count");
  if (count === 0) return null;
  return {
    function: textOf(address, C.signature, "function"),
    nameSpan: readSpan(address + C.signature.name),
    argument: member(address, C.signature, "argument"),
    unit: textOf(address, C.signature, "unit"),
    overloads: readArray(member(address, C.signature, "overloads"), count, C.overload.bytes, readOverload),
    activeOverload: member(address, C.signature, "active_overload"),
    wanted: valueKinds[member(address, C.signature, "wanted")],
  };
}

function readHover(address) {
  const span = readSpan(address + C.hover.span);
  if (span.length === 0) return null;
  return {
    kind: tokenKinds[member(address, C.hover, "kind")],
    span,
    name: textOf(address, C.hover, "name"),
    help: textOf(address, C.hover, "help"),
    description: textOf(address, C.hover, "description"),
    domain: textOf(address, C.hover, "domain"),
    unit: textOf(address, C.hover, "unit"),
    example: textOf(address, C.hover, "example"),
    exampleValue: member(address, C.hover, "has_example_value") ? readValue(address + C.hover.example_value) : null,
    value: member(address, C.hover, "has_value") ? readValue(address + C.hover.value) : null,
    valueSpan: readSpan(address + C.hover.value_span),
  };
}

const readMadeText = (address) => readText(member(address, C.text, "text"), member(address, C.text, "text_length"));

export class EditorServices {
  #session;

  constructor(session) {
    this.#session = session;
  }

  /**
   * Calls a service.
   * @param use   calls the library; takes the handle, the text's address and length, and the result's address
   * @param read  converts the result's structure
   */
  #ask(text, layout, use, read) {
    checkedText(text);
    return this.#session.fill(
      layout,
      (handle, answer, frame) => use(handle, frame.text(text), text.length, answer, frame),
      read,
    );
  }

  tokens(text) {
    return this.#ask(text, C.tokens, wasm.mathexpr_get_tokens_utf16, (answer) =>
      readArray(member(answer, C.tokens, "tokens"), member(answer, C.tokens, "token_count"), C.token.bytes, (token) =>
        readToken(token, text),
      ),
    );
  }

  diagnose(text, { askResolver = false } = {}) {
    let state;
    return this.#ask(
      text,
      C.diagnostic,
      (handle, typed, length, diagnostic, frame) => {
        state = frame.bytes(4);
        const flags = askResolver ? C.MATHEXPR_MAY_ASK_HOST : 0;
        return wasm.mathexpr_diagnose_text_utf16(handle, typed, length, flags, state, diagnostic);
      },
      (diagnostic) => ({ state: typingStates[u32[state >> 2]], diagnostic: readDiagnostic(diagnostic, text) }),
    );
  }

  complete(text, cursor = text.length, { maxCount = 0, recent = [], notes } = {}) {
    const { host } = this.#session;
    const outer = host.notes;
    host.notes = notes;
    try {
      return this.#ask(
        text,
        C.completions,
        (handle, typed, length, answer, frame) => {
          const list = frame.texts(recent.map((name) => checkedText(name, "a name")));
          const place = cursorIn(text, cursor);
          return wasm.web_complete(handle, typed, length, place, maxCount, list, recent.length, 0, answer);
        },
        (answer) =>
          readArray(
            member(answer, C.completions, "items"),
            member(answer, C.completions, "item_count"),
            C.completion.bytes,
            readCompletion,
          ),
      );
    } finally {
      host.notes = outer;
    }
  }

  signature(text, cursor = text.length) {
    return this.#ask(
      text,
      C.signature,
      (handle, typed, length, answer) =>
        wasm.mathexpr_get_signature_utf16(handle, typed, length, cursorIn(text, cursor), answer),
      readSignature,
    );
  }

  hover(text, cursor, { askResolver = false } = {}) {
    const flags = askResolver ? C.MATHEXPR_MAY_ASK_HOST : 0;
    return this.#ask(
      text,
      C.hover,
      (handle, typed, length, answer) =>
        wasm.mathexpr_get_hover_utf16(handle, typed, length, cursorIn(text, cursor), flags, answer),
      readHover,
    );
  }

  format(text) {
    return this.#ask(text, C.text, wasm.mathexpr_format_text_utf16, readMadeText);
  }

  typeset(text, notation) {
    const number = notations.indexOf(notation);
    if (number < 0) throw new TypeError(`mathexpr: the notations are ${notations.join(" and ")}, not ${notation}`);
    return this.#ask(
      text,
      C.text,
      (handle, typed, length, answer) => wasm.mathexpr_typeset_text_utf16(handle, typed, length, number, answer),
      readMadeText,
    );
  }

  references(text, name) {
    checkedText(name, "a name");
    return this.#ask(
      text,
      C.spans,
      (handle, typed, length, answer, frame) =>
        wasm.mathexpr_find_references_utf16(handle, typed, length, frame.text(name), name.length, answer),
      (answer) =>
        readArray(member(answer, C.spans, "spans"), member(answer, C.spans, "span_count"), C.span.bytes, readSpan),
    );
  }

  rename(text, name, newName) {
    checkedText(name, "a name");
    checkedText(newName, "a name");
    return this.#ask(
      text,
      C.renaming,
      (handle, typed, length, answer, frame) => {
        const [from, to] = [frame.text(name), frame.text(newName)];
        return wasm.mathexpr_rename_in_text_utf16(
          ...[handle, typed, length, from, name.length, to, newName.length, answer],
        );
      },
      (answer) => ({
        refusal: renameRefusals[member(answer, C.renaming, "refusal")],
        refusedAt: readSpan(answer + C.renaming.refused_at),
        edits: readArray(
          member(answer, C.renaming, "edits"),
          member(answer, C.renaming, "edit_count"),
          C.edit.bytes,
          readEdit,
        ),
      }),
    );
  }

  literals(text) {
    return this.#ask(text, C.literals, wasm.mathexpr_get_literals_utf16, (answer) =>
      readArray(
        member(answer, C.literals, "literals"),
        member(answer, C.literals, "literal_count"),
        C.literal.bytes,
        (literal) => ({ ...readSpan(literal), value: readValue(literal + C.literal.value) }),
      ),
    );
  }
}
