# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""cdef.py CDEF INCLUDE - compares the declarations for foreign-function interfaces with the preprocessed headers.

In addition they contain the headers' macros that are plain numbers, as constants.
"""
import re
import subprocess
import sys
from pathlib import Path

HEADERS = ("mathexpr.h", "mathexpr_editor.h")
TOKEN = re.compile(r"\w+|[^\s\w]")
CONSTANT = re.compile(r"^enum \{ (\w+) = (\d+) \};\n", re.MULTILINE)
MACRO = re.compile(r"^#define (MATHEXPR_\w+) (\d+)$", re.MULTILINE)


def preprocessed(header):
    """The preprocessed text of a header, without the headers that it includes."""
    lines = subprocess.run(["cc", "-E", "-std=c99", "-DMATHEXPR_STATIC", str(header)], check=True, capture_output=True,
                           text=True).stdout.splitlines()
    own = False
    for line in lines:
        marker = re.match(r'# \d+ "(.*?)"', line)
        if marker:
            own = marker[1] == str(header)
        elif own:
            yield line


def main():
    headers = [Path(sys.argv[2]) / name for name in HEADERS]
    cdef = Path(sys.argv[1]).read_text(encoding="ascii")
    macros = MACRO.findall("".join(header.read_text(encoding="utf-8") for header in headers))
    if not macros or CONSTANT.findall(cdef) != macros:
        return "cdef.py: the headers have other macros"
    found = TOKEN.findall(CONSTANT.sub("", cdef))
    expected = [token for header in headers for token in TOKEN.findall("\n".join(preprocessed(header)))]
    for index, (token, wanted) in enumerate(zip(found, expected)):
        if token != wanted:
            return f"cdef.py: {' '.join(found[index - 5:index + 5])}, and in the headers {wanted}"
    return None if len(found) == len(expected) > 1000 else "cdef.py: the headers hold more or less"


if __name__ == "__main__":
    sys.exit(main())
