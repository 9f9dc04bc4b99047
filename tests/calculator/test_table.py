# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Tests of the calculator over tables: a process with a file, streams, signals and an exit status.

Usage: test_table.py CALCULATOR [unittest argument]...
"""

import os
import pty
import random
import re
import signal
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

CALCULATOR = None

USAGE = "Usage: mathexpr [OPTION]... [--] [EXPRESSION]..."
DIVISION_BY_ZERO = "The divisor is 0: divide by another number."


class TableTest(unittest.TestCase):
    maxDiff = None

    def run_table(self, table, *arguments):
        return subprocess.run([CALCULATOR, "--table", "-", *arguments], input=table.encode(), capture_output=True,
                              timeout=60, check=False)

    def expect(self, table, arguments, status, out, err=()):
        """The outcome: status, and the lines of standard output and standard error. The common name before the messages is
        omitted; a row's, such as "-:2", becomes "line 2"."""
        done = self.run_table(table, *arguments)
        told = [re.sub("^mathexpr: -:([0-9]+): ", r"line \1: ", line).replace("mathexpr: standard input: ", "")
                for line in done.stderr.decode().splitlines()]
        self.assertEqual((done.returncode, done.stdout.decode().splitlines(), told), (status, out, list(err)))

    def results(self, table, *arguments):
        done = self.run_table(table, *arguments)
        self.assertEqual((done.returncode, done.stderr), (0, b""))
        return done.stdout.decode().splitlines()


class Results(TableTest):
    def test_headings_are_names(self):
        self.assertEqual(self.results("x,y\n1,2\n3,0.5\n", "x*2+y"), ["result", "4", "6.5"])

    def test_the_assigned_name_is_the_heading(self):
        self.assertEqual(self.results("x\n1\n", "area = x*2"), ["area", "2"])
        self.assertEqual(self.results("x\n1\n", "x=x*2"), ["x", "2"])
        for comparison in ("x==1", "x>=1", "x<=1", "(x!=2)"):
            self.assertEqual(self.results("x\n1\n", comparison), ["result", "1"])

    def test_points_in_and_out(self):
        self.assertEqual(self.results('p,r\n"[1,2,3]",2\n" [ 0, -1 ,1e-3] ",10\n', "p*r"),
                         ["result", '"[2,4,6]"', '"[0,-10,0.01]"'])
        self.assertEqual(self.results('p\n"[3,4,0]"\n5\n"[0,0,2]"\n', "abs(p)"), ["result", "5", "5", "2"])

    def test_numbers_keep_every_bit(self):
        numbers = ["0.1", "-0", "1e-310", "1.7976931348623157e+308", "123456.789", "inf", "nan", "+2", " 7 "]
        self.assertEqual(self.results("x\n" + "\n".join(numbers) + "\n", "x"),
                         ["result", "0.1", "-0", "1e-310", "1.7976931348623157e+308", "123456.789", "inf", "nan", "2",
                          "7"])

    def test_results_are_those_of_single_expressions(self):
        source = random.Random(1)
        rows = [[f"{source.uniform(-9, 9):.17g}" for _ in range(3)] for _ in range(50)]
        table = "x,y,z\n" + "\n".join(",".join(row) for row in rows) + "\n"
        alone = subprocess.run([CALCULATOR, "--digits=exact", "--"] + [f"sin({x})*({y})+dist([{x},{y},{z}],[0,0,0])" for x, y, z in rows],
                               capture_output=True, timeout=60, check=True)
        self.assertEqual(self.results(table, "sin(x)*y+dist([x,y,z],[0,0,0])")[1:], alone.stdout.decode().splitlines())

    def test_csv_as_the_standard_has_it(self):
        self.assertEqual(self.results('\ufeff"x",note\r\n"1","a,b"\r\n2,"he said ""no"""\r\n3,"two\r\nlines"\r\n4,', "x"),
                         ["result", "1", "2", "3", "4"])

    def test_input_may_arrive_in_any_pieces(self):
        table = b'\xef\xbb\xbfx,t\r\n1,"a ""b"",\r\n"\r\n"2",""\n3,"""x"""\n4,'
        with subprocess.Popen([CALCULATOR, "--table", "-", "x"], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                              bufsize=0) as running:
            for byte in table:
                running.stdin.write(bytes([byte]))
                time.sleep(0.002)
            out, _ = running.communicate(timeout=60)
        self.assertEqual((running.returncode, out), (0, b"result\n1\n2\n3\n4\n"))

    def test_rows_and_cells_of_any_length(self):
        rows = [(row, "q" * (row * 7919 % 100000)) for row in range(60)]
        table = "x,t\n" + "".join(f'{x},"{text}"",\n"\n' for x, text in rows)
        self.assertEqual(self.results(table, "x"), ["result"] + [str(x) for x, _ in rows])

    def test_columns_that_are_not_read_may_hold_anything(self):
        self.assertEqual(self.results("name,x\nbolt,1\n,2\n", "x+1"), ["result", "2", "3"])

    def test_names_are_compared_as_the_language_does(self):
        self.assertEqual(self.results("Width\n2\n", "width*WIDTH"), ["result", "4"])

    def test_host_names_and_constants(self):
        self.assertEqual(self.results("x\n2\n", "--set", "k=3", "k*x+0*pi"), ["result", "6"])
        self.assertEqual(self.results("x\n2\n1\n", "2*3"), ["result", "6", "6"])

    def test_no_rows(self):
        self.assertEqual(self.results("x\n", "x"), ["result"])
        self.assertEqual(self.results("x", "x"), ["result"])

    def test_long_tables_and_threads(self):
        table = "x,y\n" + "".join(f"{row},{row % 7}\n" for row in range(150000))
        one = self.results(table, "x*2+y")
        self.assertEqual(one[:3] + one[-1:], ["result", "0", "3", str(149999 * 2 + 149999 % 7)])
        self.assertEqual(len(one), 150001)
        self.assertEqual(self.results(table, "--threads", "4", "x*2+y"), one)

    def test_a_file(self):
        with tempfile.TemporaryDirectory() as directory:
            file = Path(directory) / "t.csv"
            file.write_text("x\n4\n", encoding="utf-8")
            done = subprocess.run([CALCULATOR, "--table", file, "sqrt(x)"], capture_output=True, timeout=60, check=False)
            self.assertEqual((done.returncode, done.stdout, done.stderr), (0, b"result\n2\n", b""))


