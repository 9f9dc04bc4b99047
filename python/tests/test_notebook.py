# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Notebook output is well-formed and escaped; the example draws the pictures in the documentation."""

import subprocess
import sys
from pathlib import Path
from xml.etree import ElementTree

import mathexpr
import pytest
from mathexpr import Expression, Point

TREE = Path(__file__).resolve().parents[2]


def html(value):
    """Parses notebook output. It is XML, except the search field, which has no end tag."""
    return ElementTree.fromstring(value._repr_html_().replace("includes(this.value.toLowerCase())\">", "\"/>"))


def failure(text):
    with pytest.raises(mathexpr.MathExprError) as caught:
        mathexpr.evaluate(text)
    return caught.value


def test_values_and_variables():
    assert html(Point(1, 2)).text == "[1,2,0]"
    table = html(Expression(variables={"r": 2, "p": Point(1)}).variables)
    assert [[cell.itertext().__next__() for cell in row] for row in table.iter("tr")] == [
        ["name", "value"],
        ["r", "2.0"],
        ["p", "[1,0,0]"],
    ]


def test_an_error_is_underlined():
    shown = html(failure("1 + sine(30) < 2"))
    text = shown.find("pre")
    assert "".join(text.itertext()) == "1 + sine(30) < 2"
    span = text.find("span")
    assert span.text == "sine" and "underline" in span.attrib["style"]
    assert [part.text for part in shown.findall("p")] == [failure("sine(30)").message, "Did you mean sin or sinh?"]


def test_an_error_at_the_end_of_a_text_shows():
    assert html(failure("")).find("pre").find("span").text == "\N{NO-BREAK SPACE}"


def test_markup_in_a_text_is_escaped():
    text = "1+<script>alert(1)</script>"
    assert "".join(html(failure(text)).find("pre").itertext()) == text
    assert "<script" not in failure(text)._repr_html_()


def test_the_vocabulary_is_a_table_to_search():
    items = mathexpr.vocabulary()
    shown = items._repr_html_()
    assert shown.count("<tr>") == len(items) + 1 and '<input type="search"' in shown
    assert "<code>sin(x)</code>" in shown and "<code>x &lt; y</code>" in shown


@pytest.mark.skipif(not (TREE / "examples").is_dir(), reason="a source distribution has no examples")
def test_the_example_draws_the_pictures_of_the_pages(tmp_path):
    pytest.importorskip("matplotlib")
    subprocess.run([sys.executable, TREE / "examples" / "notebook" / "tour.py", tmp_path], check=True)
    names = {path.name for path in tmp_path.iterdir()}
    assert names == {path.name for path in (TREE / "docs" / "pictures").glob("*.svg")} and len(names) == 3
    for name in names:
        drawn = ElementTree.parse(tmp_path / name).getroot()
        assert drawn.tag.endswith("svg") and len(list(drawn.iter())) > 50
