"""Ctrl-C that is not lost: Python drops what a handler raises in a destructor or in a callback of weak references."""

from __future__ import annotations

import contextlib
import multiprocessing.resource_tracker
import signal
import sys
import threading
from typing import Any, Iterator

__all__ = ["Interruption", "deaf", "heard"]


class Interruption:
    """What the handler of Ctrl-C has raised, once it has."""

    def __init__(self) -> None:
        self.raised: list[BaseException] = []

    def ask(self) -> None:
        if self.raised:
            raise self.raised[0].with_traceback(None)


def _here() -> Any:
    """The handler of Ctrl-C, where this thread may change it and it is one of Python."""
    before = signal.getsignal(signal.SIGINT)
    return before if threading.current_thread() is threading.main_thread() else None


@contextlib.contextmanager
def heard() -> Iterator[Interruption]:
    """Ctrl-C interrupts as before, and what its handler raises is kept: whoever asks raises it again, and so does the end,
    whatever became of it between."""
    before, interruption = _here(), Interruption()

    def handler(number: int, frame: Any) -> None:
        try:
            before(number, frame)
        except BaseException as e:
            interruption.raised.append(e)
            raise

    def unless_kept(lost: Any) -> None:
        if lost.exc_value not in interruption.raised:
            hook(lost)

    if not callable(before):  # ignored, or none of ours
        yield interruption
        return
    signal.signal(signal.SIGINT, handler)
    hook, sys.unraisablehook = sys.unraisablehook, unless_kept
    try:
        yield interruption
    except BaseException as e:
        raised = interruption.raised
        if raised and not isinstance(e, type(raised[0])):  # what others made of it
            raise raised[0].with_traceback(None) from e
        raise
    else:
        interruption.ask()
    finally:
        signal.signal(signal.SIGINT, before)
        sys.unraisablehook = hook


@contextlib.contextmanager
def deaf() -> Iterator[None]:
    """Processes and threads that begin meanwhile, and all that they begin, do not hear Ctrl-C, which a terminal sends to all
    processes. It comes to this thread afterwards."""
    # It would clear the mask of the thread that starts the first process.
    multiprocessing.resource_tracker.ensure_running()
    before = signal.pthread_sigmask(signal.SIG_BLOCK, {signal.SIGINT})
    try:
        yield
    finally:
        signal.pthread_sigmask(signal.SIG_SETMASK, before)
