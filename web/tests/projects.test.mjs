// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// projects.test.mjs - the installed package in its users' projects: each bundler builds a page from the same program, a server
// sends it with a strict Content-Security-Policy, and Chromium runs it.
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { copyFile, cp, mkdir, readFile, readdir, rm, writeFile } from "node:fs/promises";
import { createServer } from "node:http";
import { extname, join } from "node:path";
import { after, before, test } from "node:test";
import { pathToFileURL } from "node:url";

import nodeResolve from "@rollup/plugin-node-resolve";
import * as esbuild from "esbuild";
import { chromium } from "playwright-core";
import { rollup } from "rollup";
import * as vite from "vite";
import webpack from "webpack";

const here = import.meta.dirname;
const installed = join(here, "node_modules/mathexpr");
const projects = join(here, "projects");

/** A program that shows a value, or its failure, as the title. */
const program = (entry) => `
import { evaluate, init } from "${entry}";
const show = (text) => (globalThis.document ? (document.title = text) : postMessage(text));
init().then(() => show(String(evaluate("3*[1,2,0.5]")))).catch((error) => show("failed: " + error));
`;
const expected = "[3,6,1.5]";
const page = (script) => `<!doctype html><meta charset="utf-8"><title></title><link rel="icon" href="data:,"><script type="module" src="${script}"></script>`;

const policy = "default-src 'none'; img-src data:; script-src 'self' 'wasm-unsafe-eval'; connect-src 'self'; worker-src 'self'";
const types = { ".html": "text/html", ".js": "text/javascript", ".wasm": "application/wasm" };

/** Serves a folder; returns the URL. */
async function serve(folder, typesOfFolder = types) {
  const server = createServer(async (request, response) => {
    const name = new URL(request.url, "http://localhost").pathname;
    try {
      const body = await readFile(join(folder, name));
      response.writeHead(200, {
        "Content-Type": typesOfFolder[extname(name)] ?? "text/plain",
        "Content-Security-Policy": policy,
      });
      response.end(body);
    } catch {
      response.writeHead(404).end();
    }
  });
  await new Promise((resolve) => server.listen(0, "127.0.0.1", resolve));
  return { url: `http://127.0.0.1:${server.address().port}`, close: () => server.close() };
}

let browser;

before(async () => {
  browser = await chromium.launch({ executablePath: process.env.CHROMIUM ?? "/usr/bin/chromium", args: ["--no-sandbox"] });
  await rm(projects, { recursive: true, force: true });
});
after(() => browser?.close());

/** The title of a page once its program has run; its console must not contain an error. */
async function titleOf(url) {
  const tab = await browser.newPage();
  const messages = [];
  tab.on("console", (message) => message.type() === "error" && messages.push(message.text()));
  tab.on("pageerror", (error) => messages.push(String(error)));
  try {
    await tab.goto(url);
    await tab.waitForFunction(() => document.title !== "", null, { timeout: 60000 }).catch(() => undefined);
    const title = await tab.title();
    assert.deepEqual(messages, []);
    return title;
  } finally {
    await tab.close();
  }
}

async function project(name, entry = "mathexpr") {
  const folder = join(projects, name);
  await mkdir(folder, { recursive: true });
  await writeFile(join(folder, "app.js"), program(entry));
  await writeFile(join(folder, "index.html"), page("./app.js"));
  return folder;
}

async function assertRuns(folder, typesOfFolder) {
  const server = await serve(folder, typesOfFolder);
  try {
    assert.equal(await titleOf(`${server.url}/index.html`), expected);
  } finally {
    server.close();
  }
}

/** Checks that a bundle for browsers does not import Node's modules. */
async function assertWithoutNode(folder) {
  for (const name of await readdir(folder, { recursive: true })) {
    if (name.endsWith(".js")) assert.doesNotMatch(await readFile(join(folder, name), "utf8"), /node:/, name);
  }
}

test("Vite, production build", async () => {
  const folder = await project("vite");
  await vite.build({ root: folder, base: "./", logLevel: "error" });
  await assertWithoutNode(join(folder, "dist"));
  await assertRuns(join(folder, "dist"));
});

test("Vite, development server", async () => {
  const folder = await project("vite-dev");
  const server = await vite.createServer({
    root: folder,
    logLevel: "error",
    cacheDir: join(folder, "cache"),
    server: { port: 0, fs: { allow: [here] } },
  });
  try {
    await server.listen();
    assert.equal(await titleOf(server.resolvedUrls.local[0]), expected);
  } finally {
    await server.close();
  }
});

test("webpack", async () => {
  const folder = await project("webpack");
  const output = join(folder, "out");
  const stats = await new Promise((resolve, reject) => {
    webpack(
      {
        mode: "production",
        context: folder,
        entry: "./app.js",
        output: { path: output, filename: "app.js", publicPath: "" },
      },
      (error, result) => (error ? reject(error) : resolve(result)),
    );
  });
  assert.deepEqual(stats.toJson({ all: false, errors: true }).errors, []);
  await copyFile(join(folder, "index.html"), join(output, "index.html"));
  await assertWithoutNode(output);
  await assertRuns(output);
});

