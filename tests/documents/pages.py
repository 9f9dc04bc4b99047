# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""pages.py - runs the instructions in the pages, and compares the output with the pages.

    pages.py FOLDER CHECKOUT CALCULATOR PAGE...

Each page is run from first to last line in a separate folder in FOLDER, in which `mathexpr` is the CHECKOUT:

- A fenced block below a paragraph that ends in "as `NAME`:" is a file, and is saved under that name.
- A block of sh is run, after the lines of earlier blocks that begin with export. If a block of text follows, it is the
  expected output. The command mathexpr is the CALCULATOR, unless the page installs another one.
- A block of python that is not a file is a session, with >>> before the input. All such blocks of a page are one session,
  run by the Python of the page's `.venv`, otherwise by the one that runs this script.
- In a table whose first column is Expression, the CALCULATOR gets the expressions of each row, one after the other. The
  second column is the last value, as code, or the beginning of the message.

A fence of another kind, and a page with nothing to run, are errors.
"""
import os
import re
import shutil
import subprocess
import sys
import time
from pathlib import Path

FENCE = re.compile(r"^```(\w*)\n(.*?)^```$", re.MULTILINE | re.DOTALL)
FILE = re.compile(r"\bas\s`([\w./-]+)`:\s*\Z")
CODE = re.compile(r"`([^`]+)`")
TABLE = re.compile(r"^\| Expression \|.*\n\|[-| :]+\n((?:\|.*\n)+)", re.MULTILINE)
CELL = re.compile(r"(?<!\\)\|")


class Page:
    def __init__(self, path, folder, calculator):
        self.path = path
        self.folder = folder
        self.calculator = calculator
        self.exports = ""
        self.session = ""
        self.failures = 0
        self.tried_count = 0

    def compare(self, what, found, expected):
        self.tried_count += 1
        if found != expected:
            self.failures += 1
            print(f"{self.path.name}: {what.strip()}\nprints\n{found.rstrip()}\ninstead of\n{expected.rstrip()}\n")

    def run(self, command, what):
        """The output of a command without a terminal; reports its failure."""
        path = os.pathsep.join([os.environ["PATH"], os.path.dirname(self.calculator)])
        done = subprocess.run(command, cwd=self.folder, env={**os.environ, "PATH": path}, stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, encoding="utf-8", check=False)
        if done.returncode != 0:
            self.failures += 1
            print(f"{self.path.name}: exit status {done.returncode} of\n{what}\n{done.stdout}")
        return done.stdout

    def follow(self):
        text = self.path.read_text(encoding="utf-8")
        blocks = list(FENCE.finditer(text))
        if len(re.findall(r"^\s*(?:```|~~~)", text, re.MULTILINE)) != 2 * len(blocks):
            raise ValueError(f"{self.path}: a fence that is not closed, indented or of the other kind")
        printed = None
        for block in blocks:
            kind, content = block.groups()
            name = FILE.search(text[:block.start()])
            if name and kind != "text":
                file = self.folder / name.group(1)
                file.parent.mkdir(parents=True, exist_ok=True)
                file.write_text(content, encoding="utf-8")
            elif kind == "sh":
                printed = self.run(["bash", "-euo", "pipefail", "-c", self.exports + content], content)
                self.exports += "".join(re.findall(r"^export .*\n", content, re.MULTILINE))
                self.tried_count += 1
                continue
            elif kind == "text" and printed is not None:
                self.compare("the commands before", printed, content)
            elif kind == "python":
                self.session += content + "\n"
            else:
                raise ValueError(f"{self.path}: a block of the kind '{kind}', which nothing runs:\n{content}")
            printed = None
        self.run_session()
        for rows in TABLE.findall(text):
            for row in rows.splitlines():
                self.check_row([cell.strip() for cell in CELL.split(row)][1:-1])
        if self.tried_count == 0:
            raise ValueError(f"{self.path}: there is nothing in it to try")

    def run_session(self):
        if not self.session:
            return
        self.tried_count += self.session.count(">>> ")
        (self.folder / "session.txt").write_text(self.session, encoding="utf-8")
        python = self.folder / ".venv" / "bin" / "python"
        self.run([python if python.exists() else sys.executable, "-m", "doctest", "session.txt"], "a session")

    def check_row(self, cells):
        expressions = [code.replace("\\|", "|") for code in CODE.findall(cells[0])]
        done = subprocess.run([self.calculator, "--", *expressions], stdin=subprocess.DEVNULL, capture_output=True, text=True,
                              encoding="utf-8", check=False)
        value = CODE.fullmatch(cells[1])
        if value:
            self.compare(cells[0], done.stdout.splitlines()[-1] if done.returncode == 0 else done.stderr, value.group(1))
        elif not cells[1]:
            raise ValueError(f"{self.path}: no value for {cells[0]}")
        else:
            self.compare(cells[0], done.stderr[:len(cells[1])] if done.returncode == 1 else done.stdout, cells[1])


def main():
    folder, checkout, calculator, *paths = sys.argv[1:]
    failures = 0
    for path in map(Path, paths):
        work = Path(folder, path.stem).resolve()
        shutil.rmtree(work, ignore_errors=True)
        work.mkdir(parents=True)
        (work / "mathexpr").symlink_to(Path(checkout).resolve())
        page = Page(path, work, os.path.abspath(calculator))
        start = time.monotonic()
        page.follow()
        failures += page.failures
        print(f"{path.name}: {page.tried_count} blocks and rows in {time.monotonic() - start:.0f} s, {page.failures} differ from the page")
    return 1 if failures else 0


if __name__ == "__main__":
    try:
        sys.exit(main())
    except ValueError as error:
        sys.exit(f"pages.py: {error}")
