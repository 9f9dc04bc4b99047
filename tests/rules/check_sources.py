# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Checks rules for the sources that compilers do not check. Prints each violation, and fails if there is one.

Usage: check_sources.py ROOT
"""

import pathlib
import re
import sys

# Each layer and the layers that it may include from, in addition to itself. If two layers contain a file, the inner one counts;
# permission to include from the outer one covers both. A layer may be a single file.
LAYERS = {
    "include": [],
    "platform": [],
    "MathExprRes": [],
    "TarnUInfo": ["platform"],
    "MTParserLib/MTMessage.h": [],
    "MTParserLib/vocabulary": ["include", "platform", "MTParserLib/MTMessage.h"],
    "MTParserLib": ["include", "platform"],
    "mathexpr": ["include", "platform", "MathExprRes", "TarnUInfo", "MTParserLib"],
    "tools": ["include"],
    "examples": ["include"],
}

# The library's layers; and where it may call the operating system: in two layers, and in sources named after a system.
LIBRARY = ["include", "platform", "MathExprRes", "TarnUInfo", "MTParserLib", "mathexpr"]
SYSTEM_LAYERS = ["platform", "TarnUInfo"]
SYSTEM_SOURCES = ("Windows.cpp", "MinGW.cpp", "Posix.cpp")

# A single type passes from the compiler to the evaluator, in a header that includes neither of them.
FORBIDDEN_INCLUDES = {
    "MTParserLib/program/MTParserProgram.h": ["MTParserLib/MTParserCompiler.h", "MTParserLib/run/MTParserEvaluator.h"],
    "MTParserLib/MTParserCompiler.h": ["MTParserLib/run/MTParserEvaluator.h"],
    "MTParserLib/run/MTParserEvaluator.h": ["MTParserLib/MTParserCompiler.h"],
}

CPP_SUFFIXES = {".h", ".hpp", ".cpp", ".def"}
SOURCE_SUFFIXES = CPP_SUFFIXES | {".c", ".py", ".cmake", ".sh"}
SKIPPED_FOLDERS = {"build", "dist", "node_modules", ".git"}

INCLUDE = re.compile(r'^\s*#\s*include\s*(?:"([^"]+)"|<([^>]+)>)', re.MULTILINE)
# Headers of the standard library; and of its ABI and of the processor's vectors, which belong to compilers.
STANDARD_HEADER = re.compile(r"(?:[a-z_]+|std(?:def|int)\.h|cxxabi\.h|immintrin\.h)\Z")
OUTPUT = re.compile(r"\b(?:std::(?:w?cout|w?cerr|w?clog)|f?w?printf|f?put[sc]|f?putw[sc]|putchar|fwrite|perror)\b")
ABORT = re.compile(r"\b(?:abort|exit|_Exit|quick_exit|terminate|assert)\s*\(")
COMMENT = re.compile(r"//[^\n]*")


def is_in(path, folder):
    """Whether a path is in a folder, or is the file itself."""
    return f"{path}/".startswith(f"{folder}/")


def layer_of(path):
    """The layer of a path relative to the root; None for files without a layer, such as tests."""
    return max((layer for layer in LAYERS if is_in(path, layer)), key=len, default=None)


def is_library(layer):
    return any(is_in(layer, outer) for outer in LIBRARY)


def resolve(root, including, included):
    """The path, relative to the root, of an included file of this project; None for other files."""
    for candidate in (root / "include" / included, root / included, (root / including).parent / included):
        if candidate.is_file():
            return candidate.resolve().relative_to(root.resolve()).as_posix()
    return None


def check_includes(root, path, text):
    layer = layer_of(path)
    standard_only = is_library(layer) and layer not in SYSTEM_LAYERS and not path.endswith(SYSTEM_SOURCES)
    for quoted, angled in INCLUDE.findall(text):
        target = resolve(root, path, quoted or angled)
        if target is None:
            if quoted:
                yield f"{path}: includes {quoted}, which does not exist"
            elif standard_only and not STANDARD_HEADER.match(angled):
                yield f"{path}: includes <{angled}>, which is not in the standard library"
        elif target in FORBIDDEN_INCLUDES.get(path, []):
            yield f"{path}: must not include {target}"
        elif not any(is_in(target, below) for below in [layer, *LAYERS[layer]]):
            yield f"{path}: includes {target}, which its layer may not include"


def check_library(path, text):
    code = COMMENT.sub("", text)
    for match in ABORT.finditer(code):
        yield f"{path}: the library must not end the process: {match.group()}"
    for match in OUTPUT.finditer(code):
        yield f"{path}: the library must not write to streams: {match.group()}"


def check_ascii(path, data):
    for number, line in enumerate(data.splitlines(), 1):
        if not line.isascii():
            yield f"{path}:{number}: not ASCII"


def check(root):
    """Yields a line for every violation below the root."""
    for file in sorted(root.rglob("*")):
        path = file.relative_to(root).as_posix()
        if SKIPPED_FOLDERS & set(path.split("/")) or not file.is_file():
            continue
        if file.suffix in SOURCE_SUFFIXES or file.name in ("CMakeLists.txt", "dev"):
            yield from check_ascii(path, file.read_bytes())
        layer = layer_of(path)
        if layer is None or file.suffix not in CPP_SUFFIXES:
            continue
        text = file.read_text(encoding="utf-8", errors="replace")
        yield from check_includes(root, path, text)
        if is_library(layer):
            yield from check_library(path, text)


def main():
    breaches = list(check(pathlib.Path(sys.argv[1])))
    for breach in breaches:
        print(breach)
    return 1 if breaches else 0


if __name__ == "__main__":
    sys.exit(main())
