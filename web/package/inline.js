// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// inline.js - the package with the module inside, for where nothing can be loaded from beside it.
import { bytes } from "./lib/inlined.js";
import { initFrom } from "./lib/start.js";

export * from "./lib/api.js";

export function init(options) {
  return initFrom(bytes, (url) => fetch(url), options);
}
