# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Tests the completion scripts: each parses in its shell, and offers every option in --help.

Usage: test_completion.py CALCULATOR [unittest argument]...
"""

import re
import shutil
import subprocess
import sys
import unittest

CALCULATOR = None


def run(*command, given=None):
    return subprocess.run(command, input=given, capture_output=True, text=True, encoding="utf-8", timeout=60, check=True)


def script_for(shell):
    return run(CALCULATOR, "--completion", shell).stdout


def options():
    return sorted(re.findall(r"^  (--[a-z-]+)", run(CALCULATOR, "--help").stdout, re.MULTILINE))


class Completion(unittest.TestCase):
    def setUp(self):
        self.assertGreater(len(options()), 10)

    def offered_by_bash(self, *words):
        line = " ".join(f"'{word}'" for word in words)
        command = f"COMP_WORDS=({line}); COMP_CWORD={len(words) - 1}; _mathexpr; printf '%s\\n' \"${{COMPREPLY[@]}}\""
        # compopt needs the line editor, which is not running.
        done = run("bash", "--norc", "-s", given=f"compopt() {{ :; }}\n{script_for('bash')}\n{command}\n")
        self.assertEqual(done.stderr, "")
        return sorted(done.stdout.split())

    def test_bash(self):
        self.assertEqual(self.offered_by_bash("mathexpr", "--"), options())
        self.assertEqual(self.offered_by_bash("mathexpr", "--json", "--js"), ["--json"])
        self.assertEqual(self.offered_by_bash("mathexpr", "--completion", ""), ["bash", "fish", "zsh"])
        self.assertEqual(self.offered_by_bash("mathexpr", "--table", sys.argv[0]), [sys.argv[0]])
        self.assertEqual(self.offered_by_bash("mathexpr", "--set", "--"), [])
        self.assertEqual(self.offered_by_bash("mathexpr", "1+"), [])

    def test_zsh(self):
        script = script_for("zsh")
        offered = re.findall(r"^  '\*?(--[a-z-]+)=?\[", script, re.MULTILINE)
        self.assertEqual(sorted(offered), options())
        self.assertIn("'--table=[", script)
        self.assertTrue(script.startswith("#compdef mathexpr\n"))
        if shutil.which("zsh"):
            self.assertEqual(run("zsh", "-f", "-n", "/dev/stdin", given=script).stderr, "")

    def test_fish(self):
        script = script_for("fish")
        self.assertEqual(sorted("--" + name for name in re.findall(r" -l ([a-z-]+)", script)), options())
        if shutil.which("fish"):
            done = run("fish", "--no-config", "-c", f"{script}\ncomplete -C 'mathexpr --'")
            self.assertEqual(done.stderr, "")
            self.assertEqual(sorted(line.split("\t")[0] for line in done.stdout.splitlines()), options())

    def test_another_shell_is_refused(self):
        done = subprocess.run([CALCULATOR, "--completion", "tcsh"], capture_output=True, text=True, check=False)
        self.assertEqual((done.returncode, done.stdout), (2, ""))
        self.assertIn("--completion knows bash, zsh and fish: tcsh", done.stderr)

    def test_expressions_are_refused(self):
        done = subprocess.run([CALCULATOR, "--completion", "bash", "1+2"], capture_output=True, text=True, check=False)
        self.assertEqual((done.returncode, done.stdout), (2, ""))
        self.assertIn("--completion computes no expressions", done.stderr)


if __name__ == "__main__":
    CALCULATOR = sys.argv.pop(1)
    unittest.main()
