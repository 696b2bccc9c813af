# SPDX-License-Identifier: MIT
"""The shared library and its functions."""

from __future__ import annotations

import ctypes
import os
from ctypes import c_bool, c_char_p, c_int, c_int64, c_size_t, c_void_p
from typing import Any


class Error(Exception):
    """Something the calculator can't do. ``status`` is the number that C programs see."""

    status = 9


class Unusable(Error, ValueError):
    """An argument that is no use: an unknown locale, a folder that is none, rates that can't be read."""


class NotFetched(Error, OSError):
    """Rates or places that did not come."""


class TimedOut(Error, TimeoutError):
    """An answer that did not come in time."""


class Text(ctypes.Structure):
    _fields_ = [("data", c_void_p), ("length", c_size_t)]

    def string(self) -> str | None:
        """None where there is no text."""
        if self.data is None:
            return None
        return ctypes.string_at(self.data, self.length).decode("utf-8", "replace")


class RunRecord(ctypes.Structure):
    _fields_ = [("text", Text), ("type", Text)]


class NoteRecord(ctypes.Structure):
    _fields_ = [("kind", Text), ("start", c_size_t), ("length", c_size_t), ("message", Text)]


class NameRecord(ctypes.Structure):
    _fields_ = [("name", Text), ("start", c_size_t), ("length", c_size_t), ("defines", c_bool)]


ANSWERED = ctypes.CFUNCTYPE(None, c_void_p)

_OK = 0
_CLASSES: dict[int, type[Error]] = {1: Unusable, 2: Unusable, 3: Unusable, 4: NotFetched, 5: TimedOut}

# What each function gives and takes, without the prefix of all names.
_LINE = [c_void_p, c_size_t]
_ENTRY = [c_void_p, c_size_t, c_size_t]
_SIGNATURES: dict[str, tuple[Any, list[Any]]] = {
    "version": (c_char_p, []),
    "options_create": (c_void_p, []),
    "options_destroy": (None, [c_void_p]),
    "options_set_precision": (c_int, [c_void_p, c_int]),
    "options_set_now": (c_int, [c_void_p, c_int64]),
    "engine_create": (c_void_p, [c_void_p]),
    "engine_destroy": (None, [c_void_p]),
    "engine_log": (Text, [c_void_p]),
    "engine_calculate": (c_void_p, [c_void_p, c_char_p, c_size_t]),
    "engine_take_rates": (c_int, [c_void_p, c_char_p, c_size_t]),
    "engine_take_coins": (c_int, [c_void_p, c_char_p, c_size_t]),
    "engine_wait": (c_int, [c_void_p, c_int]),
    "engine_complete": (c_void_p, [c_void_p, c_char_p, c_size_t, c_size_t, c_size_t]),
    "completions_destroy": (None, [c_void_p]),
    "completions_count": (c_size_t, [c_void_p]),
    "completions_start": (c_size_t, [c_void_p]),
    "completions_text": (Text, _LINE),
    "completions_kind": (Text, _LINE),
    "document_create": (c_void_p, [c_void_p, c_void_p, c_void_p]),
    "document_destroy": (None, [c_void_p]),
    "document_set_text": (c_int, [c_void_p, c_char_p, c_size_t]),
    "document_latest": (c_void_p, [c_void_p]),
    "document_wait": (c_void_p, [c_void_p, c_int]),
    "result_destroy": (None, [c_void_p]),
    "result_line_count": (c_size_t, [c_void_p]),
    "result_milliseconds": (c_bool, [c_void_p, c_size_t, ctypes.POINTER(c_int64)]),
    "result_run_count": (c_size_t, _LINE),
    "result_run": (RunRecord, _ENTRY),
    "result_note_count": (c_size_t, _LINE),
    "result_note": (NoteRecord, _ENTRY),
    "result_name_count": (c_size_t, _LINE),
    "result_name": (NameRecord, _ENTRY),
    "result_log": (Text, [c_void_p]),
    "result_total": (Text, [c_void_p]),
    "result_total_short": (Text, [c_void_p]),
    "result_total_is_partial": (c_bool, [c_void_p]),
    "result_formatted": (Text, [c_void_p, c_int]),
}
for _setting in ("language", "locale", "time_zone", "extensions", "caches", "rates", "coins", "places"):
    _SIGNATURES[f"options_set_{_setting}"] = (c_int, [c_void_p, c_char_p])
for _part in ("text", "regular", "short", "number", "unit", "instant", "zone", "reason_code", "reason", "reading"):
    _SIGNATURES[f"result_{_part}"] = (Text, _LINE)

_library = ctypes.CDLL(os.environ.get("VEMO_LIBRARY", "libvemo.so.0"))
_last_status = _library.vemo_last_status
_last_status.restype = c_int
_last_error = _library.vemo_last_error
_last_error.restype = c_char_p
_functions: dict[str, Any] = {}
for _name, (_gives, _takes) in _SIGNATURES.items():
    _function = getattr(_library, f"vemo_{_name}")
    _function.restype = _gives
    _function.argtypes = _takes
    _functions[_name] = _function


def call(name: str, *arguments: Any) -> Any:
    """What the function gives; an error of it is raised."""
    answer = _functions[name](*arguments)
    status = _last_status()
    if status == _OK:
        return answer
    error = _CLASSES.get(status, Error)((_last_error() or b"").decode("utf-8", "replace"))
    error.status = status
    raise error


def destroy(name: str, handle: int, needed: object = None) -> None:
    """Destroys an object, for which something else is needed until then. Safe for a finalizer."""
    _functions[name](handle)


def version() -> str:
    """The version of the library, such as "1.2.3"."""
    text: bytes = call("version")
    return text.decode()
