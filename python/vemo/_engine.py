# SPDX-License-Identifier: MIT
"""Engines and documents."""

from __future__ import annotations

import ctypes
import json
import os
import weakref
from collections.abc import Callable, Mapping
from dataclasses import dataclass
from datetime import datetime, timedelta, timezone
from decimal import Decimal
from types import TracebackType
from typing import Union

from ._library import ANSWERED, Error, call, destroy
from ._results import Result

Rates = Mapping[str, Union[Decimal, int, float, str]]

_EPOCH = datetime(1970, 1, 1, tzinfo=timezone.utc)
_LONGEST = 2**31 - 1


@dataclass(frozen=True)
class Completion:
    """What the text from ``start`` to the place that was asked for may become."""

    text: str
    kind: str
    start: int


def _callback(answered: Callable[[], object]) -> ctypes._FuncPointer:
    return ANSWERED(lambda _: answered())


def _milliseconds(seconds: float) -> int:
    return min(max(round(seconds * 1000), 0), _LONGEST)


def _rates_text(rates: Rates | str) -> bytes:
    if isinstance(rates, str):
        return rates.encode()
    # Decimal numbers stay what they are: as text they would be none, and as floats others.
    entries = ", ".join(f"{json.dumps(code)}: {Decimal(str(rate))}" for code, rate in rates.items())
    return f'{{"rates": {{{entries}}}}}'.encode()


class _Closing:
    """What has a handle that is destroyed at the end of a ``with``, by ``close``, or with the object."""

    def __init__(self, handle: int, destroyer: str, needed: object = None) -> None:
        self._open: int | None = handle
        self._finalizer = weakref.finalize(self, destroy, destroyer, handle, needed)

    @property
    def _handle(self) -> int:
        if self._open is None:
            raise Error(f"this {type(self).__name__.lower()} is closed")
        return self._open

    def close(self) -> None:
        """Lets go of it. Closing twice is no error."""
        self._open = None
        self._finalizer()

    def __exit__(
        self, kind: type[BaseException] | None, error: BaseException | None, trace: TracebackType | None
    ) -> None:
        self.close()


class Document(_Closing):
    """A text that changes. It is calculated beside the program whenever it is set, and again when what its lines depend on
    changed: the minute, rates, places. Made by ``Engine.document``."""

    def __init__(self, engine: int, answered: Callable[[], object] | None) -> None:
        callback = None if answered is None else _callback(answered)
        address = None if callback is None else ctypes.cast(callback, ctypes.c_void_p)
        super().__init__(call("document_create", engine, address, None), "document_destroy", callback)

    def __enter__(self) -> Document:
        return self

    def set_text(self, text: str) -> None:
        """Has a text calculated in place of the one before. Returns at once."""
        encoded = text.encode()
        call("document_set_text", self._handle, encoded, len(encoded))

    def latest(self) -> Result | None:
        """The latest result there is."""
        handle = call("document_latest", self._handle)
        return None if handle is None else Result(handle)

    def wait(self, seconds: float | None = None) -> Result:
        """The result of the text as it is. TimedOut is raised where that takes longer."""
        return Result(call("document_wait", self._handle, -1 if seconds is None else _milliseconds(seconds)))


class Engine(_Closing):
    """A calculator. What is left out is as the system has it, and nothing is fetched without a URL.

    ``language`` is that of the words ("de"), ``locale`` that of the numbers ("de_DE"), ``time_zone`` a name such as
    "Europe/Berlin", ``precision`` the most fraction digits that are shown. ``now`` stops the clock; without a time zone it is
    the system's time. ``rates`` and ``coins`` are amounts per US dollar by code, or the URL of them; ``places`` is the URL of a
    service for time zones of places. ``extensions`` is a folder of user scripts, ``caches`` one for what is fetched.

    Any thread may use it. Calls wait for each other; documents are calculated beside them.
    """

    def __init__(
        self,
        *,
        language: str | None = None,
        locale: str | None = None,
        time_zone: str | None = None,
        precision: int | None = None,
        now: datetime | None = None,
        rates: Rates | str | None = None,
        coins: Rates | str | None = None,
        places: str | None = None,
        extensions: str | os.PathLike[str] | None = None,
        caches: str | os.PathLike[str] | None = None,
    ) -> None:
        texts = {"language": language, "locale": locale, "time_zone": time_zone, "places": places}
        texts.update({"rates": rates} if isinstance(rates, str) else {})
        texts.update({"coins": coins} if isinstance(coins, str) else {})
        folders = {"extensions": extensions, "caches": caches}
        texts.update({name: os.fspath(folder) for name, folder in folders.items() if folder is not None})
        options = call("options_create")
        try:
            for name, text in texts.items():
                if text is not None:
                    call(f"options_set_{name}", options, text.encode())
            if precision is not None:
                call("options_set_precision", options, precision)
            if now is not None:
                call("options_set_now", options, (now.astimezone(timezone.utc) - _EPOCH) // timedelta(milliseconds=1))
            super().__init__(call("engine_create", options), "engine_destroy")
        finally:
            destroy("options_destroy", options)
        try:
            if rates is not None and not isinstance(rates, str):
                self.take_rates(rates)
            if coins is not None and not isinstance(coins, str):
                self.take_coins(coins)
        except BaseException:
            self.close()
            raise

    def __enter__(self) -> Engine:
        return self

    def calculate(self, text: str) -> Result:
        """Calculates a text of one calculation per line."""
        encoded = text.encode()
        return Result(call("engine_calculate", self._handle, encoded, len(encoded)))

    def document(self, text: str = "", answered: Callable[[], object] | None = None) -> Document:
        """A text that will change. ``answered`` is called after each calculation, on the engine's thread."""
        document = Document(self._handle, answered)
        document.set_text(text)
        return document

    def complete(self, text: str, position: int | None = None, most: int = 20) -> list[Completion]:
        """What the word before the position, or at the end of the text, may become; the best come first."""
        encoded = text.encode()
        place = len(encoded) if position is None else len(text[:position].encode())
        handle = call("engine_complete", self._handle, encoded, len(encoded), place, max(most, 0))
        try:
            start = len(encoded[: call("completions_start", handle)].decode())
            return [
                Completion(
                    call("completions_text", handle, i).string() or "",
                    call("completions_kind", handle, i).string() or "",
                    start,
                )
                for i in range(call("completions_count", handle))
            ]
        finally:
            destroy("completions_destroy", handle)

    def take_rates(self, rates: Rates | str) -> None:
        """Takes exchange rates per US dollar: by code, or as the JSON text of a file of rates."""
        text = _rates_text(rates)
        call("engine_take_rates", self._handle, text, len(text))

    def take_coins(self, rates: Rates | str) -> None:
        """The same for crypto-currencies."""
        text = _rates_text(rates)
        call("engine_take_coins", self._handle, text, len(text))

    def wait(self, seconds: float = 10) -> None:
        """Waits for what is being fetched: rates, and the places of the latest calculation."""
        call("engine_wait", self._handle, _milliseconds(seconds))

    @property
    def log(self) -> str:
        """What loading the user scripts said."""
        return call("engine_log", self._handle).string() or ""
