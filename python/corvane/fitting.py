"""Parameters of equations of state and mixtures from measured data."""

from __future__ import annotations

import os
import re
from dataclasses import asdict, dataclass
from typing import Any, Iterable, Mapping, Sequence

from . import _native
from ._numpy import np
from .catalogue import directory
from .results import draws
from .status import Interrupted


@dataclass(frozen=True)
class FitResult:
    """What :func:`corvane.fit` found.

    ``parameters``, ``errors`` (standard errors), ``correlated_errors`` (with as many deviations as are ``independent``) and
    ``start`` by name; ``correlation`` (matrix, in the order of ``parameters``); ``sets``: for every system, table and quantity
    ``points``, ``excluded``, ``without_solution``, ``unstable`` (compared with states that are not stable) and the
    ``mean``, ``bias`` and ``largest`` deviation ``before`` and ``after`` (relative, of mole fractions the difference),
    with ``folds`` the mean deviation ``predicted``; ``points``: deviation, leverage, outlier … of every measured value;
    ``spread`` of the weighted deviations; ``condition`` of the Jacobian; ``iterations``; ``converged``; ``warnings``:
    sentences on data that look wrong and parameters that the data do not determine; ``files``: the parameter files, if
    they were written, one for every system.
    """

    parameters: dict[str, float]
    errors: dict[str, float]
    correlated_errors: dict[str, float]
    start: dict[str, float]
    correlation: np.ndarray
    sets: list[dict[str, Any]]
    points: list[dict[str, Any]]
    spread: float
    independent: float
    condition: float
    iterations: int
    converged: bool
    warnings: list[str]
    files: list[str]

    @property
    def file(self) -> str:
        """The parameter file, of several the first; empty if none was written."""
        return self.files[0] if self.files else ""

    def to_dict(self) -> dict[str, Any]:
        """All attributes by name; parameters in the units of the parameter file."""
        return asdict(self)

    def to_pandas(self) -> Any:
        """``points`` as a ``pandas.DataFrame``, one row for every measured value; T in K."""
        import pandas

        return pandas.DataFrame(self.points)

    @draws
    def plot(self, ax: Any = None, *, label: str | None = None) -> Any:
        """What is left of the deviations (relative, of mole fractions the difference) over T (K), a colour for every
        table and quantity; outliers as crosses. label: goes before their names."""
        several = len({s["system"] for s in self.sets}) > 1
        for s in self.sets:
            where = ("system", "data", "quantity")
            mine = [p for p in self.points if all(p[key] == s[key] for key in where)]
            name = " ".join(s[key] for key in (where if several else where[1:]))
            drawn = ax.scatter([p["T"] for p in mine], [p["deviation"] for p in mine], s=12,
                               label=name if label is None else f"{label}, {name}")  # fmt: skip
            far = [p for p in mine if p["outlier"]]
            ax.scatter([p["T"] for p in far], [p["deviation"] for p in far], marker="x", color=drawn.get_facecolor())
        ax.axhline(0.0, color="k", lw=0.6)
        ax.set(xlabel="T / K", ylabel="deviation")
        ax.legend()
        return ax

    def __repr__(self) -> str:
        lines = ["FitResult" + ("" if self.converged else ", not converged")]
        lines += [f"  {name:<10}{value:.7g} ± {self.errors[name]:.2g}" for name, value in self.parameters.items()]
        for s in self.sets:
            lines.append(
                f"  {s['data']} {s['quantity']}: {s['points']} points, mean deviation {s['after']['mean']:.3g} "
                f"(before {s['before']['mean']:.3g})"
            )
        return "\n".join(lines + [f"  warning: {w}" for w in self.warnings])


def _text(value: Any) -> str:
    if value is None or (isinstance(value, float) and value != value):
        return ""
    return repr(float(value)) if isinstance(value, (int, float, np.number)) else str(value)


def _number(values: Any, name: str) -> np.ndarray:
    """The numbers of a column; those of a quantity in the unit that stands in its name."""
    if not hasattr(values, "magnitude"):
        return np.asarray(values)
    unit = name.partition("/")[2].strip("()").replace("%", "percent")
    return np.asarray(values.to(re.sub(r"(?<=[a-z])(\d)", r"**\1", unit)).magnitude)


def _table(data: Any, number: int) -> tuple[str, list[str], list[list[str]]]:
    """A path, or the columns of a mapping or data frame, as the extension module takes them."""
    if isinstance(data, (str, os.PathLike)):
        return os.fspath(data), [], []
    names = [str(name) for name in data]
    if not names:
        raise ValueError("a table without columns")
    columns = np.broadcast_arrays(*[np.atleast_1d(_number(data[name], str(name))) for name in data])
    rows = [[_text(value) for value in row] for row in zip(*[c.tolist() for c in columns])]
    return f"table {number}", names, rows


