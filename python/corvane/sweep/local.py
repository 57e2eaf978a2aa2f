"""Processes of this machine under Dask, which imports this module in each of them: they take little of the processor for
themselves, and nobody hears of what they meet while they are interrupted or closed."""

from __future__ import annotations

import asyncio
import contextlib
import logging
from typing import Any, Callable, Iterator

from .interrupts import Interruption, deaf

__all__ = ["dask_setup", "processes"]

_FRUGAL = {  # otherwise 6 % of two cores that have nothing to do, measured; with it 1.4 %
    "distributed.worker.profile.enabled": False,
    "distributed.admin.tick.interval": "200ms",
    "distributed.worker.memory.monitor-interval": "500ms",
}
_CLOSING = ("closing_gracefully", "closing", "closed")


@contextlib.contextmanager
def processes(n: int, interruption: Interruption) -> Iterator[Any]:
    """A client of n processes with one thread each. They do not hear Ctrl-C: they end with this one."""
    import dask
    from distributed import Client, LocalCluster, Nanny

    class Patient(Nanny):
        """A worker that has been killed ends, even where that takes longer than its nanny waits: a busy machine."""

        async def kill(self, *args: Any, **named: Any) -> None:
            with contextlib.suppress(asyncio.TimeoutError):
                await super().kill(*args, **named)

    preload = [*dask.config.get("distributed.worker.preload"), __name__]
    closing: list[bool] = []
    with contextlib.ExitStack() as stack:
        stack.callback(_unheard_while(lambda: bool(closing or interruption.raised)))
        try:
            with dask.config.set({**_FRUGAL, "distributed.worker.preload": preload}), deaf():
                cluster = stack.enter_context(LocalCluster(
                    n_workers=n, threads_per_worker=1, dashboard_address=None, worker_class=Patient,
                    # its HTTP server, which otherwise wants one certain port
                    scheduler_kwargs={"dashboard": False, "dashboard_address": "127.0.0.1:0"}))  # fmt: skip
            yield stack.enter_context(Client(cluster))
        finally:
            closing.append(True)


def dask_setup(worker: Any) -> None:
    """Called by Dask in each process. Closing cuts off heartbeats and answers under way, which are logged as errors."""
    _unheard_while(lambda: worker.status.name in _CLOSING)


def _unheard_while(closing: Callable[[], bool]) -> Callable[[], None]:
    """Dask, and what is below it, logs nothing meanwhile. Gives what ends that."""

    def heard(record: logging.LogRecord) -> bool:
        return not closing()

    loggers = [logging.getLogger(name) for name in ("distributed", "tornado", "tornado.application", "asyncio")]
    # Filters of a logger do not hold for those below it, filters of its handlers do.
    filtered = [*loggers, *(handler for logger in loggers for handler in logger.handlers)]
    for each in filtered:
        each.addFilter(heard)

    def undo() -> None:
        for each in filtered:
            each.removeFilter(heard)

    return undo
