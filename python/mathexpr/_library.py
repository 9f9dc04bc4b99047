# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""The shared library and the part of its C interface that the package calls.

In: nothing; the library is the one that the package was built with, or the one that MATHEXPR_LIBRARY names. Out:
`LIBRARY`, whose functions are declared, the structures that they take, and the numbers of mathexpr.h. Everything is
private to the package, and nothing here decides what a status means.
"""

from __future__ import annotations

import ctypes
import os
from ctypes import (
    CFUNCTYPE,
    POINTER,
    Structure,
    c_char_p,
    c_double,
    c_int32,
    c_size_t,
    c_ssize_t,
    c_uint8,
    c_uint16,
    c_uint32,
    c_void_p,
)
from pathlib import Path

ABI_VERSION = 1
ANY_ARG_COUNT = 0xFFFFFFFF
EXACT_DIGITS = 0
VALUE_TEXT_CAPACITY = 1024

# mathexpr_status
OK = 0
BUSY = 4
ZERO_IN_TEXT = 7
NOT_FOUND = 11
BULK_REFUSED = 12
PARSING_ERROR = 20
DEFINITION_ERROR = 21
REFUSED = 22
NO_PROGRAM = 23
HOST_CALLBACK_REFUSED = 31
OUT_OF_MEMORY = 40

# What a look-up answers.
LOOKUP_NOT_KNOWN = 0
LOOKUP_FOUND = 1
LOOKUP_REFUSED = 2

# Kinds of values and of arrays.
NUMBER = 0
POINT = 1
NUMBERS = 0
POINTS = 1
RECORDS = 2

# Lists of names.
NAMES_USED = 0
NAMES_DEFINED = 1
NAMES_OF_HOST = 2

# How a row went, and why nothing was evaluated.
ROW_DONE = 0
ROW_OTHER_KIND = 256
BULK_COLUMN_NAME = 4
BULK_COLUMN_TWICE = 5
BULK_COLUMN_ALIGNMENT = 8
BULK_RESULTS_ALIGNMENT = 12
BULK_RESULTS_OVERLAP = 13


class Record(Structure):
    """mathexpr_value."""

    _fields_ = [
        ("type", c_uint8),
        ("flag", c_uint8),
        ("reserved", c_uint16),
        ("padding", c_uint32),
        ("x", c_double),
        ("y", c_double),
        ("z", c_double),
    ]


class Sized(Structure):
    """A structure whose first member is its size."""

    def __init__(self, **members: object) -> None:
        super().__init__(size=ctypes.sizeof(type(self)), **members)


Lookup = CFUNCTYPE(c_int32, c_void_p, c_char_p, c_size_t, POINTER(Record))
ShowMessage = CFUNCTYPE(None, c_void_p, c_uint32, c_char_p, c_size_t)
GetName = CFUNCTYPE(c_void_p, c_void_p, c_uint32)


class Options(Sized):
    """mathexpr_options_utf8."""

    _fields_ = [
        ("size", c_uint32),
        ("kind", c_uint32),
        ("flags", c_uint32),
        ("reserved", c_uint32),
        ("context", c_void_p),
        ("lookup", Lookup),
        ("show_message", ShowMessage),
        ("get_name", GetName),
    ]


class LimitsRecord(Sized):
    """mathexpr_limits."""

    _fields_ = [("size", c_uint32), ("max_text_length", c_uint32), ("max_records", c_uint32), ("max_nesting", c_uint32)]


class DiagnosticRecord(Sized):
    """mathexpr_diagnostic_utf8."""

    _fields_ = [
        ("size", c_uint32),
        ("message", c_uint32),
        ("kind", c_uint32),
        ("code", c_uint32),
        ("start", c_size_t),
        ("length", c_size_t),
        ("text", c_char_p),
        ("text_length", c_size_t),
        ("item", c_char_p),
        ("item_length", c_size_t),
        ("conflict", c_char_p),
        ("conflict_length", c_size_t),
        ("expected", c_uint32),
        ("arg_count", c_uint32),
        ("accepted_arg_counts", POINTER(c_uint32)),
        ("accepted_count", c_size_t),
        ("suggestions", POINTER(c_char_p)),
        ("suggestion_count", c_size_t),
        ("hints", POINTER(c_char_p)),
        ("hint_count", c_size_t),
        ("fix_start", c_size_t),
        ("fix_length", c_size_t),
        ("fix_replacement", c_char_p),
        ("fix_replacement_length", c_size_t),
    ]


class NamesRecord(Sized):
    """mathexpr_names_utf8."""

    _fields_ = [("size", c_uint32), ("reserved", c_uint32), ("names", POINTER(c_char_p)), ("name_count", c_size_t)]


class NameRefusal(Sized):
    """mathexpr_name_refusal."""

    _fields_ = [("size", c_uint32), ("code", c_uint32), ("start", c_size_t), ("length", c_size_t)]


class VocabularyRecord(Sized):
    """mathexpr_vocabulary_item_utf8."""

    _fields_ = [
        ("size", c_uint32),
        ("kind", c_uint32),
        ("family", c_uint32),
        ("arg_count", c_uint32),
        ("precedence", c_int32),
        ("unary", c_uint32),
        ("constant", c_uint32),
        ("reserved", c_uint32),
        ("value", c_double),
        ("symbol", c_char_p),
        ("help", c_char_p),
        ("description", c_char_p),
    ]


class Column(Sized):
    """mathexpr_column_utf8."""

    _fields_ = [
        ("size", c_uint32),
        ("kind", c_uint32),
        ("name", c_char_p),
        ("name_length", c_size_t),
        ("data", c_void_p),
        ("stride", c_ssize_t),
        ("coordinate_stride", c_ssize_t),
    ]


class Results(Sized):
    """mathexpr_results."""

    _fields_ = [
        ("size", c_uint32),
        ("kind", c_uint32),
        ("data", c_void_p),
        ("stride", c_ssize_t),
        ("coordinate_stride", c_ssize_t),
        ("row_status", c_void_p),
    ]


class Outcome(Sized):
    """mathexpr_bulk_outcome."""

    _fields_ = [
        ("size", c_uint32),
        ("error", c_uint32),
        ("column", c_size_t),
        ("failed_count", c_size_t),
        ("first_failed", c_size_t),
        ("first_status", c_uint32),
        ("reserved", c_uint32),
    ]


_TEXT = (c_char_p, c_size_t)

# The functions that answer a status, with what they take.
_FUNCTIONS = {
    "format_value_utf8": (POINTER(Record), c_uint32, c_char_p, c_size_t, POINTER(c_size_t)),
    "create_utf8": (POINTER(Options), POINTER(c_void_p)),
    "destroy": (c_void_p,),
    "set_expression_utf8": (c_void_p, *_TEXT),
    "evaluate": (c_void_p, POINTER(Record)),
    "drop_assignment": (c_void_p,),
    "set_limits": (c_void_p, POINTER(LimitsRecord)),
    "get_limits": (c_void_p, POINTER(LimitsRecord)),
    "get_diagnostic_utf8": (c_void_p, POINTER(DiagnosticRecord)),
    "get_names_utf8": (c_void_p, c_uint32, POINTER(NamesRecord)),
    "get_variable_utf8": (c_void_p, *_TEXT, POINTER(Record)),
    "set_variable_utf8": (c_void_p, *_TEXT, POINTER(Record), POINTER(NameRefusal)),
    "remove_variable_utf8": (c_void_p, *_TEXT),
    "get_vocabulary_item_utf8": (c_uint32, POINTER(VocabularyRecord)),
    "evaluate_bulk_utf8": (
        c_void_p,
        POINTER(Column),
        c_size_t,
        c_size_t,
        POINTER(Results),
        c_uint32,
        POINTER(Outcome),
    ),
}


def _load() -> ctypes.CDLL:
    path = os.environ.get("MATHEXPR_LIBRARY") or str(Path(__file__).with_name("libmathexpr.so"))
    try:
        library = ctypes.CDLL(path)
        library.mathexpr_abi_version.restype = c_uint32
        found = library.mathexpr_abi_version()
    except (OSError, AttributeError) as error:
        raise ImportError(
            f"mathexpr: {path} is not the shared library ({error}); install the package with pip, "
            "or name the library in MATHEXPR_LIBRARY"
        ) from error
    if found < ABI_VERSION:
        raise ImportError(f"mathexpr: {path} has version {found} of the C interface; {ABI_VERSION} is needed")
    for name in ("mathexpr_status_text", "mathexpr_version_text"):
        getattr(library, name).restype = c_char_p
    library.mathexpr_status_text.argtypes = (c_int32,)
    for name, arguments in _FUNCTIONS.items():
        function = getattr(library, "mathexpr_" + name)
        function.argtypes = arguments
        function.restype = c_int32
    return library


LIBRARY = _load()


def status_text(status: int) -> str:
    """What a status means, for a message."""
    text: bytes = LIBRARY.mathexpr_status_text(status)
    return text.decode("ascii")
