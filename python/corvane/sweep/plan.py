"""The plan of a sweep, kept in its folder, and what one partition of it is: a file that proves itself."""

from __future__ import annotations

import contextlib
import hashlib
import io
import json
import math
import os
import pathlib
import shutil
import time
import uuid
from typing import Any, Iterator

from .. import _native
from .._numpy import np
from ..progress import quiet
from ..status import Status
from .designs import design_of
from .tasks import Call, Function, Mismatch, task_of

__all__ = ["Damaged", "Plan", "PartInfo", "pyarrow"]

MANIFEST = "manifest.json"
FORMAT = 1
_EVERYWHERE = {"row", "line", "point", "status", "reason"}


def pyarrow() -> Any:
    try:
        import pyarrow as pa
        import pyarrow.parquet  # noqa: F401
    except ImportError as e:
        raise ImportError("sweeps need pyarrow: pip install 'corvane[sweep]'") from e
    return pa


class Damaged(ValueError):
    """A file of results that is not what was written."""


def write_whole(path: pathlib.Path, data: bytes) -> None:
    """All of it under this name, or nothing: written beside it, on disk, then renamed."""
    path.parent.mkdir(parents=True, exist_ok=True)
    beside = path.with_name(f".{path.name}.{os.getpid()}.{uuid.uuid4().hex[:8]}.part")
    try:
        with open(beside, "wb") as f:
            f.write(data)
            f.flush()
            os.fsync(f.fileno())
        os.replace(beside, path)
    except BaseException:
        with contextlib.suppress(OSError):
            beside.unlink()
        raise
    directory = os.open(path.parent, os.O_RDONLY)
    try:
        os.fsync(directory)
    finally:
        os.close(directory)


class PartInfo(dict):
    """rows (of the design), records (in the file), failed, by_status, tpd, x_error, sha256 of the contents."""


