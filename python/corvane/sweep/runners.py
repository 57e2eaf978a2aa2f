"""Who computes the partitions: threads of this process, or Dask."""

from __future__ import annotations

import asyncio
import concurrent.futures
import contextlib
import errno
import os
import pathlib
import queue
import time
from typing import Any, Callable, Iterator, NamedTuple

from .interrupts import Interruption
from .local import processes
from .plan import Plan
from .tasks import Mismatch

__all__ = ["Lost", "Outcome", "runner"]

_NO_ROOM = (errno.ENOSPC, errno.EDQUOT, errno.EROFS, errno.EACCES)
_PATIENCE = 20.0  # seconds without the scheduler
_GONE = "the scheduler does not answer"


class Lost(RuntimeError):
    """The scheduler does not answer."""


class Outcome(NamedTuple):
    """What became of a partition: info, or in words why not; fatal: no other partition will do better."""

    k: int
    info: dict[str, Any] | None
    error: str
    fatal: bool
    worker: str
    seconds: float


_plans: dict[tuple[str, str], Plan] = {}  # of this process


def _plan(folder: str, identity: str) -> Plan:
    key = folder, identity
    if key not in _plans:
        plan = Plan.read(pathlib.Path(folder))
        plan.load()
        if len(_plans) > 8:  # a worker that lives through many sweeps
            _plans.clear()
        _plans[key] = plan
    return _plans[key]


def _outcome(plan: Callable[[], Plan], k: int, worker: str) -> Outcome:
    start = time.perf_counter()
    try:
        return Outcome(k, plan().compute(k), "", False, worker, time.perf_counter() - start)
    except Exception as e:
        fatal = isinstance(e, Mismatch) or (isinstance(e, OSError) and e.errno in _NO_ROOM)
        words = f"{type(e).__name__}: {e}"
        return Outcome(k, None, words, fatal, worker, time.perf_counter() - start)


def _compute(folder: str, identity: str, k: int) -> Outcome:
    from distributed import get_worker

    return _outcome(lambda: _plan(folder, identity), k, get_worker().address)


class _Threads:
    """``submit(k, avoid)`` and ``next(timeout)``; ``slots`` partitions at once."""

    def __init__(self, plan: Plan, n: int):
        plan.load()
        self.slots, self._plan, self._done = n, plan, queue.SimpleQueue()
        self._pool = concurrent.futures.ThreadPoolExecutor(n, thread_name_prefix="sweep")

    def submit(self, k: int, avoid: str | None = None) -> None:
        self._pool.submit(self._run, k)

    def _run(self, k: int) -> None:
        self._done.put(_outcome(lambda: self._plan, k, "this process"))

    def next(self, timeout: float) -> Outcome | None:
        try:
            return self._done.get(timeout=timeout)
        except queue.Empty:
            return None

    def close(self) -> None:
        self._pool.shutdown(wait=True, cancel_futures=True)


class _Dask:
    def __init__(self, plan: Plan, client: Any):
        import distributed

        class Loads(distributed.WorkerPlugin):
            """Model, design and version are there, and right, before the first partition comes."""

            name = f"corvane-sweep-{plan.identity}"
            folder, identity = str(plan.folder), plan.identity

            def setup(self, worker: Any) -> None:
                _plan(self.folder, self.identity)

        self._client, self._plan, self._done, self._lost = client, plan, queue.SimpleQueue(), None
        self._futures: dict[int, Any] = {}
        self._attempt: dict[int, int] = {}
        client.register_plugin(Loads())
        self._counted = -1e9
        self._slots = 1

    @property
    def slots(self) -> int:
        """Workers come and go."""
        if time.monotonic() - self._counted > 5.0 and self._client.status == "running":
            self._counted = time.monotonic()
            self._slots = sum(self._threads().values()) or self._slots
        return self._slots

    def _threads(self) -> dict[str, int]:
        """Of each worker; none where the scheduler does not answer, which the client notices later."""
        try:
            return self._client.nthreads()
        except OSError:
            return {}

    def submit(self, k: int, avoid: str | None = None) -> None:
        self._attempt[k] = self._attempt.get(k, -1) + 1
        elsewhere = [w for w in self._threads() if w != avoid] if avoid else None
        try:
            future = self._client.submit(
                _compute, str(self._plan.folder), self._plan.identity, k, pure=False, workers=elsewhere or None,
                allow_other_workers=bool(elsewhere), key=f"sweep-{self._plan.identity}-{k}-{self._attempt[k]}",
            )  # fmt: skip
        except Exception as e:
            if self._client.status != "closed":
                raise
            raise Lost(_GONE) from e
        self._futures[k] = future
        future.add_done_callback(lambda f: self._done.put((k, f)))

    def next(self, timeout: float) -> Outcome | None:
        try:
            k, future = self._done.get(timeout=timeout)
        except queue.Empty:
            k = None
        if self._client.status == "running":
            self._lost = None
        elif self._lost is None:
            self._lost = time.monotonic()
        elif time.monotonic() - self._lost > _PATIENCE or self._client.status == "closed":
            raise Lost(_GONE)
        if k is None or self._futures.get(k) is not future:
            return None
        if future.status in ("cancelled", "lost") and self._client.status != "running":
            return None  # either it comes back, and with it the answer, or we give up above
        if future.status == "finished":
            try:
                outcome = future.result()
            except (OSError, concurrent.futures.CancelledError, asyncio.CancelledError):
                # The scheduler died between the answer and its fetching, which the client will notice.
                self._done.put((k, future))
                time.sleep(0.05)
                return None
            del self._futures[k]
            return outcome
        del self._futures[k]
        if future.status == "error":  # its workers died: what it raises itself is in its outcome
            error = future.exception()
            return Outcome(k, None, f"{type(error).__name__}: {error}".split("\n")[0], False, "", 0.0)
        return Outcome(k, None, "the scheduler forgot it", False, "", 0.0)

    def close(self) -> None:
        with contextlib.suppress(Exception):
            self._client.cancel(list(self._futures.values()), force=True)


@contextlib.contextmanager
def runner(plan: Plan, scheduler: Any, interruption: Interruption) -> Iterator[_Threads | _Dask]:
    """``"threads"``, ``"threads:N"``, ``"local:N"`` (N processes by Dask), the address of a Dask scheduler, or a
    ``distributed.Client``."""
    with contextlib.ExitStack() as stack:
        kind, _, count = scheduler.partition(":") if isinstance(scheduler, str) else ("", "", "")
        if kind == "threads":
            of: _Threads | _Dask = _Threads(plan, _count(count, scheduler) if count else os.cpu_count() or 1)
        else:
            try:
                from distributed import Client
            except ImportError as e:
                raise ImportError(f"{scheduler}: that needs Dask (pip install 'corvane[dask]'); threads:N does without") from e
            client = scheduler
            if kind == "local":
                n = _count(count, scheduler) if count else os.cpu_count() or 1
                client = stack.enter_context(processes(n, interruption))
            elif isinstance(scheduler, str):
                try:
                    client = stack.enter_context(Client(scheduler, timeout=_PATIENCE))
                except OSError as e:
                    raise Lost(f"no scheduler at {scheduler}: {e}") from None
            of = _Dask(plan, client)
        stack.callback(of.close)
        yield of


def _count(text: str, scheduler: str) -> int:
    if not text.isdigit() or int(text) < 1:
        raise ValueError(f"{scheduler}: give a positive number of workers")
    return int(text)
