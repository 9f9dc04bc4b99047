# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""One handle of the library: who may use it, what its callbacks raise, and when it ends.

`Session.call` is the way to every function that takes a handle. It refuses a second thread and a closed handle, lets
out what a callback has raised, and turns a status into an exception.
"""

from __future__ import annotations

import ctypes
import threading
from collections.abc import Callable, Iterable
from typing import Any

from . import _library
from ._errors import error_of_record, error_of_status
from ._library import LIBRARY
from ._values import Value, to_record

Resolver = Callable[[str], Value | None]

_TOLD_BY_DIAGNOSTIC = (_library.PARSING_ERROR, _library.DEFINITION_ERROR, _library.REFUSED)


def utf8(text: object, what: str) -> bytes:
    """The text in the library's encoding; a TypeError where it is none."""
    if not isinstance(text, str):
        raise TypeError(f"{what} is a str, not {type(text).__name__}")
    return text.encode()


class _HostCallbacks:
    """What the library calls. An exception never enters it: it waits in `raised` for the call to return."""

    def __init__(self, resolver: Resolver | None, names: Iterable[str]) -> None:
        self.raised: BaseException | None = None
        self._resolver = resolver
        self._names = names
        self._answered: list[ctypes.Array[ctypes.c_char]] = []
        self.lookup = _library.Lookup(self._look_up) if resolver else _library.Lookup(0)
        self.get_name = _library.GetName(self._get_name)

    def _look_up(self, context: object, name: bytes, length: int, record: Any) -> int:
        assert self._resolver is not None
        try:
            value = self._resolver(name.decode())
            if value is None:
                return _library.LOOKUP_NOT_KNOWN
            record[0] = to_record(value)
            return _library.LOOKUP_FOUND
        except BaseException as error:  # pylint: disable=broad-except
            self.raised = error
            return _library.LOOKUP_REFUSED

    def _get_name(self, context: object, index: int) -> int | None:
        try:
            if index == 0:
                self._answered = [ctypes.create_string_buffer(utf8(name, "a name")) for name in self._names]
            return ctypes.addressof(self._answered[index]) if index < len(self._answered) else None
        except BaseException as error:  # pylint: disable=broad-except
            self.raised = error
            return None


class Session:
    """Owns a handle."""

    def __init__(self, resolver: Resolver | None = None, names: Iterable[str] = ()) -> None:
        self._handle = ctypes.c_void_p()
        self._destroy = LIBRARY.mathexpr_destroy  # the module may be gone when the interpreter ends
        self._callbacks = _HostCallbacks(resolver, names)
        self.text = b""  # compiled last, whether or not it compiles
        self.lock = threading.RLock()
        options = _library.Options(lookup=self._callbacks.lookup, get_name=self._callbacks.get_name)
        status = LIBRARY.mathexpr_create_utf8(ctypes.byref(options), ctypes.byref(self._handle))
        if status != _library.OK:
            raise error_of_status(status)

    def __enter__(self) -> Session:
        """Keeps other threads out for longer than a call, while answers that the handle owns are read."""
        if not self.lock.acquire(blocking=False):
            raise RuntimeError("the expression is in use in another thread; give each thread an expression of its own")
        return self

    def __exit__(self, *exception: object) -> None:
        self.lock.release()

    def status(self, function: Any, *arguments: object) -> int:
        """Calls a function with the handle. What a callback raised comes out as it is."""
        with self:
            return self._run(function, arguments)

    def call(self, function: Any, *arguments: object) -> None:
        """The same, with an exception for any status but OK."""
        with self:
            self._check(self._run(function, arguments))

    def compile(self, text: bytes) -> None:
        """Compiles a text, which failures then tell about."""
        with self:
            before, self.text = self.text, text
            status = self._run(LIBRARY.mathexpr_set_expression_utf8, (text, len(text)))
            if status != _library.OK and status <= _library.BULK_REFUSED:
                self.text = before  # nothing was changed
            self._check(status)

    def names(self, which: int) -> list[str]:
        """One of the lists of names."""
        with self:
            record = _library.NamesRecord()
            self.call(LIBRARY.mathexpr_get_names_utf8, which, ctypes.byref(record))
            return [record.names[index].decode() for index in range(record.name_count)]

    def close(self) -> None:
        """Destroys the handle; a closed one stays closed."""
        with self:
            if self._handle:
                if self._destroy(self._handle) == _library.BUSY:
                    raise error_of_status(_library.BUSY)
                self._handle = ctypes.c_void_p()

    def __del__(self) -> None:
        if self._handle:
            self._destroy(self._handle)

    def _run(self, function: Any, arguments: tuple[object, ...]) -> int:
        if not self._handle:
            raise ValueError("the expression is closed")
        status: int = function(self._handle, *arguments)
        raised, self._callbacks.raised = self._callbacks.raised, None
        if raised is not None:
            raise raised
        return status

    def _check(self, status: int) -> None:
        if status in _TOLD_BY_DIAGNOSTIC:
            record = _library.DiagnosticRecord()
            self.call(LIBRARY.mathexpr_get_diagnostic_utf8, ctypes.byref(record))
            raise error_of_record(record, self.text)
        if status != _library.OK:
            raise error_of_status(status)
