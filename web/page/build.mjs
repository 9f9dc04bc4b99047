// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/**
 * build.mjs - bundles the page into a folder of static files. The names of all files except index.html and the service worker
 * contain the hash of their content.
 *
 * Usage: node build.mjs PACKAGE OUTPUT    PACKAGE is the folder of the built npm package
 */
import { createHash } from "node:crypto";
import { mkdir, readFile, readdir, rm, writeFile } from "node:fs/promises";
import path from "node:path";
import { fileURLToPath } from "node:url";
import * as esbuild from "esbuild";
import { licencesOf } from "./licences.mjs";
import { policy } from "./policy.mjs";

const here = path.dirname(fileURLToPath(import.meta.url));
const [packageFolder, output] = process.argv.slice(2).map((folder) => path.resolve(folder));

const hashOf = (content) => createHash("sha256").update(content).digest("hex").slice(0, 10);

const common = {
  absWorkingDir: here,
  bundle: true,
  minify: true,
  format: "esm",
  target: "es2022",
  outdir: output,
  entryNames: "[name]-[hash]",
  chunkNames: "[name]-[hash]",
  assetNames: "[name]-[hash]",
  loader: { ".wasm": "file" },
  alias: { mathexpr: packageFolder },
  conditions: ["browser"],
  metafile: true,
  logLevel: "warning",
};

/** Name of an entry's output file. */
async function bundle(entry, options = {}) {
  const { metafile } = await esbuild.build({ ...common, entryPoints: [entry], ...options });
  const [name] = Object.entries(metafile.outputs).find(([, { entryPoint }]) => entryPoint === entry);
  inputs.push(...Object.keys(metafile.inputs));
  return path.basename(name);
}

async function writeHashed(name, content) {
  const { name: stem, ext } = path.parse(name);
  const hashed = `${stem}-${hashOf(content)}${ext}`;
  await writeFile(path.join(output, hashed), content);
  return hashed;
}

/** The bundled files; the page shows the licences of their packages. */
const inputs = [];

await rm(output, { recursive: true, force: true });
await mkdir(output, { recursive: true });
const worker = await bundle("src/engine/worker.js");
const style = await bundle("style/all.css");
const icon = await writeHashed("icon.svg", await readFile(path.join(here, "icon.svg")));
const page = await bundle("src/page.js", { splitting: true, define: { workerUrl: JSON.stringify(`./${worker}`) } });
const licences = await writeHashed("licences.txt", await licencesOf(inputs, here, packageFolder));

const names = { policy, "icon.svg": icon, "page.css": style, "page.js": page, "licences.txt": licences };
const template = await readFile(path.join(here, "index.html"), "utf8");
const html = template.replace(/{{(.+?)}}/g, (_, name) => names[name]);
await writeFile(path.join(output, "index.html"), html);

const files = (await readdir(output)).filter((name) => name !== "index.html").sort();
await esbuild.build({
  ...common,
  entryPoints: ["src/service-worker.js"],
  entryNames: "[name]",
  format: "iife",
  define: { deployment: JSON.stringify(hashOf(html + files.join())), files: JSON.stringify(files) },
});
