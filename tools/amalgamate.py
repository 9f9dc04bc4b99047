#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""amalgamate.py - combines the library into one source file, for hosts with any build system.

    amalgamate.py ROOT OUT.zip

The zip contains the HEADERS and mathexpr.cpp: all sources in the library's folders, each after the headers that it
includes. There is no list of sources: every .cpp file in these folders is one. A suffix in its name limits it to a
system.
"""
import re
import sys
import zipfile
from pathlib import Path

FOLDERS = ["platform", "MathExprRes", "MTParserLib", "mathexpr"]
HEADERS = ["mathexpr.h", "mathexpr_editor.h", "mathexpr.hpp", "mathexpr_editor.hpp"]  # each after the ones that it includes

# The condition under which a source is compiled, by the suffix of its name. Sources for DLLs only are omitted.
CONDITIONS = {"Windows.cpp": "defined(_WIN32)", "Posix.cpp": "!defined(_WIN32)",
              "Wasm.cpp": "defined(MATHEXPR_TILE_SINES)"}
OF_A_DLL = ("StartUpWindows.cpp", "HostBoundaryMinGW.cpp", "RunTimeMinGW.cpp")

INCLUDE = re.compile(r'^\s*#\s*include\s*[<"]([^>"]+)[>"]', re.MULTILINE)
LICENCE_LINES = re.compile(r"\A(?:// SPDX-[^\n]*\n)+(?://)?\n")  # the file as a whole has them
PRAGMA_ONCE = re.compile(r"^\s*#\s*pragma\s+once\b", re.MULTILINE)

# Inexact arithmetic would change results. Pragmas switch it off where they can; the rest is an #error.
EXACTNESS = """\
#if __cplusplus < 201703L && (!defined(_MSVC_LANG) || _MSVC_LANG < 201703L)
#error "mathexpr requires C++17: compile it with -std=c++17"
#endif
#if defined(__FAST_MATH__) || defined(__ASSOCIATIVE_MATH__) || defined(__RECIPROCAL_MATH__) || \\
    defined(__NO_SIGNED_ZEROS__) || (defined(__FINITE_MATH_ONLY__) && __FINITE_MATH_ONLY__) || defined(_M_FP_FAST)
#error "mathexpr computes exactly: compile it without -ffast-math, /fp:fast, or the options they imply"
#endif
#if defined(__FLT_EVAL_METHOD__) && __FLT_EVAL_METHOD__ != 0 && __FLT_EVAL_METHOD__ != 16
#error "mathexpr computes exactly: compile it with SSE2 arithmetic (-msse2 -mfpmath=sse)"
#endif
#if defined(__clang__)
#pragma STDC FP_CONTRACT OFF
#elif defined(__GNUC__)
#pragma GCC optimize("fp-contract=off")
#elif defined(_MSC_VER)
#pragma fp_contract(off)
#else
#error "mathexpr computes exactly: add here what keeps this compiler from contracting a*b+c"
#endif
"""


def is_included_once(path):
    return PRAGMA_ONCE.search(path.read_text(encoding="utf-8")) is not None


# MinGW's own mathematical functions compute with x87 instructions: their pow(10, -2) is not the double nearest to 0.01. The
# source calls those of Windows instead, under separate names, so that a host's calls do not change.
OF_TWO_NUMBERS = ["fmod", "pow"]


def system_math(root):
    """Declarations for the beginning of the source, and definitions for its end, of the functions that the DLL imports."""
    listed = (root / "cmake/windows/msvcrt_math.def").read_text(encoding="ascii").split("EXPORTS")[1].split()
    declarations = []
    definitions = []
    for name in listed:
        types, parameters, arguments = (("double, double", "double x, double y", "x, y") if name in OF_TWO_NUMBERS else
                                        ("double", "double x", "x"))
        declarations.append(f'double {name}({types}) __asm__("mathexpr_system_{name}");')
        definitions.append(f"""\
