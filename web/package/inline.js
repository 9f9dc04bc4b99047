// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// inline.js - the package with the module embedded, for hosts that cannot load it from the folder of this file.
import { bytes } from "./lib/inlined.js";
import { initFrom } from "./lib/start.js";

export * from "./lib/api.js";

export function init(options) {
  return initFrom(bytes, (url) => fetch(url), options);
}
