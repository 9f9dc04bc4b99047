// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// package.test.mjs - tests of the package's files: imports, forbidden code, size, licences, start-up.
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { readFile, readdir } from "node:fs/promises";
import { dirname, join } from "node:path";
import { test } from "node:test";
import { fileURLToPath } from "node:url";
import { brotliCompressSync } from "node:zlib";

import { build } from "esbuild";

const folder = dirname(fileURLToPath(import.meta.resolve("mathexpr/package.json")));
const module = await WebAssembly.compile(await readFile(join(folder, "mathexpr.wasm")));
const scripts = (await readdir(folder, { recursive: true })).filter((name) => name.endsWith(".js"));
const mostBytes = 160 * 1024;

test("the module imports only what the loader supplies, and no mathematical functions", () => {
  assert.deepEqual(
    WebAssembly.Module.imports(module).map(({ module: from, name, kind }) => [from, name, kind].join(" ")).sort(),
    [
      "env emscripten_notify_memory_growth function",
      "host getName function",
      "host getNotes function",
      "host lookup function",
      ...["environ_get", "environ_sizes_get", "fd_fdstat_get", "fd_read", "fd_write", "proc_exit"].map(
        (name) => `wasi_snapshot_preview1 ${name} function`,
      ),
    ],
  );
});

test("no script evaluates code, calls functions of Math, or has a top-level await", async () => {
  for (const name of scripts) {
    const text = await readFile(join(folder, name), "utf8");
    assert.doesNotMatch(text, /new Function|\beval\(|\bimport\(/, name);
    assert.doesNotMatch(text, /Math\.(?!min\b|max\b|trunc\b)/, name);
    assert.doesNotMatch(text, /^(?:const|let|export const) .*\bawait\b|^await\b/m, name);
  }
});

test(`the module and a bundle of the scripts around it take at most ${mostBytes} bytes`, async () => {
  const entryPoints = [join(folder, "index.js")];
  const bundle = await build({ entryPoints, bundle: true, minify: true, format: "esm", write: false });
  const sizes = [await readFile(join(folder, "mathexpr.wasm")), bundle.outputFiles[0].contents].map(
    (bytes) => brotliCompressSync(bytes).length,
  );
  console.log(`# compressed with brotli: ${sizes[0]} bytes of WebAssembly, ${sizes[1]} of JavaScript`);
  assert.ok(sizes[0] + sizes[1] <= mostBytes);
});

test("the package contains the licences of the C library and of emscripten", async () => {
  const text = await readFile(join(folder, "LICENSE-third-party.txt"), "utf8");
  for (const holder of [/^Copyright \(c\) 2010 The Emscripten Authors$/m, /^Copyright © .* Rich Felker/m, /Sun Microsystems/]) {
    assert.match(text, holder);
  }
});

test("the start-up time in new processes is measured", async () => {
  const bytes = await readFile(join(folder, "mathexpr.wasm"));
  const times = [];
  for (let round = 0; round < 5; round++) {
    const program = `const start = performance.now(); const { init, evaluate } = await import("mathexpr");
      await init(); evaluate("1+2"); console.log(performance.now() - start);`;
    const args = ["--input-type=module", "-e", program];
    times.push(Number(execFileSync(process.execPath, args, { cwd: import.meta.dirname, encoding: "utf8" })));
  }
  console.log(`# ready after ${Math.min(...times).toFixed(1)} ms, the best of ${times.length} new processes`);
  assert.ok(bytes.length > 0 && times.every((time) => time > 0));
});
