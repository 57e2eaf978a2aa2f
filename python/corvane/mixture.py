"""Mixtures: properties, certified equilibria, diagrams."""

from __future__ import annotations

import os
from typing import TYPE_CHECKING, Any, ClassVar, Mapping, Sequence

from . import _native, binary_type, outputs
from ._native import written_name
from ._numpy import np
from .arrays import flat, flat_with_composition, magnitude
from .binary_type import BinaryType
from .catalogue import directory
from .diagram import PropertyDiagram, diagram
from .fluid import _CODES, _PHASE, Fluid, _again
from .quantities import returns_quantities
from .residue import ResidueMap, draw_triangle, in_triangle
from .results import Table, colour_of, figure_axes
from .status import judge

if TYPE_CHECKING:
    from numpy.typing import ArrayLike

_BRANCH = {"any": 0, "lower": 1, "upper": 2}
_ROOT = {"liquid": 1, "stable": 2, "vapour": 3}


class _OfComponents(Table):
    """A table whose compositions are named after the components."""

    _components: Sequence[str] = ()

    def _label(self, k: int) -> str:
        return self._components[k] if k < len(self._components) else str(k)


class MixtureState(_OfComponents):
    """One homogeneous phase of a mixture. Attributes, of the broadcast shape of the arguments: those of
    :class:`corvane.State` without the two-phase ones, and x (mole fractions, components last)."""

    columns: ClassVar[tuple[str, ...]] = ("T", "rho", *_PHASE, "x")

    def __init__(self, columns: dict[str, np.ndarray], status: np.ndarray, components: Sequence[str]):
        for name in self.columns:
            setattr(self, name, columns[name])
        self.status, self._components = status, components


class FlashResult(_OfComponents):
    """Stable states: phases and their amounts, certified.

    Attributes, of the broadcast shape of the arguments: T (K), p (Pa), rho (mol/m³, of the whole), h, u
    (J/mol), s (J/(mol K)), phases (their number), status. The certificate: tpd (lowest tangent-plane
    distance found, over RT), x_error, rho_error (bounds of the errors of mole fractions and, relative, of
    the phases' densities; not-a-number where none are known, as of one phase), dmu, dp (largest difference
    of potentials over RT and, relative, of pressures between the phases). With one axis more, for the
    phases in order of falling mass density (not-a-number where there are fewer): fraction,
    rho_phase (mol/m³); with two axes more: x (phase, component).
    """

    columns: ClassVar[tuple[str, ...]] = ("T", "p", "rho", "h", "s", "u", "phases", "tpd", "x_error", "rho_error",
                                          "dmu", "dp")  # fmt: skip

    def __init__(self, values: np.ndarray, status: np.ndarray, components: Sequence[str]):
        n = len(components)
        for k, name in enumerate(self.columns):
            setattr(self, name, values[..., k])
        slots = values[..., len(self.columns):].reshape(*status.shape, n + 1, n + 2)
        self.fraction, self.rho_phase, self.x = slots[..., 0], slots[..., 1], slots[..., 2:]
        self.status, self._components = status, components

    def __repr__(self) -> str:
        text = super().__repr__()
        if np.shape(self.status) or self.status:
            return text
        for k in range(int(self.phases)):
            x = ", ".join(f"{c} {v:.6g}" for c, v in zip(self._components, self.x[k]))
            text += f"\n  phase {k + 1}: {self.fraction[k]:.6g} of the whole, {self.rho_phase[k]:.6g} mol/m**3, {x}"
        return text


class SaturationPoints(_OfComponents):
    """Certified bubble or dew points.

    Attributes: T (K), p (Pa), rho, rho_incipient (mol/m³), y (composition of the incipient phase,
    components last), value_error (bound of the relative error of p, or of T where p was given), x_error
    (bound of that of the compositions), dmu, dp, tpd (as of :class:`FlashResult`), status. The bounds are
    not-a-number where none are known.
    """

    columns: ClassVar[tuple[str, ...]] = ("T", "p", "rho", "rho_incipient", "value_error", "x_error", "dmu", "dp", "tpd",
                                          "y")  # fmt: skip

    def __init__(self, values: np.ndarray, status: np.ndarray, components: Sequence[str]):
        for k, name in enumerate(self.columns[:-1]):
            setattr(self, name, values[..., k])
        self.y, self.status, self._components = values[..., 9:], status, components


