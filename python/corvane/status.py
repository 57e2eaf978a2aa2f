"""What became of every element of an array."""

from __future__ import annotations

import enum
from typing import Any

from ._native import EquilibriumError
from ._numpy import np


class Status(enum.IntEnum):
    """Why an element is not-a-number. ``OK`` where it is not."""

    OK = 0
    NO_SOLUTION = 1  #: the search was complete and says that there is none
    GAVE_UP = 2  #: nothing is known about a solution
    INVALID = 3  #: an argument is out of range or not finite
    NO_IDEAL_GAS_DATA = 4  #: h, s, u … of a substance without heat capacities
    SEVERAL = 5  #: more than one state has these values
    INTERRUPTED = 6  #: not computed: Ctrl-C came first
    NOT_TABULATED = 7  #: outside a table of properties, or in one of its gaps


class Interrupted(KeyboardInterrupt):
    """Ctrl-C during an array. ``partial`` holds the result with what was done before it."""

    def __init__(self, partial: Any):
        super().__init__("interrupted; what is done is in .partial")
        self.partial = partial


def code_of(argument: str, given: str, codes: dict[str, int]) -> int:
    """The library's code of a word that an argument takes."""
    if given not in codes:
        raise ValueError(f"{argument} is {', '.join(repr(word) for word in codes)}, not {given!r}")
    return codes[given]


def judge(result: Any, status: np.ndarray | int, words: str, finished: bool, errors: str | None) -> Any:
    """The result, or the exception that stands for it.

    errors: "raise", "nan", or None: raise for a single state, not-a-number within arrays.
    """
    single = isinstance(status, int)
    if errors not in (None, "raise", "nan"):
        raise ValueError('errors is "raise", "nan" or None')
    if not finished:
        raise Interrupted(result)
    if errors == "nan" or (status == 0 if single else (errors is None and status.ndim > 0) or not np.any(status)):
        return result
    worst = Status(status if single else int(status.ravel()[np.flatnonzero(status)[0]]))
    known = worst in (Status.NO_SOLUTION, Status.GAVE_UP)
    raise (EquilibriumError if known else ValueError)(words)
