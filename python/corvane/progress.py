"""The bar of progress that long arrays show: tqdm's, if it is installed."""

from __future__ import annotations

import contextlib
import threading
from typing import Any, Iterator

_this_thread = threading.local()


@contextlib.contextmanager
def quiet() -> Iterator[None]:
    """No bars in this thread: what is a part of something else has none of its own."""
    before = getattr(_this_thread, "quiet", False)
    _this_thread.quiet = True
    try:
        yield
    finally:
        _this_thread.quiet = before


class _Bar:
    def __init__(self, tqdm: Any, n: int):
        # disable=None: in terminals only; the environment variable TQDM_DISABLE=1 turns it off there, too
        self._tqdm, self._done = tqdm(total=n, disable=None, leave=False, unit=" states"), 0

    def show(self, done: int) -> None:
        self._tqdm.update(done - self._done)
        self._done = done

    def close(self) -> None:
        self._tqdm.close()


def bar(n: int) -> _Bar:
    """A bar for n elements. Raises ImportError without tqdm, and where bars are not wanted; the extension module then goes
    on without."""
    if getattr(_this_thread, "quiet", False):
        raise ImportError
    from tqdm import tqdm

    return _Bar(tqdm, n)
