# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""The mutants: every place of the library where one of RULES applies, and what it becomes."""

import collections
import dataclasses
import pathlib
import re

ROOT = pathlib.Path(__file__).resolve().parents[2]
MUTATED = ("MTParserLib/**/*.cpp", "MTParserLib/**/*.h", "mathexpr/**/*.cpp")
SKIPPED = ("Windows.cpp", "MinGW.cpp", "Wasm.cpp")  # not built here

COMMENT_OR_TEXT = re.compile(
    r"""//[^\n]* | /\*.*?\*/ | L?"(?:\\.|[^"\\\n])*" | \bL?'(?:\\.|[^'\\\n])+' | ^[ ]*\#(?:\\\n|[^\n])*"""
    r"""| ^[ ]*template\b[^;{]*\bconcept\b[^;{]*(?:;|\{.*?^\};) | ^[ ]*(?:static_assert|template|using)\b[^;{]*""",
    re.VERBOSE | re.DOTALL | re.MULTILINE)  # fmt: skip
# Code that tests cannot reach, as in tests/coverage. Code that only compilers run is mutated: its changes have effects.
EXTENT = r"[^\n]*\n(?:\1 *\S[^\n]*\n)*"
NOT_COVERED = re.compile(rf"^( *)[^\n]*// not covered: (?!runs while compiling){EXTENT}", re.MULTILINE)
RUN_BY_COMPILER = re.compile(rf"^( *)[^\n]*// not covered: runs while compiling{EXTENT}", re.MULTILINE)


def swap(*pairs):
    """Rules that replace a binary operator by its counterpart. The formatter puts blanks around those, and only those."""
    return [(re.compile(rf"(?<= ){re.escape(a)}(?= |\n)"), lambda m, b=b: b) for pair in pairs for a, b in (pair, pair[::-1])]


def next_number(match):
    return str(int(match[0]) + 1)


RULES = [
    *swap(("==", "!="), ("<", "<="), (">", ">="), ("+", "-"), ("*", "/"), ("&&", "||"), ("+=", "-="), ("*=", "/=")),
    (re.compile(r"\btrue\b"), lambda _: "false"),
    (re.compile(r"\bfalse\b"), lambda _: "true"),
    (re.compile(r"\+\+"), lambda _: "--"),
    (re.compile(r"--"), lambda _: "++"),
    (re.compile(r"(?<![\w.'])\d+(?![\w'])"), next_number),              # also the digits before the decimal point
    (re.compile(r"(?<=[(! ])!(?=[\w(])"), lambda _: ""),
    (re.compile(r"(?<=^)(?P<indent> +)[\w.>:-]+\([^;{}\n]*\);$", re.MULTILINE), lambda m: m["indent"] + ";"),
]
CONDITION = re.compile(r"\b(?:if|while) (?:constexpr )?\(")


@dataclasses.dataclass(frozen=True, order=True)
class Mutant:
    path: str
    line: int
    start: int
    end: int
    after: str
    old: str  # the line before and after the change
    new: str
    occurrence: int  # 1 unless the same change can be made to an equal line before it

    def place(self):
        return self.path if self.occurrence == 1 else f"{self.path}#{self.occurrence}"

    def key(self):
        """A unique key, which is stable when the file changes elsewhere."""
        return self.place(), self.old, self.new

    def name(self):
        return "\n".join(self.key())

    def apply(self, text):
        return text[: self.start] + self.after + text[self.end :]

    def __str__(self):
        return f"{self.place()}:{self.line}\n- {self.old}\n+ {self.new}\n"


def masked(text):
    """The text with blanks in place of everything that is not code, or never runs."""
    for hidden in (NOT_COVERED, COMMENT_OR_TEXT):
        text = hidden.sub(lambda match: re.sub(r"[^\n]", "\0", match[0]), text)
    return text


def closing(text, opening):
    """Position at which the bracket opened at a position is closed."""
    depth = 0
    for place in range(opening, len(text)):
        depth += {"(": 1, ")": -1}.get(text[place], 0)
        if depth == 0:
            return place
    raise ValueError("a bracket is not closed")


def mutants_of(path, text):
    code = masked(text)
    changes = [(match.start(), match.end(), after(match)) for pattern, after in RULES for match in pattern.finditer(code)]
    for match in CONDITION.finditer(code):
        end = closing(code, match.end() - 1)
        changes.append((match.end(), end, f"!({text[match.end() : end]})"))
    occurrences = collections.Counter()
    for start, end, after in sorted(changes):
        line = text.count("\n", 0, start)
        changed = text[:start] + after + text[end:]
        old, new = text.split("\n")[line].strip(), changed.split("\n")[line].strip()
        occurrences[old, new] += 1
        yield Mutant(path, line + 1, start, end, after, old, new, occurrences[old, new])


def all_mutants():
    for pattern in MUTATED:
        for source in sorted(ROOT.glob(pattern)):
            if not source.name.endswith(SKIPPED):
                yield from mutants_of(source.relative_to(ROOT).as_posix(), source.read_text("ascii"))
