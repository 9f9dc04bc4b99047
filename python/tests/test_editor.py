# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Editor services: the C++ tests check the results; these tests check that Python receives them, counted in characters."""

import threading
from pathlib import Path
from xml.etree import ElementTree

import mathexpr
import pytest
from mathexpr import Expression, Limits, MathExprError, Point

DATA = Path(__file__).resolve().parents[2] / "tests" / "language" / "data"

VARIABLES = {"x": 2.5, "p": Point(1, 2, 3), "breite": 4, "h\u00f6he": 5, "\u9ad8\u3055": 6, "\U0001d45f": 7}


def texts_of_the_language():
    """The texts of the language tests that contain no escapes."""
    lines = [line for path in sorted(DATA.glob("*.txt")) for line in path.read_text(encoding="utf-8").splitlines()]
    texts = [line.split(" => ")[0].strip('"') for line in lines if " => " in line and line[0] not in "#@!"]
    return [text for text in texts if "\\" not in text]


def prefixes(step=1):
    """Prefixes of all texts; some follow characters of 2, 3 and 4 bytes."""
    for number, text in enumerate(texts_of_the_language()):
        for end in range(number % step, len(text) + 1, step):
            yield text[:end]
            yield f"h\u00f6he*\u9ad8\u3055-\U0001d45f*{text[:end]}"


@pytest.fixture(scope="module")
def expression():
    with Expression("x+1", VARIABLES) as made:
        yield made
        assert made.text == "x+1" and made.evaluate() == 3.5
        assert dict(made.variables) == VARIABLES


def test_there_are_texts():
    assert len(texts_of_the_language()) > 800


def test_tokens_cover_any_text(expression):
    for text in prefixes():
        tokens = expression.tokens(text)
        assert "".join(token.text for token in tokens) == text
        assert [token.start for token in tokens] == [sum(len(t.text) for t in tokens[:i]) for i in range(len(tokens))]
        for index, token in enumerate(tokens):
            assert token.partner is None or tokens[token.partner].partner == index


def test_a_formatted_text_is_the_same_program_and_stays(expression):
    for text in texts_of_the_language():
        formatted = expression.format(text)
        assert expression.format(formatted) == formatted
        assert formatted.replace(" ", "") == text.replace(" ", "").replace("\t", "")


def test_hover_names_what_is_under_the_cursor(expression):
    for text in prefixes(7):
        for cursor in range(len(text)):
            under = expression.hover(text, cursor)
            if under is None:
                continue
            assert under.start <= cursor <= under.start + under.length
            if under.kind == "variable":
                assert text[under.start : under.start + under.length] == under.name
                assert under.value == VARIABLES[under.name.lower()]


def test_what_is_offered_compiles(expression):
    tried = 0
    for text in prefixes(40):
        for completion in expression.complete(text, max_count=3):
            tried += 1
            assert completion.start + completion.length == len(text)
            applied = completion.apply(text)
            end = completion.selection_start + completion.selection_length
            assert completion.start <= completion.selection_start <= end <= len(applied)
            closed = applied + "".join(")" if t.text == "(" else "]" for t in reversed(expression.tokens(applied))
                                       if t.text in ("(", "[") and t.partner is None)
            try:
                Expression(closed, VARIABLES)
            except MathExprError as error:  # arguments are missing, or outside the function's domain
                told = error.diagnostic
                missing = any(count is None or told.arg_count < count for count in told.accepted_arg_counts)
                assert missing or told.message_number > 10, (text, completion)
    assert tried > 500


def test_kinds_of_tokens():
    expression = Expression("1", {"h\u00f6he": 2}, resolver=lambda name: 1.0, names=["depth"])
    kinds = [(token.kind, token.text) for token in expression.tokens("a = sin(h\u00f6he) , depth+2*pi/[q")]
    assert kinds == [
        ("assigned name", "a"),
        ("blank", " "),
        ("assignment sign", "="),
        ("blank", " "),
        ("function", "sin"),
        ("bracket", "("),
        ("variable", "h\u00f6he"),
        ("bracket", ")"),
        ("blank", " "),
        ("separator", ","),
        ("blank", " "),
        ("host name", "depth"),
        ("operator", "+"),
        ("number", "2"),
        ("operator", "*"),
        ("constant", "pi"),
        ("operator", "/"),
        ("shorthand", "["),
        ("unknown name", "q"),
    ]
    assert expression.tokens("sin(h\u00f6he)")[1].partner == 3
    assert expression.tokens("((1))")[2].depth == 2
    assert expression.tokens("1+a=2")[-2].kind == "other"
    assert expression.tokens("") == []


def test_a_completion_in_the_middle_of_a_text(expression):
    found = next(c for c in expression.complete("\u9ad8\u3055*h\u00f6-\U0001d45f", 5) if c.name == "h\u00f6he")
    assert (found.start, found.length, found.replacement, found.value) == (3, 2, "h\u00f6he", 5.0)
    assert found.apply("\u9ad8\u3055*h\u00f6-\U0001d45f") == "\u9ad8\u3055*h\u00f6he-\U0001d45f"
    assert (found.selection_start, found.selection_length) == (7, 0)
    call = next(c for c in expression.complete("\U0001d45f+dis") if c.name == "dist")
    assert call.kind == "function" and call.value is None and call.description
    selected = call.apply("\U0001d45f+dis")[call.selection_start : call.selection_start + call.selection_length]
    assert selected and call.replacement == f"dist({selected})"
    assert {c.value_kind for c in expression.complete("")} >= {"number", "point"}


