// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// index.js - the package for browsers and workers. The module is loaded from the folder of this file. Bundlers recognize the
// expression `new URL(...)` below only in exactly this form.
import { initFrom } from "./lib/start.js";

export * from "./lib/api.js";

export function init(options) {
  return initFrom(() => new URL("./mathexpr.wasm", import.meta.url), (url) => fetch(url), options);
}