class Envelope(_OfComponents):
    """A phase envelope, from the dew side at low pressure on.

    Attributes, one axis: T (K), p (Pa), rho, rho_incipient (mol/m³), bubble (the incipient phase is the
    lighter one), unstable (a third phase is more stable), y (components last), value_error (bound of the
    relative error of p and T), x_error (of that of the compositions; both not-a-number without
    ``stability``, and where none is known); critical, cricondentherm, cricondenbar: lists of (T, p);
    closed: whether it came back to low pressure.
    """

    columns: ClassVar[tuple[str, ...]] = ("T", "p", "rho", "rho_incipient", "value_error", "x_error", "y")

    def __init__(self, d: dict[str, Any], components: Sequence[str]):
        points = d["points"]
        self.T, self.p, self.rho, self.rho_incipient = (points[:, k] for k in range(4))
        self.bubble, self.unstable = points[:, 4] > 0, points[:, 5] > 0
        self.value_error, self.x_error = points[:, 6], points[:, 7]
        self.y, self.status = points[:, 8:], np.zeros(len(points), dtype=np.int8)
        for name in ("critical", "cricondentherm", "cricondenbar"):
            setattr(self, name, [tuple(row[:2]) for row in d[name]])
        self.closed, self._components = d["closed"], components

    def plot(self, ax: Any = None, *, label: str | None = None) -> Any:
        """Pressure over temperature, critical points marked; with a label in one colour, dew points dashed."""
        ax = figure_axes(ax)
        colour = colour_of(ax, label)
        for bubble, name in ((True, "bubble points"), (False, "dew points")):
            here = self.bubble == bubble
            ax.plot(np.where(here, self.T, np.nan), np.where(here, self.p, np.nan) / 1e6, color=colour,
                    ls="-" if bubble or label is None else "--", label=name if label is None else None)  # fmt: skip
        for T, p in self.critical:
            ax.plot(T, p / 1e6, "o", color=colour or "k", label="critical" if label is None else None)
        ax.set(xlabel="T / K", ylabel="p / MPa")
        ax.legend()
        return ax


class Branch(Table):
    """Tie lines of a binary, one axis: T (K), p (Pa), x and y (mole fraction of the first component in
    both phases), rho_x, rho_y (mol/m³), value_error (bound of the relative error of p, or of T where p was
    given), x_error (of x and y; not-a-number where none is known, as of pure components); kind, begin, end in
    words; azeotropes: rows (T, p, x)."""

    columns: ClassVar[tuple[str, ...]] = ("T", "p", "x", "y", "rho_x", "rho_y", "value_error", "x_error")

    def __init__(self, d: dict[str, Any]):
        points = d["points"]
        for name, column in zip(self.columns, (*range(6), 7, 8)):
            setattr(self, name, points[:, column])
        self.status = np.zeros(len(points), dtype=np.int8)
        self.kind, self.begin, self.end = d["kind"], d["begin"], d["end"]
        self.azeotropes = d["azeotropes"][:, :3]


class Diagram:
    """All stable two-phase states of a binary at one T or p.

    Attributes: branches (list of :class:`Branch`), three_phase (array of rows T/K, p/Pa, x of three
    phases, their densities), complete (every branch is explained at both ends and nothing is open).
    """

    def __init__(self, d: dict[str, Any], at_T: bool, value: float, components: Sequence[str]):
        self.branches = [Branch(b) for b in d["branches"]]
        self.three_phase, self.complete = d["three_phase"], d["complete"]
        self._at_T, self._value, self._components = at_T, value, components

    def to_pandas(self) -> Any:
        """All branches in one ``pandas.DataFrame`` with a column ``branch``."""
        import pandas

        frames = [b.to_pandas().assign(branch=k) for k, b in enumerate(self.branches)]
        return pandas.concat(frames, ignore_index=True)

    def plot(self, ax: Any = None, *, label: str | None = None) -> Any:
        """p (or T) over the mole fraction of the first component in both phases; with a label in one colour."""
        ax = figure_axes(ax)
        colour = colour_of(ax, label)
        name, scale = ("p", 1e-6) if self._at_T else ("T", 1.0)
        for branch in self.branches:
            ordinate = getattr(branch, name) * scale
            (line,) = ax.plot(branch.x, ordinate, color=colour)
            ax.plot(branch.y, ordinate, color=line.get_color())
        for row in self.three_phase:
            ax.plot(row[2:5], np.full(3, row[1] * scale if self._at_T else row[0]), ".-", color=colour or "k")
        ax.set(xlabel=f"mole fraction of {written_name(self._components[0])}", ylabel="p / MPa" if self._at_T else "T / K", xlim=(0, 1))
        ax.set_title(f"T = {self._value:g} K" if self._at_T else f"p = {self._value / 1e6:g} MPa")
        if label is not None:
            ax.legend()
        return ax

    def __repr__(self) -> str:
        what = ", ".join(f"{b.kind} ({b.begin} to {b.end}, {len(b)} points)" for b in self.branches)
        at = f"T = {self._value:g} K" if self._at_T else f"p = {self._value:g} Pa"
        return f"Diagram at {at}: {what}" + ("" if self.complete else "; not complete")


class CriticalPoints(_OfComponents):
    """Critical points, one axis: T (K), p (Pa), rho (mol/m³), stable, x (components last), conditions (largest
    residual of the critical conditions), tpd (lowest tangent-plane distance found, over RT)."""

    columns: ClassVar[tuple[str, ...]] = ("T", "p", "rho", "x", "conditions", "tpd")

    def __init__(self, rows: np.ndarray, components: Sequence[str]):
        self.T, self.p, self.rho, self.stable = rows[:, 0], rows[:, 1], rows[:, 2], rows[:, 3] > 0
        self.conditions, self.tpd = rows[:, 4], rows[:, 5]
        self.x, self.status, self._components = rows[:, 6:], np.zeros(len(rows), dtype=np.int8), components


