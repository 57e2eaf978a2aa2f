"""``corvane-sweep FILE.toml``: a sweep described in a file."""

from __future__ import annotations

import argparse
import math
import pathlib
import sys
from typing import Any

from .. import EquilibriumError, Fluid, Mixture, OpenError
from .._numpy import np
from .coordinate import run, status
from .designs import Grid, Random, Rows
from .plan import Damaged
from .runners import Lost
from .tasks import Call, Function, Mismatch

_SECTIONS = {"folder", "model", "call", "function", "grid", "random", "table", "partitions"}
_EPILOG = """\
FILE.toml:
  folder = "co2_table"               # beside the file
  [model]                            # fluid = "CO2" (eos, set, home), or
  mixture = "PR+vdW1"                # components, kij, home …
  components = ["CO2", "nitrogen"]
  [call]
  method = "flash"                   # keep = [...]; everything else is an argument that all rows share
  z = [0.95, 0.05]
  [grid]                             # or [random] with n and seed, or [table] with file
  T = {from = 250, to = 350, points = 101}
  p = {from = 1e5, to = 3e7, points = 200, scale = "log"}
  [partitions]                       # rows, or seconds of work (2); retries (2)
In place of [model] and [call]: [function] with name = "file.py:function" and arguments."""


class Misuse(ValueError):
    """What is wrong with a file, in one sentence."""


def main(arguments: list[str] | None = None) -> int:
    """0 complete; 1 partitions failed, or nothing could be done; 2 misuse; 130 Ctrl-C."""
    parser = argparse.ArgumentParser("corvane-sweep", description="Computes what is missing of a sweep.", epilog=_EPILOG,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)  # fmt: skip
    parser.add_argument("file", metavar="FILE.toml")
    parser.add_argument("--scheduler", default="threads", help="threads:N, local:N (processes by Dask), or the address of a "
                        "Dask scheduler; default: threads, as many as there are cores")  # fmt: skip
    parser.add_argument("--status", action="store_true", help="say how far it is, and compute nothing")
    parser.add_argument("--quiet", action="store_true", help="no progress")
    options = parser.parse_args(arguments)
    folder = None
    try:
        folder, task, design, how = read_file(options.file, only_folder=options.status)
        if options.status:
            print(status(folder))
            return 0
        report = run(task, design, folder, scheduler=options.scheduler, progress=False if options.quiet else None, **how)
        print(report)
        return 0 if report.complete else 1
    except KeyboardInterrupt:
        print(f"corvane-sweep: interrupted: {_how_far(folder)}; the same command goes on", file=sys.stderr)
        return 130
    except Misuse as e:
        print(f"corvane-sweep: {options.file}: {e}", file=sys.stderr)
        return 2
    except (OSError, ValueError, TypeError, ImportError, RuntimeError, OpenError, EquilibriumError, Damaged, Lost, Mismatch) as e:
        print(f"corvane-sweep: {e}", file=sys.stderr)
        return 1


def _how_far(folder: pathlib.Path | None) -> str:
    try:
        return str(status(folder)) if folder else "not begun"
    except (OSError, Damaged):
        return "not begun"


def read_file(name: str, only_folder: bool = False) -> tuple[pathlib.Path, Any, Any, dict[str, Any]]:
    """Folder, task, design and options of a file; paths in it are beside it."""
    if sys.version_info >= (3, 11):
        import tomllib
    else:
        import tomli as tomllib
    path = pathlib.Path(name)
    try:
        d = tomllib.loads(path.read_text(encoding="utf-8"))
    except (OSError, UnicodeDecodeError, tomllib.TOMLDecodeError) as e:
        raise Misuse(getattr(e, "strerror", None) or str(e)) from None
    for key in set(d) - _SECTIONS:
        raise Misuse(f"unknown: {key}; there are {', '.join(sorted(_SECTIONS))}")
    beside = path.resolve().parent
    if not isinstance(d.get("folder"), str):
        raise Misuse('it needs folder = "…"')
    folder = beside / d["folder"]
    if only_folder:
        return folder, None, None, {}
    return folder, _task(d, beside), _design(d, beside), _how(d.get("partitions", {}))


def _task(d: dict[str, Any], beside: pathlib.Path) -> Call | Function:
    if ("function" in d) == ("call" in d):
        raise Misuse("it needs [model] and [call], or [function]")
    if "function" in d:
        given = dict(d["function"])
        file, _, name = _text(given, "name").partition(":")
        if not name or not (beside / file).is_file():
            raise Misuse('[function] needs name = "file.py:function" of a file beside it')
        return Function(f"{beside / file}:{name}", **given)
    model, call = dict(d.get("model", {})), dict(d["call"])
    if "home" in model:
        model["home"] = str(beside / model["home"])
    if "fluid" in model:
        opened: Any = Fluid(_text(model, "fluid"), **model)
    else:
        opened = Mixture(_text(model, "mixture"), model.pop("components", None), **model)
    return Call(opened, _text(call, "method"), keep=call.pop("keep", None), **call)


def _design(d: dict[str, Any], beside: pathlib.Path) -> Grid | Random | Rows:
    given = [name for name in ("grid", "random", "table") if name in d]
    if len(given) != 1:
        raise Misuse("it needs one of [grid], [random] and [table]")
    section = dict(d[given[0]])
    if given[0] == "grid":
        return Grid(**{name: _axis(name, v) for name, v in section.items()})
    if given[0] == "random":
        n, seed, normal = section.pop("n", 0), section.pop("seed", 1), section.pop("normal", None)
        return Random(section, n, seed, normal=normal)
    return Rows(beside / _text(section, "file"))


def _axis(name: str, v: Any) -> Any:
    if not isinstance(v, dict):
        return v
    try:
        low, high, points, scale = float(v["from"]), float(v["to"]), int(v["points"]), v.get("scale", "linear")
    except (KeyError, TypeError, ValueError):
        raise Misuse(f"{name}: a list, or {{from = …, to = …, points = …, scale = \"log\"}}") from None
    if points < 1 or scale not in ("linear", "log") or (scale == "log" and not min(low, high) > 0) or not math.isfinite(low + high):
        raise Misuse(f"{name}: points from 1 on, scale linear or log (of positive numbers)")
    return np.geomspace(low, high, points) if scale == "log" else np.linspace(low, high, points)


def _how(section: dict[str, Any]) -> dict[str, Any]:
    for key in set(section) - {"rows", "seconds", "retries"}:
        raise Misuse(f"[partitions]: unknown: {key}")
    return section


def _text(section: dict[str, Any], key: str) -> str:
    value = section.pop(key, None)
    if not isinstance(value, str):
        raise Misuse(f'it needs {key} = "…"')
    return value
