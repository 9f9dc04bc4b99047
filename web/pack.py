#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""pack.py WASM FOLDER - makes the npm package from its sources and generated files.

WASM is the folder where the module was built. The package contains the module a second time, for mathexpr/inline, in base64
and compressed in a format that every browser can decompress.
"""
import base64
import shutil
import sys
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


def main():
    wasm, folder = map(Path, sys.argv[1:])
    shutil.rmtree(folder, ignore_errors=True)
    shutil.copytree(WEB / "package", folder)
    shutil.copy(WEB.parent / "LICENSE", folder)
    shutil.copy(wasm / "web/layouts.js", folder / "lib")
    module = (wasm / "bin/mathexpr.wasm").read_bytes()
    (folder / "mathexpr.wasm").write_bytes(module)
    packed = base64.b64encode(zlib.compress(module, 9)).decode()
    (folder / "lib/inlined.js").write_text(INLINED.format(packed), encoding="ascii")


if __name__ == "__main__":
    main()
