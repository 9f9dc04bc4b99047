# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Tests of the calculator from its user's view: a process with arguments, streams and an exit status.

Usage: test_calculator.py CALCULATOR [unittest argument]...
"""

import fcntl
import json
import os
import pty
import select
import struct
import subprocess
import sys
import termios
import time
import unicodedata
import unittest

CALCULATOR = None

KEYS = ["expression", "ok", "stage", "values", "messages", "exception", "asked", "diagnostic"]
VALUE_KEYS = ["type", "flag", "x", "y", "z", "bits"]
EXCEPTION_KEYS = ["kind", "exID", "pos", "itemName", "nbArgs", "conflictItemName", "file", "line", "entries"]

ZERO_BITS = "0000000000000000"

UNKNOWN_NAME = "A name is not known: check its spelling, or give it a value first, as in a=2."
NOT_VALID = "The expression is not valid: check its operators, brackets, commas and names."
DIVISION_BY_ZERO = "The divisor is 0: divide by another number."
USAGE = "Usage: mathexpr [OPTION]... [--] [EXPRESSION]..."


class CalculatorTest(unittest.TestCase):
    maxDiff = None

    def run_calculator(self, *arguments, stdin=b""):
        return subprocess.run([CALCULATOR, *arguments], input=stdin, capture_output=True, timeout=60, check=False)

    def expect(self, arguments, status, out, err, stdin=b""):
        """The outcome: status, standard output and standard error, as lists of lines, without the indented lines that show
        where an expression failed."""
        done = self.run_calculator(*arguments, stdin=stdin)
        told = [line for line in done.stderr.decode().splitlines() if not line.startswith(" ")]
        self.assertEqual((done.returncode, done.stdout.decode().splitlines(), told), (status, out, err))

    def expect_usage_error(self, arguments, complaint):
        self.expect(arguments, 2, [], ["mathexpr: " + complaint, USAGE])

    def answers(self, *arguments, status, stdin=b"", err=b""):
        """The JSON objects printed, each with its keys in order."""
        done = self.run_calculator("--json", *arguments, stdin=stdin)
        self.assertEqual((done.returncode, done.stderr), (status, err))
        return [json.loads(line) for line in done.stdout.decode().splitlines()]

    def answer(self, *arguments, status):
        answers = self.answers(*arguments, status=status)
        self.assertEqual(len(answers), 1)
        return answers[0]


class Values(CalculatorTest):
    def test_numbers_and_points_one_a_line(self):
        self.expect(
            ["[1,2,0]+[3,4,0]", "sin(30)*2", "a=2*3", "a^2"], 0, ["[4,6,0]", "1.00000000000006", "6", "36"], []
        )

    def test_shortest_form_that_reads_back(self):
        self.expect(["--digits=exact", "0.1", "1/3", "1e+21", "12345", "100000", "[0.5,2.50,1e+300]"], 0,
                    ["0.1", "0.3333333333333333", "1e+21", "12345", "100000", "[0.5,2.5,1e+300]"], [])

    def test_negative_zero_nan_and_infinities(self):
        self.expect(["zero=0", "-zero", "1e+400", "-1e+400", "1e+400-1e+400", "nor([0,0,0],[0,0,0])"], 0,
                    ["0", "-0", "inf", "-inf", "nan", "[nan,nan,0]"], [])

    def test_variables_persist_and_failures_do_not_stop(self):
        self.expect(["a=2", "1/0", "a+1"], 1, ["2", "3"], [DIVISION_BY_ZERO])

    def test_a_failed_assignment_is_not_made_later(self):
        self.expect(["b=1/0", "5", "b"], 1, ["5"], [DIVISION_BY_ZERO, UNKNOWN_NAME])
        self.expect(["pi=3", "5", "6"], 1, ["5", "6"], [NOT_VALID])
        self.expect(["--max-integer", "9", "pi=3", "5"], 1, ["5"], [NOT_VALID])

    def test_an_empty_argument_is_an_expression(self):
        self.expect([""], 1, [], [NOT_VALID])
        self.expect(["   "], 1, [], [NOT_VALID])

    def test_names_beyond_ascii(self):
        self.expect(["h\u00f6he=2", "h\u00f6he*\U0001d70b", "--set", "\U0001d70b=3"], 0, ["2", "6"], [])

    def test_an_exception_passes_in_both_modes(self):
        for options in ([], ["--silent"]):
            self.expect([*options, "sin([1,2,3])", "p=[1,2,3]", "sin(p)", "1"], 1, ["[1,2,3]", "1"],
                        ["Parsing exception 15 at position 0."] * 2)

    def test_the_locale_changes_nothing(self):
        environment = {**os.environ, "LC_ALL": "de_DE.UTF-8"}
        done = subprocess.run([CALCULATOR, "1.5+1", "--json"], env=environment, capture_output=True, check=True)
        self.assertEqual(json.loads(done.stdout)["values"][0]["x"], 2.5)


class Arguments(CalculatorTest):
    def test_a_single_leading_minus_is_an_expression(self):
        self.expect(["-2^2"], 0, ["4"], [])
        self.expect(["-x", "--set", "x=2"], 0, ["-2"], [])
        self.expect(["-", "1"], 1, ["1"], [NOT_VALID])

    def test_after_two_minuses_everything_is_an_expression(self):
        self.expect(["--", "--5", "-2^2"], 0, ["5", "4"], [])
        self.expect(["--", "--json", "1"], 1, ["1"], [UNKNOWN_NAME])
        self.expect(["--", "1", "--"], 1, ["1"], [NOT_VALID])

    def test_options_stand_anywhere(self):
        self.expect(["x+1", "--set", "x=1", "x+2", "--repeat=2"], 0, ["2", "2", "3", "3"], [])

    def test_wrong_options(self):
        self.expect_usage_error(["--nonsense", "1"], "The following argument was not expected: --nonsense")
        self.expect_usage_error(["--sil"], "The following argument was not expected: --sil")
        self.expect_usage_error(["--5"], "The following argument was not expected: --5")
        self.expect_usage_error(["---5"], "The following argument was not expected: ---5")
        self.expect_usage_error(["--json=no", "1"], "json was given a disallowed flag override")

    def test_values_of_options(self):
        for value in ("0", "-1", "1000001", "1.5", "0x10", " 1", "many"):
            self.expect_usage_error(["--repeat", value, "1"],
                                    f"--repeat: not a whole number from 1 to 1000000: {value}")
        for value in ("-1", "4294967296", "1e3"):
            self.expect_usage_error(["--max-integer", value, "1"],
                                    f"--max-integer: not a whole number from 0 to 4294967295: {value}")
        self.expect_usage_error(["--repeat"], "--repeat: 1 required N missing")
        self.expect_usage_error(["--repeat", "1", "--repeat", "2", "1"],
                                "--repeat: At Most 1 required but received 2")

    def test_version(self):
        done = self.run_calculator("--version")
        self.assertEqual((done.returncode, done.stderr), (0, b""))
        self.assertRegex(done.stdout.decode(), r"\Amathexpr \d+\.\d+\.\d+\n\Z")

    def test_help_names_every_option(self):
        done = self.run_calculator("--help")
        self.assertEqual((done.returncode, done.stderr), (0, b""))
        text = done.stdout.decode()
        self.assertIn(USAGE, text)
        for option in ("--json", "--set NAME=EXPRESSION", "--silent", "--repeat N", "--fresh", "--max-integer N",
                       "--list", "--describe NAME", "--version", "--help"):
            self.assertIn("\n  " + option, text)
        self.assertLessEqual(max(map(len, text.splitlines())), 80)

    def test_no_short_options(self):
        self.expect(["-h", "-x"], 1, [], [UNKNOWN_NAME] * 2)


class Digits(CalculatorTest):
    def test_fifteen_are_usual(self):
        self.expect(["0.1+0.2", "i2mm(3)", "1000*100", "2^53", "mm2km(10)", "1/3*10^-6", "10.0^20", "[1/3,1e+5,2]"], 0,
                    ["0.3", "76.2", "100000", "9007199254740992.0", "0.00001", "3.33333333333333*10^-7", "1e+20",
                     "[0.333333333333333,100000,2]"], [])

    def test_others_can_be_asked_for(self):
        self.expect(["--digits", "3", "2/3", "123456"], 0, ["0.667", "123456"], [])
        self.expect(["--digits", "exact", "0.1+0.2", "i2mm(3)"], 0, ["0.30000000000000004", "76.19999999999999"], [])
        for wrong in ("0", "18", "all", "-1", "1.5"):
            self.expect_usage_error([f"--digits={wrong}", "1"],
                                    f"--digits: neither a whole number from 1 to 17 nor exact: {wrong}")

    def test_what_is_printed_is_read_back(self):
        expressions = ["1/3*10^-6", "10.0^20", "mm2km(10)", "2^53", "-1/7", "[1/3,10^-9,7]"]
        done = self.run_calculator("--digits", "exact", "--", *expressions)
        self.expect(["--digits", "exact", "--", *done.stdout.decode().splitlines()], 0, done.stdout.decode().splitlines(), [])


class Comments(CalculatorTest):
    def test_are_skipped_in_lines_and_counted(self):
        self.expect([], 1, ["1"], ["mathexpr: line 4: not valid UTF-8, or a zero character in it"],
                    stdin=b"# a comment\n  # another\n1\n\xff\n")


class SetOption(CalculatorTest):
    def test_answers_names_and_can_be_repeated(self):
        self.expect(["--set", "x=2*3", "--set=p=[1,2,3]", "x*p"], 0, ["[6,12,18]"], [])

    def test_names_match_exactly(self):
        self.expect(["--set", "Width=1", "Width"], 0, ["1"], [])
        self.expect(["--set", "Width=1", "width"], 1, [], [UNKNOWN_NAME])

    def test_value_is_computed_once(self):
        numbers = self.run_calculator("--set", "r=rand(0,1000000)", "r", "r", "--fresh").stdout.split()
        self.assertEqual(len(numbers), 2)
        self.assertEqual(numbers[0], numbers[1])

    def test_each_value_has_an_expression_object_of_its_own(self):
        self.expect_usage_error(["--set", "x=a=2", "--set", "y=a+1", "y"], "--set y: " + UNKNOWN_NAME)

    def test_a_later_value_replaces_an_earlier(self):
        self.expect(["--set", "x=1", "--set", "x=2", "x"], 0, ["2"], [])

    def test_the_expression_may_hold_an_equals_sign_and_begin_with_a_minus(self):
        self.expect(["--set", "x=1==1", "--set", "y=-2^2", "x", "y"], 0, ["1", "4"], [])

    def test_failures(self):
        self.expect_usage_error(["--set", "x=1/0", "1"], "--set x: " + DIVISION_BY_ZERO)
        self.expect_usage_error(["--set", "x=sin([1,2,3])", "1"], "--set x: Parsing exception 15 at position 0.")
        self.expect_usage_error(["--set", "x=", "1"], "--set x: " + NOT_VALID)
        self.expect_usage_error(["--set", "x", "1"], "--set: not NAME=EXPRESSION: x")
        self.expect_usage_error(["--set", "=1", "1"], "--set: not NAME=EXPRESSION: =1")
        self.expect_usage_error(["--set", "[x]", "1"], "--set: not NAME=EXPRESSION: [x]")
        self.expect_usage_error(["--set", b"x=\xff", "1"],
                                "--set x: not valid UTF-8, or a zero character in it")


class OtherOptions(CalculatorTest):
    def test_repeat_prints_each_evaluation(self):
        self.expect(["--repeat", "3", "1+1"], 0, ["2"] * 3, [])

    def test_repeat_assigns_once(self):
        self.expect(["--repeat", "3", "--set", "x=1", "x=x+1", "x"], 0, ["2", "3", "3", "2", "2", "2"], [])

    def test_repeat_stops_at_a_failure(self):
        self.expect(["--repeat", "3", "--set", "x=0", "1/x"], 1, [], [DIVISION_BY_ZERO])
        answer = self.answer("--repeat", "3", "--set", "x=1", "x=1/x-1", status=1)
        self.assertEqual([value["x"] for value in answer["values"]], [0.0])
        self.assertEqual((answer["ok"], answer["stage"]), (False, "evaluate"))

    def test_fresh_forgets_variables(self):
        self.expect(["--fresh", "a=1", "a"], 1, ["1"], [UNKNOWN_NAME])
        self.expect(["--fresh", "--max-integer", "9", "a=1", "a"], 1, ["1"], [UNKNOWN_NAME])
        answers = self.answers("--fresh", "--set", "x=1", "x", "x", status=0)
        self.assertEqual([answer["asked"] for answer in answers], [["x"], ["x"]])

    def test_silent_raises_exceptions(self):
        self.expect(
            ["--silent", "x", "(1", "1+)", "a)b(c)", "sin(1,2)", "1/0", "pi=3", "1"], 1, ["1"],
            ["Parsing exception 11 at position 1: x.",
             "Parsing exception 6 at position 0.",
             "Parsing exception 3 at position 2.",
             "Parsing exception 11 at position 1: a.",
             "Parsing exception 7 at position 1: sin with 2 arguments.",
             "No value: an operator or a function refused its arguments, or the name cannot be assigned.",
             "No value: an operator or a function refused its arguments, or the name cannot be assigned."])

    def test_a_silent_definition_exception(self):
        self.expect(["--silent", "--set", "a.b=1", "a.b"], 1, [], ["Definition exception 15: a.b against .."])

    def test_silent_still_shows_the_message_for_large_numbers(self):
        self.expect(["--silent", "2147483648"], 1, [],
                    ["A whole number is too large: use a smaller one, or write it with a decimal point."])

    def test_max_integer_limits_whole_numbers(self):
        too_large = "A whole number is too large: use a smaller one, or write it with a decimal point."
        self.expect(["--max-integer", "0", "2+3", "2.0+3.0"], 1, ["5"], [too_large])
        self.expect(["--max-integer", "4294967295", "4294967295"], 0, ["4294967295.0"], [])
        self.expect(["--max-integer", "5", "a=4", "a*a", "--repeat", "2"], 0, ["4", "4", "16", "16"], [])

    def test_max_integer_above_the_usual_one(self):
        done = self.answers("--max-integer", "4000000000", "3000000000/0", "1+1", status=1)
        self.assertEqual([answer["stage"] for answer in done], ["compile", None])
        self.assertEqual([[message["id"] for message in answer["messages"]] for answer in done], [[10], []])
        done = self.answers("--max-integer", "4000000000", "a=0", "3000000000/a", "1+1", status=1)
        self.assertEqual([answer["stage"] for answer in done], [None, "evaluate", None])
        self.assertEqual([[message["id"] for message in answer["messages"]] for answer in done], [[], [10], []])

    def test_max_integer_has_no_host_and_is_never_silent(self):
        self.expect_usage_error(["--max-integer", "5", "--silent", "1"], "--silent excludes --max-integer")
        self.expect_usage_error(["--max-integer", "5", "--set", "x=1", "1"], "--set excludes --max-integer")
        self.assertEqual(self.answer("--max-integer", "5", "x", status=1)["asked"], [])

    def test_max_integer_tells_the_stage(self):
        expressions = {
            "6": "compile", "unknown": "compile", "1/0": "compile", "(1": "compile", "sin([1,2,3])": "compile",
            "1+2)(3)": "compile", "pi=3": "evaluate", "1/zero": "evaluate", "sin(point)": "evaluate",
            "sqrt(zero)": "evaluate", "a.b": "compile",
        }
        answers = self.answers("--max-integer", "5", "zero=0", "point=[1,2,3]", *expressions, status=1)
        self.assertEqual({answer["expression"]: answer["stage"] for answer in answers},
                         {"zero=0": None, "point=[1,2,3]": None, **expressions})


class Json(CalculatorTest):
    def test_a_number_to_the_letter(self):
        done = self.run_calculator("--json", "1.5*2")
        self.assertEqual(
            (done.returncode, done.stdout.decode(), done.stderr),
            (0,
             '{"expression":"1.5*2","ok":true,"stage":null,"values":[{"type":"number","flag":0,"x":3.0,"y":0.0,"z":0.0,'
             '"bits":["4008000000000000","0000000000000000","0000000000000000"]}],"messages":[],"exception":null,'
             '"asked":[],"diagnostic":null}\n',
             b""))

    def test_a_point_with_its_bits(self):
        value = self.answer("[1,-2,0.1]", status=0)["values"][0]
        self.assertEqual(value, {
            "type": "point", "flag": 0, "x": 1.0, "y": -2.0, "z": 0.1,
            "bits": ["3ff0000000000000", "c000000000000000", "3fb999999999999a"]})
        self.assertEqual(list(value), VALUE_KEYS)

    def test_the_second_flag(self):
        value = self.answer("dist([0,0,0],[3,4,12])", status=0)["values"][0]
        self.assertEqual((value["type"], value["flag"], value["x"]), ("number", 1, 13.0))

    def test_what_is_not_finite_is_a_string(self):
        numbers = self.answers("1e+400", "-1e+400", "1e+400-1e+400", status=0)
        self.assertEqual([number["values"][0]["x"] for number in numbers], ["inf", "-inf", "nan"])
        self.assertEqual([number["values"][0]["bits"][0][:3] for number in numbers[:2]], ["7ff", "fff"])

    def test_negative_zero(self):
        self.expect(["--json", "z=0", "-z"], 0, [
            '{"expression":"z=0","ok":true,"stage":null,"values":[{"type":"number","flag":0,"x":0.0,"y":0.0,"z":0.0,'
            f'"bits":["{ZERO_BITS}","{ZERO_BITS}","{ZERO_BITS}"]}}],"messages":[],"exception":null,"asked":[],"diagnostic":null}}',
            '{"expression":"-z","ok":true,"stage":null,"values":[{"type":"number","flag":0,"x":-0.0,"y":0.0,"z":0.0,'
            f'"bits":["8000000000000000","{ZERO_BITS}","{ZERO_BITS}"]}}],"messages":[],"exception":null,"asked":[],"diagnostic":null}}',
        ], [])

    def test_a_message(self):
        answer = self.answer("2*unknown", status=1)
        self.assertEqual(list(answer), KEYS)
        self.assertEqual(answer, {
            "expression": "2*unknown", "ok": False, "stage": "compile", "values": [],
            "messages": [{"id": 1, "text": UNKNOWN_NAME}], "exception": None, "asked": ["unknown"],
            "diagnostic": {
                "message": 1, "text": UNKNOWN_NAME,
                "span": {"characters": {"start": 2, "length": 7}, "bytes": {"start": 2, "length": 7}},
                "expected": ["known name"], "suggestions": [], "hints": [], "fix": None}})

    def test_a_parsing_exception(self):
        answer = self.answer("--silent", "1+sin(1,2)", status=1)
        self.assertEqual(list(answer), KEYS)
        exception = answer["exception"]
        self.assertEqual(list(exception), EXCEPTION_KEYS)
        self.assertGreater(exception.pop("line"), 0)
        self.assertEqual(exception, {
            "kind": "parsing", "exID": 7, "pos": 3, "itemName": "sin", "nbArgs": 2, "conflictItemName": "",
            "file": "MTParserLib/MTParserCompiler", "entries": 1})
        self.assertEqual((answer["stage"], answer["messages"]), ("compile", []))

    def test_a_definition_exception(self):
        answer = self.answer("--silent", "--set", "a.b=1", "a.b", status=1)
        exception = answer["exception"]
        self.assertEqual(list(exception), EXCEPTION_KEYS)
        self.assertEqual((exception["kind"], exception["exID"], exception["itemName"], exception["conflictItemName"]),
                         ("definition", 15, "a.b", "."))
        self.assertGreater(exception["entries"], 1)
        self.assertEqual(answer["asked"], ["a.b"])

    def test_a_diagnostic(self):
        answer = self.answer("\u00e4=1+2pi", status=1)
        self.assertEqual(answer["diagnostic"], {
            "message": 1,
            "text": "A name is not known: check its spelling, or give it a value first, as in a=2.",
            "span": {"characters": {"start": 4, "length": 3}, "bytes": {"start": 5, "length": 3}},
            "expected": ["known name"],
            "suggestions": ["pi", "PI"],
            "hints": ["Multiplication is written with *. Did you mean \u00e4=1+2*pi?"],
            "fix": {"span": {"characters": {"start": 4, "length": 3}, "bytes": {"start": 5, "length": 3}},
                    "replacement": "2*pi", "text": "\u00e4=1+2*pi"}})
        self.assertIsNone(self.answer("1", status=0)["diagnostic"])
        self.assertIsNone(self.answer("1,500", status=1)["diagnostic"]["fix"])

    def test_a_diagnostic_of_what_is_no_text(self):
        done = self.run_calculator("--json", b"1+\xff")
        answer = json.loads(done.stdout)
        self.assertEqual(answer["diagnostic"]["text"], "not valid UTF-8, or a zero character in it")
        self.assertEqual(answer["diagnostic"]["span"], {"bytes": {"start": 2, "length": 1}})
        done = self.run_calculator("--json", stdin=b"12\x003\n")
        self.assertEqual(json.loads(done.stdout)["diagnostic"]["span"], {"bytes": {"start": 2, "length": 1}})

    def test_a_failure_without_message_or_exception(self):
        answer = self.answer("--silent", "1/0", status=1)
        self.assertEqual((answer["ok"], answer["stage"], answer["messages"], answer["exception"]),
                         (False, "compile", [], None))

    def test_a_failure_while_evaluating(self):
        answers = self.answers("--set", "x=0", "1/x", "pi=3", status=1)
        self.assertEqual([(answer["stage"], answer["messages"][0]["id"]) for answer in answers],
                         [("evaluate", 10), ("evaluate", 3)])

    def test_names_are_asked_in_order_and_once(self):
        answers = self.answers("--set", "x=1", "--set", "y=2", "y*x+y+u", "x+v+w", status=1)
        self.assertEqual([answer["asked"] for answer in answers], [["y", "x", "u"], ["v"]])

    def test_repeat(self):
        answer = self.answer("--repeat", "3", "--set", "x=2", "x*x", status=0)
        self.assertEqual([value["x"] for value in answer["values"]], [4.0] * 3)

    def test_text_beyond_ascii(self):
        answer = self.answer("h\u00f6he\U0001d70b", status=1)
        self.assertEqual((answer["expression"], answer["asked"]), ("h\u00f6he\U0001d70b", ["h\u00f6he\U0001d70b"]))


class Messages(CalculatorTest):
    EXPRESSIONS = {
        1: "unknown", 2: "(1", 3: "1+", 4: "unknown(1)", 5: "1+[1,2,3]", 6: "asin(2)", 7: "round(3e+9)", 8: "ln(0)",
        9: "log(0)", 10: "1/0", 11: "1/[1,2,3]", 12: "sqrt(0)", 13: "[1,2,3]^2", 14: "dist(1,2)", 15: "nor(1,2)",
        16: "vec(1,2)", 17: "vec1(1,2)", 18: "ill(1,2,3,4)", 19: "2147483648",
    }

    def test_each_has_a_sentence_of_one_line(self):
        answers = self.answers(*self.EXPRESSIONS.values(), status=1)
        shown = [answer["messages"] for answer in answers]
        self.assertEqual([len(messages) for messages in shown], [1] * 19)
        self.assertEqual([messages[0]["id"] for messages in shown], list(self.EXPRESSIONS))
        texts = [messages[0]["text"] for messages in shown]
        self.assertEqual(len(set(texts)), 19)
        for text in texts:
            self.assertRegex(text, r"\A[A-Za-z][ -~]{20,98}\.\Z")
        self.expect(self.EXPRESSIONS.values(), 1, [], texts)


class WhereItFailed(CalculatorTest):
    def expect_lines(self, arguments, lines):
        """The whole of standard error."""
        done = self.run_calculator(*arguments)
        self.assertEqual((done.returncode, done.stdout, done.stderr.decode().splitlines()), (1, b"", lines))

    def test_the_message_comes_first_and_carets_below_the_text(self):
        self.expect_lines(["2 * (3 + )"], [
            NOT_VALID,
            "  2 * (3 + )",
            "           ^",
            "  Expected a value."])
        self.expect_lines(["1.5e + 3 / [0, 0]"], [
            "Nothing can be divided by a point: divide by a number.",
            "  1.5e + 3 / [0, 0]",
            "           ^"])

    def test_what_is_expected(self):
        self.expect_lines(["(1 2 ! 3"], [NOT_VALID, "  (1 2 ! 3", "       ^",
                                         "  Expected an operator, a closing bracket or a comma."])
        self.expect_lines(["[1])"], [NOT_VALID, "  [1])", "     ^", "  Expected an operator or the end."])

    def test_numbers_of_arguments(self):
        self.expect_lines(["sin(1,2,3)"], [NOT_VALID, "  sin(1,2,3)", "  ^^^", "  sin takes 1 argument, not 3."])
        self.expect_lines(["rand(1)"], [NOT_VALID, "  rand(1)", "  ^^^^", "  rand takes 2 arguments, not 1."])

    def test_suggestions(self):
        self.expect_lines(["2*dst([1,2],[3,4])"], [
            "The text before ( is not a function: check its name, or write * to multiply.",
            "  2*dst([1,2],[3,4])", "    ^^^", "  Did you mean dist?"])
        self.expect_lines(["--set", "height=1", "heigth"], [UNKNOWN_NAME, "  heigth", "  ^^^^^^",
                                                            "  Did you mean height?"])
        self.expect_lines(["Pi"], [UNKNOWN_NAME, "  Pi", "  ^^", "  Did you mean pi?"])

    def test_in_silence_and_with_a_limit(self):
        self.expect_lines(["--silent", "1+(2"], ["Parsing exception 6 at position 2.", "  1+(2", "    ^",
                                                 "  Expected an operator, a closing bracket or a comma."])
        self.expect_lines(["--max-integer", "5", "1+60"], [
            "A whole number is too large: use a smaller one, or write it with a decimal point.",
            "  1+60", "    ^^"])

    def test_characters_count_and_not_bytes(self):
        self.expect_lines(["2*h\u00f6he*2"], [UNKNOWN_NAME, "  2*h\u00f6he*2", "    ^^^^"])
        self.expect_lines(["pi+\U0001d70b*2"], [UNKNOWN_NAME, "  pi+\U0001d70b*2", "     ^"])

    def test_wide_characters_have_two_carets(self):
        self.expect_lines(["2*\u5e45+\u5bbd\u5ea6"], [UNKNOWN_NAME, "  2*\u5e45+\u5bbd\u5ea6", "    ^^"])
        self.expect_lines(["--set", "\u5e45=2", "\u5e45+\u5bbd\u5ea6*2"], [
            UNKNOWN_NAME, "  \u5e45+\u5bbd\u5ea6*2", "     ^^^^"])
        self.expect_lines(["\uff41+1"], [UNKNOWN_NAME, "  \uff41+1", "  ^^"])  # a full-width letter
        self.expect_lines(["\ud55c+1"], [UNKNOWN_NAME, "  \ud55c+1", "  ^^"])  # Hangul
        self.expect_lines(["1+\U0001f600"], [UNKNOWN_NAME, "  1+\U0001f600", "    ^^"])
        self.expect_lines(["\uff76+1"], [UNKNOWN_NAME, "  \uff76+1", "  ^"])  # half-width katakana

    def test_combining_characters_have_no_caret_of_their_own(self):
        self.expect_lines(["ho\u0308he*2"], [UNKNOWN_NAME, "  ho\u0308he*2", "  ^^^^"])
        self.expect_lines(["--set", "o\u0308\u0301=1", "o\u0308\u0301+x"], [
            UNKNOWN_NAME, "  o\u0308\u0301+x", "    ^"])
        self.expect_lines(["\u0301"], [UNKNOWN_NAME, "  \u0301", "  ^"])

    def test_a_long_text_of_wide_and_combining_characters_is_cut_between_them(self):
        for character, width in (("\u5e45", 2), ("o\u0308", 1)):
            done = self.run_calculator("--set", character + "=1", "+".join([character] * 100) + "+1/0")
            text, carets = done.stderr.decode().splitlines()[1:3]
            self.assertRegex(text, r"\A  \.\.\.[+o\u5e45]")
            self.assertEqual(self.columns(text[:text.index("/")]), carets.index("^"))

    @staticmethod
    def columns(text):
        """The columns of a text, according to Python's tables."""
        return sum(0 if unicodedata.combining(character) else
                   2 if unicodedata.east_asian_width(character) in "WF" else 1 for character in text)

    def test_a_long_text_is_cut(self):
        self.expect_lines(["+".join(["1"] * 100) + "+1/0+" + "+".join(["1"] * 100)], [
            DIVISION_BY_ZERO,
            "  ..." + "+1" * 19 + "+1/0+" + "1+" * 16 + "1...",
            "     " + " " * 40 + "^"])

    def test_a_control_character_stays_on_its_line(self):
        self.expect_lines(["1+\x1b\x7f\x9bx"], [UNKNOWN_NAME, "  1+   x", "    ^^^^"])
        self.expect_lines(["1+\ta\n*2"], [UNKNOWN_NAME, "  1+ a *2", "    ^^^"])

    def test_a_text_of_blanks_is_marked_whole(self):
        self.expect_lines(["  "], [NOT_VALID, "    ", "  ^^", "  Expected a value."])
        self.expect_lines([""], [NOT_VALID, "  Expected a value."])


