# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Draws charts of the figures as SVG: a line per formula with a mark per engine, on a logarithmic scale.

Charts adapt to the reader's light or dark colour scheme, and use the reader's system font.
"""
import math
from dataclasses import dataclass
from xml.sax.saxutils import escape, quoteattr

from measure import NATIVE, OURS
from report import WIDE

LABEL_WIDTH = 200
PLOT_WIDTH = 600
MARGIN = 16
ROW_HEIGHT = 22
KEY_HEIGHT = 20
KEYS_PER_LINE = 3
TITLE_HEIGHT = 54
AXIS_HEIGHT = 40
RADIUS = 5

# Colours that can be distinguished on white and on black, also by colour-blind readers; shapes differ as well.
STYLE = """
text { font: 12px system-ui, sans-serif; fill: #1f2328; }
.title { font-size: 16px; font-weight: 600; }
.quiet { fill: #59636e; }
.grid { stroke: #d1d9e0; }
.line { stroke: #1f2328; stroke-width: 1.5; }
.paper { fill: #ffffff; }
@media (prefers-color-scheme: dark) {
text { fill: #f0f6fc; }
.quiet { fill: #9198a1; }
.grid { stroke: #3d444d; }
.line { stroke: #f0f6fc; }
.paper { fill: #0d1117; }
}
"""

SHAPES = {
    "circle": lambda r: f"M-{r},0a{r},{r} 0 1 0 {2 * r},0a{r},{r} 0 1 0 -{2 * r},0Z",
    "square": lambda r: f"M-{r},-{r}H{r}V{r}H-{r}Z",
    "diamond": lambda r: f"M0,-{r + 1}L{r + 1},0L0,{r + 1}L-{r + 1},0Z",
    "up": lambda r: f"M0,-{r}L{r},{r}H-{r}Z",
    "down": lambda r: f"M0,{r}L{r},-{r}H-{r}Z",
    "bar": lambda r: f"M-2,-{r}H2V{r}H-2Z",
}


@dataclass
class Engine:
    """The shape and colour of an engine's mark."""
    title: str
    shape: str
    colour: str


@dataclass
class Mark:
    """A figure of an engine."""
    value: float
    exact: bool = True


BLUE, SKY, ORANGE, GREEN, PURPLE, GREY = "#2f7fd6", "#5aa9e6", "#d9822b", "#2a9d6f", "#a371c9", "#8a929b"
ONE_ROW = {
    OURS: Engine("mathexpr, evaluate", "circle", BLUE),
    "bound function": Engine("mathexpr, bound function", "bar", BLUE),
    "fparser": Engine("fparser", "square", ORANGE),
    "muparser": Engine("muparser", "diamond", GREEN),
    "luajit": Engine("LuaJIT, called from C++", "up", PURPLE),
    "muparserx": Engine("muparserx", "down", GREY),
}
MANY_ROWS = {
    OURS: Engine("mathexpr, bulk evaluation", "circle", BLUE),
    WIDE: Engine("native, -O3 -march=native", "bar", GREY),
    "numexpr": Engine("numexpr", "square", ORANGE),
    "numpy": Engine("NumPy", "diamond", GREEN),
    "row by row": Engine("mathexpr, evaluate for each row", "up", SKY),
}


def one_row(figures):
    """A chart of single evaluations."""
    rows = [(label(figures, formula), {engine: Mark(times[engine][0] / times[NATIVE][0], times[engine][1] == 0)
                                       for engine in ONE_ROW if engine in times})
            for formula, times in figures.evaluated.items()]
    return chart("One evaluation", "Time relative to native code compiled with -O2; less is better; a hollow mark is not "
                 "exact to the bit", "x native", ONE_ROW, rows)


def many_rows(figures):
    """A chart of bulk evaluation."""
    rows = [(label(figures, formula), {way: Mark(times[way] / times[NATIVE], way not in times.get("inexact", ()))
                                       for way in MANY_ROWS if way in times})
            for formula, times in figures.bulk.items()]
    return chart("Columns of 10,000 rows", "Time relative to a native loop compiled with -O2, on one thread; less is better; "
                 "a hollow mark is not exact to the bit", "x native", MANY_ROWS, rows)


def label(figures, formula):
    """The label of a formula's line."""
    return f"{formula}  {figures.titles[f'formula {formula}']}"


def chart(title, subtitle, unit, engines, rows):
    """The text of the SVG file.

    engines: {name: Engine} in the order of the legend; rows: [(label, {name: Mark})]. A line marks the value 1.
    """
    values = [mark.value for _, marks in rows for mark in marks.values()]
    scale = Scale(min([1.0, *values]), max([1.0, *values]))
    key_lines = math.ceil(len(engines) / KEYS_PER_LINE)
    top = TITLE_HEIGHT + key_lines * KEY_HEIGHT + 8
    bottom = top + len(rows) * ROW_HEIGHT
    width, height = LABEL_WIDTH + PLOT_WIDTH + 2 * MARGIN, bottom + AXIS_HEIGHT
    parts = [
        f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" width="{width}" height="{height}" '
        f'role="img" aria-labelledby="title subtitle">',
        f"<style>{STYLE}</style>",
        f'<rect class="paper" width="{width}" height="{height}"/>',
        text(MARGIN, 24, title, "title", identifier="title"),
        text(MARGIN, 43, subtitle, "quiet", identifier="subtitle"),
        *key(engines),
        *axis(scale, unit, top, bottom),
    ]
    for index, (label, marks) in enumerate(rows):
        y = top + (index + 0.5) * ROW_HEIGHT
        parts.append(text(MARGIN, y + 4, label))
        parts.append(f'<path class="grid" d="M{scale.left},{y}H{scale.right}"/>')
        # The first of the legend is drawn on top.
        for name in reversed([name for name in engines if name in marks]):
            told = f"{engines[name].title}: {marks[name].value:.3g}"
            parts.append(drawn(engines[name], scale.place(marks[name].value), y, marks[name].exact, told))
    return "\n".join([*parts, "</svg>", ""])


class Scale:
    """A logarithmic scale between two values, widened to 1, 2 or 5 times a power of ten."""

    def __init__(self, least, greatest):
        steps = [factor * 10.0 ** power for power in range(-6, 9) for factor in (1, 2, 5)]
        first = max(index for index, step in enumerate(steps) if step <= least)
        last = min(index for index, step in enumerate(steps) if step >= greatest and index > first)
        self.ticks = steps[first:last + 1]
        self.left = MARGIN + LABEL_WIDTH
        self.right = self.left + PLOT_WIDTH

    def place(self, value):
        """The x coordinate of a value."""
        share = math.log(value / self.ticks[0]) / math.log(self.ticks[-1] / self.ticks[0])
        return round(self.left + share * PLOT_WIDTH, 1)


def text(x, y, content, style=None, anchor=None, identifier=None):
    """An element with a text."""
    attributes = "".join(f" {name}={quoteattr(value)}" for name, value in
                         [("class", style), ("text-anchor", anchor), ("id", identifier)] if value)
    return f'<text x="{x}" y="{y}"{attributes}>{escape(content)}</text>'


def drawn(engine, x, y, exact, told):
    """A mark; hollow if the results are not exact."""
    colour = f'fill="{engine.colour}"' if exact else f'class="paper" stroke="{engine.colour}" stroke-width="2"'
    return (f'<path transform="translate({x},{y})" d="{SHAPES[engine.shape](RADIUS)}" {colour}>'
            f"<title>{escape(told)}</title></path>")


def key(engines):
    """The legend, in lines below the title."""
    parts = []
    column = (LABEL_WIDTH + PLOT_WIDTH) // KEYS_PER_LINE
    for index, engine in enumerate(engines.values()):
        x = MARGIN + RADIUS + index % KEYS_PER_LINE * column
        y = TITLE_HEIGHT + 12 + index // KEYS_PER_LINE * KEY_HEIGHT
        parts += [drawn(engine, x, y, True, engine.title), text(x + 12, y + 4, engine.title)]
    return parts


def axis(scale, unit, top, bottom):
    """The values below the lines, and a line for the value 1."""
    parts = []
    for tick in scale.ticks:
        x = scale.place(tick)
        parts.append(f'<path class="{"line" if tick == 1 else "grid"}" d="M{x},{top}V{bottom}"/>')
        parts.append(text(x, bottom + 15, f"{tick:g}", "quiet", "middle"))
    parts.append(text(scale.right, bottom + 32, unit, "quiet", "end"))
    return parts
