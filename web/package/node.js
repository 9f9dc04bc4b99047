// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// node.js - the package for Node: the module is read from beside this file.
import { readFile } from "node:fs/promises";
import { pathToFileURL } from "node:url";

import { initFrom } from "./lib/start.js";

export * from "./lib/api.js";

/** A URL, or a path relative to the working folder. */
function read(location) {
  const url = new URL(location, pathToFileURL(`${process.cwd()}/`));
  return url.protocol === "file:" ? readFile(url) : fetch(url);
}

export function init(options) {
  return initFrom(() => new URL("./mathexpr.wasm", import.meta.url), read, options);
}