class CriticalLine(CriticalPoints):
    """A critical line of a binary: as :class:`CriticalPoints`; begin and end in words."""

    def __init__(self, d: dict[str, Any], components: Sequence[str]):
        super().__init__(d["points"], components)
        self.begin, self.end = d["begin"], d["end"]


class ThreePhaseLine(Table):
    """A line of three fluid phases of a binary, by rising T: T (K), p (Pa); x (mole fraction of the first component)
    and rho (mol/m³) with an axis more, for the phases by falling mass density; dmu, dp, tpd (as of
    :class:`FlashResult`); begin and end in words."""

    columns: ClassVar[tuple[str, ...]] = ("T", "p", "x", "rho", "dmu", "dp", "tpd")

    def __init__(self, d: dict[str, Any]):
        points = d["points"]
        self.T, self.p, self.x, self.rho = points[:, 0], points[:, 1], points[:, 2:5], points[:, 5:8]
        self.dmu, self.dp, self.tpd = points[:, 8:].T
        self.begin, self.end, self.status = d["begin"], d["end"], np.zeros(len(points), dtype=np.int8)

    def _label(self, k: int) -> str:
        return str(k + 1)


class AzeotropicLine(Table):
    """A line of azeotropes of a binary, one axis: T (K), p (Pa), x (mole fraction of the first component),
    rho_liquid, rho_vapour (mol/m³), dmu, dp, tpd (as of :class:`FlashResult`); begin and end in words."""

    columns: ClassVar[tuple[str, ...]] = ("T", "p", "x", "rho_liquid", "rho_vapour", "dmu", "dp", "tpd")

    def __init__(self, d: dict[str, Any]):
        for k, name in enumerate(self.columns):
            setattr(self, name, d["points"][:, k])
        self.begin, self.end, self.status = d["begin"], d["end"], np.zeros(len(self.T), dtype=np.int8)


class TernaryRegion(_OfComponents):
    """A region of two phases of a ternary: its tie lines, one axis.

    Attributes: x, y (compositions of the phase that is denser by mass half-way and of the other, components last),
    rho_x, rho_y (mol/m³), dmu, dp, tpd, x_error (certificate of every tie line; at a plait point x_error is
    not-a-number); kind, begin, end in words.
    """

    columns: ClassVar[tuple[str, ...]] = ("x", "y", "rho_x", "rho_y", "dmu", "dp", "tpd", "x_error")

    def __init__(self, d: dict[str, Any], components: Sequence[str]):
        points = d["points"]
        self.x, self.y = points[:, :3], points[:, 3:6]
        for k, name in enumerate(self.columns[2:]):
            setattr(self, name, points[:, 6 + k])
        self.kind, self.begin, self.end = d["kind"], d["begin"], d["end"]
        self.status, self._components = np.zeros(len(points), dtype=np.int8), components


class TernaryDiagram:
    """Everything that is stable in a ternary at T and p.

    Attributes: T (K), p (Pa), regions (list of :class:`TernaryRegion`), three_phase (compositions of the corners of
    every triangle, shape (n, 3 phases, 3 components)), three_phase_rho (mol/m³, shape (n, 3)), plait
    (:class:`CriticalPoints`), open (compositions of which nothing certain is known), complete (every region is
    explained at both ends, and nothing is open).
    """

    def __init__(self, d: dict[str, Any], T: float, p: float, components: Sequence[str]):
        self.T, self.p, self._components = T, p, components
        self.regions = [TernaryRegion(r, components) for r in d["regions"]]
        self.three_phase, self.three_phase_rho = d["three_phase"][..., :3], d["three_phase"][..., 3]
        self.plait, self.open = CriticalPoints(d["plait"], components), d["open"]
        self.complete = d["complete"]

    def to_pandas(self) -> Any:
        """All tie lines in one ``pandas.DataFrame`` with a column ``region``."""
        import pandas

        frames = [r.to_pandas().assign(region=k) for k, r in enumerate(self.regions)]
        return pandas.concat(frames, ignore_index=True)

    def plot(self, ax: Any = None, *, tie_lines: int = 12, label: str | None = None) -> Any:
        """The triangle, the first component at the top, the second at the lower left; about so many tie lines of
        every region. With a label in one colour."""
        ax = figure_axes(ax)
        draw_triangle(ax, self._components)
        colour = colour_of(ax, label)
        for region in self.regions:
            for k in np.unique(np.linspace(0, len(region) - 1, tie_lines).astype(int)):
                ax.plot(*in_triangle(np.stack([region.x[k], region.y[k]])), color=colour or "0.6", lw=0.6,
                        alpha=0.5 if label else 1.0)  # fmt: skip
            lighter = "C3" if region.kind == "vapour_liquid" else "C2"
            ax.plot(*in_triangle(region.x), color=colour or "C0")
            ax.plot(*in_triangle(region.y), color=colour or lighter)
        for corners in self.three_phase:
            ax.plot(*in_triangle(corners[[0, 1, 2, 0]]), ".-", color=colour or "k")
        ax.plot(*in_triangle(self.plait.x), "o", color=colour or "k", label="plait point" if label is None else None)
        ax.set_title(f"T = {self.T:g} K, p = {self.p / 1e6:g} MPa", pad=18)
        if label is not None:
            ax.legend(fontsize="small")
        return ax

    def __repr__(self) -> str:
        what = ", ".join(f"{r.kind} ({r.begin} to {r.end}, {len(r)} tie lines)" for r in self.regions)
        more = f"; {len(self.three_phase)} triangles, {len(self.plait)} plait points"
        return f"TernaryDiagram at T = {self.T:g} K, p = {self.p:g} Pa: {what or 'one phase'}{more}" + (
            "" if self.complete else "; not complete"
        )


