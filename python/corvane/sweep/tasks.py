"""What a sweep does with its rows: a method of a model, or a function."""

from __future__ import annotations

import functools
import hashlib
import importlib.util
import inspect
import json
import pathlib
import sys
from typing import Any, Callable, Iterable, Sequence

from .. import _native
from .._numpy import np
from ..fluid import Fluid
from ..mixture import Diagram, FlashResult, Mixture
from ..results import Table
from ..status import Status

__all__ = ["Call", "Function", "Mismatch", "describe_model", "fingerprint", "open_model", "task_of"]

Columns = dict[str, Any]
OK = int(Status.OK)
_REASONS = [None, *(s.name.lower().replace("_", " ") for s in sorted(Status) if s != Status.OK)]
_MISUSES = (TypeError, ValueError)
_ARRAYS = ("state", "phase", "saturation", "flash", "bubble", "dew", "excess", "henry", "virial", "solubility")
_CURVES = ("envelope", "pxy", "Txy", "critical_points", "critical_lines", "three_phase_lines", "azeotropic_lines")


class Mismatch(RuntimeError):
    """Version, parameters or data of a worker are not those with which the sweep began."""


# ---- models travel by their description


def describe_model(model: Fluid | Mixture) -> dict[str, Any]:
    """What opens the same model elsewhere."""
    if model._equation is not None:
        raise TypeError("an equation written in Python has no name to open it by: make a Function of what you want")
    if isinstance(model, Fluid):
        changed = sorted(model._changed.items())
        return {"fluid": model.name, "eos": model.eos, "set": model.set, "home": model._home, "changed": changed}
    sets, pair_set, estimate, predict, home = model._options
    pairs = sorted((*key, value) for key, value in model._changed.items())
    pure = sorted((*key, value) for key, value in model._changed_components.items())
    return {"mixture": model.model, "components": model.components, "sets": list(sets), "pair_set": pair_set,
            "estimate": estimate, "predict": predict, "home": home, "changed": pairs, "changed_components": pure}  # fmt: skip


def open_model(d: dict[str, Any]) -> Fluid | Mixture:
    if "fluid" in d:
        fluid = Fluid(d["fluid"], d["eos"], set=d["set"], home=d["home"])
        for index, value in d["changed"]:
            fluid.set_parameter(index, value)
        return fluid
    mixture = Mixture(d["mixture"], d["components"], sets=d["sets"], pair_set=d["pair_set"], estimate=d["estimate"],
                      predict=d["predict"], home=d["home"])  # fmt: skip
    for index, i, j, value in d["changed"]:
        mixture.set_pair_parameter(i, j, value, index)
    for i, index, value in d["changed_components"]:
        mixture.set_component_parameter(i, index, value)
    return mixture


def fingerprint(model: Fluid | Mixture) -> str:
    """Of the library's version, all parameters (exactly) and ideal-gas data (to ten digits: functions of the C library
    may differ in the last one between machines)."""
    facts: list[Any] = [_native.__version__]
    if isinstance(model, Fluid):
        facts += [model.name, model.eos, model.set, [float(p).hex() for p in model.parameters]]
        s = model.phase([250.0, 500.0, 1000.0], 1e-6)
    else:
        n = len(model.components)
        sets = model._native.sets
        for k, name in enumerate(model.components):
            facts += [name, sets[k], [float(p).hex() for p in model.component_parameters(k)]]
        for i in range(n):
            for j in range(i):
                facts.append([i, j, *(v.hex() for v in _pair(model, i, j))])
        s = model.phase([250.0, 500.0, 1000.0], 1e-6, np.full(n, 1.0 / n))
    facts += [f"{v:.10g}" for v in [*s.h, *s.cp]]
    return hashlib.sha256(json.dumps(facts).encode()).hexdigest()[:32]


def _pair(model: Mixture, i: int, j: int) -> Iterable[float]:
    for k in range(100):
        try:
            yield model.pair_parameter(i, j, k)
        except IndexError:
            return


# ---- tasks


def _failed(columns: Columns, status: Any, reasons: Any) -> Columns:
    return {**columns, "status": status, "reason": reasons}


