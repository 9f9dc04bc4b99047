# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""exports.py - what a shared library exports is the interface, and nothing else.

    exports.py GOLDEN HEADERS LIBRARY

GOLDEN is the list of the C++ interface, a demangled name a line, and the files mathexpr*.h in
the folder HEADERS declare the functions of the C interface.
LIBRARY is of the ELF format. Constructors and destructors are exported twice, for whole objects and for bases; demangled the
two are one name.
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
        print(f"exported, and no part of the interface: {name}")
    for name in sorted(interface - found):
        print(f"not exported: {name}")
    return found != interface


if __name__ == "__main__":
    sys.exit(main())
