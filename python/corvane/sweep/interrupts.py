"""Ctrl-C that is not lost: Python drops what a handler raises in a destructor or in a callback of weak references."""

from __future__ import annotations

import contextlib
import signal
import sys
import threading
from typing import Any, Callable, Iterator

__all__ = ["deaf", "heard"]


def _here() -> Any:
    """The handler of Ctrl-C, where this thread may change it and it is one of Python."""
    before = signal.getsignal(signal.SIGINT)
    return before if threading.current_thread() is threading.main_thread() else None


@contextlib.contextmanager
def heard() -> Iterator[Callable[[], None]]:
    """Ctrl-C interrupts as before, and what its handler raises is kept: the function that this gives raises it again, and so
    does the end, whatever became of it between."""
    before, raised = _here(), []

    def handler(number: int, frame: Any) -> None:
        try:
            before(number, frame)
        except BaseException as e:
            raised.append(e)
            raise

    def ask() -> None:
        if raised:
            raise raised[0].with_traceback(None)

    def unless_kept(lost: Any) -> None:
        if lost.exc_value not in raised:
            hook(lost)

    if not callable(before):  # ignored, or none of ours
        yield ask
        return
    signal.signal(signal.SIGINT, handler)
    hook, sys.unraisablehook = sys.unraisablehook, unless_kept
    try:
        yield ask
    except BaseException as e:
        if raised and not isinstance(e, type(raised[0])):  # what others made of it
            raise raised[0].with_traceback(None) from e
        raise
    else:
        ask()
    finally:
        signal.signal(signal.SIGINT, before)
        sys.unraisablehook = hook


@contextlib.contextmanager
def deaf() -> Iterator[None]:
    """Processes that begin meanwhile ignore Ctrl-C, which a terminal sends to all: they end with the one that hears it."""
    before = _here()
    if before is None:
        yield
        return
    signal.signal(signal.SIGINT, signal.SIG_IGN)
    try:
        yield
    finally:
        signal.signal(signal.SIGINT, before)
