"""Activity coefficients, Henry's constants, virial coefficients, ideal curves: what fluids and mixtures hand out."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any, ClassVar, Sequence

from . import _native
from ._numpy import np
from .arrays import flat_with_composition, magnitude
from .results import OfComponents, Table, draws
from .status import code_of, judge

if TYPE_CHECKING:
    from numpy.typing import ArrayLike

_ROOT = {"liquid": 1, "stable": 2, "vapour": 3}
_KINDS = {"zeno": 0, "boyle": 1, "joule-thomson": 2, "joule": 3}


class ExcessProperties(OfComponents):
    """A phase against its pure components at the same T and p.

    Attributes, of the broadcast shape of the arguments: T (K), p (Pa), rho (mol/m³), gE, hE (J/mol), sE, cpE
    (J/(mol K)), vE (m³/mol), status; components last: x, gamma (of an absent component at infinite dilution), phi,
    rho_pure (mol/m³, not-a-number without a density root), liquid (the pure component is a liquid there).
    """

    columns: ClassVar[tuple[str, ...]] = ("T", "p", "rho", "gE", "hE", "sE", "cpE", "vE", "x", "gamma", "phi",
                                          "rho_pure", "liquid")  # fmt: skip
    ordinates: ClassVar[tuple[str, ...]] = ("gE",)

    def __init__(self, T: Any, p: Any, x: Any, values: np.ndarray, status: np.ndarray, components: Sequence[str]):
        n = len(components)
        self.T, self.p, self.x = T, p, x
        for k, name in enumerate(("rho", "gE", "hE", "sE", "cpE", "vE")):
            setattr(self, name, values[..., k])
        blocks = [values[..., 6 + k * n : 6 + (k + 1) * n] for k in range(4)]
        self.gamma, self.phi, self.rho_pure = np.exp(blocks[0]), np.exp(blocks[1]), blocks[2]
        self.liquid = blocks[3] > 0
        self.status, self._components = status, components

    def _axes(self, columns: dict[str, np.ndarray], x: str | None, y: str | None) -> tuple[str, str]:
        at = columns[f"x_{self._label(0)}"]
        if x is None and y != f"x_{self._label(0)}" and np.unique(at).size > 1:
            x = f"x_{self._label(0)}"
        return super()._axes(columns, x, y)


class HenryConstants(Table):
    """A solute, infinitely dilute in a liquid.

    Attributes, of the broadcast shape of the arguments: T (K), p (Pa), H (Pa, lim f/x), gamma (against the pure
    solute's densest root at T and p), phi, v (partial molar volume, m³/mol), h_solution (from the ideal gas, J/mol),
    rho (of the solvent, mol/m³), status.
    """

    columns: ClassVar[tuple[str, ...]] = ("T", "p", "H", "gamma", "phi", "v", "h_solution", "rho")
    ordinates: ClassVar[tuple[str, ...]] = ("H",)

    def __init__(self, T: Any, values: np.ndarray, status: np.ndarray):
        self.T, self.status = T, status
        for k, name in enumerate(self.columns[1:]):
            setattr(self, name, values[..., k])


class VirialCoefficients(OfComponents):
    """Attributes, of the broadcast shape of the arguments: T (K), B (m³/mol), C (m⁶/mol²), TdBdT (m³/mol), status;
    with two axes more B_ij (m³/mol), which sum to B with the mole fractions."""

    columns: ClassVar[tuple[str, ...]] = ("T", "B", "C", "TdBdT")
    further: ClassVar[tuple[str, ...]] = ("B_ij",)
    ordinates: ClassVar[tuple[str, ...]] = ("B",)

    def __init__(self, T: Any, values: np.ndarray, status: np.ndarray, components: Sequence[str]):
        n = len(components)
        self.T, self.status, self._components = T, status, components
        for k, name in enumerate(self.columns[1:]):
            setattr(self, name, values[..., k])
        self.B_ij = values[..., 3:].reshape(*status.shape, n, n)


class IdealCurve(Table):
    """An ideal curve, one axis: T (K), p (Pa), rho (mol/m³), from zero density on; kind; T_zero (K, at zero density);
    highest (T, p, rho of the highest pressure), last, end (``"saturation"``, ``"temperature"``, ``"pressure"``,
    ``"lost"``)."""

    columns: ClassVar[tuple[str, ...]] = ("T", "p", "rho")
    words: ClassVar[tuple[str, ...]] = ("kind", "T_zero", "highest", "last", "end")

    def __init__(self, d: dict[str, Any], kind: str):
        self.T, self.p, self.rho = (d["points"][:, k] for k in range(3))
        self.status = np.zeros(len(self.T), dtype=np.int8)
        self.kind, self.T_zero, self.highest = kind, d["T_zero"], d["highest"]
        self.last, self.end = d["last"], d["end"]

    @draws
    def plot(self, ax: Any = None, *, x: str | None = None, y: str | None = None, label: str | None = None) -> Any:
        """Pressure over temperature (MPa, K), or what ``x`` and ``y`` name. label: of the legend, else the kind."""
        return super().plot(ax, x=x or "T", y=y or "p", label=label or self.kind)


def excess(native: Any, components: Sequence[str], x: ArrayLike, T: ArrayLike, p: ArrayLike, phase: str, threads: int,
           errors: str | None) -> ExcessProperties:  # fmt: skip
    shape, (t, q), z = flat_with_composition(x, len(components), T=T, p=p)
    values, status, words, done = _native.excess(native, t, q, z, code_of("phase", phase, _ROOT), threads)
    status = status.reshape(shape)
    result = ExcessProperties(t.reshape(shape), q.reshape(shape), z.reshape(*shape, -1), values.reshape(*shape, -1),
                              status, components)  # fmt: skip
    return judge(result, status, words, done, errors)


def henry(native: Any, components: Sequence[str], solute: int, x: ArrayLike, T: ArrayLike, p: ArrayLike | None,
          threads: int, errors: str | None) -> HenryConstants:  # fmt: skip
    shape, (t, q), z = flat_with_composition(x, len(components), T=T, p=np.nan if p is None else p)
    values, status, words, done = _native.henry(native, solute, t, q, z, threads)
    status = status.reshape(shape)
    return judge(HenryConstants(t.reshape(shape), values.reshape(*shape, -1), status), status, words, done, errors)


def virial(native: Any, components: Sequence[str], T: ArrayLike, x: ArrayLike, threads: int,
           errors: str | None) -> VirialCoefficients:  # fmt: skip
    shape, (t,), z = flat_with_composition(x, len(components), T=T)
    values, status, words, done = _native.virial(native, t, z, threads)
    status = status.reshape(shape)
    result = VirialCoefficients(t.reshape(shape), values.reshape(*shape, -1), status, components)
    return judge(result, status, words, done, errors)


def ideal_curve(native: Any, kind: str, T: ArrayLike | None, T_min: float, p_max: float, x: ArrayLike | None = None) -> IdealCurve:
    code = code_of("kind", kind, _KINDS)
    at = [] if T is None else np.atleast_1d(np.asarray(magnitude(T, "T"), dtype=float)).tolist()
    T_min, p_max = float(magnitude(T_min, "T")), float(magnitude(p_max, "p"))
    if x is None:
        return IdealCurve(_native.ideal_curve(native, code, at, T_min, p_max), kind)
    z = np.ascontiguousarray(magnitude(x, "x"), dtype=float)
    return IdealCurve(_native.ideal_curve_of_mixture(native, z, code, at, T_min, p_max), kind)
