# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Puts many mutants into one source, from which MutantChoice.h chooses at run time.

`a + b` becomes `(isMutant(7) ? a - b : a + b)`. Both branches contain the operands, so a scan over the tokens finds where an
operand begins and ends; it depends on the blanks of the formatter, and gives up when in doubt. Mutants within the operands of
another are possible only in its last branch, since one mutant is chosen at a time: the text grows with the depth of nesting.
"""

import bisect
import re

from mutants import RUN_BY_COMPILER

CHOICE = '#include "MutantChoice.h"'

COMMENT_OR_TEXT = re.compile(
    r"""(?P<comment>//[^\n]*|/\*.*?\*/)|(?P<directive>^[ ]*\#(?:\\\n|[^\n])*)"""
    r"""|(?:u8|u|U|L)?"(?:\\.|[^"\\\n])*"|(?:\b[uUL]|(?<!\w))'(?:\\.|[^'\\\n])+'""",
    re.DOTALL | re.MULTILINE)  # fmt: skip
TOKEN = re.compile(
    r"\s+|operator\s*(?:\(\)|\[\]|[^\s\w(]+)|\.?\d(?:[eEpP][+-]|[\w.'])*|\w+|\x01+|\x02+"
    r"|<<=|>>=|(?<=\s)>>(?=\s)|->\*|\.\.\.|::|->|\+\+|--|<<|[-+*/%&|^=!<>]=|&&|\|\||.",
    re.DOTALL)  # fmt: skip
PRECEDENCE = {operator: level for level, operators in enumerate(
    ("= += -= *= /= %= &= |= ^= <<= >>=", "||", "&&", "|", "^", "&", "== !=", "< <= > >=", "<< >>", "+ -", "* / %"))
    for operator in operators.split()}  # fmt: skip
CLOSING = {"(": ")", "[": "]", "{": "}", "<": ">"}
STOPS = {";", ",", "?", ":", "return", "case", "else", "do", "throw", "goto", "...", "default"}
TEXT, DIRECTIVE = "\1", "\2"


class Doubtful(Exception):
    """It is not clear where an operand begins or ends."""


class Token:
    def __init__(self, text, start, spaced_before, spaced_after):
        self.text, self.start, self.end = text, start, start + len(text)
        self.partner = None  # index of the matching bracket
        self.binary = spaced_before and spaced_after and text in PRECEDENCE
        self.is_operand = text[0].isalnum() or text[0] in "_" + TEXT

    def opens(self):
        return self.text in CLOSING and not self.binary

    def closes(self):
        return self.text in CLOSING.values() and not self.binary


class Tokens:
    """The tokens of a source, with matching brackets."""

    def __init__(self, text):
        text = COMMENT_OR_TEXT.sub(self.hidden, text)
        self.all = []
        for match in TOKEN.finditer(text):
            if not match[0].isspace():
                around = text[match.start() - 1 : match.start()].isspace(), text[match.end() : match.end() + 1].isspace()
                self.all.append(Token(match[0], match.start(), *around))
        self.starts = [token.start for token in self.all]
        self.match_brackets()

    @staticmethod
    def hidden(match):
        filler = " " if match["comment"] else DIRECTIVE if match["directive"] else TEXT
        return re.sub(r"[^\n]", filler, match[0])

    def match_brackets(self):
        opened = []
        for index, token in enumerate(self.all):
            if token.opens():
                opened.append(index)
            elif token.closes():
                if token.text != ">":
                    while opened and self.all[opened[-1]].text == "<":
                        opened.pop()
                if opened and CLOSING[self.all[opened[-1]].text] == token.text:
                    token.partner = opened.pop()
                    self.all[token.partner].partner = index
                elif token.text != ">":
                    opened.clear()

    def at(self, start):
        """Index of the token that begins at, or contains, a position."""
        return bisect.bisect_right(self.starts, start) - 1

    def partner(self, index):
        if self.all[index].partner is None:
            raise Doubtful
        return self.all[index].partner

    def begin_of_left_operand(self, operator):
        level = PRECEDENCE[self.all[operator].text]
        index = operator
        while True:
            before, token = self.all[index - 1], self.all[index]
            if before.text[0] == DIRECTIVE:
                raise Doubtful
            if before.opens():
                self.partner(index - 1)
                break
            if before.text in STOPS:
                break
            if before.binary:
                if PRECEDENCE[before.text] < max(level, 1):
                    break
                index -= 1
            elif before.closes():
                if (token.is_operand and index != operator) or (before.text == "}" and token.text in ("++", "--", "*")):
                    break
                index = self.partner(index - 1)
            else:
                index -= 1
        if index == operator:
            raise Doubtful
        return self.all[index].start

    def end_of_right_operand(self, operator):
        level = PRECEDENCE[self.all[operator].text]
        index = operator + 1
        while True:
            token = self.all[index]
            if token.text[0] == DIRECTIVE:
                raise Doubtful
            if token.closes():
                self.partner(index)
                break
            if token.text in (";", ","):
                break
            if level > 0 and token.text in ("?", ":"):
                break
            if token.binary and PRECEDENCE[token.text] <= level:
                break
            index = self.partner(index) + 1 if token.opens() else index + 1
        if index == operator + 1:
            raise Doubtful
        return self.all[index - 1].end

    def end_of_unary_operand(self, index):
        """The end of the operand of a prefix operator whose operand begins at a token."""
        while self.all[index].text in ("*", "-", "!"):
            index += 1
        if self.all[index].is_operand:
            index += 1
        elif self.all[index].text == "(":
            index = self.partner(index) + 1
        else:
            raise Doubtful
        while True:
            token = self.all[index]
            if token.text in (".", "->", "::"):
                index += 2
            elif token.text in ("(", "[") or (token.text == "<" and not token.binary):
                index = self.partner(index) + 1
            else:
                return self.all[index - 1].end

    def begin_of_postfix_operand(self, index):
        """The beginning of the operand of a postfix operator."""
        while True:
            index -= 1
            while self.all[index].closes():
                index = self.partner(index) - 1
            if not self.all[index].is_operand:
                raise Doubtful
            if self.all[index - 1].text not in (".", "->", "::"):
                return self.all[index].start
            index -= 1


