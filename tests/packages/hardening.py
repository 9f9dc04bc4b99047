# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""hardening.py PREFIX FILE... - checks that each FILE, a program or shared library, is hardened as in cmake/Hardening.cmake.

PREFIX is the prefix of the binutils: empty for this machine's own, aarch64-linux-gnu- for 64-bit ARM.
"""
import re
import subprocess
import sys

# Traces of the compiler's protection: marks of valid targets of indirect calls, and touches of a frame's pages. The few marks
# in the C library's start-up code prove nothing.
MARKS_OF_START_UP = 10
INSTRUCTIONS = {
    "X86-64": (r"\bendbr64\b", r"\bor[ql]\s+\$0x0,(?:0x[0-9a-f]+)?\(%rsp"),
    "AArch64": (r"\b(?:bti\s+c|paciasp)\b", r"\bstr\s+xzr, \[sp"),
}


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def missing(prefix, path):
    header = output(prefix + "readelf", "-hlW", path)
    dynamic = output(prefix + "readelf", "-dW", path)
    symbols = output(prefix + "readelf", "-W", "--dyn-syms", path)
    code = output(prefix + "objdump", "-d", "--no-show-raw-insn", path)
    machine = next(name for name in INSTRUCTIONS if name in header)
    mark, touch = INSTRUCTIONS[machine]
    if not re.search(r"^\s*GNU_RELRO\b", header, re.M):
        yield "read-only relocations"
    if not re.search(r"\bFLAGS_1\b.*\bNOW\b", dynamic):
        yield "immediate binding"
    if "INTERP" in header and not re.search(r"\bFLAGS_1\b.*\bPIE\b", dynamic):
        yield "random addresses of the program"
    if not re.search(r"\bGNU_STACK\b.*\bRW\s", header):
        yield "a stack that is not executable"
    if "__stack_chk_fail" not in symbols:
        yield "stack protector"
    if not re.search(r"\b__\w+_chk\b", symbols.replace("__stack_chk_fail", "")):
        yield "fortified functions"
    if len(re.findall(mark, code)) <= MARKS_OF_START_UP:
        yield "marks of indirect jumps"
    if not re.search(touch, code):
        yield "stack-clash protection"


def main():
    prefix, *paths = sys.argv[1:]
    found = [f"{path}: without {what}" for path in paths for what in missing(prefix, path)]
    print("\n".join(found) or f"{len(paths)} files are hardened")
    return 1 if found or not paths else 0


if __name__ == "__main__":
    sys.exit(main())
