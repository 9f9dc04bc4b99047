# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""check_names.py - compares the names of the interface in C, C++ and Python with the table in docs/embedding.md.

    check_names.py ROOT

The table must list exactly: for C, every function, without _utf8 and _utf16; for C++, every class and function of
mathexpr*.hpp, and the functions of the classes in CPP_CLASSES, without the try forms; for Python, the exports of the package,
and the members of the classes in PYTHON_CLASSES.
"""
import ast
import re
import sys
from pathlib import Path

HEADING = "| What | C | C++ | Python |"
CODE = re.compile(r"`([^`]+)`")
C_FUNCTION = re.compile(r"MATHEXPR_C_API [^;(]*?\b(mathexpr_\w+)\(")
CPP_DETAIL = re.compile(r"^namespace detail \{\n.*?^\n\}\n", re.MULTILINE | re.DOTALL)
CPP_CLASS = re.compile(r"^(?:class|struct) (?:\[\[nodiscard\]\] )?(\w+)(?: : [^\n{]*)?\n\{\n(.*?)^\};", re.MULTILINE | re.DOTALL)
CPP_ALIAS = re.compile(r"^using (\w+) =", re.MULTILINE)
CPP_CONSTANT = re.compile(r"^inline constexpr [\w:]+ (\w+) =", re.MULTILINE)
CPP_FUNCTION = re.compile(r"^inline (?!constexpr)[\w:<>]+ (\w+)\(", re.MULTILINE)
CPP_METHOD = re.compile(r"^    (?!return\b|explicit\b)(?:static |const )*[\w:]+(?:<[^()\n]*>)?&? (\w+)\(", re.MULTILINE)
CPP_CLASSES = {"Editor", "Error", "Expression", "Function", "Value", "Variables"}
# A constructor's try form, access to the C interface, and functions called by language constructs.
CPP_OTHERS = {"create", "record", "operator", "begin", "end"}
PYTHON_CLASSES = ("Expression", "MathExprError", "RowsError")


def headers(root, pattern):
    return "".join(header.read_text() for header in sorted((root / "include").glob(pattern)))


def c_names(root):
    names = C_FUNCTION.findall(headers(root, "mathexpr*.h"))
    return {re.sub(r"_utf(?:8|16)$", "", name) for name in names}


def without_try(name):
    return re.sub(r"^try([A-Z])", lambda match: match.group(1).lower(), name)


def cpp_names(root):
    text = CPP_DETAIL.sub("", headers(root, "mathexpr*.hpp"))
    names = {*CPP_ALIAS.findall(text), *CPP_CONSTANT.findall(text), *map(without_try, CPP_FUNCTION.findall(text))}
    for name, body in CPP_CLASS.findall(text):
        names.add(name)
        if name in CPP_CLASSES:
            public = re.sub(r"^private:.*", "", body, flags=re.MULTILINE | re.DOTALL)
            names |= {f"{name}::{method}" for method in map(without_try, CPP_METHOD.findall(public))
                      if method not in CPP_OTHERS}
    return names


def python_names(root):
    package = root / "python" / "mathexpr"
    exported = next(node.value for node in ast.parse((package / "__init__.py").read_text()).body
                    if isinstance(node, ast.Assign) and node.targets[0].id == "__all__")
    names = set(ast.literal_eval(exported))
    classes = {node.name: node for file in package.glob("*.py") for node in ast.parse(file.read_text()).body
               if isinstance(node, ast.ClassDef)}
    for name in PYTHON_CLASSES:
        # Members of a base that is not exported count as the class's own.
        parts = [classes[name], *(classes[base.id] for base in classes[name].bases if base.id in classes.keys() - names)]
        members = {item.name for part in parts for item in part.body if isinstance(item, ast.FunctionDef)}
        members |= {item.attr for part in parts for item in ast.walk(part)
                    if isinstance(item, ast.Attribute) and isinstance(item.ctx, ast.Store)}
        names |= {f"{name}.{member}" for member in members if not member.startswith("_")}
    return names


def table_names(root):
    lines = (root / "docs" / "embedding.md").read_text(encoding="utf-8").splitlines()
    columns = (set(), set(), set())
    for line in lines[lines.index(HEADING) + 2:]:
        if not line.startswith("|"):
            break
        for names, cell in zip(columns, line.split("|")[2:5]):
            names.update(CODE.findall(cell))
    return columns


def main():
    root = Path(sys.argv[1])
    failures = []
    for language, in_table, real in zip(("C", "C++", "Python"), table_names(root),
                                        (c_names(root), cpp_names(root), python_names(root))):
        failures += [f"{language}: not in the table: {name}" for name in sorted(real - in_table)]
        failures += [f"{language}: in the table only: {name}" for name in sorted(in_table - real)]
        print(f"{language}: {len(real)} names")
    print("\n".join(failures))
    return 1 if failures else 0


sys.exit(main())
