// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/**
 * serve.mjs - serves the built page on the loopback interface, compressed, with its policy as a header.
 *
 * Usage: node serve.mjs FOLDER [PORT]
 */
import { createHash } from "node:crypto";
import { readFile } from "node:fs/promises";
import { createServer } from "node:http";
import path from "node:path";
import { fileURLToPath } from "node:url";
import { promisify } from "node:util";
import { brotliCompress, constants } from "node:zlib";
import { policy } from "./policy.mjs";

const compress = promisify(brotliCompress);

const types = new Map([
  [".html", "text/html; charset=utf-8"],
  [".js", "text/javascript; charset=utf-8"],
  [".css", "text/css; charset=utf-8"],
  [".txt", "text/plain; charset=utf-8"],
  [".svg", "image/svg+xml"],
  [".wasm", "application/wasm"],
]);

/**
 * @param {string} folder
 * @param {number} port  0: any free port
 * @param {number} quality  of the compression, 0 to 11
 * @returns {Promise<import("node:http").Server>}
 */
export async function serve(folder, port = 0, quality = constants.BROTLI_MAX_QUALITY) {
  const params = { [constants.BROTLI_PARAM_QUALITY]: quality };
  /** Compressed content by its hash: a rebuilt page has another hash. */
  const compressed = new Map();
  const answer = async (request, response) => {
    const { pathname } = new URL(request.url, "http://localhost");
    const name = pathname === "/" ? "index.html" : pathname.slice(1);
    const type = types.get(path.extname(name));
    const file = path.join(folder, name);
    const content = /^[\w.-]+$/.test(name) && type ? await readFile(file).catch(() => null) : null;
    if (content === null) {
      response.writeHead(404, { "content-type": "text/plain" }).end("not found\n");
      return;
    }
    const hash = createHash("sha256").update(content).digest("hex");
    if (!compressed.has(hash)) compressed.set(hash, compress(content, { params }));
    const body = await compressed.get(hash);
    const headers = {
      "content-length": body.length,
      "content-type": type,
      "content-encoding": "br",
      "content-security-policy": policy,
      "x-content-type-options": "nosniff",
      "cache-control": "no-cache",
    };
    response.writeHead(200, headers).end(body);
  };
  const server = createServer((request, response) => {
    answer(request, response).catch((error) => response.destroy(error));
  });
  await new Promise((resolve, reject) => server.once("error", reject).listen(port, "127.0.0.1", resolve));
  return server;
}

/** URL of a server. */
export const addressOf = (server) => `http://127.0.0.1:${server.address().port}/`;

if (process.argv[1] === fileURLToPath(import.meta.url)) {
  const [folder, port = "8000"] = process.argv.slice(2);
  console.log(addressOf(await serve(folder, Number(port))));
}
