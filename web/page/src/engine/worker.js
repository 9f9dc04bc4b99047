// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/**
 * worker.js - the worker's script: holds the module and the sheet, and answers the page's requests.
 *
 * In: {id, kind, parameters}, with a kind of `answers` below. Out: {id, answer} or {id, error}, and {computing} with the text
 * of a line before it is computed, so that the page knows which line has taken too long.
 */
import { find, init, setLanguage, vocabulary } from "mathexpr";
import wasm from "mathexpr/mathexpr.wasm";
import { curveOf } from "./curve-of-line.js";
import { difference } from "./line-results.js";
import { Sheet } from "./sheet.js";
import { describe, keyOf } from "./vocabulary.js";
import { complete, explain, signature } from "./services.js";

const sheet = new Sheet((computing) => postMessage({ computing }));
let results = [];

const answers = {
  start: async ({ language, digits, stopped }) => {
    await init({ wasm: new URL(wasm, self.location.href), language });
    sheet.digits = digits;
    for (const source of stopped) sheet.stop(source);
  },

  language: ({ language }) => {
    setLanguage(language);
    sheet.forget();
  },

  digits: ({ digits }) => {
    sheet.digits = digits;
  },

  sheet: ({ lines }) => {
    const before = results;
    results = sheet.evaluate(lines);
    return difference(before, results);
  },

  complete: ({ line, text, cursor, recent }) => complete(sheet.namesAt(line), text, cursor, recent),
  explain: ({ line, text, cursor }) => explain(sheet.namesAt(line), text, cursor),
  signature: ({ line, text, cursor }) => signature(sheet.namesAt(line), text, cursor),

  curve: ({ line, source, from, to, count, height }) => {
    postMessage({ computing: source });
    return curveOf(source, sheet.namesAt(line), { from, to, count, height });
  },

  vocabulary: () => vocabulary().map(describe),
  find: ({ words }) => find(words).map(keyOf),
};

async function answer({ id, kind, parameters }) {
  try {
    postMessage({ id, answer: await answers[kind](parameters) });
  } catch (error) {
    postMessage({ id, error: String(error) });
  }
}

/** Requests are answered in their order, so that all wait for the module. */
let turn = Promise.resolve();
self.onmessage = ({ data }) => {
  turn = turn.then(() => answer(data));
};
