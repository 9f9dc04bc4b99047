#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""layouts.py INCLUDE JAVASCRIPT CHECK - extracts enumerators and layouts for JavaScript from the headers of the C interface.

Writes a JavaScript module with the enumerators and, for each structure, its size and the offsets of its members in 32-bit
WebAssembly; and a C++ source that compiles only if the compiler uses the same layouts.
"""
import re
import sys
from pathlib import Path

LICENCE = """// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
"""
HEADERS = ("mathexpr.h", "mathexpr_editor.h")
COMMENT = re.compile(r" *//[^\n]*")
MACRO = re.compile(r"^#define (MATHEXPR_\w+) (\d+)$", re.MULTILINE)
ENUM = re.compile(r"\benum\s*\{([^}]*)\}")
STRUCT = re.compile(r"\btypedef struct (\w+)\s*\{([^}]*)\}\s*\1;")
SIZES = {"uint8_t": 1, "uint16_t": 2, "uint32_t": 4, "int32_t": 4, "size_t": 4, "ptrdiff_t": 4, "double": 8}
POINTER = 4
# Callback types; they are pointers.
CALLBACK = re.compile(r"mathexpr_(lookup|show_message|get_name|get_name_notes)_utf16")


def constants(text):
    """Yields the name and value of each enumerator and of each macro whose body is a decimal number."""
    for name, number in MACRO.findall(text):
        yield name, int(number)
    for body in ENUM.findall(text):
        number = -1
        for item in filter(None, (part.strip() for part in body.split(","))):
            name, _, given = (part.strip() for part in item.partition("="))
            number = int(given, 0) if given else number + 1
            yield name, number


def members(body):
    """Yields the type and name of each member; the type of a pointer is None."""
    for declaration in filter(None, (part.strip() for part in body.split(";"))):
        written, name = re.fullmatch(r"(.*?)(\w+)", declaration, re.DOTALL).groups()
        kind = written.replace("const", "").strip()
        yield None if "*" in kind or CALLBACK.fullmatch(kind) else kind, name


def layouts(text):
    """Maps each structure's name to its size, its alignment and the offsets of its members."""
    known = {name: (size, size, {}) for name, size in SIZES.items()}
    for name, body in STRUCT.findall(text):
        if name.endswith("_utf8"):
            continue
        offset, widest, offsets = 0, 1, {}
        for kind, member in members(body):
            size, alignment, _ = known[kind] if kind else (POINTER, POINTER, {})
            offset = -(-offset // alignment) * alignment
            offsets[member] = offset
            offset += size
            widest = max(widest, alignment)
        known[name] = (-(-offset // widest) * widest, widest, offsets)
    return {name: layout for name, layout in known.items() if name not in SIZES}


def main():
    include, javascript, check = map(Path, sys.argv[1:])
    text = "\n".join(COMMENT.sub("", (include / name).read_text(encoding="utf-8")) for name in HEADERS)
    script = [LICENCE + "// layouts.js - made of the headers of the C interface by layouts.py.\n"]
    checks = [LICENCE + "// Made by layouts.py: what layouts.js says of the structures holds.\n#include <cstddef>\n",
              *(f'#include "{name}"' for name in HEADERS)]
    script += [f"export const {name} = {number};" for name, number in constants(text)]
    for name, (size, _, offsets) in layouts(text).items():
        fields = ", ".join(f"{member}: {offset}" for member, offset in offsets.items())
        short = name.removeprefix("mathexpr_").removesuffix("_utf16")
        script.append(f"export const {short} = {{ bytes: {size}, {fields} }};")
        checks.append(f'static_assert(sizeof({name}) == {size}, "{name}");')
        checks += [f'static_assert(offsetof({name}, {member}) == {offset}, "{name}.{member}");'
                   for member, offset in offsets.items()]
    javascript.write_text("\n".join(script) + "\n", encoding="utf-8")
    check.write_text("\n".join(checks) + "\n", encoding="utf-8")


if __name__ == "__main__":
    main()