class Call:
    """A method of a fluid or mixture, for all rows of a partition at once.

    Parameters
    ----------
    model : Fluid or Mixture
    method : str
        ``"state"``, ``"phase"``, ``"saturation"``, ``"flash"``, ``"bubble"``, ``"dew"``, ``"excess"``, ``"henry"``,
        ``"virial"``, ``"solubility"``; or a curve for every row: ``"envelope"``, ``"pxy"``, ``"Txy"``, ``"critical_points"``,
        ``"critical_lines"``, ``"three_phase_lines"``, ``"azeotropic_lines"``.
    keep : sequence of str, optional
        Columns of the result that are kept; default: all. ``"x"`` stands for all columns ``x_…``.
    fixed
        Arguments that all rows share. The columns of the design are the others; of a composition z they are
        ``z_methane`` …, of which one may be left out.
    """

    def __init__(self, model: Fluid | Mixture, method: str, *, keep: Sequence[str] | None = None, **fixed: Any):
        if method not in (*_ARRAYS, *_CURVES) or not hasattr(model, method):
            raise ValueError(f"no sweep over {method} of {model!r}; there are {', '.join((*_ARRAYS, *_CURVES))}")
        self.model, self.method, self.keep = model, method, None if keep is None else list(keep)
        self.fixed = {k: v.tolist() if hasattr(v, "tolist") else v for k, v in fixed.items()}

    def describe(self) -> dict[str, Any]:
        return {"model": describe_model(self.model), "method": self.method, "keep": self.keep, "fixed": self.fixed,
                "fingerprint": fingerprint(self.model)}  # fmt: skip

    def run(self, given: Columns) -> Columns:
        arguments = self._arguments(given)
        if self.method in _CURVES:
            return self._kept(_row_by_row(lambda **row: _tables(getattr(self.model, self.method)(**row)), arguments), given)
        result = getattr(self.model, self.method)(**arguments, threads=1, errors="nan")
        status = np.ravel(result.status).astype(np.int8)
        columns = {name: np.ravel(v) for name, v in _columns(result)}
        reasons = np.array(_REASONS, dtype=object)[status]
        columns = {"row": np.arange(len(status)), **columns}
        return self._kept(_failed(columns, status, reasons), given)

    def _arguments(self, given: Columns) -> Columns:
        """Columns z_methane … become the composition z."""
        arguments: Columns = dict(self.fixed)
        n = len(next(iter(given.values())))
        parts: dict[str, dict[int, Any]] = {}
        names = getattr(self.model, "components", [])
        for name, values in given.items():
            base, _, component = name.partition("_")
            if base in ("z", "x") and component in names:
                parts.setdefault(base, {})[names.index(component)] = values
            else:
                arguments[name] = values
        for base, columns in parts.items():
            if len(columns) < len(names) - 1:
                raise ValueError(f"{base}: give the columns of {len(names) - 1} components at least")
            rest = 1.0 - sum(columns.values())
            arguments[base] = np.stack([columns.get(k, rest) for k in range(len(names))], axis=-1)
        if not given or not n:
            raise ValueError("no rows")
        if self.method not in _CURVES:  # a result for every row, also where all arguments are fixed
            key = next(k for k in arguments if k in given or k in parts)
            arguments[key] = np.broadcast_to(arguments[key], (n, *np.shape(arguments[key])[1:]))
        else:
            arguments = {k: [v] * n if k in self.fixed else list(v) for k, v in arguments.items()}
        return arguments

    def _kept(self, columns: Columns, given: Columns) -> Columns:
        always = ("row", "line", "point", "status", "reason")
        keep = self.keep
        return {name: v for name, v in columns.items() if name in always or (name not in given and (
            keep is None or name in keep or any(name.startswith(k + "_") for k in keep)))}  # fmt: skip


def _columns(result: Table) -> Iterable[tuple[str, Any]]:
    yield from result._flat(result.columns)
    if isinstance(result, FlashResult):  # phases in columns: fraction_1, rho_1, x_1_methane …
        for k in range(result.fraction.shape[-1]):
            yield f"fraction_{k + 1}", result.fraction[..., k]
            yield f"rho_{k + 1}", result.rho_phase[..., k]
            for j, name in enumerate(result._components):
                yield f"x_{k + 1}_{name}", result.x[..., k, j]


def _tables(result: Any) -> list[Columns]:
    """The lines of a curve, each as columns."""
    if isinstance(result, Diagram):
        result = result.branches
    lines = []
    for line in result if isinstance(result, list) else [result]:
        columns = {name: np.ravel(v) for name, v in line._flat(line.columns)}
        columns.update({name: np.asarray(getattr(line, name)) for name in ("stable", "bubble") if hasattr(line, name)})
        lines.append(columns)
    return lines


