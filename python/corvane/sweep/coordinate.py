"""A sweep from beginning to end: what is there is kept, what is missing computed, what fails tried again elsewhere."""

from __future__ import annotations

import json
import pathlib
import time
from collections import Counter
from typing import Any

from .designs import design_of
from .interrupts import Interruption, heard
from .plan import MANIFEST, Damaged, Plan, PartInfo, locked, pyarrow, write_whole
from .runners import Outcome, runner
from .tasks import Call, Function

__all__ = ["Report", "State", "read", "run", "status"]

_IN_LINE = 3  # partitions per worker thread that are asked for at once: what the scheduler has to know


class Report:
    """What became of a sweep.

    Attributes: partitions, rows (of the design), records (rows of the dataset), failed_rows, by_status (name: records),
    kept and computed (numbers of partitions), repaired (numbers of those whose files were damaged), failed (partition:
    why), seconds, tpd and x_error (worst of the certificates, where the results have them).
    """

    def __init__(self, folder: pathlib.Path, plan: Plan):
        self.folder, self.partitions, self.rows = folder, len(plan), plan.description["total"]
        self.records = self.failed_rows = self.kept = self.computed = 0
        self.by_status: Counter[str] = Counter()
        self.repaired: list[int] = []
        self.failed: dict[int, str] = {}
        self.seconds = 0.0
        self.tpd: float | None = None
        self.x_error: float | None = None

    @property
    def complete(self) -> bool:
        return self.kept + self.computed == self.partitions

    def add(self, info: PartInfo, new: bool) -> None:
        self.records += info["records"]
        self.failed_rows += info["failed"]
        self.by_status.update(info["by_status"])
        self.computed, self.kept = self.computed + new, self.kept + (not new)
        for name, worse in (("tpd", min), ("x_error", max)):
            if info.get(name) is not None:
                old = getattr(self, name)
                setattr(self, name, info[name] if old is None else worse(old, info[name]))

    def summary(self) -> dict[str, Any]:
        """What is the same for every complete run: kept as ``summary.json``."""
        return {"partitions": self.partitions, "rows": self.rows, "records": self.records, "failed": self.failed_rows,
                "by_status": dict(sorted(self.by_status.items())), "tpd": self.tpd, "x_error": self.x_error}  # fmt: skip

    def __repr__(self) -> str:
        words = [f"{self.kept + self.computed} of {self.partitions} partitions ({self.kept} were there), {self.records} rows"]
        if self.failed_rows:
            words.append(f"{self.failed_rows} rows without a result: " + ", ".join(
                f"{n} {name.lower().replace('_', ' ')}" for name, n in sorted(self.by_status.items()) if name != "OK"))  # fmt: skip
        if self.repaired:
            words.append(f"{len(self.repaired)} damaged files computed again")
        for k, why in list(sorted(self.failed.items()))[:5]:
            words.append(f"partition {k} failed: {why}")
        return "\n".join(words)


class State:
    """How far a sweep is: partitions, done, rows, failed (partition: why), rate (rows a second, of the last runs'
    journal), seconds_left (not-a-number: unknown)."""

    def __init__(self, plan: Plan):
        self.folder, self.partitions, self.rows = plan.folder, len(plan), plan.description["total"]
        self.done = sum(plan.file(k).exists() for k in range(len(plan)))
        self.failed: dict[int, str] = {}
        rows, first, last = 0, None, None
        for entry in _journal(plan.folder):
            if "begin" in entry:  # of the latest run
                rows, first = 0, entry["begin"]
            elif "error" in entry:
                self.failed[entry["partition"]] = entry["error"]
            else:
                self.failed.pop(entry["partition"], None)
                rows, last = rows + entry["rows"], entry["time"]
        self.rate = rows / (last - first) if rows and first and last > first else float("nan")
        self.seconds_left = (self.partitions - self.done) * plan.rows_of_partition / self.rate

    def __repr__(self) -> str:
        words = f"{self.done} of {self.partitions} partitions done"
        if self.rate == self.rate and self.done < self.partitions:
            words += f", {self.rate:.3g} rows a second, {_clock(self.seconds_left)} left at that rate"
        for k, why in sorted(self.failed.items())[:5]:
            words += f"\npartition {k} failed: {why}"
        return words


def run(task: Call | Function, design: Any, folder: str | pathlib.Path, *, scheduler: Any = "threads",
        rows: int | None = None, seconds: float = 2.0, retries: int = 2, progress: bool | None = None) -> Report:  # fmt: skip
    """Computes what is missing of a sweep.

    Parameters
    ----------
    task : Call or Function
    design : Grid, Random, Rows, or the path of a CSV or Parquet file
    folder : path
        Where the sweep is kept; workers need to see it. ``data/`` is the dataset (:func:`read`).
    scheduler : str or distributed.Client
        ``"threads:N"`` of this process; ``"local:N"``, N processes by Dask; the address of a Dask scheduler.
    rows : int, optional
        Of a partition. By default so many that one takes ``seconds``, measured once, when the sweep begins.
    retries : int
        How often a partition that fails is tried again, on another worker where there is one.
    progress : bool, optional
        Rate and time left; default: in terminals.

    Returns
    -------
    Report
        A row that fails is a row of the dataset, with its status and reason; a partition that fails is in
        ``Report.failed``, and the next call tries it again.

    Raises
    ------
    KeyboardInterrupt
        Ctrl-C: the same call goes on later, as after any other end.
    Mismatch, Lost, OSError
        Another version or other data on a worker; no scheduler; a full disk.
    """
    folder = pathlib.Path(folder).resolve()
    folder.mkdir(parents=True, exist_ok=True)
    pyarrow()
    design = design_of(design)
    with heard() as interruption, locked(folder):
        if (folder / MANIFEST).exists():
            plan = Plan.read(folder)
            if not plan.is_of(task, design):
                raise ValueError(f"{folder} holds another sweep, or the version, model or data have changed")
            if rows is not None and rows != plan.rows_of_partition:
                raise ValueError(f"the sweep in {folder} has partitions of {plan.rows_of_partition} rows")
        else:
            plan = Plan.make(task, design, folder, rows, seconds)
            plan.write()
        return _go_on(plan, scheduler, retries, progress, interruption)


