# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Tests of the prompt at a real terminal.

Usage: test_prompt.py CALCULATOR [unittest argument]...
"""

import os
import pathlib
import pty
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import unittest

from terminal import PATIENCE, Terminal

CALCULATOR = None

BANNER = "mathexpr 1.0.0. :help tells more, Ctrl-D leaves."
UNKNOWN_NAME = "A name is not known: check its spelling, or give it a value first, as in a=2."
CONSTANTS = """\
Constants
  pi                  3.14159265359
  PI                  3.14159265359
  e                   2.718281828459045
  E                   2.718281828459045"""
RED = "\x1b[31m"


class PromptTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix="prompt.")
        self.addCleanup(shutil.rmtree, self.folder)
        self.environment = {"HOME": self.folder, "LC_ALL": "C"}  # messages in English
        self.history = pathlib.Path(self.folder, ".local/state/mathexpr/history")

    def start(self, *options, columns=80, lines=24, command=(), without=(), **environment):
        """Starts a prompt, and waits until it reads its first line."""
        known = {name: value for name, value in self.environment.items() if name not in without}
        terminal = Terminal(command or [CALCULATOR, *options], {**known, **environment}, columns, lines)
        self.addCleanup(terminal.__exit__)
        terminal.expect("\n>")
        return terminal

    def compute(self, terminal, line, answer):
        """Types a line, and waits for its output and the next prompt."""
        terminal.type(line)
        terminal.press("Enter")
        terminal.expect(f"> {line}\n{answer}\n>")

    def write(self, name, text):
        path = pathlib.Path(self.folder, name)
        path.write_text(text)
        return str(path)


class Lines(PromptTest):
    def test_values_variables_and_the_last_value(self):
        terminal = self.start()
        self.assertEqual(terminal.screen(), BANNER + "\n>")
        terminal.type("ans")
        terminal.press("Enter")
        terminal.expect(f"> ans\n{UNKNOWN_NAME}\n  ans\n  ^^^\n  Did you mean abs?\n>")
        self.compute(terminal, "a=2*3", "6")
        self.compute(terminal, "ans^2", "36")
        self.compute(terminal, "[1,2]+[a,ans]", "[7,38,0]")
        self.compute(terminal, "ans*2", "[14,76,0]")
        self.compute(terminal, ":vars", "a = 6\nans = [14,76,0]")

    def test_a_mistake_has_its_caret(self):
        terminal = self.start()
        self.compute(terminal, "2*(3+)", "The expression is not valid: check its operators, brackets, commas and names.\n"
                                         "  2*(3+)\n       ^\n  Expected a value.")
        self.compute(terminal, "\u5e45=2", "2")
        self.compute(terminal, "\u5e45*\u5bbd+1", f"{UNKNOWN_NAME}\n  \u5e45*\u5bbd+1\n     ^^")
        terminal.type("o\u0308*b")  # the line editor does not show combining characters
        terminal.press("Enter")
        terminal.expect(f"{UNKNOWN_NAME}\n  o\u0308*b\n  ^\n>")

    def test_lines_can_be_edited(self):
        terminal = self.start()
        terminal.type("13+4")
        terminal.press("Left", "Left", "BSpace")
        terminal.type("2")
        terminal.press("Home")
        terminal.type("[0,")
        terminal.press("C-e")
        terminal.type("]")
        terminal.press("Enter")
        terminal.expect("> [0,12+4]\n[0,16,0]\n>")
        terminal.type("h\u00f6he=1")
        terminal.press("BSpace")
        terminal.type("2")
        terminal.press("Enter")
        terminal.expect("> h\u00f6he=2\n2\n>")

    def test_ctrl_c_drops_the_line(self):
        terminal = self.start()
        terminal.type("1+dist(2")
        terminal.press("Left", "Left", "C-c")
        terminal.expect("> 1+dist(2^C\n>")
        terminal.press("C-c")
        terminal.expect("> 1+dist(2^C\n> ^C\n>")
        self.compute(terminal, "5", "5")
        terminal.press("Up", "Up")
        terminal.expect("\n> 5")  # a discarded line is not in the history

    def test_ctrl_d_leaves_where_the_line_is_empty(self):
        terminal = self.start()
        terminal.type("1/0")
        terminal.press("C-d")
        terminal.press("Enter")
        terminal.expect("   ^\n>")
        terminal.press("C-d")
        self.assertEqual(terminal.ended(), 0)

    def test_ctrl_z_and_back(self):
        shell = self.start(command=["/bin/bash", "--norc", "--noprofile", "-c",
                                    f"set -m; {CALCULATOR}; echo stopped; read -r _; fg; echo over"])
        shell.type("1+")
        shell.press("C-z")
        shell.expect("stopped")
        shell.press("Enter")
        shell.expect_match(r"> 1\+\Z")
        shell.type("2")
        shell.press("Enter")
        shell.expect("> 1+2\n3\n>")
        shell.press("C-d")
        shell.expect_match(r"\nover\b")

    def test_quit(self):
        terminal = self.start()
        terminal.type(":q")
        terminal.press("Enter")
        self.assertEqual(terminal.ended(), 0)

    def test_options_hold_at_the_prompt_too(self):
        terminal = self.start("--set", "width=2.5", "--json")
        terminal.type("wi")
        terminal.press("Tab", "Enter")
        terminal.expect_match(r'\{"expression":"width","ok":true,')


class EndOfInput(PromptTest):
    def test_a_line_that_the_end_cuts_short_is_computed(self):
        terminal = self.start(TERM="dumb")
        terminal.type("1+2")
        terminal.press("C-d", "C-d")
        terminal.expect_match(r"> 1\+2\n3\n")
        self.assertEqual(terminal.ended(), 0)

    def test_a_line_is_not_lost_with_its_terminal(self):
        """Closes the terminal in the middle of a line, with a program that should survive this."""
        user, terminal = pty.openpty()
        environment = {"PATH": os.environ["PATH"], "TERM": "screen", **self.environment}
        with subprocess.Popen([CALCULATOR], stdin=terminal, stdout=terminal, stderr=terminal, env=environment,
                              preexec_fn=lambda: signal.signal(signal.SIGHUP, signal.SIG_IGN)) as process:
            os.close(terminal)
            shown = b""
            while b"\n> " not in shown:
                shown += os.read(user, 1000)
            os.write(user, b"6*7\n")
            while b"\n42\r\n> " not in shown:
                shown += os.read(user, 1000)
            os.write(user, b"6*8")
            while not shown.endswith(b"6*8"):
                shown += os.read(user, 1000)
            os.close(user)
            process.wait(timeout=PATIENCE)
        self.assertEqual(self.history.read_text(), "6*7\n6*8\n")


class Completion(PromptTest):
    def test_what_is_unique_is_filled_in(self):
        terminal = self.start()
        self.compute(terminal, "width=2", "2")
        terminal.type("wi")
        terminal.press("Tab")
        terminal.expect("> width")
        terminal.type("*dis")
        terminal.press("Tab")
        terminal.expect_match(r"> width\*dist\( +dist\(<point x>, point y\)\Z")
        terminal.type("[3,0],[0,4])")
        terminal.press("Enter")
        terminal.expect("\n10\n>")

    def test_several_are_listed_below_and_the_line_goes_on(self):
        terminal = self.start()
        terminal.type("2+sq")
        terminal.press("Tab")
        terminal.expect("> 2+sqr")
        terminal.press("Tab")
        terminal.expect("> 2+sqr\nsqr(   sqrt(\n> 2+sqr")
        terminal.type("(3)")
        terminal.press("Left", "Left", "Left", "Left", "Tab")  # in the middle, before "r(3)"
        terminal.press("C-e", "Enter")
        terminal.expect("> 2+sqr(3)\n11\n>")

    def test_a_word_for_what_is_wanted_is_replaced_or_answered_by_a_list(self):
        terminal = self.start()
        terminal.type("1+arcs")
        terminal.press("Tab")
        terminal.expect_match(r"> 1\+asin\( +asin\(<x>\)\Z")
        terminal.press("C-u")
        terminal.type("hyp")
        terminal.press("Tab")
        terminal.expect("> hyp\nsinh(  cosh(  tanh(\n> hyp")

    def test_the_whole_word_makes_way(self):
        terminal = self.start()
        self.compute(terminal, "width=2", "2")
        terminal.type("1+wixy+3")
        terminal.press("Left", "Left", "Left", "Left", "Tab")
        terminal.expect("> 1+width+3")
        terminal.press("Enter")
        terminal.expect("> 1+width+3\n6\n>")

    def test_nothing_is_offered_where_it_would_be_refused(self):
        terminal = self.start()
        for line, answer in (("2", "2"), ("(1)", "1"), ("1.5", "1.5")):
            terminal.type(line)
            terminal.press("Tab", "Tab", "Enter")
            terminal.expect(f"> {line}\n{answer}\n>")

    def test_all_are_counted(self):
        terminal = self.start()
        terminal.press("Tab")
        terminal.expect_match(r"\n\d{3} names: type a letter, or :list\n>\Z")

    def test_commands_and_files(self):
        name = self.write("expressions.txt", "1+1\n")
        terminal = self.start()
        terminal.type(":lo")
        terminal.press("Tab")
        terminal.expect("> :load")
        terminal.type(" " + name[:-6])
        terminal.press("Tab", "Enter")
        terminal.expect(f"> :load {name}\n2\n>")


class Signature(PromptTest):
    def test_it_follows_the_cursor(self):
        terminal = self.start()
        terminal.type("dist([1,2],")
        terminal.expect_match(r"> dist\(\[1,2\], +dist\(point x, <point y>\)\Z")
        terminal.press("Left", "Left", "Left")
        terminal.expect_match(r"> dist\(\[1,2\], +\[x, <y>, z\]\Z")
        terminal.press("C-e")
        terminal.expect_match(r"> dist\(\[1,2\], +dist\(point x, <point y>\)\Z")
        terminal.type("[4,6])")
        terminal.expect_match(r"> dist\(\[1,2\],\[4,6\]\)\Z")
        terminal.press("Enter")
        terminal.expect("> dist([1,2],[4,6])\n5\n>")

    def test_it_goes_with_the_line(self):
        terminal = self.start()
        terminal.type("sin(")
        terminal.expect_match(r"> sin\( +sin\(<x>\)\Z")
        terminal.press("Enter")
        terminal.expect_match(r"(?m)^> sin\($")
        terminal.expect("\n>")

    def test_resizing_near_the_top_leaves_no_pieces_on_the_screen(self):
        """Programs cannot change lines that tmux moves above its screen while it rewraps lines."""
        for lines_before in (0, 2):
            for sizes in ((45, 80), (30,), (45, 100, 50), (41, 40, 39, 38, 80)):
                with self.subTest(lines_before=lines_before, sizes=sizes):
                    terminal = self.start()
                    terminal.press(*["Enter"] * lines_before)
                    terminal.expect("\n>" * (lines_before + 1))
                    terminal.type("dist([1,2],")
                    terminal.expect_match(r"<point y>\)\Z")
                    for columns in sizes:
                        terminal.resize(columns)
                        terminal.wait_for(lambda _: "point" not in terminal.visible(), "no signature")
                        terminal.press("Left", "Right")  # redraws the line
                        terminal.wait_for(lambda _: re.search(r"<point y>\)?\Z", terminal.visible()), "a signature")
                        self.assertEqual(terminal.visible().count("point y"), 1, terminal.visible())

    def test_resizing_leaves_no_pieces(self):
        terminal = self.start()
        # At the top of its screen, tmux loses the cursor's row when lines become longer than the screen.
        terminal.press(*["Enter"] * 30)
        terminal.expect("\n>" * 31)
        terminal.type("dist([1,2],")
        terminal.expect_match(r"\n> dist\(\[1,2\], +dist\(point x, <point y>\)\Z")
        for columns in (50, 100, 45, 80):
            terminal.resize(columns)
            terminal.expect("\n>\n> dist([1,2],")
            terminal.press("Left", "Right")  # redraws the line
            terminal.expect_match(r"\n>\n> dist\(\[1,2\], +dist\(point x, <point y>\)\Z")
        terminal.type("[4,6])")
        terminal.press("Enter")
        terminal.expect("\n>\n> dist([1,2],[4,6])\n5\n>")


class Corrections(PromptTest):
    MISTAKE = UNKNOWN_NAME + "\n  2pi\n  ^^^\n  Multiplication is written with *. Did you mean 2*pi?"

    def test_up_brings_the_correction_and_then_the_line(self):
        terminal = self.start()
        self.compute(terminal, "2pi", self.MISTAKE)
        terminal.press("Up")
        terminal.expect("\n> 2*pi")
        terminal.press("Up")
        terminal.expect("\n> 2pi")
        terminal.press("Down")
        terminal.expect("\n> 2*pi")
        terminal.press("Enter")
        terminal.expect("\n> 2*pi\n6.28318530718\n>")

    def test_tab_on_an_empty_line_brings_it_too(self):
        terminal = self.start()
        self.compute(terminal, "2pi", self.MISTAKE)
        terminal.press("Tab")
        terminal.expect("\n> 2*pi")
        terminal.press("Enter")
        terminal.expect("\n> 2*pi\n6.28318530718\n>")


    def test_long_hints_break_between_words(self):
        terminal = self.start(columns=50)
        self.compute(terminal, "1,500*2", "The expression is not valid: check its operators,\n"
                     "brackets, commas and names.\n  1,500*2\n   ^\n"
                     "  Did you mean 1.500*2 or 1500*2? The decimal mark\n  is a point, and thousands have no mark.")


class BesideValues(PromptTest):
    def test_a_question_about_units_is_answered_by_its_expression(self):
        terminal = self.start()
        self.compute(terminal, "3 inch to mm", UNKNOWN_NAME + "\n  3 inch to mm\n  ^^^^^^^^^^^^\n  i2mm(3) = 76.2")

    def test_notes(self):
        terminal = self.start()
        self.compute(terminal, "5%0", "nan\nNote: nan is not a number: a division by 0 has no remainder.")


class Digits(PromptTest):
    def test_are_remembered(self):
        terminal = self.start()
        terminal.type(":digits 4")
        terminal.press("Enter")
        terminal.expect("> :digits 4\n>")
        self.compute(terminal, "1/3", "0.3333")
        terminal = self.start()
        self.compute(terminal, "1/3", "0.3333")


class Commands(PromptTest):
    def test_help(self):
        terminal = self.start()
        terminal.type(":help")
        terminal.press("Enter")
        terminal.expect_match(r"\n  :load FILE +runs the lines of a file as if typed\n(.+\n)+>\Z")
        terminal.type(":help dist")
        terminal.press("Enter")
        terminal.expect_match(r"> :help dist\ndist\(x,y\)\n +Distance between two endpoints\n  Family +Geometry\n(.+\n)+>\Z")
        self.compute(terminal, ":hlep", "There is no command :hlep. Did you mean :help?")
        self.compute(terminal, ":help dst", "mathexpr: no such item: dst. Did you mean dist?")

    def test_list(self):
        terminal = self.start()
        self.compute(terminal, ":list constants", CONSTANTS)

    def test_long_lists_go_through_the_pager(self):
        terminal = self.start(PAGER="sed 's/^/| /'")
        terminal.type(":list length")
        terminal.press("Enter")
        terminal.expect_match(r"> :list length\n\| Length conversions\n\|   m2m\(x\) [^>]+\n>\Z")
        self.compute(terminal, ":list constants", CONSTANTS)

    def test_lists_break_between_words(self):
        terminal = self.start(PAGER="cat")
        terminal.type(":find sq in to mm2")
        terminal.press("Enter")
        terminal.expect("From square inch to square millimetre\n"
                        "  si2smm(x)     square inch to square millimetre  Convert Area from inch to mm\n>")
        terminal.resize(70)
        terminal.type(":help units")
        terminal.press("Enter")
        terminal.expect_match(r"\n  vmm   cubic millimetre    cubic millimeter, cubic millimeters, cubic\n"
                              r"                            mm, cu mm, mm3, mm\u00b3\n")

    @unittest.skipUnless(shutil.which("less"), "less is not installed")
    def test_without_that_pager_less_shows_them(self):
        terminal = self.start(PAGER="no-such-program 2>/dev/null", LESS="FEX")
        terminal.type(":list length")
        terminal.press("Enter")
        terminal.expect_match(r"(?m)^Length conversions$")
        terminal.press("q")
        terminal.expect("\n>")
        self.compute(terminal, "1+1", "2")

    def test_load(self):
        name = self.write("lines", "a=4\nfoo\na*2")  # the last line has no line end
        terminal = self.start(columns=200)
        self.compute(terminal, f":load {name}", f"4\n{name}:2: {UNKNOWN_NAME}\n  foo\n  ^^^\n8")
        self.compute(terminal, ":load /no/such/file", "/no/such/file: No such file or directory")
        self.compute(terminal, "ans", "8")

    def test_ctrl_c_ends_the_loading_of_a_file(self):
        name = self.write("many", "1\n" * 3_000_000)
        terminal = self.start(columns=200)
        terminal.type(f":load {name}")
        terminal.press("Enter")
        terminal.expect_match(r"\n1\n1\n")
        terminal.press("C-c")
        terminal.expect_match(r"many:\d+: interrupted; the lines after this one were not run\n>\Z")
        self.compute(terminal, "6*7", "42")


    def test_the_manual_page_has_them_all(self):
        terminal = self.start()
        terminal.type(":help")
        terminal.press("Enter")
        shown = terminal.expect_match(r":quit.*\n(.+\n)+>\Z")
        page = pathlib.Path(__file__).parents[2].joinpath("docs/mathexpr.1").read_text()
        commands = re.findall(r"(?m)^  (:[a-z]+)", shown)
        self.assertEqual(len(commands), 9)
        self.assertEqual(re.findall(r"(?m)^\.It Ic (:[a-z]+)", page), commands)


class History(PromptTest):
    def test_lines_come_back_also_in_the_next_session(self):
        first = self.start()
        self.compute(first, "11*11", "121")
        self.compute(first, "3*4", "12")
        first.press("Up", "Up")
        first.expect("\n> 11*11")
        first.press("Enter")
        first.expect("\n> 11*11\n121\n>")
        first.press("C-d")
        self.assertEqual(first.ended(), 0)
        self.assertEqual(self.history.read_text(), "11*11\n3*4\n11*11\n")
        self.assertEqual(self.history.stat().st_mode & 0o777, 0o600)
        self.assertEqual(self.history.parent.stat().st_mode & 0o777, 0o700)

        second = self.start()
        second.press("Up", "Up")
        second.expect("\n> 3*4")
        second.press("C-c")

    def expect_warning(self, reason, **settings):
        """Expects a single warning, and a prompt that continues."""
        terminal = self.start(columns=200, **settings)
        terminal.expect(f"{BANNER}\nmathexpr: the history is not kept: {reason}\n>")
        self.compute(terminal, "1+1", "2")
        terminal.press("Up")
        terminal.expect("\n> 1+1")  # in this session
        self.assertEqual(terminal.screen().count("the history is not kept"), 1)

    def test_a_file_that_cannot_be_read(self):
        self.history.mkdir(parents=True)
        self.expect_warning(f"{self.history}: Is a directory")

    def test_a_folder_that_cannot_be_made(self):
        self.expect_warning("/dev/null/mathexpr/history: Not a directory", XDG_STATE_HOME="/dev/null")

    def test_no_home(self):
        self.expect_warning("neither XDG_STATE_HOME nor HOME names a folder", without=["HOME"])

    def test_a_file_that_holds_no_text(self):
        self.history.parent.mkdir(parents=True)
        self.history.write_bytes(b"\xff\xfe\x00\n7*7\n\x1b[31m\n")
        terminal = self.start()
        terminal.press("Up")
        terminal.expect("\n> 7*7")


class Colours(PromptTest):
    def mistake(self, expected=f"{UNKNOWN_NAME}\n  foo\n  ^^^", **settings):
        terminal = self.start(**settings)
        terminal.type("foo")
        terminal.press("Enter")
        terminal.expect(f"> foo\n{expected}\n>")
        return terminal.screen(coloured=True)

    def test_a_mistake_is_red(self):
        self.assertIn(RED + "A name is not known", self.mistake())
        self.assertIn(RED + "A name is not known", self.mistake(NO_COLOR=""))  # the same as not set

    def test_not_where_they_are_unwelcome(self):
        self.assertNotIn("\x1b[", self.mistake(NO_COLOR="1"))
        self.assertNotIn("\x1b[", self.mistake(TERM="dumb"))

    def test_not_in_a_file(self):
        errors = os.path.join(self.folder, "errors")
        terminal = self.start(command=["/bin/sh", "-c", f"exec {CALCULATOR} 2>{errors}"])
        terminal.type("foo")
        terminal.press("Enter")
        terminal.expect("> foo\n>")
        self.assertEqual(pathlib.Path(errors).read_text(), f"{UNKNOWN_NAME}\n  foo\n  ^^^\n")


class PlainTerminal(PromptTest):
    """A terminal that cannot move its cursor."""

    def test_all_but_editing_is_the_same(self):
        terminal = self.start(TERM="dumb")
        self.compute(terminal, "2*3", "6")
        self.compute(terminal, "ans+1", "7")
        self.compute(terminal, ":vars", "ans = 7")
        terminal.type("1+")
        terminal.press("C-c")
        terminal.expect("> 1+^C\n>")
        self.compute(terminal, "8", "8")
        terminal.press("C-d")
        self.assertEqual(terminal.ended(), 0)


class NarrowTerminal(PromptTest):
    def test_carets_stay_below_what_they_mark(self):
        terminal = self.start(columns=20)
        terminal.type("1+2+3+foo*4+5+6+7+8")
        terminal.press("Enter")
        terminal.expect("\n  ...+2+3+foo*4+...\n          ^^^\n>")

    def test_a_line_that_is_wider_is_edited_and_computed(self):
        terminal = self.start(columns=20)
        terminal.type("1+" * 20 + "1")
        terminal.press("C-a", "Delete")
        terminal.type("3")
        terminal.press("Enter")
        terminal.expect("\n23\n>")

    def test_the_signature_is_shown_as_far_as_there_is_room(self):
        terminal = self.start(columns=20)
        terminal.type("dist(")
        terminal.expect_match(r"\n> dist\( +<point x>\Z")
        terminal.type("[1,20")
        terminal.expect_match(r"\n> dist\(\[1,20 +<y>\Z")
        terminal.type("00000")
        terminal.expect_match(r"\n> dist\(\[1,2000000\Z")
        terminal.press("C-c")
        terminal.expect("\n> dist([1,2000000^C\n>")

    def test_candidates_below_a_line_of_several_rows(self):
        terminal = self.start(columns=20)
        terminal.type("1+1+1+1+1+1+1+1+sq")
        terminal.press("Tab")
        line = "> 1+1+1+1+1+1+1+1+sq\nr"
        terminal.expect("\n" + line)
        terminal.press("Home", "C-f", "C-e", "Tab")
        terminal.expect(f"\n{line}\nsqr(   sqrt(\n{line}")
        terminal.press("C-c")
        terminal.expect(f"\n{line}^C\n>")

    def test_a_terminal_that_becomes_narrow(self):
        terminal = self.start()
        terminal.type("dist([0,0],")
        terminal.expect_match(r"dist\(point x, <point y>\)\Z")
        terminal.resize(20)
        terminal.type("[3,4])+1+1+1+1")
        terminal.press("Enter")
        terminal.expect("\n9\n>")
        terminal.resize(60)
        terminal.type("1+foo")
        terminal.press("Enter")
        terminal.expect("\n  1+foo\n    ^^^\n>")


if __name__ == "__main__":
    CALCULATOR = os.path.abspath(sys.argv.pop(1))
    os.environ.pop("LANGUAGE", None)
    unittest.main()
