# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Builds the native module with CMake, and determines the systems that it runs on.

Input: the package's folder, with the library's sources in `library` (a source distribution) or around it (a checkout); CMake,
a C++ compiler and Python's headers. Output: one shared object that contains the library and the C++ run-time library.
"""

import os
import re
import shutil
import subprocess
import sysconfig
from pathlib import Path

PACKAGE = Path(__file__).resolve().parents[1]
TREE = PACKAGE / "library" if (PACKAGE / "library").is_dir() else PACKAGE.parent
BUILD = TREE / "build" / "python"

FREE_THREADED = bool(sysconfig.get_config_var("Py_GIL_DISABLED"))
NAME = "_native.so" if FREE_THREADED else "_native.abi3.so"

# Libraries that every system with the C library has. A module that needs others runs only on the system that built it.
SYSTEM_LIBRARIES = {"libc.so.6", "libm.so.6", "libpthread.so.0", "libdl.so.2", "librt.so.1"}


def build():
    """Builds the native module incrementally, and returns its path."""
    if not (TREE / "CMakeLists.txt").is_file():
        raise SystemExit(f"mathexpr is built from its sources, and {TREE} holds none")
    headers = sysconfig.get_path("include")
    if not Path(headers, "Python.h").is_file():
        raise SystemExit(f"mathexpr is built with Python's headers, which are not in {headers}: install python3-dev")
    options = {
        "CMAKE_BUILD_TYPE": "Release",
        "MATHEXPR_TREE": TREE,
        "MATHEXPR_PYTHON": headers,
        "MATHEXPR_FREE_THREADED": "ON" if FREE_THREADED else "OFF",
    }
    forget_other_folders()
    try:
        subprocess.run(["cmake", "-S", PACKAGE, "-B", BUILD, *(f"-D{name}={value}" for name, value in options.items())],
                       check=True)
        subprocess.run(["cmake", "--build", BUILD, "--target", "_native", "--parallel", str(os.cpu_count() or 1)],
                       check=True)
    except FileNotFoundError as error:
        raise SystemExit("mathexpr is built with CMake, which is not installed") from error
    except subprocess.CalledProcessError as error:
        raise SystemExit(f"mathexpr could not be built: {error}") from error
    return BUILD / NAME


def forget_other_folders():
    """Removes a build tree that CMake would refuse, since the checkout has moved or its layout has changed."""
    cache = BUILD / "CMakeCache.txt"
    if not cache.is_file():
        return
    told = dict(re.findall(r"^(CMAKE_HOME_DIRECTORY|CMAKE_CACHEFILE_DIR):INTERNAL=(.*)$", cache.read_text(encoding="utf-8"),
                           re.MULTILINE))
    if told != {"CMAKE_HOME_DIRECTORY": str(PACKAGE), "CMAKE_CACHEFILE_DIR": str(BUILD)}:
        shutil.rmtree(BUILD)


def python_tag():
    """The wheel's tag for versions of Python: all from 3.11 on, or only the free-threaded one that built it."""
    if FREE_THREADED:
        version = f"cp{sysconfig.get_config_var('py_version_nodot')}"
        return f"{version}-{version}t"
    return "cp311-abi3"


def platform_tag(module):
    """The wheel's tag for systems: those with at least the version of the C library that the module's symbols need."""
    system = re.sub("[-.]", "_", sysconfig.get_platform())
    if not system.startswith("linux_"):
        return system
    try:
        told = subprocess.run(["objdump", "-p", module], stdout=subprocess.PIPE, text=True, check=True).stdout
    except FileNotFoundError:
        return system
    needed = set(re.findall(r"^ +NEEDED +(\S+)$", told, re.MULTILINE))
    versions = [int(minor) for minor in re.findall(r"GLIBC_2\.(\d+)", told)]
    if not versions or any(name not in SYSTEM_LIBRARIES and not name.startswith("ld-linux") for name in needed):
        return system
    return f"manylinux_2_{max(versions)}_{system.removeprefix('linux_')}"