class Sheets(TableTest):
    """Exports of spreadsheets."""
    GUESSED = "cells are taken to be separated by {}, which --separator can change"

    def test_the_headings_show_the_separator(self):
        self.expect("x;y\r\n1;2\r\n", ["x+y"], 0, ["result", "3"], [self.GUESSED.format('";"')])
        self.expect("x\ty\n1\t2\n", ["x+y"], 0, ["result", "3"], [self.GUESSED.format("tab")])
        self.expect('"x;;;",y\n1,2\n', ["y"], 0, ["result", "2"])
        self.assertEqual(self.results("x;y\n1;2\n", "--separator", ";", "x+y"), ["result", "3"])
        self.assertEqual(self.results("a;b\n1;2\n", "--separator", ",", "--name", "x=a;b", "3"), ["result", "3"])

    def test_decimal_commas(self):
        self.assertEqual(self.results("x;p\n2,5;\"[1,2]\"\n-1,25; [0,5]\n", "--separator=;", "--decimal-comma", "x*2", "p*x"),
                         ["result;result2", "5;[2.5,5,0]", "-2,5;[-0,-6.25,-0]"])
        self.expect("x,y\n1,2\n", ["--decimal-comma", "x"], 1, [],
                    ["--decimal-comma needs another separator than the comma: --separator ';'"])
        self.expect("x;y\n1.5;2\n", ["--separator=;", "--decimal-comma", "x"], 1, ["result"],
                    ['line 2: x is neither a number nor a point: "1.5"; numbers are written without marks between thousands'])

    def test_cells_are_read_as_the_language_has_them(self):
        self.assertEqual(self.results('p\n"[1,2]"\n[4]\n', "p"), ["result", '"[1,2,0]"', '"[4,0,0]"'])
        self.assertEqual(self.results("x\n1e999\n-1e999\n1e-999\n-0." + "0" * 400 + "1\n" + "9" * 400 + "\n", "x"),
                         ["result", "inf", "-inf", "0", "-0", "inf"])

    def test_several_expressions_read_the_results_before_them(self):
        self.assertEqual(self.results("w,h\n2,3\n4,5\n", "area=w*h", "cost=area*12", "[area,cost]", "1"),
                         ["area,cost,result,result2", '6,72,"[6,72,0]",1', '20,240,"[20,240,0]",1'])
        self.assertEqual(self.results("x\n1\n2\n", "x=x*10", "x+1"), ["x,result", "10,11", "20,21"])

    def test_results_may_change_their_kind(self):
        table = 'p\n1\n"[1,2,3]"\n5\n' * 3
        self.assertEqual(self.results("p\n" + table.replace("p\n", ""), "q=p*2", "abs(q)"),
                         ["q,result", "2,2", '"[2,4,6]",7.483314773547883', "10,10"] + ["2,2", '"[2,4,6]",7.483314773547883', "10,10"] * 2)

    def test_append(self):
        table = 'name,w,\r\n"a ""b""",2,\r\nc, 3\r\n'
        self.assertEqual(self.results(table, "--append", "w*w"), ["name,w,,result", '"a ""b""",2,,4', "c, 3,,9"])
        self.expect("x\n0\n2\n", ["--append", "--skip-broken", "1/x"], 1, ["x,result", "0,", "2,0.5"],
                    ["line 2: " + DIVISION_BY_ZERO, "1 of 2 rows are broken and have no result"])

    def test_where(self):
        self.assertEqual(self.results("x\n0\n2\n-1\n4\n", "--where", "x>0", "--append", "1/x"),
                         ["x,result", "2,0.5", "4,0.25"])
        self.expect("x\n1\n", ["--where", "1+", "x"], 1, [],
                    ["The expression is not valid: check its operators, brackets, commas and names.", "  1+", "   ^",
                     "  Expected a value."])

    def test_json(self):
        self.assertEqual(self.results("x\n1\n\n4\n", "--json", "y=x*2", "[x,y]", "(0-x)^0.5"), [
            '{"line":2,"results":{"y":2.0,"result":[1.0,2.0,0.0],"result2":"nan"}}',
            '{"line":4,"results":{"y":8.0,"result":[4.0,8.0,0.0],"result2":"nan"}}'])
        self.expect("x\n0\n", ["--json", "--skip-broken", "1/x"], 1, ['{"line":2,"results":{"result":null}}'],
                    ["line 2: " + DIVISION_BY_ZERO, "1 of 1 rows are broken and have no result"])

    def test_digits(self):
        self.assertEqual(self.results("x\n3\n", "--digits", "3", "1/x", "x*10^-9"), ["result,result2", "0.333,3e-09"])

    def test_long_tables_keep_their_rows(self):
        table = "x,t\n" + "".join(f"{row},{'q' * (row % 50)}\n" for row in range(150000))
        lines = self.results(table, "--append", "--where", "x%2", "y=x*2", "y+1")
        self.assertEqual(len(lines), 75001)
        self.assertEqual(lines[-1], "149999," + "q" * 49 + ",299998,299999")


