# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""snippets.py - runs the code blocks in a document, and compares their output with the document.

    snippets.py DOCUMENT FOLDER CHECKOUT [PREFIX]

Every fenced block must be of a known kind. A block of C++ or C is a complete program, saved in FOLDER as host.cpp or host.c,
and compiled and linked with the flags of pkg-config. The text block after it is its expected output, standard output and
standard error in order. A block of sh contains commands to run in the folder; a block of cmake is the CMakeLists.txt of the
program before it. Either is followed by the expected output, of the commands or of the program. A block whose kind is
followed by qt is tested by tests/qt/run.
CHECKOUT replaces the sources that a project fetches, or has in third_party/mathexpr. If it is empty, the blocks of such
projects are not run: they do not depend on the package. PREFIX is the folder of an unpacked archive.
"""
import os
import re
import shutil
import subprocess
import sys
from pathlib import Path

FENCE = re.compile(r"^```(\w*)\n(.*?)^```$", re.MULTILINE | re.DOTALL)
FOR_QT = re.compile(r"^```\w+ qt\n.*?^```$", re.MULTILINE | re.DOTALL)
WARNINGS = ["-O1", "-Wall", "-Wextra", "-Wpedantic", "-Werror"]
FROM_SOURCES = re.compile(r"third_party/mathexpr|FetchContent")
COMPILERS = {"cpp": ["c++", "-std=c++17"], "c": ["cc", "-std=c99"]}


def run(command, folder, **variables):
    """The output of a command without a terminal, with these variables in its environment."""
    done = subprocess.run(command, cwd=folder, env={**os.environ, **variables}, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, encoding="utf-8", check=False)
    if done.returncode != 0:
        raise RuntimeError(f"{' '.join(map(str, command))}: exit status {done.returncode}\n{done.stdout}")
    return done.stdout


def pkg_config():
    return subprocess.run(["pkg-config", "--cflags", "--libs", "mathexpr"], check=True, capture_output=True,
                          text=True).stdout.split()


def build_with_cmake(folder, prefix):
    build = folder / "build"
    shutil.rmtree(build, ignore_errors=True)
    run(["cmake", "-S", ".", "-B", build, "-DCMAKE_BUILD_TYPE=Release",
         *([f"-DCMAKE_PREFIX_PATH={prefix}"] if prefix else [])], folder)
    run(["cmake", "--build", build, "--parallel", "2"], folder)
    return run([build / "host"], folder)


def build_with_sources(folder, checkout):
    """Builds in a folder of the sources, relative to which the compiler cache knows them."""
    sources = folder / "third_party" / "mathexpr"
    sources.parent.mkdir(exist_ok=True)
    if not sources.exists():
        sources.symlink_to(checkout)
    build = checkout / "build" / "host"
    shutil.rmtree(build, ignore_errors=True)
    run(["cmake", "-G", "Ninja", "-S", ".", "-B", build, "-DCMAKE_BUILD_TYPE=Release",
         f"-DFETCHCONTENT_SOURCE_DIR_MATHEXPR={sources}"], folder)
    run(["cmake", "--build", build], folder, CCACHE_BASEDIR=str(folder))
    return run([build / "host"], folder)


def printed(kind, text, folder, checkout, prefix):
    if kind in COMPILERS:
        (folder / f"host.{kind}").write_text(text, encoding="utf-8")
        run([*COMPILERS[kind], *WARNINGS, f"host.{kind}", "-o", "host", *pkg_config()], folder)
        return run(["./host"], folder)
    if kind == "cmake":
        (folder / "CMakeLists.txt").write_text(text, encoding="utf-8")
        return build_with_sources(folder, checkout) if FROM_SOURCES.search(text) else build_with_cmake(folder, prefix)
    if kind == "sh":
        return run(["bash", "-euc", text], folder)
    raise RuntimeError(f"a block of the kind '{kind}', which nothing here runs")


def main():
    document, folder, checkout, *prefix = sys.argv[1:]
    folder = Path(folder)
    folder.mkdir(parents=True)
    text = FOR_QT.sub("", Path(document).read_text(encoding="utf-8"))
    blocks = FENCE.findall(text)
    if len(re.findall(r"^\s*(```|~~~)", text, re.MULTILINE)) != 2 * len(blocks):
        raise RuntimeError(f"{document}: a fence that is not closed, indented or of the other kind")
    if not blocks or len(blocks) % 2 or any(kind != "text" for kind, _ in blocks[1::2]):
        raise RuntimeError(f"{document}: a block without the text that it prints")
    failures = 0
    tried = 0
    for number, ((kind, code), (_, expected)) in enumerate(zip(blocks[0::2], blocks[1::2]), 1):
        if not checkout and kind == "cmake" and FROM_SOURCES.search(code):
            continue
        tried += 1
        found = printed(kind, code, folder, Path(checkout).resolve(), prefix[0] if prefix else None)
        if found != expected:
            failures += 1
            print(f"block {number} ({kind}) of {os.path.basename(document)} prints\n{found}instead of\n{expected}")
    print(f"{tried} of {len(blocks) // 2} blocks run, {failures} with other output")
    return 1 if failures else 0


if __name__ == "__main__":
    try:
        sys.exit(main())
    except RuntimeError as error:
        sys.exit(f"snippets.py: {error}")
