# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""The build backend of pip, for wheels, editable wheels and source distributions.

It uses only the standard library, so an installation downloads nothing. A wheel contains the package, the native module and
the licence. An editable wheel refers to the package in the source tree, where the native module is added. A source
distribution contains the package and, in `library`, the library's sources.
"""

import base64
import hashlib
import io
import shutil
import tarfile
import tomllib
import zipfile
from pathlib import Path

import build_native
from build_native import PACKAGE, TREE

# The library's sources.
LIBRARY = ["CMakeLists.txt", "LICENSE", "LICENSES", "MTParserLib", "MathExprRes", "TarnUInfo", "cmake", "include", "mathexpr",
           "platform"]
OWN = ["CMakeLists.txt", "backend", "mathexpr", "native", "pyproject.toml", "tests"]


def build_wheel(wheel_directory, config_settings=None, metadata_directory=None):
    """Called by pip; returns the file name of the wheel."""
    module = build_native.build()
    files = {f"mathexpr/{path.relative_to(PACKAGE / 'mathexpr').as_posix()}": path.read_bytes()
             for path in sorted((PACKAGE / "mathexpr").rglob("*")) if path.suffix in (".py", ".pyi", ".typed")}
    files[f"mathexpr/{module.name}"] = module.read_bytes()
    return write_wheel(wheel_directory, module, files)


def build_editable(wheel_directory, config_settings=None, metadata_directory=None):
    """Called by pip install --editable; returns the file name."""
    module = build_native.build()
    shutil.copy(module, PACKAGE / "mathexpr")
    return write_wheel(wheel_directory, module, {"mathexpr.pth": f"{PACKAGE}\n".encode()})


def build_sdist(sdist_directory, config_settings=None):
    """Called for a source distribution; returns its file name."""
    base = f"{project()['name']}-{project()['version']}"
    name = f"{base}.tar.gz"
    with tarfile.open(Path(sdist_directory, name), "w:gz", format=tarfile.PAX_FORMAT) as archive:
        information = tarfile.TarInfo(f"{base}/PKG-INFO")
        information.size = len(metadata())
        archive.addfile(information, io.BytesIO(metadata()))
        for folder, names, place in ((PACKAGE, OWN, base), (TREE, LIBRARY, f"{base}/library")):
            for entry in names:
                archive.add(folder / entry, f"{place}/{entry}", filter=without_leftovers)
    return name


def without_leftovers(entry):
    """Omits files that Python and editable installations add to the sources, and clears the owner."""
    if "__pycache__" in entry.name or entry.name.endswith(".so"):
        return None
    entry.uid = entry.gid = 0
    entry.uname = entry.gname = ""
    return entry


def project():
    """The table [project] of pyproject.toml."""
    return tomllib.loads((PACKAGE / "pyproject.toml").read_text(encoding="utf-8"))["project"]


def metadata():
    """The METADATA of a wheel, and the PKG-INFO of a source distribution."""
    told = project()
    lines = [
        "Metadata-Version: 2.1",
        f"Name: {told['name']}",
        f"Version: {told['version']}",
        f"Summary: {told['description']}",
        f"License: {told['license']['text']}",
        "License-File: LICENSE",
        f"Requires-Python: {told['requires-python']}",
    ]
    for extra, requirements in told["optional-dependencies"].items():
        lines.append(f"Provides-Extra: {extra}")
        lines.extend(f"Requires-Dist: {requirement}; extra == '{extra}'" for requirement in requirements)
    return ("\n".join(lines) + "\n").encode()


def write_wheel(directory, module, files):
    """Writes a wheel with the files, for the systems that the module runs on; returns its file name."""
    tag = f"{build_native.python_tag()}-{build_native.platform_tag(module)}"
    base = f"{project()['name']}-{project()['version']}"
    information = f"{base}.dist-info"
    files[f"{information}/licenses/LICENSE"] = (TREE / "LICENSE").read_bytes()
    files[f"{information}/METADATA"] = metadata()
    files[f"{information}/WHEEL"] = f"""Wheel-Version: 1.0
Generator: mathexpr
Root-Is-Purelib: false
Tag: {tag}
""".encode()
    record = "".join(f"{name},sha256={digest(data)},{len(data)}\n" for name, data in files.items())
    files[f"{information}/RECORD"] = f"{record}{information}/RECORD,,\n".encode()
    wheel = f"{base}-{tag}.whl"
    with zipfile.ZipFile(Path(directory, wheel), "w", zipfile.ZIP_DEFLATED) as archive:
        for name, data in files.items():
            archive.writestr(name, data)
    return wheel


def digest(data):
    return base64.urlsafe_b64encode(hashlib.sha256(data).digest()).rstrip(b"=").decode()
