#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Checks that the code of an object file compiled for a wide instruction set runs only if that set is chosen.

Usage: check_wide_objects.py NM OBJDUMP LANES OBJECT...

If several object files contain an inline function, the linker keeps any one of them, whatever it was compiled for. So each
visible function of such an object must have vectors of LANES doubles in its name, which no other set has. Nothing in it may
run before its set is chosen: it must have no initialisers. Functions that return to other code must clear the upper halves of
the registers, otherwise that code is many times slower.
"""
import re
import subprocess
import sys

OWN = re.compile(r"avx\w+Tiles\Z")
CODE = re.compile(r"[TWi]\Z")  # nm's letters for functions that other files see
COMPILER = re.compile(r"__")  # begins the names of what sanitizers and profiles add
INITIALISER = re.compile(r"_GLOBAL__sub_I|__cxx_global_var_init")
LEAVING = re.compile(r"_GLOBAL__N_1L?(?:3run|4call)E")
CLEANING = re.compile(r"vzeroupper|leaveWideRegisters")  # the instruction, or the function in a build without inlining


def dirty(disassembly):
    """The functions that return from the kernels without clearing the registers."""
    for function in disassembly.split("\n\n"):
        name = re.search(r"<(\S+)>:", function)
        if name and LEAVING.search(name.group(1)) and not CLEANING.search(function):
            yield f"{name.group(1)}: leaves the upper halves of the registers in use"


def faults(symbols, lanes):
    vector = f"Dv{lanes}_d"
    for line in symbols:
        *_, kind, name = line.split()
        if INITIALISER.search(name):
            yield f"{name}: runs when the library is loaded"
        elif CODE.match(kind) and not COMPILER.match(name) and vector not in name:
            yield f"{name}: could replace the baseline's function"


def main():
    nm, objdump, lanes, *objects = sys.argv[1:]
    found = 0
    for path in objects:
        symbols = subprocess.run([nm, "--defined-only", path], check=True, capture_output=True, text=True).stdout
        lines = symbols.splitlines()
        if not any(OWN.match(line.split()[-1]) for line in lines):
            print(f"{path}: contains no set of kernels")
            found += 1
        code = subprocess.run([objdump, "-d", path], check=True, capture_output=True, text=True).stdout
        if not LEAVING.search(code):
            print(f"{path}: no kernel returns to other code")
            found += 1
        for fault in [*faults(lines, lanes), *dirty(code)]:
            print(f"{path}: {fault}")
            found += 1
    return 1 if found or not objects else 0


if __name__ == "__main__":
    sys.exit(main())
