"""The bar of progress that long arrays show: tqdm's, if it is installed."""

from __future__ import annotations

from typing import Any


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
    """A bar for n elements. Raises ImportError without tqdm; the extension module then goes on without."""
    from tqdm import tqdm

    return _Bar(tqdm, n)
