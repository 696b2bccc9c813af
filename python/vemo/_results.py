# SPDX-License-Identifier: MIT
"""What calculated lines gave."""

from __future__ import annotations

import re
import weakref
import zoneinfo
from collections.abc import Iterator, Sequence
from ctypes import byref, c_int64
from dataclasses import dataclass
from datetime import datetime, timedelta, timezone, tzinfo
from decimal import Decimal
from typing import Any, Literal, overload

from ._library import call, destroy

Format = Literal["text", "csv", "tsv", "markdown", "html", "json"]

_FORMATS: dict[str, int] = {"text": 0, "csv": 1, "tsv": 2, "markdown": 3, "html": 4, "json": 5}
_EPOCH = datetime(1970, 1, 1, tzinfo=timezone.utc)


@dataclass(frozen=True)
class Run:
    """A piece of a line for colouring. ``type`` is "num", "unit", "var" and so on, None for plain text."""

    text: str
    type: str | None


@dataclass(frozen=True)
class Note:
    """A remark on ``line.text[start:end]``: what took no part in the result, or was read in an unexpected way."""

    kind: str
    start: int
    end: int
    message: str

    def __str__(self) -> str:
        return self.message


@dataclass(frozen=True)
class Reason:
    """Why a line that asks for a result has none."""

    code: str
    message: str

    def __str__(self) -> str:
        return self.message


@dataclass(frozen=True)
class Name:
    """A name that a line uses, or defines, at ``line.text[start:end]``."""

    name: str
    start: int
    end: int
    defines: bool


def _zone(identifier: str) -> tzinfo:
    """A fixed offset is written as GMT+05:30."""
    offset = re.fullmatch(r"GMT([+-])(\d\d):?(\d\d)(?::?(\d\d))?", identifier)
    if offset:
        sign, hours, minutes, seconds = offset.groups()
        delta = timedelta(hours=int(hours), minutes=int(minutes), seconds=int(seconds or 0))
        return timezone(-delta if sign == "-" else delta)
    try:
        return zoneinfo.ZoneInfo(identifier)
    except (zoneinfo.ZoneInfoNotFoundError, ValueError, OSError):
        return timezone.utc


class _Handle:
    """A result of the library, destroyed with the last object that needs it."""

    def __init__(self, handle: int) -> None:
        self.handle = handle
        weakref.finalize(self, destroy, "result_destroy", handle)


class Line:
    """A line and what it gave. As text it is its result, or nothing."""

    def __init__(self, result: _Handle, index: int) -> None:
        self._result = result
        self._index = index

    def _text(self, part: str) -> str | None:
        text: str | None = call(f"result_{part}", self._result.handle, self._index).string()
        return text

    @property
    def text(self) -> str:
        """The line as it was written."""
        return self._text("text") or ""

    @property
    def result(self) -> str | None:
        """The result as people read it, such as "12.7 cm"."""
        return self._text("regular")

    @property
    def short(self) -> str | None:
        """The result in its short form where there is one, such as "1.5M"."""
        return self._text("short")

    @property
    def number(self) -> Decimal | None:
        """The exact number of the result; None for a date and for no result."""
        text = self._text("number")
        return None if text is None else Decimal(text)

    @property
    def unit(self) -> str | None:
        """The identifier of the number's unit, such as "cm", "USD" or "percent"."""
        return self._text("unit")

    @property
    def instant(self) -> datetime | None:
        """The result that is a date or a time, in the time zone that it is shown in."""
        milliseconds = c_int64()
        if not call("result_milliseconds", self._result.handle, self._index, byref(milliseconds)):
            return None
        return (_EPOCH + timedelta(milliseconds=milliseconds.value)).astimezone(_zone(self._text("zone") or "GMT+00:00"))

    @property
    def value(self) -> Decimal | datetime | None:
        """The number or the instant, whichever it is."""
        number = self.number
        return self.instant if number is None else number

    @property
    def reason(self) -> Reason | None:
        """Why there is no result, where the line asks for one."""
        code = self._text("reason_code")
        return None if code is None else Reason(code, self._text("reason") or "")

    @property
    def reading(self) -> str | None:
        """The line as it was calculated, with all brackets. Asks the engine again, which must not be closed."""
        return self._text("reading")

    @property
    def runs(self) -> tuple[Run, ...]:
        """The line in pieces, whose texts join to it."""
        records = self._records("run")
        return tuple(Run(record.text.string() or "", record.type.string()) for record in records)

    @property
    def notes(self) -> tuple[Note, ...]:
        """Remarks on parts of the line; on most lines none."""
        return tuple(
            Note(record.kind.string(), *self._range(record), record.message.string()) for record in self._records("note")
        )

    @property
    def names(self) -> tuple[Name, ...]:
        """The names that the line defines and uses, from the left to the right."""
        return tuple(
            Name(record.name.string(), *self._range(record), record.defines) for record in self._records("name")
        )

    def _records(self, kind: str) -> list[Any]:
        handle = self._result.handle
        count = call(f"result_{kind}_count", handle, self._index)
        return [call(f"result_{kind}", handle, self._index, i) for i in range(count)]

    def _range(self, record: Any) -> tuple[int, int]:
        """In characters; the library counts bytes."""
        encoded = self.text.encode()
        end = record.start + record.length
        return len(encoded[: record.start].decode("utf-8", "replace")), len(encoded[:end].decode("utf-8", "replace"))

    def __str__(self) -> str:
        return self.result or ""

    def __repr__(self) -> str:
        return f"<Line {self.text!r}: {self.result!r}>"

    def __bool__(self) -> bool:
        """True where there is a result, even if that is 0."""
        return self.result is not None


class Result(Sequence[Line]):
    """The lines of a text that was calculated. As text it is a table, like that of the command."""

    def __init__(self, handle: int) -> None:
        self._handle = _Handle(handle)
        self._count: int = call("result_line_count", handle)

    def __len__(self) -> int:
        return self._count

    @overload
    def __getitem__(self, index: int) -> Line: ...
    @overload
    def __getitem__(self, index: slice) -> list[Line]: ...
    def __getitem__(self, index: int | slice) -> Line | list[Line]:
        if isinstance(index, slice):
            return [Line(self._handle, i) for i in range(*index.indices(self._count))]
        if index < 0:
            index += self._count
        if not 0 <= index < self._count:
            raise IndexError("there is no such line")
        return Line(self._handle, index)

    def __iter__(self) -> Iterator[Line]:
        return (Line(self._handle, i) for i in range(self._count))

    @property
    def total(self) -> str | None:
        """The grand total of the lines; None where nothing can be added."""
        text: str | None = call("result_total", self._handle.handle).string()
        return text

    @property
    def total_is_partial(self) -> bool:
        """True where the results of some lines could not be added."""
        return bool(call("result_total_is_partial", self._handle.handle))

    @property
    def log(self) -> str:
        """What user scripts said meanwhile."""
        return call("result_log", self._handle.handle).string() or ""

    def formatted(self, form: Format = "text") -> str:
        """All lines with their results, as the command writes them in this format."""
        if form not in _FORMATS:
            raise ValueError(f"{form!r} is none of {', '.join(_FORMATS)}")
        return call("result_formatted", self._handle.handle, _FORMATS[form]).string() or ""

    def __str__(self) -> str:
        return self.formatted().rstrip("\n")

    def __repr__(self) -> str:
        return f"<Result of {self._count} lines, total {self.total!r}>"
