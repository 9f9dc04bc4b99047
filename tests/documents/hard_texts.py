# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""hard_texts.py - tests the programs in the documents with any text that a user might type.

    hard_texts.py MESSAGES PROGRAM...

Each PROGRAM takes expressions as arguments, knows a name with non-ASCII letters, and prints values and messages. It gets
valid and invalid text, in English, German and Japanese. It must not die by a signal, and must print well-formed UTF-8: the
value, or the message for that text in the user's language. MESSAGES is the table of messages. Ill-formed UTF-8 must not print
an earlier message again.
"""
import os
import re
import subprocess
import sys
import tempfile
from pathlib import Path

# By the column of the table.
LANGUAGES = {"C": 0, "de_DE.UTF-8": 1, "ja_JP.UTF-8": 6}

VALUES = {"2*(1+2)": "6", "gr\u00f6\u00dfe*2": "8", "dist([1,2],[1,5])": "3"}
MESSAGES = {"2*(": 2, "sin([1,2])": 3, "1/0": 10, "(" * 100000: 2, "gr\u00f6\u00dfer*2": 1}
ILL_FORMED = b"1+\xff"
ILL_FORMED_MESSAGE = "the text is not well-formed UTF-8"

ROW = re.compile(r"^MESSAGE\(\s*(\d+),((?:\s*\"[^\"]*\",?)+)\)", re.MULTILINE)


def message_texts(table):
    return {int(number): re.findall(r'"([^"]*)"', texts)
            for number, texts in ROW.findall(Path(table).read_text(encoding="utf-8"))}


def make_locales(folder):
    """Creates the locales, since the machine may lack them."""
    for name in LANGUAGES:
        language, _, charset = name.partition(".")
        if charset:
            subprocess.run(["localedef", "-i", language, "-f", charset, os.path.join(folder, name)], check=True,
                           capture_output=True)


def check(program, locale, locales, arguments, expected, unexpected=()):
    """Yields errors in the output for some texts; a message is expected once."""
    environment = {**os.environ, "LC_ALL": locale, "LANGUAGE": "", "LOCPATH": locales}
    done = subprocess.run([program, *arguments], env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, timeout=60, check=False)
    told = f"{Path(program).name} {[str(argument)[:20] for argument in arguments]} in {locale}"
    if done.returncode not in (0, 1):
        yield f"{told}: exit status {done.returncode}"
    try:
        printed = done.stdout.decode("utf-8")
    except UnicodeDecodeError as error:
        yield f"{told}: {error}: {done.stdout[:200]!r}"
        return
    yield from (f"{told}: {text!r} is not in {printed[:300]!r}" for text in expected if text not in printed)
    yield from (f"{told}: {text!r} is in {printed[:300]!r}" for text in unexpected if text in printed)
    yield from (f"{told}: {text!r} is repeated" for text in expected if len(text) > 10 and printed.count(text) > 1)


def main():
    table, *programs = sys.argv[1:]
    texts = message_texts(table)
    failures = []
    tried_count = 0
    with tempfile.TemporaryDirectory() as locales:
        make_locales(locales)
        for program in programs:
            for locale, column in LANGUAGES.items():
                said = {typed: texts[number][column] for typed, number in MESSAGES.items()}
                for typed, answer in {**VALUES, **said}.items():
                    unexpected = [] if typed in said else said.values()
                    failures += check(program, locale, locales, [typed], [answer], unexpected)
                failures += check(program, locale, locales, [ILL_FORMED], [ILL_FORMED_MESSAGE], said.values())
                failures += check(program, locale, locales, ["2*(", ILL_FORMED], [said["2*("]])
                tried_count += len(VALUES) + len(said) + 2
    print("\n".join(failures))
    print(f"{len(programs)} programs, {tried_count} texts, {len(failures)} failures")
    return 1 if failures or not programs else 0


if __name__ == "__main__":
    sys.exit(main())
