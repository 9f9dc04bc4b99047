# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""check_exports.py - checks that the declared, exported and tested names of the C interface are the same.

    check_exports.py EXPORTS HEADERS TEST-DIRECTORY [NM LIBRARY]

EXPORTS is the golden list. HEADERS, a folder's mathexpr*.h, must declare exactly these names, and a C file in TEST-DIRECTORY
must call each of them. With NM and an ELF shared LIBRARY, the library must export these names, no others with the same
prefix, and otherwise only names of C++.
"""
import re
import subprocess
import sys
from pathlib import Path

DECLARATION = re.compile(r"MATHEXPR_C_API [^;(]*?\b(mathexpr_\w+)\(")
CPP_NAME = re.compile(r"_Z")


def differences(golden, found, what):
    yield from (f"not {what}: {name}" for name in sorted(golden - found))
    yield from (f"{what}, but not in the list: {name}" for name in sorted(found - golden))


def declared_in(headers):
    return {name for header in Path(headers).glob("mathexpr*.h") for name in DECLARATION.findall(header.read_text())}


def exported(nm, library):
    lines = subprocess.run([nm, "-D", "--defined-only", library], check=True, capture_output=True, text=True).stdout
    return {line.split()[-1].partition("@")[0] for line in lines.splitlines()}


def main():
    exports, headers, tests, *binary = sys.argv[1:]
    lines = Path(exports).read_text().splitlines()
    golden = set(lines)
    failures = [] if lines == sorted(golden) else ["the list is not in order, or has a name twice"]
    failures += differences(golden, declared_in(headers), "declared")
    text = "".join(file.read_text() for file in Path(tests).glob("*.c"))
    failures += [f"not tested: {name}" for name in sorted(golden) if not re.search(rf"\b{name}\(", text)]
    if binary:
        shown = {name for name in exported(*binary) if not CPP_NAME.match(name)}
        failures += differences(golden, shown, "exported")
    print("\n".join(failures) or f"{len(golden)} names")
    return 1 if failures else 0


sys.exit(main())
