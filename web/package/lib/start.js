// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// start.js - loads the module once, from the host's source or from the entry's default source.
import { callbacks } from "./host.js";
import { instantiate, instantiateSync, wasm, withFrame, writeBytes } from "./module.js";

let started = null;

/** Compiles the module of a response; during the download, if its content type is right. */
async function compileResponse(response) {
  if (!response.ok) throw new Error(`mathexpr: ${response.url} answered ${response.status} ${response.statusText}`);
  const type = response.headers.get("Content-Type")?.split(";")[0].trim().toLowerCase();
  if (type === "application/wasm" && WebAssembly.compileStreaming) return WebAssembly.compileStreaming(response);
  return WebAssembly.compile(await response.arrayBuffer());
}

/** @param read  returns a Response or bytes for a URL or path */
async function compile(source, read) {
  const given = await source;
  if (given instanceof WebAssembly.Module) return given;
  const loaded = typeof given === "string" || given instanceof URL ? await read(given) : given;
  return typeof Response !== "undefined" && loaded instanceof Response
    ? compileResponse(loaded)
    : WebAssembly.compile(loaded);
}

/** The browser's language, or that of PluralRules: a formatter of dates or numbers takes milliseconds to create. */
function languageOfUser() {
  return globalThis.navigator?.language ?? new Intl.PluralRules().resolvedOptions().locale;
}

/**
 * Implements init() of an entry.
 * @param defaultSource  returns the module if the host specifies none
 */
export function initFrom(defaultSource, read, { wasm: source, language } = {}) {
  started ??= compile(source ?? defaultSource(), read)
    .then((module) => wasm.memory ?? instantiate(module, callbacks).then(() => setLanguage(language ?? languageOfUser())))
    .then(
      () => undefined,
      (error) => {
        started = null;
        throw error;
      },
    );
  return started;
}

export function initSync({ wasm: source, language }) {
  if (wasm.memory !== undefined) return;
  instantiateSync(source instanceof WebAssembly.Module ? source : new WebAssembly.Module(source), callbacks);
  setLanguage(language ?? languageOfUser());
  started = Promise.resolve();
}

export function setLanguage(tag) {
  withFrame((frame) => wasm.web_set_locale(writeBytes(frame, tag.replaceAll("-", "_")).address));
}
