# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""sbom.py SBOM LIBRARY - checks that the bill of materials has the form of SPDX 2.3 and is correct.

It states that the library has no dependencies, so LIBRARY may need only libraries of the compiler and the system.
"""
import json
import re
import subprocess
import sys

OF_THE_SYSTEM = re.compile(r"(libc|libm|libstdc\+\+|libgcc_s|libpthread|ld-linux[-\w]*)\.so\.\d+$")


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        document = json.load(file)
    assert document["spdxVersion"] == "SPDX-2.3" and document["dataLicense"] == "CC0-1.0"
    assert document["SPDXID"] == "SPDXRef-DOCUMENT" and document["documentNamespace"]
    assert re.fullmatch(r"\d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ", document["creationInfo"]["created"])
    [package] = document["packages"]
    assert package["licenseDeclared"] == "MIT" and package["copyrightText"].startswith("Copyright (c) 2")
    related = {(one["spdxElementId"], one["relationshipType"]): one["relatedSpdxElement"]
               for one in document["relationships"]}
    assert related == {("SPDXRef-DOCUMENT", "DESCRIBES"): package["SPDXID"], (package["SPDXID"], "DEPENDS_ON"): "NONE"}

    dynamic = subprocess.run(["readelf", "-d", sys.argv[2]], check=True, capture_output=True, text=True).stdout
    needed = re.findall(r"\(NEEDED\)[^[]*\[([^]]+)\]", dynamic)
    others = [name for name in needed if not OF_THE_SYSTEM.match(name)]
    if others or not needed:
        return f"sbom.py: the library needs {others}"
    assert f"libmathexpr.so.{package['versionInfo'].split('.')[0]}" in dynamic
    return None


if __name__ == "__main__":
    sys.exit(main())