class Vocabulary(CalculatorTest):
    def test_json_list(self):
        done = self.run_calculator("--list", "--json")
        self.assertEqual((done.returncode, done.stderr), (0, b""))
        items = json.loads(done.stdout)
        self.assertEqual([item["kind"] for item in items], ["constant"] * 4 + ["operator"] * 16 + ["function"] * 257)
        self.assertEqual([(item["symbol"], item["value"][0]) for item in items[:4]],
                         [("pi", "400921fb54442eea"), ("PI", "400921fb54442eea"),
                          ("e", "4005bf0a8b145769"), ("E", "4005bf0a8b145769")])
        self.assertEqual(items[4], {
            "kind": "operator", "class": "AddOp", "symbol": "+", "help": "x + y", "description": "Addition operator",
            "nbArgs": 2, "precedence": 1, "unary": False, "constant": True})
        functions = {item["class"]: item for item in items[20:]}
        self.assertEqual(functions["MinUndefFct"]["nbArgs"], "any")
        self.assertEqual(functions["RandFct"], {
            "kind": "function", "class": "RandFct", "symbol": "rand", "help": "rand()",
            "description": "Random value between 0 and 1", "nbArgs": 0, "precedence": None, "unary": False,
            "constant": False})
        self.assertEqual((items[20]["class"], items[-1]["class"]), ("SinFct", "PowFct"))

    def test_plain_list_by_family(self):
        done = self.run_calculator("--list")
        self.assertEqual((done.returncode, done.stderr), (0, b""))
        lines = done.stdout.decode().splitlines()
        self.assertEqual([line for line in lines if line and not line.startswith(" ")], [
            "Constants", "Operators", "Core mathematics", "Geometry", "Angle conversions", "Length conversions",
            "Area conversions", "Volume conversions"])
        self.assertEqual(sum(line.startswith("  ") for line in lines), 277)
        self.assertIn("  sin(x)              Sine", lines)

    def test_describe(self):
        self.expect(["--describe", "asin"], 0, [
            "asin(x)",
            "            Arcsine",
            "  Family    Core mathematics",
            "  Units     result in degrees",
            "  Accepts   -1 to 1",
            "  Example   asin(0.5) = 29.999999999998",
            "  Refusal   asin(2)",
            "            asin and acos need a number from -1 to 1: change the argument.",
            "  Points    asin([1,2,3])",
            "            asin needs a number, not a point."], [])

    def test_the_note_of_a_conversion_stands_before_its_description(self):
        self.expect(["--describe", "mm2i"], 0, [
            "mm2i(x)",
            "            millimetre to inch",
            "  Described Convert Meter To inch",
            "  Family    Length conversions",
            "  Accepts   any number",
            "  Example   mm2i(1) = 0.0393700787401575",
            "  Points    mm2i([1,2,3])",
            "            mm2i needs a number, not a point."], [])
        done = self.run_calculator("--list")
        self.assertIn("  mm2i(x)       millimetre to inch          Convert Meter To inch",
                      done.stdout.decode().splitlines())

    def test_a_question_about_units_is_answered_on_terminals_alone(self):
        done = self.run_calculator("3 inch to mm")
        self.assertEqual((done.returncode, done.stdout, done.stderr.decode().splitlines()),
                         (1, b"", [UNKNOWN_NAME, "  3 inch to mm", "  ^^^^^^^^^^^^"]))

    def test_foreign_text_is_shown_safely(self):
        for arguments in (["--digits=\x1b[31m", "1"], ["--\x1b[31m"], ["--set=\x1b[31m", "1"], ["--table=/\x1b[31m", "1"],
                          ["--describe=\x1b[31m"], ["--find=\x1b[31m"], ["--set=\x1b[31m=1+", "1"]):
            with self.subTest(arguments):
                done = self.run_calculator(*arguments)
                self.assertNotEqual(done.returncode, 0)
                self.assertNotIn(b"\x1b", done.stderr)
                self.assertIn(rb"\x1B[31m", done.stderr)

    def test_find(self):
        done = self.run_calculator("--find", "inch")
        self.assertEqual((done.returncode, done.stderr), (0, b""))
        lines = done.stdout.decode().splitlines()
        self.assertEqual([line for line in lines if line and not line.startswith(" ")], ["From inch", "To inch"])
        self.assertEqual(sum("i2mm(x)" in line for line in lines), 1)
        self.expect(["--find", "xyz\x1b"], 1, [], ["mathexpr: nothing is known of xyz\\x1B"])
        self.expect_usage_error(["--find", "inch", "1"], "--find computes no expressions")

    def lines_at_a_terminal(self, columns, *arguments):
        """Standard output at a terminal with this number of columns."""
        user, terminal = pty.openpty()
        fcntl.ioctl(terminal, termios.TIOCSWINSZ, struct.pack("HHHH", 1000, columns, 0, 0))
        with subprocess.Popen([CALCULATOR, *arguments], stdin=subprocess.DEVNULL, stdout=terminal) as process:
            os.close(terminal)
            shown = b""
            while select.select([user], [], [], 60)[0]:
                try:
                    shown += os.read(user, 100_000)
                except OSError:  # end of the output
                    break
            self.assertEqual(process.wait(timeout=60), 0)
        os.close(user)
        return shown.decode().splitlines()

    def test_lists_are_no_wider_than_the_terminal(self):
        for words in ("square foot", "cubic inch", "volume", "remainder", "and"):
            for columns in (80, 60, 100):
                lines = self.lines_at_a_terminal(columns, "--find", words)
                self.assertGreater(len(lines), 1)
                self.assertLessEqual(max(map(len, lines)), columns, words)
        listed = self.lines_at_a_terminal(80, "--list")
        self.assertLessEqual(max(map(len, listed)), 80)
        at = next(at for at, line in enumerate(listed) if "si2scm(x)" in line)
        self.assertEqual(listed[at:at + 2], [
            "  si2scm(x)     square inch to square centimetre        Convert Area from inch",
            56 * " " + "to centimeter"])
        piped = self.run_calculator("--find", "square foot").stdout.decode()
        self.assertIn("  sf2smm(x)     square foot to square millimetre  Convert Area from foot to mm\n", piped)
        self.assertEqual(len(piped.splitlines()), 2 + 14 + 1)

    def test_describe_tells_all_overloads(self):
        for name, heads in (("-", ["x - y", "-x"]), ("min", ["min(x,y)", "min(x,y,z)", "min(v1,v2,v3,...)"])):
            done = self.run_calculator("--describe", name)
            self.assertEqual(done.returncode, 0)
            lines = done.stdout.decode().splitlines()
            self.assertEqual([line for line in lines if line and not line.startswith(" ")], heads)

    def test_describe_an_unknown_name(self):
        self.expect(["--describe", "dst"], 1, [], ["mathexpr: no such item: dst. Did you mean dist?"])
        self.expect(["--describe", "Sin"], 1, [], ["mathexpr: no such item: Sin. Did you mean sin, asin or sinh?"])
        self.expect(["--describe", "m2parsec"], 1, [],
                    ["mathexpr: no such item: m2parsec. Did you mean m2m, m2mile or m2km?"])
        self.expect(["--describe", "xyzzyx"], 1, [], ["mathexpr: no such item: xyzzyx"])
        self.expect(["--describe", b"\xff"], 1, [], ["mathexpr: --describe: not valid UTF-8"])

    def test_every_item_has_an_example_that_works(self):
        items = json.loads(self.run_calculator("--list", "--json").stdout)
        names = dict.fromkeys(item["symbol"] for item in items)
        done = self.run_calculator("--json", *(f"--describe={name}" for name in names))
        self.assertEqual((done.returncode, done.stderr), (0, b""))
        described = [item for line in done.stdout.splitlines() for item in json.loads(line)]
        self.assertEqual(len(described), len(items))
        for item in described:
            with self.subTest(item["class"] or item["symbol"]):
                self.assertEqual(len(item["examples"]), 0 if item["class"] == "RandFct" else 1)
                for example in item["examples"]:
                    self.assertIn(item["symbol"], example["expression"])
                    self.assertRegex(example["outcome"], r"\A[-\[0-9]")
                for refused in item["refused"]:
                    self.assertRegex(refused["outcome"], r"\Amessage \d+\Z")

    def test_usage(self):
        self.expect_usage_error(["--list", "1"], "--list computes no expressions")
        self.expect_usage_error(["--describe", "sin", "1"], "--describe computes no expressions")
        self.expect_usage_error(["--describe"], "--describe: 1 required NAME missing")


