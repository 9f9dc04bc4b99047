# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""HTML for notebooks: values, variables, errors with the failed span underlined, the vocabulary as a searchable table."""

from __future__ import annotations

from collections.abc import Iterable, Mapping
from html import escape
from typing import TYPE_CHECKING

if TYPE_CHECKING:
    from ._errors import Diagnostic
    from ._vocabulary import VocabularyItem

_WRONG = "text-decoration: underline wavy red"

# Hides the rows that do not contain the typed text. Affects nothing outside the table.
_SEARCH = (
    "for (const row of this.nextElementSibling.tBodies[0].rows)"
    " row.hidden = !row.textContent.toLowerCase().includes(this.value.toLowerCase())"
)


def of_diagnostic(diagnostic: Diagnostic) -> str:
    """The message, the text with the failed span underlined, and the hints."""
    text, start, end = diagnostic.text, diagnostic.start, diagnostic.start + diagnostic.length
    wrong = text[start:end] or "\N{NO-BREAK SPACE}"
    marked = f'{escape(text[:start])}<span style="{_WRONG}">{escape(wrong)}</span>{escape(text[end:])}'
    hints = "".join(f"<p>{escape(hint)}</p>" for hint in diagnostic.hints)
    return f"<div><p>{escape(diagnostic.message)}</p><pre>{marked}</pre>{hints}</div>"


def of_variables(variables: Mapping[str, object]) -> str:
    """A table of names and values."""
    return _table(("name", "value"), ((name, str(value)) for name, value in variables.items()))


def of_vocabulary(items: Iterable[VocabularyItem]) -> str:
    """A search field, and below it a table of all items."""
    rows = ((item.help or item.symbol, item.description, item.family) for item in items)
    field = f'<input type="search" placeholder="search" oninput="{escape(_SEARCH)}">'
    return f"<div>{field}{_table(('usage', 'what it does', 'family'), rows)}</div>"


def _table(header: tuple[str, ...], rows: Iterable[tuple[str, ...]]) -> str:
    head = "".join(f"<th>{escape(cell)}</th>" for cell in header)
    body = "".join(
        "<tr>" + "".join(f"<td>{f'<code>{escape(cell)}</code>' if index == 0 else escape(cell)}</td>"
                         for index, cell in enumerate(row)) + "</tr>"
        for row in rows
    )
    return f"<table><thead><tr>{head}</tr></thead><tbody>{body}</tbody></table>"
