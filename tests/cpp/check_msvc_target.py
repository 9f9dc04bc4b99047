# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""check_msvc_target.py - compiles mathexpr.hpp and mathexpr_editor.hpp for the target of Microsoft's compiler, as far as
this is possible without that compiler.

    check_msvc_target.py CLANG INCLUDE SOURCE

Clang compiles SOURCE with that target's layouts, calling conventions and exceptions. Microsoft's standard library is not
available outside Windows, so libc++ and the headers of this system's C library replace it. With this combination, one
declaration of libc++ requests an alignment that the target lacks; that is the only message allowed.
"""
import re
import subprocess
import sys
from pathlib import Path

STAND_INS = ["-U_WIN32", "-U_MSC_VER", "-fms-compatibility-version=0", "-D_GNU_SOURCE", "-D_LIBCPP_HAS_NO_THREADS", "-nostdlibinc",
             "-nostdinc++"]
WARNINGS = ["-Wall", "-Wextra", "-Wconversion", "-Wsign-conversion", "-Wshadow"]
EXPECTED = re.compile(r"/type_traits:\d+:\d+: error: requested alignment must be 8192 bytes or smaller$")
MESSAGE = re.compile(r"\b(?:error|warning): ")


def main():
    clang, include, source = sys.argv[1:]
    resources = subprocess.run([clang, "-print-resource-dir"], check=True, capture_output=True, text=True).stdout.strip()
    libcxx = Path(resources).parents[2] / "include" / "c++" / "v1"
    machine = subprocess.run([clang, "-print-target-triple"], check=True, capture_output=True, text=True).stdout.split("-")
    system = [libcxx, f"/usr/include/{machine[0]}-linux-gnu", "/usr/include"]
    failures = []
    for mode in ([], ["-fno-exceptions", "-fno-rtti"]):
        command = [clang, "--target=x86_64-pc-windows-msvc", "-std=c++17", "-fsyntax-only", "-ferror-limit=0", *STAND_INS, *WARNINGS,
                   *mode, *(option for path in system for option in ("-isystem", path)), f"-I{include}", source]
        done = subprocess.run(command, capture_output=True, text=True, check=False)
        told = [line for line in done.stderr.splitlines() if MESSAGE.search(line)]
        failures += [line for line in told if not EXPECTED.search(line)]
    print("\n".join(failures))
    return 1 if failures else 0


sys.exit(main())