class StandardInput(CalculatorTest):
    def test_one_expression_a_line(self):
        self.expect([], 0, ["3", "[4,6,0]"], [], b"a=1+2\n[1,2,0]+[3,4,0]\n")

    def test_a_last_line_without_an_end(self):
        self.expect([], 0, ["1", "2"], [], b"1\n2")

    def test_no_input(self):
        self.expect([], 0, [], [])
        self.expect(["--"], 0, ["7"], [], b"7\n")

    def test_blank_lines_have_no_answer(self):
        lines = b"\n1\n   \n\t\n \t \r\n2\n\n"
        self.expect([], 0, ["1", "2"], [], lines)
        answers = self.answers(status=0, stdin=lines)
        self.assertEqual([answer["expression"] for answer in answers], ["1", "2"])

    def test_line_ends_and_byte_order_mark_of_other_systems(self):
        self.expect([], 0, ["1", "2"], [], b"\xef\xbb\xbf1\r\n2\r\n")

    def test_a_minus_and_option_like_lines_are_expressions(self):
        self.expect([], 0, ["4", "5"], [], b"-2^2\n--5\n")

    def test_failures_go_on(self):
        self.expect([], 1, ["2"], [DIVISION_BY_ZERO], b"1/0\n2\n")

    def test_standard_input_is_left_alone_when_there_are_expressions(self):
        self.expect(["1"], 0, ["1"], [], b"2\n")

    def test_a_long_line(self):
        self.expect([], 0, ["99999"], [], b"+".join([b"1"] * 99999) + b"\n")

    def test_text_that_is_not_utf8(self):
        for wrong in (b"\xff", b"1+\xc3", b"\xed\xa0\x80", b"\xc0\xb1", b"\xf4\x90\x80\x80", b"2\x002"):
            lines = b"1\n\n" + wrong + b"\n2\n"
            complaint = "mathexpr: line 3: not valid UTF-8, or a zero character in it"
            self.expect([], 1, ["1", "2"], [complaint], lines)
            answers = self.answers(status=1, stdin=lines, err=complaint.encode() + b"\n")
            self.assertEqual([answer["ok"] for answer in answers], [True, False, True])
            self.assertEqual((answers[1]["stage"], answers[1]["messages"]), ("compile", []))

    def test_an_argument_that_is_not_utf8(self):
        self.expect(["1", b"\xff", "2"], 1, ["1", "2"],
                    ["mathexpr: expression 2: not valid UTF-8, or a zero character in it"])

    def test_each_answer_comes_at_once(self):
        with subprocess.Popen([CALCULATOR], stdin=subprocess.PIPE, stdout=subprocess.PIPE) as process:
            for expression, value in ((b"a=20\n", b"20\n"), (b"a+1\n", b"21\n")):
                process.stdin.write(expression)
                process.stdin.flush()
                self.assertEqual(process.stdout.readline(), value)
            process.stdin.close()
            self.assertEqual(process.wait(timeout=60), 0)

    @unittest.skipUnless(os.path.exists("/dev/full"), "no device that is always full")
    def test_output_that_cannot_be_written(self):
        with open("/dev/full", "wb") as full:
            done = subprocess.run([CALCULATOR, "1"], stdout=full, stderr=subprocess.PIPE, timeout=60, check=False)
        self.assertEqual((done.returncode, done.stderr), (1, b"mathexpr: standard output cannot be written\n"))