class Function:
    """A function of your own, called for every row with its columns by name, and with ``fixed``.

    It returns a dictionary of numbers and texts (a row), or a list of them (several rows). What it raises is the reason
    of a failed row. Give the function itself, ``"module:name"`` or ``"path/file.py:name"``; the file of the module travels with the sweep, so it has
    to stand alone (what it imports must be installed where the workers are).
    """

    def __init__(self, function: str | Callable[..., Any], **fixed: Any):
        if callable(function):
            name = getattr(function, "__qualname__", "")
            file = inspect.getsourcefile(function)
            if not file or not name.isidentifier():
                raise TypeError("a function of a file, at its top level")
        else:
            file, _, name = function.rpartition(":")
            if not file.endswith(".py"):
                found = importlib.util.find_spec(file) if file else None
                if found is None or not found.origin:
                    raise ValueError(f'{function}: give "module:name" or "path/file.py:name"')
                file = found.origin
        self.file, self.name, self.fixed = pathlib.Path(file), name, fixed
        self._call = _loaded(str(self.file), name)

    def describe(self) -> dict[str, Any]:
        return {"function": self.name, "file": str(self.file), "fixed": self.fixed,
                "fingerprint": hashlib.sha256(self.file.read_bytes()).hexdigest()[:32]}  # fmt: skip

    def run(self, given: Columns) -> Columns:
        n = len(next(iter(given.values())))
        arguments = {**{k: v.tolist() for k, v in given.items()}, **{k: [v] * n for k, v in self.fixed.items()}}

        def call(**row: Any) -> list[Columns]:
            result = self._call(**row)
            rows = result if isinstance(result, list) else [result]
            return [{k: np.asarray([r[k] for r in rows]) for k in rows[0]}] if rows else []

        columns = _row_by_row(call, arguments)
        columns.pop("line", None)
        return {name: v for name, v in columns.items() if name not in given}


@functools.lru_cache(maxsize=16)
def _loaded(file: str, name: str) -> Callable[..., Any]:
    module_name = f"corvane_sweep_{hashlib.sha256(file.encode()).hexdigest()[:12]}"
    found = importlib.util.spec_from_file_location(module_name, file)
    if found is None or found.loader is None:
        raise ValueError(f"{file} is no Python file")
    module = importlib.util.module_from_spec(found)
    sys.modules[module_name] = module
    found.loader.exec_module(module)
    function = getattr(module, name, None)
    if not callable(function):
        raise ValueError(f"no function {name} in {file}")
    return function


def _row_by_row(call: Callable[..., list[Columns]], arguments: dict[str, list[Any]]) -> Columns:
    """Lines of every row one below the other; a row that fails, or that has none, is one row with its reason."""
    status = Status.OK
    pieces: list[Columns] = []
    for i in range(len(next(iter(arguments.values())))):
        try:
            lines, why = call(**{name: values[i] for name, values in arguments.items()}), None
        except Exception as e:  # whatever a calculation says
            lines, why = [], f"{type(e).__name__}: {e}".split("\n")[0]
            known = isinstance(e, _native.EquilibriumError) and "no solution" in why
            status = Status.NO_SOLUTION if known else Status.INVALID if type(e) in _MISUSES else Status.GAVE_UP
        for k, line in enumerate(lines):
            m = len(next(iter(line.values())))
            where = {"row": np.full(m, i), "line": np.full(m, k), "point": np.arange(m)}
            pieces.append({**where, **line, "status": np.zeros(m, dtype=np.int8), "reason": [None] * m})
        if not lines:
            code = int(status if why else Status.NO_SOLUTION)
            pieces.append({"row": [i], "line": [0], "point": [0], "status": [code], "reason": [why or "nothing found"]})
    return {name: _stacked([p.get(name) for p in pieces], [len(p["row"]) for p in pieces])
            for name in dict.fromkeys(k for p in pieces for k in p)}  # fmt: skip


def _stacked(parts: list[Any], lengths: list[int]) -> Any:
    """One column of pieces; where a piece has none, not-a-number or None."""
    text = any(p is not None and np.asarray(p).dtype.kind in "OU" for p in parts)
    whole = all(p is not None and np.asarray(p).dtype.kind in "ib" for p in parts)
    missing = None if text else np.nan
    full = [np.full(n, missing, dtype=object if text else float) if p is None else np.asarray(p) for p, n in zip(parts, lengths)]
    return np.concatenate([f.astype(object if text else np.int64 if whole else float) for f in full])


def task_of(d: dict[str, Any]) -> Call | Function:
    """A task from its description, on a worker: refused where it would not compute the same."""
    if "function" in d:
        task: Call | Function = Function.__new__(Function)
        task.file, task.name, task.fixed = pathlib.Path(d["file"]), d["function"], d["fixed"]
        task._call = _loaded(d["file"], d["function"])
        found = hashlib.sha256(task.file.read_bytes()).hexdigest()[:32]
    else:
        task = Call(open_model(d["model"]), d["method"], keep=d["keep"], **d["fixed"])
        found = fingerprint(task.model)
    if found != d["fingerprint"]:
        what = d["file"] if "function" in d else repr(task.model)
        raise Mismatch(f"{what} is not what it was when the sweep began: version {_native.__version__}, fingerprint "
                       f"{found} instead of {d['fingerprint']}")  # fmt: skip
    return task
