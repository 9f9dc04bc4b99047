# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""exports.py - checks that a shared library exports the interface, and nothing else.

    exports.py GOLDEN HEADERS LIBRARY

GOLDEN lists the C++ interface, one demangled name per line; the files mathexpr*.h in the folder HEADERS declare the C
interface. LIBRARY is an ELF file. Constructors and destructors are exported twice, for complete objects and for bases, with
the same demangled name.
"""
import re
import subprocess
import sys
from pathlib import Path


def exported(library):
    lines = subprocess.run(["nm", "-DC", "--defined-only", library], check=True, capture_output=True,
                           text=True).stdout.splitlines()
    return {line.split(" ", 2)[2] for line in lines}


def main():
    golden, headers, library = sys.argv[1:]
    text = "".join(header.read_text() for header in Path(headers).glob("mathexpr*.h"))
    declared = set(re.findall(r"\b(mathexpr_\w+)\(", " ".join(re.findall(r"MATHEXPR_C_API [^;]*;", text))))
    interface = set(Path(golden).read_text().splitlines()) | declared
    found = exported(library)
    for name in sorted(found - interface):
        print(f"exported, but not part of the interface: {name}")
    for name in sorted(interface - found):
        print(f"not exported: {name}")
    return found != interface


if __name__ == "__main__":
    sys.exit(main())
