// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// index.js - the package for browsers and workers: the module is loaded from beside this file. Bundlers find it by the
// expression below, as it is written.
import { initFrom } from "./lib/start.js";

export * from "./lib/api.js";

export function init(options) {
  return initFrom(() => new URL("./mathexpr.wasm", import.meta.url), (url) => fetch(url), options);
}
