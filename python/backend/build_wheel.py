# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""The build backend: pip calls it, and gets a wheel of the package with the shared library in it.

In: the source tree that this file stands in, CMake and a C++ compiler. Out: a wheel for this kind of machine and every
Python 3, since the package talks to the library through ctypes. Only the standard library is used, so that an
installation fetches nothing. CMake builds in build/python of the tree, and builds anew only what has changed.
"""

import base64
import hashlib
import os
import re
import subprocess
import sysconfig
import tomllib
import zipfile
from pathlib import Path

HERE = Path(__file__).resolve().parents[1]
TREE = HERE.parent
BUILD = TREE / "build" / "python"


def build_library():
    """Builds the shared library, and answers where it is."""
    if not (TREE / "CMakeLists.txt").is_file():
        raise SystemExit(f"mathexpr is built from its source tree, and {TREE} is not it")
    options = {"CMAKE_BUILD_TYPE": "Release", "MATHEXPR_BUILD_TESTS": "OFF", "MATHEXPR_BUILD_TOOLS": "OFF"}
    try:
        subprocess.run(["cmake", "-S", TREE, "-B", BUILD, *(f"-D{name}={value}" for name, value in options.items())],
                       check=True)
        subprocess.run(["cmake", "--build", BUILD, "--target", "mathexpr", "--parallel", str(os.cpu_count() or 1)],
                       check=True)
    except FileNotFoundError as error:
        raise SystemExit("mathexpr is built with CMake, which is not installed") from error
    except subprocess.CalledProcessError as error:
        raise SystemExit(f"mathexpr could not be built: {error}") from error
    return BUILD / "lib" / "libmathexpr.so"


def metadata(project):
    """The METADATA of a wheel for the table project of pyproject.toml."""
    lines = [
        "Metadata-Version: 2.1",
        f"Name: {project['name']}",
        f"Version: {project['version']}",
        f"Summary: {project['description']}",
        f"License: {project['license']['text']}",
        f"Requires-Python: {project['requires-python']}",
    ]
    for extra, requirements in project["optional-dependencies"].items():
        lines.append(f"Provides-Extra: {extra}")
        lines.extend(f"Requires-Dist: {requirement}; extra == '{extra}'" for requirement in requirements)
    return "\n".join(lines) + "\n"


def build_wheel(wheel_directory, config_settings=None, metadata_directory=None):
    """What pip calls; answers the name of the wheel."""
    library = build_library()
    project = tomllib.loads((HERE / "pyproject.toml").read_text(encoding="utf-8"))["project"]
    tag = f"py3-none-{re.sub('[-.]', '_', sysconfig.get_platform())}"
    base = f"{project['name']}-{project['version']}"
    files = {f"mathexpr/{path.name}": path.read_bytes()
             for path in sorted((HERE / "mathexpr").iterdir()) if path.suffix == ".py" or path.name == "py.typed"}
    files["mathexpr/libmathexpr.so"] = library.read_bytes()
    information = f"{base}.dist-info"
    files[f"{information}/LICENSE"] = (TREE / "LICENSE").read_bytes()
    files[f"{information}/METADATA"] = metadata(project).encode()
    files[f"{information}/WHEEL"] = f"""Wheel-Version: 1.0
Generator: mathexpr
Root-Is-Purelib: false
Tag: {tag}
""".encode()
    record = "".join(f"{name},sha256={digest(data)},{len(data)}\n" for name, data in files.items())
    files[f"{information}/RECORD"] = f"{record}{information}/RECORD,,\n".encode()
    wheel = f"{base}-{tag}.whl"
    with zipfile.ZipFile(Path(wheel_directory, wheel), "w", zipfile.ZIP_DEFLATED) as archive:
        for name, data in files.items():
            archive.writestr(name, data)
    return wheel


def build_sdist(sdist_directory, config_settings=None):
    """What pip needs to exist; a source distribution would lack the library's sources."""
    raise SystemExit("mathexpr is installed from its source tree; there is no source distribution")


def digest(data):
    return base64.urlsafe_b64encode(hashlib.sha256(data).digest()).rstrip(b"=").decode()