class Threads(TableTest):
    """With any number of threads, rows keep their order, and the first broken row ends the work."""
    ROWS = 120000

    def outcomes(self, table, *arguments):
        done = [self.run_table(table, "--threads", count, *arguments) for count in ("1", "2", "5")]
        for other in done[1:]:
            self.assertEqual((other.returncode, other.stdout, other.stderr),
                             (done[0].returncode, done[0].stdout, done[0].stderr))
        return done[0]

    def test_rows_keep_their_order(self):
        table = "x,t\n" + "".join(f"{row},{'q' * (row % 40)}\n" for row in range(self.ROWS))
        done = self.outcomes(table, "y=x*2", "y+1")
        self.assertEqual(done.stdout.decode().splitlines()[1:], [f"{row * 2},{row * 2 + 1}" for row in range(self.ROWS)])

    def test_quoted_line_ends_separate_no_rows(self):
        table = "x,t\n" + "".join(f'{row},"a\n""{row}"",\n"\r\n' for row in range(self.ROWS))
        done = self.outcomes(table + 'q,1\n', "--append", "x+1")
        self.assertEqual(done.returncode, 1)
        self.assertTrue(done.stdout.endswith(f'{self.ROWS - 1},"a\n""{self.ROWS - 1}"",\n",{self.ROWS}\n'.encode()))
        self.assertEqual(done.stderr.decode(),
                         f'mathexpr: -:{3 * self.ROWS + 2}: x is neither a number nor a point: "q"\n')

    def test_the_first_broken_row_ends_the_work(self):
        table = "x\n" + "".join(f"{row % 50000 - 49999}\n" for row in range(self.ROWS))
        done = self.outcomes(table, "1/x")
        self.assertEqual((done.returncode, done.stdout.count(b"\n")), (1, 50000))
        self.assertEqual(done.stderr.decode(), f"mathexpr: -:50001: {DIVISION_BY_ZERO}\n")

    def test_broken_rows_are_told_in_order(self):
        table = "x\n" + "".join(f"{row % 1000}\n" for row in range(self.ROWS))
        done = self.outcomes(table, "--skip-broken", "1/x")
        told = done.stderr.decode().splitlines()
        self.assertEqual(told[:-1], [f"mathexpr: -:{row + 2}: {DIVISION_BY_ZERO}" for row in range(0, self.ROWS, 1000)])
        self.assertEqual(told[-1], f"mathexpr: standard input: 120 of {self.ROWS} rows are broken and have no result")

    def test_an_open_quote_ends_the_work_after_the_rows_before_it(self):
        table = "x\n" + "1\n" * self.ROWS + '"2\n3\n'
        done = self.outcomes(table, "x")
        self.assertEqual((done.returncode, done.stdout), (1, b"result\n" + b"1\n" * self.ROWS))
        self.assertEqual(done.stderr.decode(), f"mathexpr: standard input: line {self.ROWS + 2}: a quote is not closed\n")

    def test_an_interrupt(self):
        with subprocess.Popen([CALCULATOR, "--table", "-", "--threads", "3", "x"], stdin=subprocess.PIPE,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE) as running:
            running.stdin.write(b"x\n" + b"1\n" * 100)
            running.stdin.flush()
            time.sleep(0.5)  # until it waits for more
            running.send_signal(signal.SIGINT)
            running.wait(timeout=60)  # although its input has not ended
            out, err = running.communicate(timeout=60)
        self.assertEqual((running.returncode, out), (130, b"result\n" + b"1\n" * 100))
        self.assertEqual(err, b"mathexpr: interrupted: the result is not complete, it ends after 100 rows\n")


