// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/** licences.mjs - collects the licences of everything in a bundle. */
import { readFile, readdir } from "node:fs/promises";
import path from "node:path";

const ours = path.join("..", "..", "LICENSE");

/**
 * @param {string[]} inputs  bundled files, relative to the folder
 * @param {string} folder
 * @param {string} packageFolder  the built npm package
 */
export async function licencesOf(inputs, folder, packageFolder) {
  const packages = new Set(inputs.map(packageOf).filter(Boolean));
  const texts = [`mathexpr\n\n${await readFile(path.join(folder, ours), "utf8")}`];
  for (const name of [...packages].sort()) {
    const { version, license } = JSON.parse(await readFile(path.join(folder, name, "package.json"), "utf8"));
    const file = (await readdir(path.join(folder, name))).find((entry) => /^licen[cs]e/i.test(entry));
    if (!file) throw new Error(`${name} brings no licence`);
    const title = name.slice(name.lastIndexOf("node_modules/") + "node_modules/".length);
    texts.push(`${title} ${version} (${license})\n\n${await readFile(path.join(folder, name, file), "utf8")}`);
  }
  texts.push(await readFile(path.join(packageFolder, "LICENSE-third-party.txt"), "utf8"));
  return texts.map((text) => text.trim()).join(`\n\n${"-".repeat(60)}\n\n`) + "\n";
}

/** The folder of the package that a file belongs to. */
function packageOf(input) {
  return /^(.*node_modules\/(?:@[^/]+\/)?[^/]+)\//.exec(input)?.[1];
}
