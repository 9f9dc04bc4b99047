# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Writes docs/vocabulary.md: every item of the vocabulary, with results computed by the calculator.

Usage: vocabulary_page.py CALCULATOR PAGE          writes the page
       vocabulary_page.py --check CALCULATOR PAGE  fails if the page is out of date
"""

import difflib
import json
import subprocess
import sys
from fractions import Fraction
from pathlib import Path

INTRODUCTION = """\
# The vocabulary

All constants, operators and functions, by family. `tools/vocabulary_page.py` generates this page with results computed by the
calculator; do not edit it.

- *Accepts* lists the valid arguments. Others are refused, with a message or an exception. *Message N* is shown to the user; in silent
  mode `evaluate` or `setExpression` returns false instead. *Exception 15* is a parsing exception, thrown in both modes and never
  shown.
- *With points* shows the results for arguments that are points.
- *Converted* numbers and distances have a flag, which only `&` reads.
"""

PI = Fraction("3.14159265358979323846264338327950288419716939937510")
SIZES = {
    # The exact sizes, which the vocabulary may round: in arc-seconds, metres, square metres and cubic metres.
    "d": "3600", "r": 648000 / PI, "c": "1296000", "g": "3240", "q": "324000",
    "m": "1", "cm": "0.01", "mm": "0.001", "km": "1000", "f": "0.3048", "i": "0.0254", "y": "0.9144",
    "mile": "1609.344", "su": Fraction(1200, 3937),
}
ACRE = "4046.8564224"  # the international one, 43560 square feet
SURVEY_ACRE = 43560 * Fraction(1200, 3937) ** 2
ARGUMENTS = ["1", "0.1", "2.5", "3", "7", "0.001", "12345.678", "299792458.0", "0.333333"]


def size_of(family, unit):
    if family == "Area conversions":
        return Fraction(ACRE) if unit == "sa" else Fraction(SIZES[unit[1:]]) ** 2
    if family == "Volume conversions":
        return Fraction(SIZES[unit[1:]]) ** 3
    return Fraction(SIZES[unit])


class Calculator:
    def __init__(self, path):
        self.path = path

    def run(self, *arguments, stdin=""):
        done = subprocess.run([self.path, "--json", *arguments], input=stdin, capture_output=True, text=True,
                              encoding="utf-8", check=True)
        return [json.loads(line) for line in done.stdout.splitlines()]

    def items(self):
        """All items in the order of registration, with their notes and computed expressions."""
        listed = self.run("--list")[0]
        names = list(dict.fromkeys(item["symbol"] for item in listed))
        described = [item for items in self.run(*(f"--describe={name}" for name in names)) for item in items]
        by_head = {(item["kind"], item["class"], item["symbol"]): item for item in described}
        return [by_head[item["kind"], item["class"], item["symbol"]] for item in listed]

    def numbers(self, expressions):
        return [answer["values"][0]["x"] for answer in self.run(stdin="\n".join(expressions) + "\n")]


def is_conversion(item):
    return item["family"].endswith(" conversions")


def is_degrees_and_radians(item):
    """The conversions in the core mathematics, which use the constant pi."""
    return item["symbol"] in ("d2r", "r2d")


def kind_of_error(source, target):
    """The rounded constants of the vocabulary that a conversion uses."""
    if {source, target} == {"d", "r"}:
        return "radian"
    if "su" in (source, target):
        return "survey foot"
    if "sa" in (source, target) and {"sm", "scm", "smm", "skm"} & {source, target}:
        return "acre"
    return "exact"


def relative_errors(calculator, items):
    """The largest relative error of the conversions against the exact sizes, and the conversion that has it, by kind."""
    conversions = [item for item in items if is_conversion(item) or is_degrees_and_radians(item)]
    calls = [(item, argument) for item in conversions for argument in ARGUMENTS]
    results = calculator.numbers(f"{item['symbol']}({argument})" for item, argument in calls)
    largest = {}
    for (item, argument), result in zip(calls, results):
        source, target = item["symbol"].split("2")
        exact = Fraction(float(argument)) * size_of(item["family"], source) / size_of(item["family"], target)
        error = abs(Fraction(result) / exact - 1)
        kind = "exact" if source == target else kind_of_error(source, target)
        largest[kind] = max(largest.get(kind, (0, "")), (error, item["symbol"]))
    return largest


def code(text):
    return "`" + text.replace("|", "\\|") + "`" if text else ""


def computed(expressions):
    return "<br>".join(f"{code(each['expression'])} {outcome(each['outcome'])}" for each in expressions)


def outcome(text):
    return text if text.startswith(("message", "exception")) else "= " + text


def table(heading, rows):
    lines = ["| " + " | ".join(heading) + " |", "|" + " --- |" * len(heading)]
    lines += ["| " + " | ".join(row) + " |" for row in rows]
    return "\n".join(lines) + "\n"


def refusals(item):
    """What the item refuses, except points."""
    return computed(item["refused"]) or "nothing"


def page(calculator):
    items = calculator.items()
    families = {}
    for item in items:
        families.setdefault(item["family"], []).append(item)
    sections = [INTRODUCTION]

    sections.append("## Constants\n\n" + table(
        ["Name", "Example"],
        [[code(item["symbol"]), computed(item["examples"])] for item in families.pop("Constants")]))

    sections.append("## Operators\n\nA higher number binds tighter.\n\n" + table(
        ["Signature", "What it does", "Binds", "Accepts", "Example", "With points", "Otherwise refused"],
        [[code(item["help"]), item["description"].replace("|", "\\|"), str(item["precedence"]), item["domain"],
          computed(item["examples"]), computed(item["points"]), refusals(item)] for item in families.pop("Operators")]))

    for family in ("Core mathematics", "Geometry"):
        sections.append(f"## {family}\n\n" + table(
            ["Signature", "What it does", "Units", "Accepts", "Example", "With points", "Otherwise refused"],
            [[code(item["help"]), item["description"], item["units"] or "none", item["domain"],
              computed(item["examples"]), computed(item["points"]), refusals(item)]
             for item in families.pop(family)]))

    errors = relative_errors(calculator, items)
    told = {kind: f"{float(error):.2e} (`{symbol}`)" for kind, (error, symbol) in errors.items()}
    survey = float(1 - Fraction(ACRE) / SURVEY_ACRE)
    sections.append(
        "## Conversions between units\n\n"
        "Each accepts one number, and refuses none. Some constants have fewer digits than the true sizes of the units. Over "
        f"{len(ARGUMENTS)} arguments, the maximum relative error is\n\n"
        f"- {told['acre']} between acres and metric areas; those between acres and square feet, inches and yards are exact,\n"
        f"- {told['survey foot']} with survey feet,\n"
        f"- {told['radian']} between degrees and radians,\n"
        f"- {told['exact']}, which is rounding, in all others.\n\n"
        f"The acre is the international one, 43560 square feet; the survey acre is greater by {survey:.1e} of it.\n")
    for family, conversions in families.items():
        sections.append(f"### {family}\n\n" + table(
            ["Signature", "Units", "Description", "Example", "With a point"],
            [[code(item["symbol"] + "(x)"), item["units"], item["description"].strip(), computed(item["examples"]),
              item["points"][0]["outcome"]] for item in conversions]))
    return "\n".join(sections)


def main(arguments):
    check = arguments[:1] == ["--check"]
    calculator, path = arguments[check:]
    text = page(Calculator(calculator))
    if not check:
        Path(path).write_text(text, encoding="utf-8")
        return 0
    written = Path(path).read_text(encoding="utf-8")
    difference = list(difflib.unified_diff(written.splitlines(), text.splitlines(), path, "computed", lineterm=""))
    print("\n".join(difference))
    return 1 if written != text else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