class BrokenRows(TableTest):
    TABLE = "x,y\n1,1\n0,5\n2,\n3\n4,1,1\nq,1\n\"1\"2,1\n5,1\n"
    COMPLAINTS = [
        "line 3: " + DIVISION_BY_ZERO,
        "line 4: y is empty",
        "line 5: it has 1 cell instead of 2",
        "line 6: it has 3 cells instead of 2",
        'line 7: x is neither a number nor a point: "q"',
        "line 8: its quotes are not in order",
    ]

    def test_the_first_one_ends_the_work(self):
        self.expect(self.TABLE, ["y/x"], 1, ["result", "1"], self.COMPLAINTS[:1])
        self.expect("x\n1\n2\nq\n4\n", ["x"], 1, ["result", "1", "2"],
                    ['line 4: x is neither a number nor a point: "q"'])

    def test_they_can_be_skipped_and_keep_their_place(self):
        self.expect(self.TABLE, ["--skip-broken", "y/x"], 1, ["result", "1", "", "", "", "", "", "", "0.2"],
                    self.COMPLAINTS + ["6 of 8 rows are broken and have no result"])

    def test_lines_are_counted_through_quotes(self):
        self.expect('x,t\n1,"a\n\nb"\nq,c\n', ["x"], 1, ["result", "1"],
                    ['line 5: x is neither a number nor a point: "q"'])

    def test_a_blank_line_is_none(self):
        self.assertEqual(self.results("x,y\n1,2\n\n \t\r\n3,4\n\n", "x"), ["result", "1", "3"])
        self.expect("x\n1\n\nq\n", ["x"], 1, ["result", "1"], ['line 4: x is neither a number nor a point: "q"'])

    def test_what_cannot_be_a_number(self):
        for cell in ("1 2", "1,5", "0x10", "--1", "+-1", "[1,2,3,4]", "[]", "[", "[1,2,3", "[1,,3]", "1e", ""):
            with self.subTest(cell):
                done = self.run_table(f'x\n"{cell}"\n', "x")
                self.assertEqual((done.returncode, done.stdout), (1, b"result\n"))
                self.assertIn(b"mathexpr: -:2: x is ", done.stderr)

    def test_foreign_text_is_shown_safely(self):
        self.expect("x\n\x1b[31m\u202e\n", ["x"], 1, ["result"],
                    ['line 2: x is neither a number nor a point: "\\x1B[31m\\u202E"'])
        self.expect("x\n" + "\u00e4" * 50 + "\n", ["x"], 1, ["result"],
                    ['line 2: x is neither a number nor a point: "' + "\u00e4" * 40 + '..."'])

    def test_no_bytes_of_a_table_reach_the_terminal_as_they_are(self):
        turning = re.compile("[\u061c\u200e\u200f\u202a-\u202e\u2066-\u2069]")
        for cell in (b"\xc0\xaf", b"\xe0\x80\xaf", b"\xed\xa0\x80", b"\xf4\x90\x80\x80", b"\xfe\xff", b"\x80\xbf", b"\xe4\xb8",
                     b"\xf0\x9f\x98", b"\xc2\x85\xc2\x9b", b"\x00\x07\x08\x7f", "\u2066a\u202eb\u200f".encode(),
                     b"a" * 39 + "\U0001f600".encode() * 3, b"\x1b]0;title\x07", b"\xff" * 200):
            with self.subTest(cell):
                done = subprocess.run([CALCULATOR, "--table", "-", "x"], input=b"x\n" + cell + b"\n", capture_output=True,
                                      timeout=60, check=False)
                self.assertEqual((done.returncode, done.stdout), (1, b"result\n"))
                told = done.stderr.decode()  # which is UTF-8
                self.assertRegex(told, r'^mathexpr: -:2: x is neither a number nor a point: "[^\x00-\x1f\x7f-\x9f]*"\n$')
                self.assertNotRegex(told, turning)

    def test_messages_keep_their_language(self):
        done = subprocess.run([CALCULATOR, "--table", "-", "1/x"], input=b"x\n0\n", capture_output=True, timeout=60,
                              check=False, env={**os.environ, "LC_ALL": "de_DE.UTF-8", "LANGUAGE": ""})
        self.assertEqual(done.stderr.decode().splitlines(),
                         ["mathexpr: -:2: Der Divisor ist 0: durch eine andere Zahl teilen."])

    def test_marks_of_other_countries_are_hinted_at(self):
        complaint = 'line 2: x is neither a number nor a point: "{}"; '
        self.expect('x\n"1,5"\n', ["x"], 1, ["result"], [complaint.format("1,5") + "--decimal-comma reads it"])
        for cell in ("1'000", "1,000.5", "1.000,5"):
            self.expect(f'x\n"{cell}"\n', ["x"], 1, ["result"],
                        [complaint.format(cell) + "numbers are written without marks between thousands"])

    def test_exceptions_are_told_too(self):
        self.expect('p\n"[1,2,3]"\n', ["sin(p)"], 1, ["result"], ["line 2: Parsing exception 15 at position 0."])

    def test_a_quote_that_is_not_closed_is_never_skipped(self):
        self.expect('x\n1\n"2\n3\n', ["--skip-broken", "x"], 1, ["result", "1"], ["line 3: a quote is not closed"])


