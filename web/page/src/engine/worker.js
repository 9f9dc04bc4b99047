// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/**
 * worker.js - the worker's script: owns the module and the sheet, and answers the page's requests.
 *
 * Request: {id, kind, parameters}; the kinds are the keys of `answers` below. Reply: {id, answer} or {id, error}. Before a line
 * is computed, {computing: text} is sent, so that the page knows which line took too long.
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

/** Requests are answered in order; so all wait until the module is loaded. */
let turn = Promise.resolve();
self.onmessage = ({ data }) => {
  turn = turn.then(() => answer(data));
};
