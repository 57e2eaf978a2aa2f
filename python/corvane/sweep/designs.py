"""What a sweep goes over: a grid, a random design, or a table. Row i has the same values in every partition."""

from __future__ import annotations

import functools
import hashlib
import math
import pathlib
from typing import Any, Mapping, Sequence

from .._numpy import np
from ..arrays import magnitude

__all__ = ["Grid", "Random", "Rows", "design_of"]

Columns = dict[str, Any]
_BLOCK = 1024  # rows that share a stream of random numbers


class Grid:
    """Every combination of the values of each column, the last one fastest.

    >>> Grid(T=[300.0, 310.0], p=[1e5, 1e6]).rows(1, 3)["p"].tolist()
    [1000000.0, 100000.0]
    """

    def __init__(self, **axes: Any):
        if not axes:
            raise ValueError("a grid needs columns")
        self._axes = {name: np.atleast_1d(np.asarray(magnitude(v, name), dtype=float)) for name, v in axes.items()}
        for name, values in self._axes.items():
            if values.ndim != 1 or not len(values):
                raise ValueError(f"{name} of a grid: one axis of values")

    def __len__(self) -> int:
        return math.prod(len(v) for v in self._axes.values())

    @property
    def names(self) -> list[str]:
        return list(self._axes)

    def rows(self, begin: int, end: int) -> Columns:
        """Columns of the rows from begin up to end."""
        at = np.unravel_index(np.arange(begin, end), [len(v) for v in self._axes.values()])
        return {name: values[k] for (name, values), k in zip(self._axes.items(), at)}

    def describe(self) -> dict[str, Any]:
        return {"grid": {name: v.tolist() for name, v in self._axes.items()}}