class SolidPoints(_OfComponents):
    """Fluids above a pure solid.

    Attributes: T (K), p (Pa), rho, rho_solid (mol/m³), stable (the fluid does not split, and the other component does
    not freeze), x (of the fluid, components last), status; of a line also begin and end, in words.
    """

    columns: ClassVar[tuple[str, ...]] = ("T", "p", "rho", "rho_solid", "x")
    begin = end = ""

    def __init__(self, rows: np.ndarray, status: np.ndarray, components: Sequence[str], solid: int):
        for k, name in enumerate(self.columns[:-1]):
            setattr(self, name, rows[..., k])
        self.stable, self.x = rows[..., 4] > 0, rows[..., 5:]
        self.status, self._components, self._solid = status, components, solid

    def plot(self, ax: Any = None, *, label: str | None = None) -> Any:
        """The mole fraction of the component that is solid: over p, or over T where p is one."""
        ax = figure_axes(ax)
        p, y = np.ravel(self.p) / 1e6, np.ravel(self.x[..., self._solid])
        at_p = np.ptp(p[np.isfinite(p)]) < 1e-9 * np.nanmax(p)
        ax.plot(np.ravel(self.T) if at_p else p, y, label=label or f"solid {written_name(self._components[self._solid])}")
        ax.set(xlabel="T / K" if at_p else "p / MPa", ylabel=f"mole fraction of {written_name(self._components[self._solid])}", yscale="log")
        if label is not None:
            ax.legend()
        return ax


class Projection:
    """What a binary does in p and T: attributes ``vapour_pressures`` (name: :class:`corvane.Saturation`),
    ``critical`` (:class:`CriticalLine`), ``three_phase`` (:class:`ThreePhaseLine`) and ``azeotropic``
    (:class:`AzeotropicLine`)."""

    def __init__(self, vapour_pressures: dict[str, Any], critical: list[CriticalLine],
                 three_phase: list[ThreePhaseLine], azeotropic: list[AzeotropicLine]):  # fmt: skip
        self.vapour_pressures, self.critical = vapour_pressures, critical
        self.three_phase, self.azeotropic = three_phase, azeotropic

    def plot(self, ax: Any = None, *, label: str | None = None) -> Any:
        """Pressure over temperature; with a label in one colour: three phases dotted, azeotropes dashed."""
        ax = figure_axes(ax)
        colour = colour_of(ax, label)
        for (name, s), shade in zip(self.vapour_pressures.items(), ("k", "0.55")):
            ax.plot(s.T, s.p / 1e6, "-", color=colour or shade, lw=1, label=written_name(name) if label is None else None)
        parts = [(self.critical, "critical", "C3", "-"), (self.three_phase, "three phases", "C0", ":" if label else "-"),
                 (self.azeotropic, "azeotropes", "C2", "--")]  # fmt: skip
        for lines, what, usual, style in parts:
            for k, line in enumerate(lines):
                ax.plot(line.T, line.p / 1e6, style, color=colour or usual, label=what if k == 0 and label is None else None)
        ax.set(xlabel="T / K", ylabel="p / MPa")
        ax.legend(fontsize="small")
        return ax


