// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// node.js - the package for Node. The module is read from the folder of this file.
import { readFile } from "node:fs/promises";
import { pathToFileURL } from "node:url";

import { initFrom } from "./lib/start.js";

export * from "./lib/api.js";

/** Reads a URL, or a path relative to the working directory. */
function read(location) {
  const url = new URL(location, pathToFileURL(`${process.cwd()}/`));
  return url.protocol === "file:" ? readFile(url) : fetch(url);
}

export function init(options) {
  return initFrom(() => new URL("./mathexpr.wasm", import.meta.url), read, options);
}
