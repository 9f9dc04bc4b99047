# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""The native module: its dependencies and exports; values need nothing else."""

import pickle
import pydoc
import re
import subprocess
import sys
from importlib import metadata

import mathexpr
from mathexpr import _native

# Only parts of the C library; no other library is needed.
SYSTEM_LIBRARIES = {"libc.so.6", "libm.so.6", "libpthread.so.0", "libdl.so.2", "librt.so.1"}

# Functions behind the macros of Python's headers.
STABLE_IN_SPITE_OF_THEIR_NAMES = {
    "_PyArg_ParseTupleAndKeywords_SizeT",
    "_PyArg_ParseTuple_SizeT",
    "_PyObject_GC_New",
    "_Py_BuildValue_SizeT",
    "_Py_Dealloc",
    "_Py_FalseStruct",
    "_Py_NoneStruct",
    "_Py_NotImplementedStruct",
    "_Py_TrueStruct",
    "_Py_VaBuildValue_SizeT",
}


def objdump(*options):
    return subprocess.run(["objdump", *options, _native.__file__], capture_output=True, text=True, check=True).stdout


def test_the_version():
    assert re.fullmatch(r"\d+\.\d+\.\d+", mathexpr.__version__)


def test_the_module_needs_the_system_alone():
    needed = set(re.findall(r"^ +NEEDED +(\S+)$", objdump("-p"), re.MULTILINE))
    assert "libc.so.6" in needed
    assert {name for name in needed if not name.startswith("ld-linux")} <= SYSTEM_LIBRARIES


def test_the_module_shows_its_entry_alone():
    symbols = [line.split() for line in objdump("-T").splitlines() if " g " in line and "*UND*" not in line]
    assert [fields[-1] for fields in symbols] == ["PyInit__native"]


def test_the_module_keeps_to_the_stable_interface():
    used = re.findall(r"\*UND\*.* (_?Py\w+)$", objdump("-T"), re.MULTILINE)
    assert "PyFloat_FromDouble" in used
    assert {name for name in used if name.startswith("_Py")} <= STABLE_IN_SPITE_OF_THEIR_NAMES


def test_values_need_no_numpy():
    program = "import sys; sys.modules['numpy'] = None; import mathexpr; print(mathexpr.evaluate('[1,2]*2'))"
    done = subprocess.run([sys.executable, "-c", program], capture_output=True, text=True, check=False)
    assert done.stdout == "[2,4,0]\n", done.stderr


def test_the_package_imports_neither_numpy_nor_what_is_slow():
    program = "import sys; before = set(sys.modules); import mathexpr; print(*sorted(set(sys.modules) - before))"
    done = subprocess.run([sys.executable, "-S", "-E", "-c", f"import sys; sys.path[:0] = {sys.path!r}; {program}"],
                          capture_output=True, text=True, check=True)
    imported = set(done.stdout.split())
    assert "mathexpr._native" in imported
    assert not imported & {"numpy", "ctypes", "dataclasses", "inspect", "difflib", "pandas"}


def test_the_wheel_says_what_it_is():
    files = {str(path): path for path in metadata.files("mathexpr")}
    information = next(name.split("/")[0] for name in files if name.endswith("/METADATA"))
    assert f"{information}/licenses/LICENSE" in files and "mathexpr/py.typed" in files
    assert "MIT License" in files[f"{information}/licenses/LICENSE"].read_text()
    assert {"mathexpr/_native.pyi", "mathexpr/_native.abi3.so", "mathexpr/dask.py"} <= files.keys()
    tag = re.search(r"^Tag: cp311-abi3-manylinux_2_(\d+)_", files[f"{information}/WHEEL"].read_text(), re.MULTILINE)
    used = max(int(minor) for minor in re.findall(r"GLIBC_2\.(\d+)", objdump("-p")))
    assert tag is not None and int(tag[1]) == used


def test_help_names_things_as_users_import_them():
    for name in mathexpr.__all__:
        thing = getattr(mathexpr, name)
        if isinstance(thing, type):
            assert (thing.__module__, thing.__qualname__) == ("mathexpr", name)
            assert pickle.loads(pickle.dumps(thing)) is thing
    told = " ".join(pydoc.render_doc(mathexpr.function, renderer=pydoc.plaintext).split()).replace("( ", "(")
    assert "function(text: 'str', *arguments: 'str', points:" in told and ":param points: names of the arguments that are points" in told