class Plan:
    """Task, design, partitions and schema. ``Plan.read(folder)`` on workers; the description is all that travels."""

    def __init__(self, description: dict[str, Any], folder: pathlib.Path):
        self.description, self.folder = description, folder
        self.rows_of_partition: int = description["rows"]
        text = json.dumps(_essence(description), sort_keys=True)
        self.identity = hashlib.sha256(f"{self.rows_of_partition} {text}".encode()).hexdigest()[:32]
        self.schema: dict[str, str] = dict(description["schema"])
        self._task: Any = None
        self._design: Any = None

    # ---- made once, read on workers

    @classmethod
    def make(cls, task: Call | Function, design: Any, folder: pathlib.Path, rows: int | None, seconds: float) -> Plan:
        """Measures a sample, where the size of a partition is left to us, and notes the columns of the results."""
        if not len(design):
            raise ValueError("a design without rows")
        used, schema = _sample(task, design, 0.5 if rows is None else 0.0)
        if rows is None:
            rows = max(1, min(len(design), 2 ** round(math.log2(max(seconds / used, 1.0)))))
        description = {"format": FORMAT, "version": _native.__version__, "task": _copied(task.describe(), folder),
                       "design": design.describe(), "rows": int(rows), "total": len(design), "schema": list(schema.items())}  # fmt: skip
        return cls(description, folder)

    @classmethod
    def read(cls, folder: pathlib.Path) -> Plan:
        try:
            description = json.loads((folder / MANIFEST).read_text())
        except FileNotFoundError:
            raise FileNotFoundError(f"{folder} holds no sweep ({MANIFEST} is missing)") from None
        except ValueError as e:
            raise Damaged(f"{folder / MANIFEST}: {e}") from None
        if description.get("format") != FORMAT:
            raise Damaged(f"{folder / MANIFEST} is of another version of sweeps")
        return cls(description, folder)

    def write(self) -> None:
        write_whole(self.folder / MANIFEST, json.dumps(self.description, indent=1, sort_keys=True).encode())

    def is_of(self, task: Call | Function, design: Any) -> bool:
        """Is this the plan of the same results, whatever the size of its partitions?"""
        other = {**self.description, "version": _native.__version__, "task": task.describe(), "design": design.describe()}
        return _essence(other) == _essence(self.description)

    # ---- partitions

    def __len__(self) -> int:
        return -(-self.description["total"] // self.rows_of_partition)

    def bounds(self, k: int) -> tuple[int, int]:
        return k * self.rows_of_partition, min((k + 1) * self.rows_of_partition, self.description["total"])

    def file(self, k: int) -> pathlib.Path:
        """A thousand files a folder at most."""
        data = self.folder / "data"
        return (data if len(self) <= 1000 else data / f"{k // 1000:04}") / f"part-{k:07}.parquet"

    def load(self) -> None:
        """Opens model and design. Raises :class:`Mismatch` where they are not those of the sweep."""
        if self._task is None:
            if _native.__version__ != self.description["version"]:
                raise Mismatch(f"this is corvane {_native.__version__}; the sweep began with {self.description['version']}")
            self._design = design_of(self.description["design"])
            self._task = task_of(_here(self.description["task"], self.folder))

    def compute(self, k: int) -> PartInfo:
        """Computes a partition and writes its file. Once more gives the same bytes."""
        self.load()
        begin, end = self.bounds(k)
        given = self._design.rows(begin, end)
        with quiet():
            found = self._task.run(given)
        row = np.asarray(found.pop("row"))
        columns = {"row": row + begin, **{name: v[row] for name, v in given.items()}, **found}
        table = self._table(columns)
        info = self._info(k, table)
        write_whole(self.file(k), self._bytes(table, info))
        return info

    def verify(self, k: int) -> PartInfo | None:
        """What a file says of itself; None where there is none. Raises :class:`Damaged` if its contents are not those
        that were written, or another sweep's."""
        pa, path = pyarrow(), self.file(k)
        if not path.exists():
            return None
        try:
            table = pa.parquet.read_table(path, page_checksum_verification=True, partitioning=None)
            said = json.loads(table.schema.metadata[b"corvane"])
            true = self._info(k, table)
        except (pa.ArrowException, OSError, KeyError, TypeError, ValueError) as e:
            raise Damaged(f"{path}: {str(e).splitlines()[0]}") from None
        # What no checksum covers (footer, statistics) by writing it once more, which gives the same bytes by the same writer.
        if said != {**true, "pyarrow": said.get("pyarrow")} or (
            said["pyarrow"] == pa.__version__ and self._bytes(table, true) != path.read_bytes()
        ):
            raise Damaged(f"{path} is not what was written")
        return PartInfo(true)

    # ---- inside

    def _table(self, columns: dict[str, Any]) -> Any:
        pa = pyarrow()
        schema = self.schema
        unknown = set(columns) - set(schema)
        if unknown:
            raise ValueError(f"columns {', '.join(sorted(unknown))} that the first rows did not have")
        n = len(columns["row"])
        arrays = []
        for name, kind in schema.items():
            values = columns.get(name)
            if values is None:
                values = [None] * n if kind == "string" else np.full(n, np.nan)
            if kind == "string":
                array = pa.array([None if v is None else str(v) for v in values], pa.string())
            else:
                array = pa.array(np.asarray(values, dtype=kind), getattr(pa, kind)())
            arrays.append(array)
        return pa.table(arrays, names=list(schema))

    def _bytes(self, table: Any, info: PartInfo) -> bytes:
        table = table.replace_schema_metadata({b"corvane": json.dumps(info, sort_keys=True).encode()})
        # measured: a third of the time of dictionaries of doubles, and less of the disk
        numbers = {name: "BYTE_STREAM_SPLIT" for name, kind in self.schema.items() if kind == "float64"}
        buffer = io.BytesIO()
        pyarrow().parquet.write_table(table, buffer, compression="zstd", write_page_checksum=True, column_encoding=numbers,
                                      use_dictionary=[n for n, kind in self.schema.items() if kind == "string"])  # fmt: skip
        return buffer.getvalue()

    def _info(self, k: int, table: Any) -> PartInfo:
        """Provenance and contents of a partition: nothing that differs from run to run."""
        digest = hashlib.sha256(f"{self.identity} {k} {table.column_names}".encode())
        for name, kind in self.schema.items():
            if kind == "string":
                if table[name].null_count == table.num_rows:
                    digest.update(b"\0" * table.num_rows)
                    continue
                for value in table[name].to_pylist():
                    digest.update(b"\0" if value is None else b"\1%d " % len(value) + value.encode())
            else:
                values = np.ascontiguousarray(table[name].to_numpy(), dtype=kind)
                if kind == "float64":
                    values = np.where(np.isnan(values), np.nan, values)
                digest.update(values.tobytes())
        status = table["status"].to_numpy()
        counts = {Status(int(s)).name: int(np.count_nonzero(status == s)) for s in np.unique(status)}
        begin, end = self.bounds(k)
        info = PartInfo(sweep=self.identity, partition=k, rows=[begin, end], records=table.num_rows, by_status=counts,
                        failed=int(np.count_nonzero(status)), sha256=digest.hexdigest(),
                        version=self.description["version"], pyarrow=pyarrow().__version__,
                        fingerprint=self.description["task"]["fingerprint"])  # fmt: skip
        for name, worst in (("tpd", np.min), ("x_error", np.max)):  # of the certificates
            if name in table.column_names:
                values = table[name].to_numpy()
                values = values[np.isfinite(values)]
                info[name] = float(worst(values)) if len(values) else None
        return info


def _sample(task: Call | Function, design: Any, enough: float) -> tuple[float, dict[str, str]]:
    """Seconds a row, measured for so long, and the columns with their types, from rows all over the design; the first is
    not timed."""
    n, used, count = len(design), 0.0, 0
    kinds: dict[str, str] = {}
    for m in range(17):
        i = (m * 7919) % n
        block = design.rows(i, min(i + (64 if isinstance(task, Call) and m else 1), n))
        start = time.perf_counter()
        found = task.run(block)
        if m:
            used, count = used + time.perf_counter() - start, count + len(next(iter(block.values())))
        for name, values in found.items():
            if kinds.get(name) != "string":
                kinds[name] = _kind(values)
        if set(kinds) - _EVERYWHERE and (m and (used > enough or n == 1)):
            break
    if not set(kinds) - _EVERYWHERE:
        raise ValueError(f"none of {m + 1} rows gave a result; the last one: {found['reason'][0]}")
    given = {name: _kind(v) for name, v in block.items()}
    results = {name: "int64" if name in ("line", "point") else kind for name, kind in kinds.items()}
    for name in ("row", "status", "reason"):
        del results[name]
    return max(used / max(count, 1), 1e-9), {"row": "int64", **given, **results, "status": "int8", "reason": "string"}


def _kind(values: Any) -> str:
    return "string" if np.asarray(values).dtype.kind in "OUS" else "float64"


def _essence(description: dict[str, Any]) -> dict[str, Any]:
    """What the results depend on: no paths, which are other ones in another folder."""
    task, design = dict(description["task"]), dict(description["design"])
    task.pop("file", None)
    design.pop("table", None)
    if "model" in task:
        task["model"] = {k: v for k, v in task["model"].items() if k != "home"}
    return json.loads(json.dumps({"version": description["version"], "task": task, "design": design}))


def _copied(task: dict[str, Any], folder: pathlib.Path) -> dict[str, Any]:
    """A function's file and a data home go into the folder, where every worker finds them."""
    if "function" in task:
        source = pathlib.Path(task["file"])
        write_whole(folder / "code" / source.name, source.read_bytes())
        return {**task, "file": f"code/{source.name}"}
    home = task["model"]["home"]
    if home is None:
        return task
    if not (folder / "home").exists():
        beside = folder / f".home.{uuid.uuid4().hex[:8]}.part"
        shutil.copytree(home, beside)
        os.replace(beside, folder / "home")
    return {**task, "model": {**task["model"], "home": "home"}}


def _here(task: dict[str, Any], folder: pathlib.Path) -> dict[str, Any]:
    if "function" in task:
        return {**task, "file": str(folder / task["file"])}
    home = task["model"]["home"]
    return {**task, "model": {**task["model"], "home": None if home is None else str(folder / home)}}


@contextlib.contextmanager
def locked(folder: pathlib.Path) -> Iterator[None]:
    """One sweep a folder. The system takes the lock from one that was killed."""
    import fcntl
    import socket

    with open(folder / ".lock", "a+") as f:
        try:
            fcntl.flock(f, fcntl.LOCK_EX | fcntl.LOCK_NB)
        except OSError:
            f.seek(0)
            raise RuntimeError(f"another sweep works on {folder}: {f.read().strip() or 'unknown'}") from None
        f.truncate(0)
        f.write(f"process {os.getpid()} on {socket.gethostname()}")
        f.flush()
        yield