class Mixture:
    """A mixture with an equation of state and a mixing theory.

    Parameters
    ----------
    model : str
        ``"PR+vdW1"``, ``"SRK+vdW1"``, ``"PCSAFT+LB"``, ``"MEOS+GERG"``. May be left out: see Notes.
    components : sequence of str
        As for :class:`corvane.Fluid`.
    kij : float or mapping, optional
        Interaction parameter of a binary, or ``{("methane", "propane"): 0.01}``, in place of the stored
        one (parameter 0 of the pair).
    estimate : bool
        False: a pair without published parameters is refused. True: the mixing theory's own estimate
        stands in, see ``estimated``.
    home : path, optional
        As for :class:`corvane.Fluid`.

    Notes
    -----
    ``Mixture(["nitrogen", "oxygen"])`` takes the multi-fluid model where parameters of all pairs are
    published, else PC-SAFT on the same condition, else Peng–Robinson.
    """

    def __init__(self, model: str | Sequence[str], components: Sequence[str] | None = None, *,
                 kij: float | Mapping[tuple[str, str], float] | None = None, sets: Sequence[int] = (),
                 pair_set: int = 0, estimate: bool = True, home: str | os.PathLike[str] | None = None):  # fmt: skip
        self._options = (tuple(sets), pair_set, estimate, directory(home))
        if components is None:
            if isinstance(model, str):
                raise TypeError("a mixture needs components")
            self._native = _best([str(c) for c in model], self._options)
        else:
            self._native = _native.Mixture.open(str(model), list(components), list(sets), pair_set, estimate,
                                                self._options[3])
        self._changed: dict[tuple[int, int, int], float] = {}
        self._changed_components: dict[tuple[int, int], float] = {}
        self._equation: Any = None
        if kij is not None:
            self._set_kij(kij)

    @classmethod
    def _of_native(cls, native: Any, equation: Any, home: str | os.PathLike[str] | None) -> Mixture:
        """A mixture with an equation written in Python."""
        mixture = cls.__new__(cls)
        mixture._native, mixture._changed, mixture._equation = native, {}, equation
        mixture._changed_components, mixture._options = {}, ((), 1, True, home)
        return mixture

    # ---- what it is

    @property
    def model(self) -> str:
        return self._native.model

    @property
    def components(self) -> list[str]:
        """Names in the data home."""
        return self._native.components

    @property
    def estimated(self) -> list[tuple[str, str]]:
        """Pairs without published parameters."""
        names = self.components
        given = {frozenset((i, j)) for k, i, j in self._changed if k == 0}
        return [(names[i], names[j]) for i, j in self._native.estimated if frozenset((i, j)) not in given]

    @property
    def M(self) -> np.ndarray:
        """Molar masses, kg/mol."""
        return np.asarray(self._native.M)

    def pair_parameter(self, a: str | int, b: str | int, index: int = 0) -> float:
        """Binary parameter of a pair; 0 is k_ij for the one-fluid and SAFT mixing rules."""
        return self._native.pair_parameter(index, self._index(a), self._index(b))

    def set_pair_parameter(self, a: str | int, b: str | int, value: float, index: int = 0) -> None:
        """Changes a binary parameter of this object."""
        i, j = self._index(a), self._index(b)
        self._native.set_pair_parameter(index, i, j, value)
        self._changed[index, i, j] = float(value)

    def component_parameters(self, component: str | int) -> np.ndarray:
        """Parameters of the equation of a component, in the library's order and units (a copy), as
        :attr:`Fluid.parameters`."""
        return np.asarray(self._native.component_parameters(self._index(component)))

    def set_component_parameter(self, component: str | int, index: int, value: float) -> None:
        """Changes one parameter of a component in this object."""
        i = self._index(component)
        self._native.set_component_parameter(i, index, value)
        self._changed_components[i, index] = float(value)

    @returns_quantities(unit="")
    def mass_to_mole(self, w: ArrayLike) -> np.ndarray:
        """Mole fractions from mass fractions (components last)."""
        n = np.asarray(magnitude(w, "w_mass"), dtype=float) / self.M
        return n / n.sum(axis=-1, keepdims=True)

    # ---- one phase

    @returns_quantities
    def phase(self, T: ArrayLike, rho: ArrayLike, x: ArrayLike, *, threads: int = 1,
              errors: str | None = None) -> MixtureState:  # fmt: skip
        """Properties of the homogeneous phase at T (K), rho (mol/m³) and mole fractions x, stable or
        not."""
        shape, (t, r), z = flat_with_composition(x, len(self.components), T=T, rho=rho)
        values, status, words, done = self._native.properties(t, r, z, threads)
        status = status.reshape(shape)
        columns = {name: values[:, k].reshape(shape) for k, name in enumerate(_PHASE)}
        columns.update(T=t.reshape(shape), rho=r.reshape(shape), x=z.reshape(*shape, -1))
        return judge(MixtureState(columns, status, self.components), status, words, done, errors)

    @returns_quantities(unit="mol/m**3")
    def density(self, T: ArrayLike, p: ArrayLike, x: ArrayLike, phase: str = "stable", *, threads: int = 1,
                errors: str | None = None) -> np.ndarray:  # fmt: skip
        """Density (mol/m³) of one homogeneous phase at T (K), p (Pa): its ``"liquid"`` (densest) or
        ``"vapour"`` (thinnest) root, or the one of lower Gibbs energy. Whether that splits is what
        :meth:`flash` says."""
        shape, (t, q), z = flat_with_composition(x, len(self.components), T=T, p=p)
        values, status, words, done = self._native.densities(t, q, z, _ROOT[phase], threads)
        return judge(values.reshape(shape), status.reshape(shape), words, done, errors)

    @returns_quantities(unit="")
    def ln_phi(self, T: ArrayLike, rho: ArrayLike, x: ArrayLike, *, threads: int = 1,
               errors: str | None = None) -> np.ndarray:  # fmt: skip
        """Logarithms of the fugacity coefficients at T (K), rho (mol/m³); components last."""
        shape, (t, r), z = flat_with_composition(x, len(self.components), T=T, rho=rho)
        values, status, words, done = self._native.ln_phi(t, r, z, threads)
        return judge(values.reshape(*shape, -1), status.reshape(shape), words, done, errors)

    @returns_quantities
    def excess(self, x: ArrayLike, *, T: ArrayLike, p: ArrayLike, phase: str = "liquid", threads: int = 1,
               errors: str | None = None) -> outputs.ExcessProperties:  # fmt: skip
        """Activity coefficients and excess functions of the phase of mole fractions x at T (K) and p (Pa), against the
        pure components on the same density root: ``"liquid"``, ``"vapour"``, or ``"stable"`` for each that of
        lower Gibbs energy. Where there is one root alone it is taken: ``liquid`` and ``rho_pure`` tell."""
        return outputs.excess(self._native, self.components, x, T, p, phase, threads, errors)

    @returns_quantities
    def henry(self, solute: str | int, x: ArrayLike | None = None, *, T: ArrayLike, p: ArrayLike | None = None,
              threads: int = 1, errors: str | None = None) -> outputs.HenryConstants:  # fmt: skip
        """Henry's constants, lim f/x, of a component in the liquid x of the others (left out: in a binary, the other
        one) at T (K) and its vapour pressure, or p (Pa)."""
        i = self._index(solute)
        if x is None:
            if len(self.components) != 2:
                raise TypeError("give x, the composition of the solvent")
            x = [0.0 if k == i else 1.0 for k in range(2)]
        return outputs.henry(self._native, self.components, i, x, T, p, threads, errors)

    @returns_quantities
    def virial(self, x: ArrayLike, *, T: ArrayLike, threads: int = 1,
               errors: str | None = None) -> outputs.VirialCoefficients:  # fmt: skip
        """Virial coefficients at T (K), with those of the pairs, B_ij = ½·∂²(n²B)/∂n_i∂n_j."""
        return outputs.virial(self._native, self.components, T, x, threads, errors)

    @returns_quantities
    def ideal_curve(self, x: ArrayLike, kind: str = "joule-thomson", *, T: ArrayLike | None = None,
                    T_min: float = 0.0, p_max: float = 0.0) -> outputs.IdealCurve:  # fmt: skip
        """As :meth:`Fluid.ideal_curve`, of one phase of this composition, whether it splits or not."""
        return outputs.ideal_curve(self._native, kind, T, T_min, p_max, x)

    # ---- equilibria

    @returns_quantities
    def flash(self, z: ArrayLike, *, threads: int = 1, errors: str | None = None, **given: ArrayLike) -> FlashResult:
        """The stable state of composition z, in as many phases as it has, certified.

        Parameters
        ----------
        z : array_like
            Mole fractions, components on the last axis.
        T, p, rho, h, s, u, q : array_like
            Two of them, but not (h, u), (s, u), nor q beside others than T and p; K, Pa, mol/m³, J/mol,
            J/(mol K); q is the amount of the lightest phase. (T, h), (T, u), (p, rho), (p, u) and (rho, h) may
            belong to several states: then the element has none, and :meth:`flashes` lists them.
        """
        first, second = _pair(given)
        shape, (a, b), x = flat_with_composition(z, len(self.components), **{first: given[first], second: given[second]})
        values, status, words, done = self._native.flash(_CODES[first], a, _CODES[second], b, x, threads)
        status = status.reshape(shape)
        result = FlashResult(values.reshape(*shape, -1), status, self.components)
        return judge(result, status, words, done, errors)

    @returns_quantities
    def flashes(self, z: ArrayLike, **given: float) -> FlashResult:
        """All states of composition z (one axis) with two given values, as :meth:`flash`, one axis, by rising
        temperature (rising density where T is given). ``complete``: no part of the search was left open."""
        first, second = _pair(given)
        a, b = (float(magnitude(given[name], name)) for name in (first, second))
        values, complete = self._native.flash_all(_CODES[first], a, _CODES[second], b, _one(z))
        result = FlashResult(values, np.zeros(len(values), dtype=np.int8), self.components)
        result.complete = complete
        return result

    @returns_quantities
    def bubble(self, z: ArrayLike, *, T: ArrayLike | None = None, p: ArrayLike | None = None, branch: str = "any",
               threads: int = 1, errors: str | None = None) -> SaturationPoints:  # fmt: skip
        """Certified bubble points of the liquid z at T (K) or p (Pa). branch: of several solutions the
        one of lowest (``"lower"``) or highest (``"upper"``) p or T."""
        return self._saturation(True, z, T, p, branch, threads, errors)

    @returns_quantities
    def dew(self, z: ArrayLike, *, T: ArrayLike | None = None, p: ArrayLike | None = None, branch: str = "any",
            threads: int = 1, errors: str | None = None) -> SaturationPoints:  # fmt: skip
        """Certified dew points of the vapour z, as :meth:`bubble`."""
        return self._saturation(False, z, T, p, branch, threads, errors)

    @returns_quantities
    def envelope(self, z: ArrayLike, *, p_start: float = 5e4, p_max: float = 1e9, stability: bool = False) -> Envelope:
        """The phase envelope of composition z (one axis). stability: test every point for a third
        phase."""
        d = self._native.envelope(_one(z), float(magnitude(p_start, "p")), float(magnitude(p_max, "p")), stability)
        return Envelope(d, self.components)

    @returns_quantities
    def pxy(self, T: float, *, p_max: float = 1e9) -> Diagram:
        """The complete p-x-y diagram of a binary at T (K)."""
        T = float(magnitude(T, "T"))
        return Diagram(self._native.diagram(True, T, float(magnitude(p_max, "p"))), True, T, self.components)

    @returns_quantities
    def Txy(self, p: float, *, T_min: float = 0.0) -> Diagram:
        """The complete T-x-y diagram of a binary at p (Pa), down to T_min (K; 0: 0.3 of the lower
        critical temperature)."""
        p = float(magnitude(p, "p"))
        return Diagram(self._native.diagram(False, p, float(magnitude(T_min, "T"))), False, p, self.components)

    @returns_quantities
    def ternary(self, T: float, p: float, *, step: float = 0.02, mesh: int = 10) -> TernaryDiagram:
        """What three components do at T (K) and p (Pa): regions, triangles and plait points, certified.

        ``step``: longest step in the compositions of both phases together; ``mesh``: parts of an edge in the search
        for islands."""
        T, p = float(magnitude(T, "T")), float(magnitude(p, "p"))
        return TernaryDiagram(self._native.ternary(T, p, float(step), int(mesh)), T, p, self.components)

    @returns_quantities
    def residue_curves(self, p: float, *, step: float = 0.05, tolerance: float = 1e-6, mesh: int = 6) -> ResidueMap:
        """The residue curve map of three components at p (Pa): what is left in a still, with azeotropes and boundaries.

        ``mesh``: curves begin at inner points of a triangle divided by this."""
        p = float(magnitude(p, "p"))
        return ResidueMap(self._native.residue_map(p, float(step), float(tolerance), int(mesh)), p, self.components)

    @returns_quantities
    def diagram(self, z: ArrayLike, y: str = "p", x: str = "h", *, T: ArrayLike | None = None,
                p: ArrayLike | None = None, s: ArrayLike | None = None, rho: ArrayLike | None = None,
                points: int = 120) -> PropertyDiagram:  # fmt: skip
        """A property diagram of composition z, as :meth:`Fluid.diagram`: bubble and dew points of its phase envelope,
        isolines of flashes. "Critical" are the mole-fraction mean (lowest T) and the highest of the components."""
        z = _one(z)
        constants = self._native.critical_constants
        Tc, pc = (max(c[k] for c, part in zip(constants, z) if part > 0) for k in (0, 1))
        low = 0.55 * sum(c[0] * part for c, part in zip(constants, z))
        title = " + ".join(f"{part:.4g} {written_name(name)}" for part, name in zip(z, self.components))
        return diagram(lambda *a: self._native.property_diagram(z, *a), y, x, f"{title} ({self.model})", Tc, pc, low,
                       points, {"T": T, "p": p, "s": s, "rho": rho})  # fmt: skip

    @returns_quantities
    def critical_point(self, z: ArrayLike) -> CriticalPoints:
        """The stable critical point of composition z, certified (one row)."""
        return CriticalPoints(self._native.critical_points(_one(z), False), self.components)

    @returns_quantities
    def critical_points(self, z: ArrayLike) -> CriticalPoints:
        """All critical points of composition z that a search finds, stable or not."""
        return CriticalPoints(self._native.critical_points(_one(z), True), self.components)

    @returns_quantities
    def critical_lines(self, *, p_max: float = 1e9) -> list[CriticalLine]:
        """The critical lines of a binary, certified."""
        lines = self._native.critical_lines(float(magnitude(p_max, "p")))
        return [CriticalLine(d, self.components) for d in lines]

    @returns_quantities
    def three_phase_lines(self, *, p_max: float = 1e9) -> list[ThreePhaseLine]:
        """Lines of three fluid phases of a binary, certified."""
        return [ThreePhaseLine(d) for d in self._native.three_phase_lines(float(magnitude(p_max, "p")))]

    @returns_quantities
    def azeotropic_lines(self, *, p_max: float = 1e9) -> list[AzeotropicLine]:
        """Azeotropic lines of a binary, certified."""
        return [AzeotropicLine(d) for d in self._native.azeotropic_lines(float(magnitude(p_max, "p")))]

    @returns_quantities
    def projection(self, *, p_max: float = 1e8) -> Projection:
        """The p-T projection of a binary up to p_max (Pa): vapour pressures of the components, critical, three-phase
        and azeotropic lines."""
        pure, p_max = {}, float(magnitude(p_max, "p"))
        for k, name in enumerate(self.components):
            fluid = Fluid(name, self.model.split("+")[0], set=self._native.sets[k], home=self._options[3])
            T = np.linspace(0.5, 1.0, 60)[:-1] * fluid.T_critical
            s = fluid.saturation(T=T)
            pure[name] = s
        return Projection(pure, self.critical_lines(p_max=p_max), self.three_phase_lines(p_max=p_max),
                          self.azeotropic_lines(p_max=p_max))  # fmt: skip

    def binary_type(self, *, p_max: float = 1e9) -> BinaryType:
        """The type of a binary after van Konynenburg and Scott, from its certified critical lines, lines of three phases
        and azeotropes up to p_max (Pa). Splits below 0.3 of the lower critical temperature are not looked for: what is of
        type I there may be of type II below."""
        return binary_type.of(self, float(magnitude(p_max, "p")))

    # ---- solids

    @returns_quantities
    def solubility(self, solid: str | int, *, T: ArrayLike, p: ArrayLike, threads: int = 1,
                   errors: str | None = None) -> SolidPoints:  # fmt: skip
        """The stable fluid of a binary that coexists with a pure solid at T (K) and p (Pa), certified.
        solid: the component that forms it."""
        k = self._index(solid)
        shape, (t, q) = flat(T=T, p=p)
        values, status, words, done = self._native.solubility(k, t, q, threads)
        status = status.reshape(shape)
        return judge(SolidPoints(values.reshape(*shape, -1), status, self.components, k), status, words, done, errors)

    @returns_quantities
    def solid_lines(self, solid: str | int, *, T: float | None = None, p: float | None = None,
                    p_max: float = 1e9) -> list[SolidPoints]:  # fmt: skip
        """The fluids of a binary above a pure solid along an isotherm (T in K, up to p_max in Pa) or an isobar (p in
        Pa): solubility curves, liquidus."""
        if (T is None) == (p is None):
            raise TypeError("give T or p")
        k = self._index(solid)
        value = float(magnitude(T, "T") if p is None else magnitude(p, "p"))
        lines = []
        for d in self._native.solid_lines(k, p is None, value, float(magnitude(p_max, "p"))):
            status = np.zeros(len(d["points"]), dtype=np.int8)
            lines.append(SolidPoints(d["points"], status, self.components, k))
            lines[-1].begin, lines[-1].end = d["begin"], d["end"]
        return lines

    # ---- inside

    def _saturation(self, bubble: bool, z: ArrayLike, T: Any, p: Any, branch: str, threads: int,
                    errors: str | None) -> SaturationPoints:  # fmt: skip
        if (T is None) == (p is None):
            raise TypeError("give T or p")
        n = len(self.components)
        given = {"T": T} if p is None else {"p": p}
        shape, (value,), x = flat_with_composition(z, n, **given)
        values, status, words, done = self._native.saturation(bubble, p is None, value, x, _BRANCH[branch], threads)
        status = status.reshape(shape)
        return judge(SaturationPoints(values.reshape(*shape, -1), status, self.components), status, words, done, errors)

    def _index(self, component: str | int) -> int:
        if isinstance(component, str):
            name = _native.substance_name(component, self._options[3])
            if name not in self.components:
                raise KeyError(f"{component} is not a component of {self!r}")
            return self.components.index(name)
        return range(len(self.components))[component]

    def _set_kij(self, kij: float | Mapping[tuple[str, str], float]) -> None:
        if isinstance(kij, Mapping):
            for (a, b), value in kij.items():
                self.set_pair_parameter(a, b, value)
        elif len(self.components) == 2:
            self.set_pair_parameter(0, 1, kij)
        else:
            raise ValueError("name the pairs: kij={('methane', 'propane'): 0.01}")

    def __reduce__(self) -> tuple[Any, ...]:
        sets, pair_set, estimate, home = self._options
        if self._equation is not None:
            return _again, (self._equation, "mixture", home)
        changed = self._changed, self._changed_components
        arguments = (self.model, self.components, sets, pair_set, estimate, home, *changed)
        return _reopen, arguments

    def __repr__(self) -> str:
        return f"Mixture({self.model!r}, {self.components!r})"

    def _repr_html_(self) -> str:
        guess = ", ".join(f"{a} + {b}" for a, b in self.estimated)
        return f"<b>{' + '.join(self.components)}</b>, {self.model}" + (f"<br>estimated pairs: {guess}" if guess else "")