class Random:
    """n rows of random numbers: ``{"T": (200.0, 400.0), "p": ("log", 1e5, 1e7), "kij": ("normal", 0.01, 0.005)}``.

    (low, high) and ("log", low, high) are uniform in the value and in its logarithm; ("normal", mean, standard
    deviation). ``normal={"names": [...], "mean": [...], "covariance": [[...]]}`` adds columns that are correlated, such as
    fitted parameters. A row depends on seed and its number alone (Philox; Salmon et al., 2011), not on n.
    """

    def __init__(self, columns: Mapping[str, Sequence[Any]], n: int, seed: int = 1, *,
                 normal: Mapping[str, Any] | None = None):  # fmt: skip
        self._n, self._seed = int(n), int(seed)
        self._columns = {name: list(given) for name, given in columns.items()}
        for name, given in self._columns.items():
            kind = given[0] if isinstance(given[0], str) else ""
            if kind not in ("", "log", "normal") or len(given) != (3 if kind else 2):
                raise ValueError(f'{name}: give (low, high), ("log", low, high) or ("normal", mean, deviation)')
            if kind == "log" and not 0 < given[1] <= given[2]:
                raise ValueError(f"{name}: logarithms of positive numbers")
        self._normal = None
        if normal is not None:
            factor = normal.get("factor") or _factor(np.asarray(normal["covariance"], dtype=float)).tolist()
            self._normal = {"names": list(normal["names"]), "mean": [float(m) for m in normal["mean"]], "factor": factor}
        if self._n < 1 or not self.names:
            raise ValueError("a random design has rows and columns")

    def __len__(self) -> int:
        return self._n

    @property
    def names(self) -> list[str]:
        return [*self._columns, *(self._normal["names"] if self._normal else [])]

    def rows(self, begin: int, end: int) -> Columns:
        first = begin // _BLOCK
        blocks = [self._block(b) for b in range(first, (end - 1) // _BLOCK + 1)] if end > begin else [self._block(0)[:0]]
        table = np.concatenate(blocks)[begin - first * _BLOCK :][: end - begin]
        return {name: np.ascontiguousarray(table[:, k]) for k, name in enumerate(self.names)}

    def describe(self) -> dict[str, Any]:
        return {"random": self._columns, "normal": self._normal, "n": self._n, "seed": self._seed}

    def _block(self, b: int) -> Any:
        generator = np.random.Generator(np.random.Philox(key=(self._seed % 2**64) + (b << 64)))
        columns = []
        for given in self._columns.values():
            if given[0] == "normal":
                columns.append(given[1] + given[2] * generator.standard_normal(_BLOCK))
            elif given[0] == "log":
                low, high = math.log(given[1]), math.log(given[2])
                columns.append(np.exp(low + (high - low) * generator.random(_BLOCK)))
            else:
                columns.append(given[0] + (given[1] - given[0]) * generator.random(_BLOCK))
        if self._normal:
            z = generator.standard_normal((_BLOCK, len(self._normal["names"])))
            # sums one by one: the order of additions in a matrix product is the library's choice
            columns.extend(m + sum(l * z[:, j] for j, l in enumerate(row))
                           for m, row in zip(self._normal["mean"], self._normal["factor"]))  # fmt: skip
        return np.stack(columns, axis=-1)


def _factor(covariance: Any) -> Any:
    """L with L·Lᵀ the covariance; singular ones are taken, too."""
    values, vectors = np.linalg.eigh(covariance)
    if values[0] < -1e-12 * max(values[-1], 0.0):
        raise ValueError("a covariance has no negative eigenvalues")
    return vectors * np.sqrt(np.maximum(values, 0.0))


class Rows:
    """The rows of a CSV or Parquet file. Its contents are part of the sweep: a file that has changed is refused."""

    def __init__(self, file: str | pathlib.Path, *, sha256: str = ""):
        self.file = pathlib.Path(file).resolve()
        if not self.file.is_file():
            raise FileNotFoundError(f"no table {self.file}")
        self._sha256 = sha256
        table = self._open()
        self._n, self._names = (table.metadata.num_rows, table.schema_arrow.names) if self._parquet else (
            table.num_rows, table.column_names)  # fmt: skip
        if not self._n:
            raise ValueError(f"{self.file} has no rows")

    def __len__(self) -> int:
        return self._n

    @property
    def names(self) -> list[str]:
        return list(self._names)

    @property
    def _parquet(self) -> bool:
        return self.file.suffix in (".parquet", ".pq")

    def rows(self, begin: int, end: int) -> Columns:
        source = self._open()
        if not self._parquet:
            part = source.slice(begin, end - begin)
        else:  # only the row groups that are needed
            import pyarrow

            parts, start = [], 0
            for k in range(source.num_row_groups):
                n = source.metadata.row_group(k).num_rows
                if start < end and begin < start + n:
                    a = max(begin - start, 0)
                    parts.append(source.read_row_group(k).slice(a, min(end - start, n) - a))
                start += n
            part = pyarrow.concat_tables(parts) if parts else source.schema_arrow.empty_table()
        return {name: np.asarray(part[name].to_numpy(zero_copy_only=False)) for name in self._names}

    def describe(self) -> dict[str, Any]:
        return {"table": str(self.file), "sha256": self._digest()}

    def _digest(self) -> str:
        with self.file.open("rb") as f:
            return hashlib.file_digest(f, "sha256").hexdigest() if hasattr(hashlib, "file_digest") else (
                hashlib.sha256(f.read()).hexdigest())  # fmt: skip

    def _open(self) -> Any:
        if not hasattr(self, "_source"):
            if self._sha256 and self._digest() != self._sha256:
                raise ValueError(f"{self.file} is not what it was when the sweep began")
            from pyarrow import csv, parquet

            self._source = parquet.ParquetFile(self.file) if self._parquet else csv.read_csv(self.file)
        return self._source


@functools.singledispatch
def design_of(given: Any) -> Any:
    """A design from its description, or from what stands for one: a file, a mapping of axes."""
    return given


@design_of.register
def _(given: str) -> Any:
    return Rows(given)


@design_of.register
def _(given: pathlib.Path) -> Any:
    return Rows(given)


@design_of.register
def _(given: dict) -> Any:
    if "grid" in given:
        return Grid(**given["grid"])
    if "random" in given:
        return Random(given["random"], given["n"], given["seed"], normal=given["normal"])
    return Rows(given["table"], sha256=given["sha256"])