double mathexpr_system_{name}({types});
double mathexpr_system_{name}({parameters})
{{
    static const auto function = mathexprSystemFunction<double (*)({types})>("{name}");
    return function({arguments});
}}""")
    begin = "\n".join(["#if defined(__MINGW32__)", 'extern "C" {', *declarations, "}", "#endif"])
    end = "\n".join(["#if defined(__MINGW32__)", "template <class Function>",
                     "static Function mathexprSystemFunction(const char* name)", "{",
                     '    return reinterpret_cast<Function>(reinterpret_cast<void*>('
                     'GetProcAddress(LoadLibraryW(L"msvcrt.dll"), name)));', "}",
                     'extern "C" {', *definitions, "}", "#endif"])
    return begin, end


class Amalgamation:
    """Accumulated text that contains each header of the tree once."""

    def __init__(self, root, included=()):
        self.root = root
        self.included = set(included)
        self.lines = []

    def resolve(self, including, name):
        for candidate in (self.root / "include" / name, self.root / name, including.parent / name):
            if candidate.is_file():
                return candidate.resolve()
        return None

    def add_headers(self, path):
        """Adds the headers that a file includes, before the file, so that the file's own #if conditions do not apply to them."""
        for name in INCLUDE.findall(path.read_text(encoding="utf-8")):
            target = self.resolve(path, name)
            if target is not None and is_included_once(target):
                self.add(target)

    def add(self, path):
        """Adds a file after its headers; a header only once. A table replaces its #include."""
        if path in self.included:
            return
        if is_included_once(path):
            self.included.add(path)
        self.add_headers(path)
        self.lines.append(f"// ----- {path.relative_to(self.root).as_posix()}")
        self.add_lines(path, LICENCE_LINES.sub("", path.read_text(encoding="utf-8")).splitlines())

    def add_lines(self, path, lines):
        for line in lines:
            include = INCLUDE.match(line)
            target = self.resolve(path, include.group(1)) if include else None
            if target is None and not PRAGMA_ONCE.match(line):
                self.lines.append(line)
            elif target is not None and not is_included_once(target):
                self.add(target)

    def text(self):
        return re.sub(r"\n{3,}", "\n\n", "\n".join(self.lines)) + "\n"


def version_of(root):
    major, minor, patch = re.search(r"^project\(mathexpr VERSION (\d+)\.(\d+)\.(\d+)",
                                    (root / "CMakeLists.txt").read_text(), re.MULTILINE).groups()
    return f"{major}.{minor}.{patch}", 1000000 * int(major) + 1000 * int(minor) + int(patch)


def licence_of(root):
    return "".join(f"// {line}".rstrip() + "\n" for line in (root / "LICENSE").read_text(encoding="utf-8").splitlines())


def header(root, name):
    """A header that needs no files except the headers before it; the first of them selects the static library."""
    own = root / "include" / name
    before = HEADERS[:HEADERS.index(name)]
    made = Amalgamation(root, {(root / "include" / other).resolve() for other in before})
    lines = own.read_text(encoding="utf-8").splitlines()
    head = next(number for number, line in enumerate(lines) if not line.startswith("//"))
    made.lines += lines[:head] + ["#pragma once", ""]
    if not before:
        made.lines += ["#if !defined(MATHEXPR_STATIC)", "#define MATHEXPR_STATIC", "#endif", ""]
    else:
        needed = [other for other in INCLUDE.findall("\n".join(lines)) if other in before]
        made.lines += [f'#include "{other}"' for other in needed] + [""]
    made.included.add(own.resolve())
    made.add_headers(own)
    made.add_lines(own, lines[head:])
    return made.text(), made.included


def source(root, included):
    version, number = version_of(root)
    made = Amalgamation(root, included)
    for folder in FOLDERS:
        for path in sorted((root / folder).rglob("*.cpp")):
            if path.name in OF_A_DLL:
                continue
            condition = next((text for end, text in CONDITIONS.items() if path.name.endswith(end)), None)
            made.add_headers(path.resolve())
            if condition:
                made.lines.append(f"#if {condition}")
            made.add(path.resolve())
            if condition:
                made.lines.append("#endif")
    math_begin, math_end = system_math(root)
    return f"""\
// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// mathexpr.cpp - the whole library, version {version}, in one file: c++ -c -O2 mathexpr.cpp
//
// Made of the library's sources by its tools/amalgamate.py. A program includes mathexpr.h, or mathexpr.hpp in C++;
// for an edit box also mathexpr_editor.h or mathexpr_editor.hpp.
//
{licence_of(root)}
{EXACTNESS}
{math_begin}

{"".join(f'#include "{name}"' + chr(10) for name in HEADERS if name.endswith(".h"))}
#if defined(_WIN32)
#define NOMINMAX
#define UNICODE
#define WIN32_LEAN_AND_MEAN
#endif
#define MATHEXPR_VERSION_NUMBER {number}
#define MATHEXPR_VERSION_TEXT "{version}"

""" + made.text() + math_end + "\n"


def main():
    root = Path(sys.argv[1]).resolve()
    files = {}
    included = set()
    for name in HEADERS:
        if (root / "include" / name).is_file():
            files[name], inlined = header(root, name)
            included |= inlined
    files["mathexpr.cpp"] = source(root, included)
    files["LICENSE"] = (root / "LICENSE").read_text(encoding="utf-8")
    with zipfile.ZipFile(sys.argv[2], "w", zipfile.ZIP_DEFLATED) as archive:
        for name, text in files.items():
            entry = zipfile.ZipInfo(f"mathexpr-amalgamation/{name}", (2026, 1, 1, 0, 0, 0))
            entry.compress_type = zipfile.ZIP_DEFLATED
            archive.writestr(entry, text)


if __name__ == "__main__":
    main()