class Headings(TableTest):
    def expect_refused(self, headings, complaint):
        self.expect(headings + "\n" + "1," * headings.count(",") + "1\n", ["1"], 1, [], [complaint])

    def test_that_cannot_be_names_may_stand_unused(self):
        self.assertEqual(self.results("Room name,Width (mm),x,x.y,2,pi,\n,,5,,,,\n", "x"), ["result", "5"])

    def test_that_cannot_be_names_are_told_where_a_name_is_not_known(self):
        unread = 'the heading "{}" of column {} is not read: it cannot be a name, since {}; --name \'w=HEADING\' gives it another'
        self.expect("a b,x,f(x),2,pi\n1,2,3,4,5\n", ["w*x"], 1, [], [
            "A name is not known: check its spelling, or give it a value first, as in a=2.", "  w*x", "  ^",
            unread.format("a b", 1, 'it holds " "'), unread.format("f(x)", 3, 'it holds "("'),
            unread.format("2", 4, "it is a number")])

    def test_can_be_given_another_name(self):
        self.assertEqual(self.results("Width (mm),h\n2,3\n", "--name", "w=Width (mm)", "w*h"), ["result", "6"])
        self.expect("x\n1\n", ["--name", "w=y", "w"], 1, [], ['--name w: there is no heading "y"'])
        self.expect("x,y\n1,2\n", ["--name", "pi=x", "y"], 1, [],
                    ["--name pi: it cannot be a name, since it is a constant of the language"])

    def test_twice(self):
        self.assertEqual(self.results("x,y,X\n1,2,3\n", "y"), ["result", "2"])
        self.expect("x,y,X\n1,2,3\n", ["x"], 1, [], ['column 3: the heading "X" is that of column 1 too'])

    def test_none(self):
        self.expect("", ["x"], 1, [], ["there are no headings"])

    def test_not_utf8(self):
        done = subprocess.run([CALCULATOR, "--table", "-", "x"], input=b"x,\xff\n1,2\n", capture_output=True, timeout=60,
                              check=False)
        self.assertEqual((done.returncode, done.stdout, done.stderr), (0, b"result\n1\n", b""))

    def test_an_assigned_name_that_cannot_be_one(self):
        self.expect("x\n1\n", ["pi=x"], 1, [],
                    ['the assigned name "pi" cannot be a name: it is a constant of the language'])