def _pair(given: Mapping[str, Any]) -> tuple[str, str]:
    """The two quantities of a flash, in the library's order."""
    names = sorted(given, key=lambda name: _CODES.get(name, -1))
    without = {("h", "u"), ("s", "u"), ("rho", "q"), ("h", "q"), ("s", "q"), ("u", "q")}
    if len(names) != 2 or not set(names) <= set(_CODES) or tuple(names) in without:
        raise TypeError("give two of T, p, rho, h, s, u, q; not (h, u) or (s, u), and q beside T or p alone")
    return names[0], names[1]


def _one(z: ArrayLike) -> np.ndarray:
    z = np.ascontiguousarray(magnitude(z, "x"), dtype=float)
    if z.ndim != 1:
        raise ValueError("one composition: an array of one axis")
    return z


def _best(components: list[str], options: tuple[Any, ...]) -> Any:
    sets, pair_set, _, home = options
    for model in ("MEOS+GERG", "PCSAFT+LB"):
        try:
            return _native.Mixture.open(model, components, list(sets), pair_set, False, home)
        except _native.OpenError:
            continue  # a substance or a pair without parameters
    return _native.Mixture.open("PR+vdW1", components, list(sets), pair_set, True, home)


def _reopen(model: str, components: list[str], sets: Sequence[int], pair_set: int, estimate: bool,
            home: str | os.PathLike[str] | None, changed: dict[tuple[int, int, int], float],
            changed_components: dict[tuple[int, int], float]) -> Mixture:  # fmt: skip
    mixture = Mixture(model, components, sets=sets, pair_set=pair_set, estimate=estimate, home=home)
    for (index, i, j), value in changed.items():
        mixture.set_pair_parameter(i, j, value, index)
    for (i, index), value in changed_components.items():
        mixture.set_component_parameter(i, index, value)
    return mixture
