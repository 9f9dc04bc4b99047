# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""links.py - checks that every link within the documentation leads to an existing file and heading.

    links.py PAGE...
"""
import re
import sys
from pathlib import Path

FENCE = re.compile(r"^```.*?^```$", re.MULTILINE | re.DOTALL)
LINK = re.compile(r"\]\(([^)\s]+)\)")
HEADING = re.compile(r"^#+ (.*)$", re.MULTILINE)


def anchors(page):
    """The anchors that a code host gives to the headings of a page."""
    headings = HEADING.findall(FENCE.sub("", page.read_text(encoding="utf-8")))
    return {re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-") for heading in headings}


def breaches(page):
    for link in LINK.findall(FENCE.sub("", page.read_text(encoding="utf-8"))):
        if re.match(r"[a-z]+:", link):
            continue
        target, _, anchor = link.partition("#")
        file = page.parent / target if target else page
        if not file.exists():
            yield f"{page}: {link}: no such file"
        elif anchor and anchor not in anchors(file):
            yield f"{page}: {link}: no such heading"


def main():
    found = [breach for page in map(Path, sys.argv[1:]) for breach in breaches(page)]
    for breach in found:
        print(breach)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
