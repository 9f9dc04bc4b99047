# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""check_headers.py - checks that hosts can include the public headers.

    check_headers.py alone INCLUDE-DIRECTORY COMPILER...
    check_headers.py names INCLUDE-DIRECTORY
    check_headers.py together INCLUDE-DIRECTORY HOST COMPILER...

alone: each header compiles by itself, as C++17, without warnings. names: the C++ headers declare no names in the global
namespace except the given ones. together: all headers compile in one source, in both orders, around the host's declarations
in HOST of names that namespace mathexpr has as well; in one order also as later C++. Headers are found, not listed.
"""
import re
import subprocess
import sys
from pathlib import Path

WARNINGS = ["-Wall", "-Wextra", "-Wpedantic", "-Wconversion", "-Wsign-conversion", "-Wshadow", "-Werror"]

OLDEST = "c++17"
LATER = ["c++20", "c++2b"]  # C++23, under the name that older compilers know

# The classes and records of the given interface, and the engine's three that private members point to.
GIVEN = {
    "CMathExpr", "IMathExprItemEvaluator", "IMathExprService", "IMathFunction", "IMathOperator", "IMathVariable",
    "IMathVariableFactory", "MTExceptions", "MTParser", "MTParserProgram", "MTParserRegistrar", "MathExpression",
    "NB_ARGS_UNDEFINED", "SMTDefExcepData", "SMTParsingExcepData", "VALTYPE",
}

IGNORED = re.compile(r'//[^\n]*|^\s*#(?:[^\n\\]|\\\n)*|"(?:\\.|[^"\\])*"', re.MULTILINE)
TEMPLATE = re.compile(r"template\s*<[^<>]*>")
DECLARED = re.compile(r"(?:class|struct|enum|union|namespace|using|typedef)\s+(?:class\s+|struct\s+)?(?:MATHEXPR_\w+\s+)?(\w+)|"
                      r"(\w+)\s*(?:\(|=|$)")


def headers(include):
    found = sorted(path.relative_to(include).as_posix() for path in include.rglob("*.h*"))
    assert len(found) > 20, f"only {len(found)} headers in {include}"
    return found


def compile_host(compiler, include, source, standard=OLDEST):
    """The compiler's messages; empty if there are none."""
    run = subprocess.run([compiler, f"-std={standard}", *WARNINGS, "-I", include, "-fsyntax-only", "-x", "c++", "-"],
                         input=source, capture_output=True, text=True)
    return run.stderr if run.returncode != 0 or run.stderr else ""


def global_names(text):
    """The names that a header declares outside every namespace."""
    depth = 0
    statement = ""
    for character in IGNORED.sub("", text):
        if depth == 0 and character in "{;":
            match = DECLARED.search(TEMPLATE.sub("", " ".join(statement.split())))
            if match and not statement.lstrip().startswith("static_assert"):
                yield match.group(1) or match.group(2)
            statement = ""
        elif depth == 0 and character != "}":
            statement += character
        depth += {"{": 1, "}": -1}.get(character, 0)


def check_alone(include, compilers):
    for header in headers(include):
        for compiler in compilers:
            said = compile_host(compiler, include, f"#include <{header}>\n")
            if said:
                yield f"{header} alone, {compiler}:\n{said}"


def check_names(include):
    for header in headers(include):
        text = (include / header).read_text(encoding="utf-8")
        if header in ("mathexpr.h", "mathexpr_editor.h"):  # all their names have a prefix
            continue
        for name in sorted(set(global_names(text)) - GIVEN - {"mathexpr"}):
            yield f"{header}: {name} must be in namespace mathexpr"


def check_together(include, host, compilers):
    lines = [f"#include <{header}>\n" for header in headers(include)]
    own = host.read_text(encoding="utf-8")
    for compiler in compilers:
        for order in (lines, lines[::-1]):
            for source in ("".join(order) + own, own + "".join(order)):
                said = compile_host(compiler, include, source)
                if said:
                    yield f"together, {compiler}:\n{said}"
        for standard in LATER:
            said = compile_host(compiler, include, "".join(lines) + own, standard)
            if said:
                yield f"together, {compiler} -std={standard}:\n{said}"


def main():
    what, include, *rest = sys.argv[1:]
    include = Path(include)
    if what == "alone":
        failures = list(check_alone(include, rest))
    elif what == "names":
        failures = list(check_names(include))
    else:
        failures = list(check_together(include, Path(rest[0]), rest[1:]))
    print("\n".join(failures))
    return bool(failures)


if __name__ == "__main__":
    sys.exit(main())