test("Rollup, with the module copied beside the bundle", async () => {
  const folder = await project("rollup");
  const bundle = await rollup({ input: join(folder, "app.js"), plugins: [nodeResolve({ browser: true })] });
  await bundle.write({ file: join(folder, "out/app.js"), format: "es" });
  await bundle.close();
  await copyFile(join(installed, "mathexpr.wasm"), join(folder, "out/mathexpr.wasm"));
  await copyFile(join(folder, "index.html"), join(folder, "out/index.html"));
  await assertWithoutNode(join(folder, "out"));
  await assertRuns(join(folder, "out"));
});

async function bundled(folder) {
  const out = join(folder, "out");
  await esbuild.build({
    entryPoints: [join(folder, "app.js")],
    bundle: true,
    format: "esm",
    outdir: out,
    logLevel: "error",
  });
  await copyFile(join(folder, "index.html"), join(out, "index.html"));
  return out;
}

test("esbuild, with the module copied beside the bundle", async () => {
  const out = await bundled(await project("esbuild"));
  await copyFile(join(installed, "mathexpr.wasm"), join(out, "mathexpr.wasm"));
  await assertWithoutNode(out);
  await assertRuns(out);
});

test("esbuild, with the module embedded", async () => {
  await assertRuns(await bundled(await project("inline", "mathexpr/inline")));
});

test("a plain script, from the package's own files", async () => {
  const folder = await project("script", "./mathexpr/index.js");
  await cp(installed, join(folder, "mathexpr"), { recursive: true });
  await assertRuns(folder);
  await assertRuns(folder, { ...types, ".wasm": "text/plain" }); // a server that does not know the type of .wasm
  await rm(join(folder, "mathexpr/mathexpr.wasm"));
  const server = await serve(folder);
  const tab = await browser.newPage();
  await tab.goto(`${server.url}/index.html`);
  await tab.waitForFunction(() => document.title !== "");
  assert.match(await tab.title(), /failed: Error: mathexpr: .*mathexpr\.wasm answered 404/);
  server.close();
});

test("a worker", async () => {
  const folder = await project("worker", "./mathexpr/index.js");
  await cp(installed, join(folder, "mathexpr"), { recursive: true });
  await writeFile(
    join(folder, "start.js"),
    `new Worker("./app.js", { type: "module" }).onmessage = ({ data }) => { document.title = data; };\n`,
  );
  await writeFile(join(folder, "index.html"), page("./start.js"));
  await assertRuns(folder);
});

test("Node, as an ES module and as CommonJS", () => {
  const run = (...args) => execFileSync(process.execPath, args, { cwd: here, encoding: "utf8" });
  const show = () => `.then(({ init, evaluate }) => init().then(() => console.log(String(evaluate("3*[1,2,0.5]")))))`;
  for (const entry of ["mathexpr", "mathexpr/inline"]) {
    assert.equal(run("--input-type=module", "-e", `import("${entry}")${show()}`), `${expected}\n`);
    assert.equal(run("-e", `Promise.resolve(require("${entry}"))${show()}`), `${expected}\n`);
  }
});

test("init() takes a path, a URL, a response, bytes and a module", () => {
  const file = join(installed, "mathexpr.wasm");
  for (const source of [
    JSON.stringify(file),
    `new URL(${JSON.stringify(pathToFileURL(file).href)})`,
    `new Response(await readFile(${JSON.stringify(file)}), { headers: { "Content-Type": "application/wasm" } })`,
    `new Response(await readFile(${JSON.stringify(file)}))`,
    `readFile(${JSON.stringify(file)})`,
    `(await readFile(${JSON.stringify(file)})).buffer`,
    `await WebAssembly.compile(await readFile(${JSON.stringify(file)}))`,
  ]) {
    const text = `import { readFile } from "node:fs/promises"; import { init, evaluate } from "mathexpr";
      await init({ wasm: ${source} }); console.log(evaluate("1+2"));`;
    const answer = execFileSync(process.execPath, ["--input-type=module", "-e", text], { cwd: here, encoding: "utf8" });
    assert.equal(answer, "3\n", source);
  }
});

test("the declarations compile under tsc --strict", () => {
  const tsc = join(here, "node_modules/.bin/tsc");
  for (const resolution of [
    ["--module", "nodenext"],
    ["--module", "esnext", "--moduleResolution", "bundler"],
  ]) {
    const options = ["--strict", "--noEmit", "--target", "es2022", "--lib", "es2022,dom", ...resolution, "typed_use.ts"];
    execFileSync(tsc, options, { cwd: here, encoding: "utf8", stdio: "pipe" });
  }
});