class Schema:
    """One mutant's part of a source: what its text becomes, between two positions."""

    def __init__(self, number, mutant, start, end, render):
        self.number, self.mutant, self.start, self.end, self.render = number, mutant, start, end, render
        self.children = []


def on_one_line(code):
    """Code without its comments and line breaks, so that what follows it keeps its line number."""
    return COMMENT_OR_TEXT.sub(lambda match: "" if match["comment"] else match[0], code).replace("\n", " ")


def schema_of(number, mutant, text, tokens):
    old = text[mutant.start : mutant.end]
    condition = f"isMutant({number})"

    def choice(start, end):
        changed = on_one_line(text[start : mutant.start] + mutant.after + text[mutant.end : end])
        return Schema(number, mutant, start, end, lambda inner: f"({condition} ? {changed} : {inner})")

    if old.endswith(";"):
        index = tokens.at(mutant.start + len(old) - len(old.lstrip()))
        if tokens.all[index - 1].text not in (";", "{", "}", ")", ":", "else"):
            raise Doubtful
        return Schema(number, mutant, tokens.all[index].start, mutant.end, lambda inner: f"{{ if (!{condition}) {inner} }}")
    if mutant.after.startswith("!("):
        if any(token.text == "=" for token in tokens.all[tokens.at(mutant.start) : tokens.at(mutant.end)]):
            raise Doubtful  # it declares a variable
        return Schema(number, mutant, mutant.start, mutant.end, lambda inner: f"{condition} != static_cast<bool>({inner})")
    index = tokens.at(mutant.start)
    token = tokens.all[index]
    if old == "!":
        end = tokens.end_of_unary_operand(index + 1)
        return Schema(number, mutant, token.start, end, lambda inner: f"({condition} != {inner})")
    if old in ("++", "--"):
        before = tokens.all[index - 1]
        if before.end == token.start and (before.is_operand or before.closes()):
            return choice(tokens.begin_of_postfix_operand(index), token.end)
        return choice(token.start, tokens.end_of_unary_operand(index + 1))
    if token.binary:
        return choice(tokens.begin_of_left_operand(index), tokens.end_of_right_operand(index))
    if token.is_operand:
        return choice(token.start, token.end)
    raise Doubtful


def nested(schemata):
    """A tree of the schemata, by their extents, and those that overlap others only in part."""
    roots, open_ones, misfits = [], [], []
    for schema in sorted(schemata, key=lambda schema: (schema.start, -schema.end, schema.mutant.start)):
        while open_ones and open_ones[-1].end <= schema.start:
            open_ones.pop()
        if open_ones and schema.end > open_ones[-1].end:
            misfits.append(schema)
            continue
        (open_ones[-1].children if open_ones else roots).append(schema)
        open_ones.append(schema)
    return roots, misfits


class Mutated:
    """A source with its mutants, by number; those that do not fit into it are in `left`."""

    def __init__(self, text, mutants):
        tokens = Tokens(text)
        run_by_compiler = [match.span() for match in RUN_BY_COMPILER.finditer(text)]
        self.left = []
        self.spans = []  # of the result, with the number of its mutant
        schemata = []
        for number, mutant in mutants.items():
            try:
                if any(start <= mutant.start < end for start, end in run_by_compiler):
                    raise Doubtful
                schemata.append(schema_of(number, mutant, text, tokens))
            except (Doubtful, IndexError):
                self.left.append(number)
        roots, misfits = nested(schemata)
        self.left += [schema.number for schema in misfits]
        licence = text.index("\n")  # the first line, which makes room
        self.text = CHOICE + self.rendered(text, licence, len(text), roots, len(CHOICE))

    def rendered(self, text, start, end, schemata, offset):
        """The text between two positions, to stand at an offset of the result."""
        parts, length = [], 0
        for schema in schemata:
            parts.append(text[start : schema.start])
            length += len(parts[-1])
            before = len(schema.render("\0").partition("\0")[0])
            inner = self.rendered(text, schema.start, schema.end, schema.children, offset + length + before)
            parts.append(schema.render(inner))
            self.spans.append((offset + length, offset + length + len(parts[-1]), schema.number))
            length += len(parts[-1])
            start = schema.end
        return "".join(parts) + text[start:end]

    def at_fault(self, line, column):
        """Numbers of the mutants that a compiler's error may be about: the innermost one there, otherwise those of the line."""
        begin = 0
        for _ in range(line - 1):
            begin = self.text.index("\n", begin) + 1
        place = begin + column - 1
        around = [(end - start, number) for start, end, number in self.spans if start <= place < end]
        if around:
            return {min(around)[1]}
        line_end = self.text.find("\n", begin)
        return {number for start, end, number in self.spans if start < line_end and end > begin}