def status(folder: str | pathlib.Path) -> State:
    """How far a sweep is, while it runs or not."""
    return State(Plan.read(pathlib.Path(folder).resolve()))


def read(folder: str | pathlib.Path) -> Any:
    """The results as a ``pyarrow.dataset.Dataset``: ``.to_table()``, ``.scanner(...)``, ``.to_table().to_pandas()``."""
    pyarrow()
    import pyarrow.dataset as dataset

    plan = Plan.read(pathlib.Path(folder).resolve())
    files = [str(plan.file(k)) for k in range(len(plan)) if plan.file(k).exists()]
    return dataset.dataset(files, format="parquet")


def _go_on(plan: Plan, scheduler: Any, retries: int, progress: bool | None, interruption: Interruption) -> Report:
    report, start = Report(plan.folder, plan), time.perf_counter()
    for torn in (plan.folder / "data").rglob(".*.part"):  # of runs that were killed
        torn.unlink(missing_ok=True)
    missing = []
    for k in range(len(plan)):
        interruption.ask()
        try:
            info = plan.verify(k)
        except Damaged:
            report.repaired.append(k)
            info = None
        if info is None:
            missing.append(k)
        else:
            report.add(info, new=False)
    if missing:
        with runner(plan, scheduler, interruption) as workers, (plan.folder / "journal.jsonl").open("a") as journal:
            _note(journal, begin=time.time(), missing=len(missing))
            with _Progress(plan, report, progress) as shown:
                _work(workers, missing, retries, report, plan, journal, shown, interruption)
    report.seconds = time.perf_counter() - start
    if report.complete:
        write_whole(plan.folder / "summary.json", json.dumps(report.summary(), indent=1, sort_keys=True).encode())
    return report


def _work(workers: Any, missing: list[int], retries: int, report: Report, plan: Plan, journal: Any, shown: Any,
          interruption: Interruption) -> None:  # fmt: skip
    waiting, attempts, out = list(reversed(missing)), Counter(), 0
    while waiting or out:
        interruption.ask()
        while waiting and out < _IN_LINE * workers.slots:
            workers.submit(waiting.pop())
            out += 1
        outcome: Outcome | None = workers.next(0.5)
        if outcome is None:
            continue
        out -= 1
        k = outcome.k
        if outcome.info is not None:
            report.add(PartInfo(outcome.info), new=True)
            begin, end = plan.bounds(k)
            _note(journal, partition=k, rows=end - begin, seconds=round(outcome.seconds, 3), worker=outcome.worker,
                  failed=outcome.info["failed"], time=time.time())  # fmt: skip
            shown(end - begin)
            continue
        attempts[k] += 1
        _note(journal, partition=k, error=outcome.error, worker=outcome.worker, attempt=attempts[k], time=time.time())
        if outcome.fatal:
            raise OSError(f"partition {k}: {outcome.error}; what is done is kept, and the same call goes on")
        if attempts[k] <= retries:
            workers.submit(k, avoid=outcome.worker or None)
            out += 1
        else:
            report.failed[k] = outcome.error


class _Progress:
    """tqdm's bar: rows, rate, time left."""

    def __init__(self, plan: Plan, report: Report, wanted: bool | None):
        self._bar = None
        if wanted is False:
            return
        try:
            from tqdm import tqdm
        except ImportError:
            return
        total = plan.description["total"]
        there = sum(b - a for a, b in (plan.bounds(k) for k in range(len(plan)))) if report.kept == len(plan) else (
            report.kept * plan.rows_of_partition)  # fmt: skip
        self._bar = tqdm(total=total, initial=min(there, total), unit=" rows", unit_scale=True, disable=None if wanted is None else False)
        self._report = report

    def __call__(self, rows: int) -> None:
        if self._bar is not None:
            if self._report.failed_rows or self._report.failed:
                self._bar.set_postfix(failed=self._report.failed_rows, partitions_failed=len(self._report.failed), refresh=False)
            self._bar.update(rows)

    def __enter__(self) -> _Progress:
        return self

    def __exit__(self, *_: Any) -> None:
        if self._bar is not None:
            self._bar.close()


def _note(journal: Any, **entry: Any) -> None:
    journal.write(json.dumps(entry) + "\n")
    journal.flush()


def _journal(folder: pathlib.Path) -> list[dict[str, Any]]:
    """What runs have noted; a last line may be torn. Only for people: what is done is what the files say."""
    entries = []
    try:
        with (folder / "journal.jsonl").open() as f:
            for line in f:
                try:
                    entries.append(json.loads(line))
                except ValueError:
                    continue
    except FileNotFoundError:
        pass
    return entries


def _clock(seconds: float) -> str:
    minutes = round(seconds / 60)
    return f"{seconds:.0f} s" if minutes < 2 else f"{minutes} min" if minutes < 120 else f"{minutes / 60:.1f} h"