def test_what_has_been_chosen_lately_comes_first(expression):
    names = [completion.name for completion in expression.complete("x+s")]
    assert names[0] != "sinh"
    assert expression.complete("x+s", recent=["sinh"])[0].name == "sinh"
    assert len(expression.complete("x+s", max_count=5)) == 5
    for max_count in (0, -1, 1 << 32):
        with pytest.raises(ValueError, match="max_count is"):
            expression.complete("x", max_count=max_count)


def test_cursors_are_as_in_slices(expression):
    assert expression.hover("h\u00f6he", 99) == expression.hover("h\u00f6he", 3)
    assert expression.hover("h\u00f6he", -1) == expression.hover("h\u00f6he", 3)
    assert expression.hover("1 + 2", 1).name == "1"
    assert expression.hover("", 0) is None


def test_the_resolver_is_asked_only_where_it_may_be():
    asked = []

    def answer(name):
        asked.append(name)
        return 3.0 if name == "tiefe" else None

    expression = Expression(resolver=answer, names=["tiefe"])
    assert expression.hover("2*tiefe", 4).value is None
    expression.complete("2*t")
    expression.tokens("2*tiefe")
    assert asked == []
    assert expression.hover("2*tiefe", 4, ask_resolver=True).value == 3.0
    assert asked == ["tiefe"]
    assert list(expression.variables) == []


def test_what_the_resolver_or_the_names_raise_comes_out():
    def fail(name):
        raise LookupError(name)

    class Names:
        def __iter__(self):
            raise LookupError("names")

    with pytest.raises(LookupError, match="depth"):
        Expression(resolver=fail, names=["depth"]).hover("depth", 0, ask_resolver=True)
    for ask in (lambda e: e.complete("2*d"), lambda e: e.tokens("2*d")):
        expression = Expression(resolver=fail, names=Names())
        with pytest.raises(LookupError, match="names"):
            ask(expression)


def test_a_notebook_typesets_the_text():
    expression = Expression("sqrt(x)/[1,2]", {"x": 4})
    assert expression.to_latex() == expression.to_latex("sqrt(x)/[1,2]")
    assert expression._repr_latex_() == rf"$\displaystyle {expression.to_latex()}$"
    assert expression.to_latex().startswith(r"\frac{\sqrt{x}}{")
    assert ElementTree.fromstring(expression.to_mathml()).tag.endswith("math")
    assert Expression()._repr_latex_() is None


def test_any_text_is_typeset(expression):
    for text in prefixes(5):
        latex = expression.to_latex(text)
        assert latex.count("{") - latex.count(r"\{") == latex.count("}") - latex.count(r"\}")
        ElementTree.fromstring(expression.to_mathml(text))


def test_what_is_no_text(expression):
    for ask in (expression.tokens, expression.format, expression.complete, expression.to_latex, expression.to_mathml):
        with pytest.raises(TypeError):
            ask(3)
        with pytest.raises(ValueError):
            ask("1\0")
        with pytest.raises(UnicodeEncodeError):
            ask("\ud800")
    with pytest.raises(TypeError):
        expression.complete("1", recent=[3])
    with pytest.raises(TypeError):
        expression.hover("1", "1")


def test_a_closed_expression_offers_nothing():
    expression = Expression("1")
    with expression:
        pass
    for ask in (expression.tokens, expression.format, expression.complete):
        with pytest.raises(ValueError, match="the expression is closed"):
            ask("1")


def test_the_resolver_may_ask_and_the_names_may_not():
    offered = []

    def answer(name):
        offered.extend(completion.name for completion in expression.complete("1+sinh"))
        return 1.0

    class Names:
        def __iter__(self):
            expression.complete("1+sinh")

    expression = Expression(resolver=answer)
    assert expression.evaluate("q+1") == 2 and offered[0] == "sinh"
    expression = Expression(names=Names())
    with pytest.raises(RuntimeError, match="waits for its resolver"):
        expression.complete("1+s")


def test_limits_hold():
    expression = Expression(limits=Limits(max_text_length=10))
    assert [token.kind for token in expression.tokens("1+2+3+4+5+6")] == ["other"]
    assert expression.format("1+2+3+4+5") == "1+2+3+4+5"  # would be longer
    assert expression.complete("1+2+3+4+5+6+s") == []


def test_threads_have_expressions_of_their_own():
    expected = [Expression("1", VARIABLES).complete(text) for text in ("h\u00f6he+s", "2*", "dist(p,")]
    found = []

    def ask():
        expression = Expression("1", VARIABLES)
        for _ in range(5):
            found.append([expression.complete(text) for text in ("h\u00f6he+s", "2*", "dist(p,")] == expected)

    threads = [threading.Thread(target=ask) for _ in range(4)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert found == [True] * 20


def test_types_are_named_as_users_import_them():
    assert {mathexpr.Token.__module__, mathexpr.Completion.__module__, mathexpr.Hover.__module__} == {"mathexpr"}
