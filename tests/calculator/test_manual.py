# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Compares the manual page with the program: options and examples; and checks its form.

Usage: test_manual.py CALCULATOR PAGE MANDOC [unittest argument]...
"""

import os
import pathlib
import re
import subprocess
import sys
import unittest

CALCULATOR = None
PAGE = None
MANDOC = None


class Manual(unittest.TestCase):
    def test_the_options_are_those_of_the_help(self):
        shown = subprocess.run([CALCULATOR, "--help"], capture_output=True, check=True).stdout.decode()
        options = re.findall(r"^  --([a-z-]+)", shown, re.MULTILINE)
        described = re.findall(r"^\.It Fl Fl ([a-z-]+)", PAGE.read_text(), re.MULTILINE)
        self.assertGreater(len(options), 10)
        self.assertEqual(sorted(described), sorted(options))

    def test_the_examples_print_what_the_page_says(self):
        blocks = re.findall(r"\.Bd -literal -offset indent\n(.*?)\n\.Ed", PAGE.read_text(), re.DOTALL)
        commands = [block[2:] for block in blocks if block.startswith("$ ")]
        self.assertEqual(len(commands), 2)
        for command, expected in (text.replace("\\e", "\\").split("\n", 1) for text in commands):
            done = subprocess.run(["sh", "-c", f"mathexpr() {{ '{os.path.abspath(CALCULATOR)}' \"$@\"; }}; {command}"],
                                  capture_output=True, timeout=60, check=True)
            self.assertEqual(done.stdout.decode(), expected + "\n")

    def test_the_form(self):
        done = subprocess.run([MANDOC, "-Tlint", "-Wwarning", str(PAGE)], capture_output=True, check=False)
        self.assertEqual((done.returncode, done.stdout.decode()), (0, ""))


if __name__ == "__main__":
    CALCULATOR = sys.argv.pop(1)
    PAGE = pathlib.Path(sys.argv.pop(1))
    MANDOC = sys.argv.pop(1)
    unittest.main()
