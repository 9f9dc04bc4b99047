// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// vocabulary.js - lists and searches the constants, operators and functions.
import * as C from "./layouts.js";
import { readArgCount } from "./errors.js";
import { families, itemKinds } from "./kinds.js";
import {
  checkedText,
  errorOf,
  f64,
  i32,
  needInstance,
  readBytes,
  readZeroTerminated,
  u32,
  wasm,
  withFrame,
  writeBytes,
} from "./module.js";

let items = null;

/** Reads an item's units, domain and example expressions. */
function readNotes(index, frame) {
  const length = frame.bytes(4);
  const address = wasm.web_notes(index, length);
  if (address === 0) throw errorOf(C.MATHEXPR_OUT_OF_MEMORY);
  const [units, domain, ...examples] = readBytes(address, u32[length >> 2]).split("\n");
  return { units, domain, examples: examples.slice(0, -1) };
}

function readItem(index) {
  return withFrame((frame) => {
    const item = frame.structure(C.vocabulary_item);
    const status = wasm.mathexpr_get_vocabulary_item_utf16(index, item);
    if (status === C.MATHEXPR_NOT_FOUND) return null;
    if (status !== C.MATHEXPR_OK) throw errorOf(status);
    const at = (member) => u32[(item + C.vocabulary_item[member]) >> 2];
    return Object.freeze({
      kind: itemKinds[at("kind")],
      family: families[at("family")],
      symbol: readZeroTerminated(at("symbol")),
      help: readZeroTerminated(at("help")),
      description: readZeroTerminated(at("description")),
      argCount: readArgCount(at("arg_count")),
      precedence: i32[(item + C.vocabulary_item.precedence) >> 2],
      unary: at("unary") === 1,
      value: at("kind") === C.MATHEXPR_ITEM_CONSTANT ? f64[(item + C.vocabulary_item.value) >> 3] : null,
      ...readNotes(index, frame),
    });
  });
}

export function vocabulary() {
  needInstance();
  if (items === null) {
    items = [];
    for (let item; (item = readItem(items.length)) !== null; ) items.push(item);
  }
  return [...items];
}

export function find(words) {
  const all = vocabulary();
  return withFrame((frame) => {
    const { address, length } = writeBytes(frame, checkedText(words, "what is searched"));
    const count = frame.bytes(4);
    const found = wasm.web_find(address, length, count);
    if (found === 0) throw errorOf(C.MATHEXPR_OUT_OF_MEMORY);
    return Array.from(u32.subarray(found >> 2, (found >> 2) + u32[count >> 2]), (index) => all[index]);
  });
}
