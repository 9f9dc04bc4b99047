# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""check_binaries.py - checks the dependencies, exports and version of a Windows module.

    check_binaries.py OBJDUMP VERSION EXPORTS MODULE...

Each module must be relocatable, must not execute data, must depend only on DLLs of the system and of the project, and must
have VERSION. The exports of mathexpr.dll and TarnUInfo.dll are compared with the file EXPORTS; with UPDATE_EXPORTS=1 in the
environment the file is written.
"""
import os
import re
import struct
import subprocess
import sys
from pathlib import Path

SYSTEM_DLLS = {"kernel32.dll", "user32.dll", "msvcrt.dll"}
PROJECT_DLLS = {"mathexpr.dll", "tarnuinfo.dll"}
FLAGS = {"HIGH_ENTROPY_VA", "DYNAMIC_BASE", "NX_COMPAT"}


def exports(dump):
    table = dump.partition("[Ordinal/Name Pointer] Table")[2].partition("\n\n")[0]
    return sorted(line.split()[-1] for line in table.splitlines() if line.strip().startswith("["))


def file_version(data):
    """The version in the fixed part of the VERSIONINFO, which begins with a signature."""
    at = data.find(struct.pack("<II", 0xFEEF04BD, 0x00010000))
    if at < 0:
        return None
    high, low = struct.unpack_from("<II", data, at + 8)
    return f"{high >> 16}.{high & 0xFFFF}.{low >> 16}"


def complaints(objdump, version, module):
    dump = subprocess.run([objdump, "-p", module], check=True, capture_output=True, text=True).stdout
    flags = set(re.findall(r"^\s+([A-Z_]+)$", dump, re.M))
    if not FLAGS <= flags:
        yield f"lacks {', '.join(sorted(FLAGS - flags))}"
    imported = {name.lower() for name in re.findall(r"DLL Name: (\S+)", dump)}
    if not imported <= SYSTEM_DLLS | PROJECT_DLLS:
        yield f"needs {', '.join(sorted(imported - SYSTEM_DLLS - PROJECT_DLLS))}"
    found = file_version(Path(module).read_bytes())
    if found != version:
        yield f"has version {found}, not {version}"


def main():
    objdump, version, golden, *modules = sys.argv[1:]
    failures = [f"{Path(module).name} {complaint}" for module in modules for complaint in complaints(objdump, version, module)]
    shown = []
    for module in modules:
        name = Path(module).name
        if name.lower() in PROJECT_DLLS:
            dump = subprocess.run([objdump, "-p", module], check=True, capture_output=True, text=True).stdout
            shown += [f"{name} {symbol}" for symbol in exports(dump)]
    if os.environ.get("UPDATE_EXPORTS") == "1":
        Path(golden).write_text("".join(line + "\n" for line in shown))
    expected = Path(golden).read_text().splitlines()
    failures += [f"no longer exported: {name}" for name in sorted(set(expected) - set(shown))]
    failures += [f"exported, but not in {Path(golden).name}: {name}" for name in sorted(set(shown) - set(expected))]
    print("\n".join(failures) or f"{len(modules)} modules, {len(shown)} exported names")
    return 1 if failures else 0


sys.exit(main())