class Terminal(CalculatorTest):
    def converse(self, *arguments, typed, answers):
        """Types lines at a terminal, each at a prompt; returns standard error as the terminal showed it."""
        user, terminal = pty.openpty()
        with subprocess.Popen([CALCULATOR, *arguments], stdin=terminal, stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE) as process:
            shown = b""
            deadline = time.monotonic() + 60
            for line in [*typed, b"\x04"]:  # Ctrl-D ends the input
                while not shown.endswith(b"> ") and time.monotonic() < deadline:
                    shown += os.read(process.stderr.fileno(), 1)
                os.write(user, line)
                shown += b"|"
            self.assertEqual(process.stdout.read(), answers)
            shown += process.stderr.read()
            self.assertEqual(process.wait(timeout=60), 0)
        os.close(user)
        os.close(terminal)
        return shown

    def test_a_prompt_on_standard_error(self):
        self.assertEqual(self.converse(typed=[b"1+1\n", b"\n", b"2^3\n"], answers=b"2\n8\n"), b"> |> |> |> |\n")

    def test_no_prompt_without_a_terminal(self):
        self.expect([], 0, ["1"], [], b"1\n")

    def test_no_prompt_with_expressions(self):
        user, terminal = pty.openpty()
        done = subprocess.run([CALCULATOR, "1/4"], stdin=terminal, capture_output=True, timeout=60, check=False)
        os.close(user)
        os.close(terminal)
        self.assertEqual((done.returncode, done.stdout, done.stderr), (0, b"0.25\n", b""))

    def test_a_failure_does_not_wait_for_enter(self):
        user, terminal = pty.openpty()
        done = subprocess.run([CALCULATOR, "1/0"], stdin=terminal, stdout=subprocess.PIPE, stderr=terminal, timeout=60,
                              check=False)
        os.close(terminal)
        shown = b""
        while select.select([user], [], [], 60)[0]:  # a terminal delivers the output in pieces
            try:
                shown += os.read(user, 1000)
            except OSError:  # end of the output
                break
        os.close(user)
        self.assertEqual((done.returncode, shown), (1, DIVISION_BY_ZERO.encode() + b"\r\n  1/0\r\n   ^\r\n"))


if __name__ == "__main__":
    CALCULATOR = sys.argv.pop(1)
    os.environ.pop("LANGUAGE", None)
    os.environ["LC_ALL"] = "C"  # messages in English
    unittest.main()
