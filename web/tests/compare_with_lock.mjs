// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// compare_with_lock.mjs - fails unless the packages in node_modules have the versions and hashes of package-lock.json.
import assert from "node:assert/strict";
import { readFile } from "node:fs/promises";

const packagesOf = async (name) => JSON.parse(await readFile(new URL(name, import.meta.url), "utf8")).packages;

const locked = await packagesOf("package-lock.json");
const installed = Object.entries(await packagesOf("node_modules/.package-lock.json"));
assert.ok(installed.length > 50);
for (const [path, { version, integrity }] of installed) {
  if (path === "node_modules/mathexpr") continue; // our package, left by an earlier run
  assert.deepEqual([path, version, integrity], [path, locked[path]?.version, locked[path]?.integrity]);
}
