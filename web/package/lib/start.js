// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// start.js - loads the module, once: from where a host says, or from where an entry of the package knows it.
import { callbacks } from "./host.js";
import { instantiate, instantiateSync, wasm, withFrame, writeBytes } from "./module.js";

let started = null;

/** The response's module. Compiles while it loads, where the server names the right type. */
async function compileResponse(response) {
  if (!response.ok) throw new Error(`mathexpr: ${response.url} answered ${response.status} ${response.statusText}`);
  const type = response.headers.get("Content-Type")?.split(";")[0].trim().toLowerCase();
  if (type === "application/wasm" && WebAssembly.compileStreaming) return WebAssembly.compileStreaming(response);
  return WebAssembly.compile(await response.arrayBuffer());
}

/** @param read  answers a Response or bytes for a URL or path */
async function compile(source, read) {
  const given = await source;
  if (given instanceof WebAssembly.Module) return given;
  const loaded = typeof given === "string" || given instanceof URL ? await read(given) : given;
  return typeof Response !== "undefined" && loaded instanceof Response
    ? compileResponse(loaded)
    : WebAssembly.compile(loaded);
}

/** Of all that tell the default language, rules for plurals are made soonest: those for dates and numbers take milliseconds. */
function languageOfUser() {
  return globalThis.navigator?.language ?? new Intl.PluralRules().resolvedOptions().locale;
}

/**
 * What init() of an entry does.
 * @param defaultSource  answers the module where the host names none
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