def fit(
    model: str,
    substances: str | Sequence[str] | Sequence[Sequence[str]],
    data: Any,
    adjust: str | Sequence[str],
    *,
    share: str | Sequence[str] | None = None,
    start: Mapping[str, float] | None = None,
    bounds: Mapping[str, tuple[float, float]] | None = None,
    prior: Mapping[str, tuple[float, float]] | None = None,
    loss: str = "squares",
    loss_width: float = 3.0,
    relative: float = 0.01,
    fraction: float = 0.01,
    starts: int = 1,
    folds: int = 0,
    iterations: int = 100,
    out: str | os.PathLike[str] | None = None,
    new_set: int = 0,
    comment: str = "",
    overwrite: bool = False,
    set: int = 0,
    sets: Sequence[int] = (),
    home: str | os.PathLike[str] | None = None,
) -> FitResult:
    """Adjusts parameters to measured data.

    ``data`` is a CSV file, a mapping of columns or a data frame, or a list of these. Columns are called by quantity
    and unit, as ``"T/K"``, ``"p/Pa"``, ``"rhoL/(kg/m3)"``, ``"x_methane"``, ``"u_p/%"`` (docs/fit.md has all); quantities of pint are converted to the unit in the name.
    Several systems are fitted at once where ``substances`` is a list of lists, as ``[["methane", "propane"],
    ["methane", "butane"]]``; then ``data`` is a list with the data of each. They have one value of the parameters that
    ``share`` names (all that are adjusted, if it is left out), and of others each its own, ``"lij (methane + butane)"``.
    ``adjust`` names parameters as their files do: ``"m"``, ``"Ts"``, ``"kij"``. ``start``, ``bounds`` (lower, upper) and
    ``prior`` (value, standard deviation) are by name; ``relative`` and ``fraction`` are the deviations that count as 1 where
    a point has no uncertainty; ``set`` is the parameter set of the substance or pair to begin with, ``sets`` those of the
    components of a mixture; ``loss`` is ``"squares"``, ``"huber"`` or ``"cauchy"``. With ``out`` a parameter file is
    written into that data home, as set ``new_set`` (0: the next that is free). Ctrl-C ends the fit after its next step
    and raises :class:`Interrupted`, whose ``partial`` is the result with the best parameters so far; no file is written.

    >>> import corvane as cv
    >>> T = [200.0, 240.0, 280.0, 320.0, 360.0]
    >>> q = cv.Fluid("propane").saturation(T=T)
    >>> r = cv.fit("PCSAFT", "propane", {"T/K": T, "p/Pa": q.p, "rhoL/(mol/m3)": q.liquid.rho}, ["m", "Ts", "vs"])
    >>> r.converged
    True
    """
    if not hasattr(_native, "fit"):
        raise NotImplementedError("this package was built without Eigen, and without fits")
    names: list[Any] = [substances] if isinstance(substances, str) else list(substances)
    several = bool(names) and not isinstance(names[0], str)
    systems = [list(one) for one in names] if several else [names]
    wanted = [adjust] if isinstance(adjust, str) else list(adjust)
    shared = wanted if share is None else [share] if isinstance(share, str) else list(share)
    given_for: dict[str, Iterable[str] | None] = {"share": shared, "start": start, "bounds": bounds, "prior": prior}
    for option, those in given_for.items():
        for name in those or ():
            if name not in wanted:
                raise ValueError(f"{option}: '{name}' is not adjusted")
    given = list(data) if several else [data]
    tables = [list(one) if isinstance(one, (list, tuple)) else [one] for one in given]
    found = _native.fit(
        model=model,
        substances=systems,
        tables=[[_table(one, k + 1) for k, one in enumerate(of)] for of in tables],
        adjust=wanted,
        share=shared if several else [],
        start={name: float(value) for name, value in (start or {}).items()},
        bounds={name: (float(a), float(b)) for name, (a, b) in (bounds or {}).items()},
        prior={name: (float(a), float(b)) for name, (a, b) in (prior or {}).items()},
        loss=loss,
        loss_width=loss_width,
        relative=relative,
        fraction=fraction,
        starts=starts,
        folds=folds,
        iterations=iterations,
        out="" if out is None else os.path.abspath(out),
        new_set=new_set,
        comment=comment,
        overwrite=overwrite,
        set=set,
        sets=list(sets),
        home=directory(home),
    )
    n = len(found["parameters"])
    found["correlation"] = np.reshape(found["correlation"], (n, n))
    interrupted = found.pop("interrupted")
    result = FitResult(**found)
    if interrupted:
        raise Interrupted(result)
    return result
