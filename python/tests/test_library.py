# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""The structures and numbers that the package passes are those of mathexpr.h, as a C compiler sees it."""

import ctypes
import os
import re
import subprocess
import sys
from pathlib import Path

import mathexpr
import pytest
from mathexpr import _library

INCLUDE = Path(__file__).resolve().parents[2] / "include"

STRUCTURES = {
    "mathexpr_value": _library.Record,
    "mathexpr_options_utf8": _library.Options,
    "mathexpr_limits": _library.LimitsRecord,
    "mathexpr_diagnostic_utf8": _library.DiagnosticRecord,
    "mathexpr_names_utf8": _library.NamesRecord,
    "mathexpr_name_refusal": _library.NameRefusal,
    "mathexpr_vocabulary_item_utf8": _library.VocabularyRecord,
    "mathexpr_column_utf8": _library.Column,
    "mathexpr_results": _library.Results,
    "mathexpr_bulk_outcome": _library.Outcome,
}


@pytest.fixture(scope="module")
def seen_by_c(tmp_path_factory):
    """Every size, offset and number by its C expression."""
    expressions = [f"sizeof({name})" for name in STRUCTURES]
    for name, structure in STRUCTURES.items():
        expressions += [f"offsetof({name}, {field})" for field, _ in structure._fields_]
    header = (INCLUDE / "mathexpr.h").read_text(encoding="utf-8")
    expressions += re.findall(r"^ *(MATHEXPR_[A-Z0-9_]+) = ", header, re.MULTILINE)
    expressions += re.findall(r"^#define (MATHEXPR_[A-Z_]+) (?:\(.*\)|\d+)$", header, re.MULTILINE)
    folder = tmp_path_factory.mktemp("layout")
    lines = "".join(f'    printf("%lld\\n", (long long)({expression}));\n' for expression in expressions)
    (folder / "layout.c").write_text(
        f"#include <mathexpr.h>\n#include <stdio.h>\nint main(void)\n{{\n{lines}    return 0;\n}}\n"
    )
    subprocess.run(["cc", f"-I{INCLUDE}", "layout.c", "-o", "layout"], cwd=folder, check=True)
    printed = subprocess.run([folder / "layout"], check=True, capture_output=True, text=True).stdout
    return dict(zip(expressions, map(int, printed.split()), strict=True))


@pytest.mark.parametrize("name", STRUCTURES)
def test_layout(seen_by_c, name):
    structure = STRUCTURES[name]
    assert ctypes.sizeof(structure) == seen_by_c[f"sizeof({name})"]
    for field, _ in structure._fields_:
        assert getattr(structure, field).offset == seen_by_c[f"offsetof({name}, {field})"]


def test_numbers(seen_by_c):
    mine = {name: value for name, value in vars(_library).items() if name.isupper() and isinstance(value, int)}
    assert len(mine) > 25
    for name, value in mine.items():
        assert value == seen_by_c["MATHEXPR_" + name], name


def test_the_version():
    assert re.fullmatch(r"\d+\.\d+\.\d+", mathexpr.__version__)


def test_values_need_no_numpy():
    program = "import sys; sys.modules['numpy'] = None; import mathexpr; print(mathexpr.evaluate('[1,2]*2'))"
    done = subprocess.run([sys.executable, "-c", program], capture_output=True, text=True, check=False)
    assert done.stdout == "[2,4,0]\n", done.stderr


@pytest.mark.parametrize(
    "library, told", [("/nowhere/libmathexpr.so", "cannot open"), ("libm.so.6", "undefined symbol")]
)
def test_a_library_that_cannot_be_used(library, told):
    done = subprocess.run(
        [sys.executable, "-c", "import mathexpr"],
        env={**os.environ, "MATHEXPR_LIBRARY": library},
        capture_output=True,
        text=True,
        check=False,
    )
    assert done.returncode == 1
    assert re.search(told, done.stderr) and "MATHEXPR_LIBRARY" in done.stderr.splitlines()[-1]
