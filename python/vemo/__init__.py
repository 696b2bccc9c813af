# SPDX-License-Identifier: MIT
"""The calculator vemo: text with one calculation per line, and what each line gives.

>>> import vemo
>>> with vemo.Engine(language="en", locale="en_US") as engine:
...     result = engine.calculate("width = 5 inch in cm\\nwidth * 2")
>>> print(result[1])
25.4 cm
>>> result[1].number, result[1].unit
(Decimal('25.4'), 'cm')
"""

from ._engine import Completion, Document, Engine
from ._library import Error, NotFetched, TimedOut, Unusable, version
from ._results import Line, Name, Note, Reason, Result, Run

__all__ = [
    "Completion",
    "Document",
    "Engine",
    "Error",
    "Line",
    "Name",
    "Note",
    "NotFetched",
    "Reason",
    "Result",
    "Run",
    "TimedOut",
    "Unusable",
    "version",
]

__version__ = version()
