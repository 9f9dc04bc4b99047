#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""pack.py WASM FOLDER - makes the npm package from its sources and generated files.

WASM is the folder where the module was built. The package contains the module a second time, for mathexpr/inline: deflated,
in base64. esbuild bundles the scripts into one file per entry and one shared file, since a browser discovers the twenty
sources one after another.
"""
import base64
import shutil
import subprocess
import sys
import tempfile
import zlib
from pathlib import Path

WEB = Path(__file__).resolve().parent
LICENCE = """// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
"""
INLINED = LICENCE + """// inlined.js - the module, made by pack.py.
const packed = "{}";

/** The bytes of the module. */
export async function bytes() {{
  const data = Uint8Array.from(atob(packed), (character) => character.charCodeAt(0));
  const stream = new Blob([data]).stream().pipeThrough(new DecompressionStream("deflate"));
  return new Response(stream).arrayBuffer();
}}
"""


ENTRIES = ("index.js", "inline.js", "node.js")

THIRD_PARTY = """The module contains parts of emscripten and of its C library, musl. It also contains parts of LLVM's libraries,
whose licence (Apache 2.0 with the LLVM exceptions) asks for no notice in compiled programs.

emscripten

{emscripten}
musl

{musl}"""


def third_party_licences():
    """The licences of third-party parts of the module. emscripten's has the same text as ours."""
    copyright_line = "Copyright (c) 2010 The Emscripten Authors"
    emscripten = (WEB.parent / "LICENSE").read_text("ascii").replace("Copyright (c) 2026 The mathexpr authors", copyright_line)
    musl = Path(shutil.which("em++")).resolve().parent / "system/lib/libc/musl/COPYRIGHT"
    return THIRD_PARTY.format(emscripten=emscripten, musl=musl.read_text("utf8"))


def join_scripts(sources, folder):
    """Bundles the scripts. `node:` imports, and the URL by which bundlers find the module, remain unchanged."""
    subprocess.run(["esbuild", *ENTRIES, "--bundle", "--splitting", "--format=esm", "--platform=neutral",
                    "--target=es2022", "--external:node:*", "--chunk-names=lib/[name]-[hash]",
                    f"--outdir={folder.resolve()}", "--log-level=warning"], check=True, cwd=sources)


def main():
    wasm, folder = map(Path, sys.argv[1:])
    shutil.rmtree(folder, ignore_errors=True)
    shutil.copytree(WEB / "package", folder, ignore=shutil.ignore_patterns("lib", *ENTRIES))
    shutil.copy(WEB.parent / "LICENSE", folder)
    (folder / "LICENSE-third-party.txt").write_text(third_party_licences(), "utf8")
    module = (wasm / "bin/mathexpr.wasm").read_bytes()
    (folder / "mathexpr.wasm").write_bytes(module)
    packed = base64.b64encode(zlib.compress(module, 9)).decode()
    with tempfile.TemporaryDirectory() as sources:
        scripts = Path(sources) / "package"
        shutil.copytree(WEB / "package", scripts)
        shutil.copy(wasm / "web/layouts.js", scripts / "lib")
        (scripts / "lib/inlined.js").write_text(INLINED.format(packed), encoding="ascii")
        join_scripts(scripts, folder)


if __name__ == "__main__":
    main()