class Refusals(TableTest):
    def test_an_expression_that_does_not_compile(self):
        self.expect("x\n1\n", ["x*zz"], 1, [],
                    ["A name is not known: check its spelling, or give it a value first, as in a=2.", "  x*zz", "    ^^"])

    def test_usage(self):
        for arguments, complaint in (
            (["--table", "t.csv"], "--table computes expressions, and there is none"),
            (["--append", "1"], "--append requires --table"),
            (["--table=-", "--separator=|", "1"], '--separator: none of ",", ";" and "tab": |'),
            (["--table=-", "--name=w", "1"], "--name: not NAME=HEADING: w"),
            (["--skip-broken", "1"], "--skip-broken requires --table"),
            (["--threads", "2", "1"], "--threads requires --table"),
            (["--threads=0", "--table=-", "1"], "--threads: not a whole number from 1 to 256: 0"),
            (["--fresh", "--table=-", "1"], "--fresh excludes --table"),
        ):
            done = subprocess.run([CALCULATOR, *arguments], capture_output=True, timeout=60, check=False,
                                  stdin=subprocess.DEVNULL)
            self.assertEqual((done.returncode, done.stdout, done.stderr.decode().splitlines()),
                             (2, b"", ["mathexpr: " + complaint, USAGE]))

    def test_files_that_cannot_be_read(self):
        for file, complaint in (("/nowhere/t.csv", b"cannot be opened: "), ("/", b"line 1: ")):
            done = subprocess.run([CALCULATOR, "--table", file, "1"], capture_output=True, timeout=60, check=False)
            self.assertEqual((done.returncode, done.stdout), (1, b""))
            self.assertIn(b"mathexpr: " + file.encode() + b": " + complaint, done.stderr)


class Endings(TableTest):
    COMPLAINT = b"mathexpr: standard input: standard output cannot be written: the result is not complete\n"

    def test_a_full_disk(self):
        with open("/dev/full", "wb") as full:
            done = subprocess.run([CALCULATOR, "--table", "-", "x"], input=b"x\n1\n", stdout=full,
                                  stderr=subprocess.PIPE, timeout=60, check=False)
        self.assertEqual((done.returncode, done.stderr), (1, self.COMPLAINT))

    def test_a_closed_pipe(self):
        reading, writing = os.pipe()
        os.close(reading)
        with os.fdopen(writing, "wb") as pipe:
            done = subprocess.run([CALCULATOR, "--table", "-", "x"], input=b"x\n1\n", stdout=pipe,
                                  stderr=subprocess.PIPE, timeout=60, check=False)
        self.assertEqual((done.returncode, done.stderr), (1, self.COMPLAINT))

    def test_an_interrupt_is_told_with_what_was_written(self):
        with subprocess.Popen([CALCULATOR, "--table", "-", "x"], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE) as running:
            running.stdin.write(b"x\n" + b"1\n" * 100)
            running.stdin.flush()
            time.sleep(0.5)  # until it waits for more
            running.send_signal(signal.SIGINT)
            out, err = running.communicate(timeout=60)
        self.assertEqual(running.returncode, 130)
        self.assertEqual(err, b"mathexpr: interrupted: the result is not complete, it ends after 100 rows\n")
        self.assertEqual(out, b"result\n" + b"1\n" * 100)

    def test_a_terminal_sees_how_far_it_is(self):
        leader, follower = pty.openpty()
        with subprocess.Popen([CALCULATOR, "--table", "-", "x"], stdin=subprocess.PIPE, stdout=subprocess.DEVNULL,
                              stderr=follower) as running:
            os.close(follower)
            running.stdin.write(b"x\n" + b"1\n" * 70000)
            running.stdin.flush()
            time.sleep(0.5)
            running.stdin.write(b"1\n" * 1000000)
            running.stdin.close()
            told = b""
            try:
                while chunk := os.read(leader, 4096):
                    told += chunk
            except OSError:
                pass  # the other end is closed
        os.close(leader)
        self.assertEqual(running.returncode, 0)
        self.assertRegex(told, rb"\r\d+ rows")
        self.assertTrue(told.endswith(b"\r"), told)


if __name__ == "__main__":
    CALCULATOR = sys.argv.pop(1)
    unittest.main()
