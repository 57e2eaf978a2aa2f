"""Results of mixtures: states, flashes, saturation points, curves, diagrams."""

from __future__ import annotations

from typing import Any, ClassVar, Sequence

from ._native import written_name
from ._numpy import np
from .fluid import _PHASE
from .residue import draw_triangle, in_triangle
from .results import Collection, OfComponents, Table, colour_of, draws


class MixtureState(OfComponents):
    """One homogeneous phase of a mixture. Attributes, of the broadcast shape of the arguments: those of
    :class:`corvane.State` without the two-phase ones, and x (mole fractions, components last)."""

    columns: ClassVar[tuple[str, ...]] = ("T", "rho", *_PHASE, "x")
    ordinates: ClassVar[tuple[str, ...]] = ("p", "rho")

    def __init__(self, columns: dict[str, np.ndarray], status: np.ndarray, components: Sequence[str]):
        for name in self.columns:
            setattr(self, name, columns[name])
        self.status, self._components = status, components


class FlashResult(OfComponents):
    """Stable states: phases and their amounts, certified.

    Attributes, of the broadcast shape of the arguments: T (K), p (Pa), rho (mol/m³, of the whole), h, u
    (J/mol), s (J/(mol K)), phases (their number), status. The certificate: tpd (lowest tangent-plane
    distance found, over RT), x_error, rho_error (bounds of the errors of mole fractions and, relative, of
    the phases' densities; not-a-number where none are known, as of one phase), dmu, dp (largest difference
    of potentials over RT and, relative, of pressures between the phases). With one axis more, for the
    phases in order of falling mass density (not-a-number where there are fewer): fraction,
    rho_phase (mol/m³); with two axes more: x (phase, component). ``complete``: see :meth:`Mixture.flashes`.
    """

    columns: ClassVar[tuple[str, ...]] = ("T", "p", "rho", "h", "s", "u", "phases", "tpd", "x_error", "rho_error",
                                          "dmu", "dp")  # fmt: skip
    further: ClassVar[tuple[str, ...]] = ("fraction", "rho_phase", "x")
    complete = True

    def __init__(self, values: np.ndarray, status: np.ndarray, components: Sequence[str]):
        n = len(components)
        for k, name in enumerate(self.columns):
            setattr(self, name, values[..., k])
        slots = values[..., len(self.columns):].reshape(*status.shape, n + 1, n + 2)
        self.fraction, self.rho_phase, self.x = slots[..., 0], slots[..., 1], slots[..., 2:]
        self.status, self._components = status, components

    def _labels(self, name: str, index: tuple[int, ...]) -> list[str]:
        phase = [str(k + 1) for k in index[:1]]
        return [*phase, *(self._label(k) for k in index[1:])]

    @draws
    def plot(self, ax: Any = None, *, x: str | None = None, y: str | None = None, label: str | None = None) -> Any:
        """Amounts of the phases, by falling mass density, over what varies; or as :meth:`State.plot` what ``y`` names."""
        if y is not None:
            return super().plot(ax, x=x, y=y, label=label)
        for k in range(int(np.nanmax(self.phases, initial=1))):
            name = f"phase {k + 1}" if label is None else f"{label}, phase {k + 1}"
            super().plot(ax, x=x, y=f"fraction_{k + 1}", label=name)
        ax.set_ylabel("amount of the phase")
        return ax

    def __repr__(self) -> str:
        text = super().__repr__()
        if np.shape(self.status) or self.status:
            return text
        for k in range(int(self.phases)):
            x = ", ".join(f"{c} {v:.6g}" for c, v in zip(self._components, self.x[k]))
            text += f"\n  phase {k + 1}: {self.fraction[k]:.6g} of the whole, {self.rho_phase[k]:.6g} mol/m**3, {x}"
        return text


class SaturationPoints(OfComponents):
    """Certified bubble or dew points.

    Attributes: T (K), p (Pa), rho, rho_incipient (mol/m³), z (what was given) and y (composition of the
    incipient phase), both with the components last, value_error (bound of the relative error of p, or of T where p was given), x_error
    (bound of that of the compositions), dmu, dp, tpd (as of :class:`FlashResult`), status. The bounds are
    not-a-number where none are known.
    """

    columns: ClassVar[tuple[str, ...]] = ("T", "p", "rho", "rho_incipient", "value_error", "x_error", "dmu", "dp", "tpd",
                                          "y")  # fmt: skip
    further: ClassVar[tuple[str, ...]] = ("z",)

    def __init__(self, values: np.ndarray, z: np.ndarray, status: np.ndarray, components: Sequence[str]):
        for k, name in enumerate(self.columns[:-1]):
            setattr(self, name, values[..., k])
        self.y, self.z, self.status, self._components = values[..., 9:], z, status, components

    @draws
    def plot(self, ax: Any = None, *, x: str | None = None, y: str | None = None, label: str | None = None) -> Any:
        """p over T, both as curves; of many compositions at one T (or p) that p (or T) over the mole fractions of the
        first component in both phases; or as :meth:`State.plot` what ``x`` and ``y`` name. label: of the legend."""
        T, p, z = (np.ravel(a) for a in (self.T, self.p, self.z[..., 0]))
        fixed = "T" if _constant(T) else "p" if _constant(p) else None
        if x is not None or y is not None or fixed is None or _constant(z):
            return super().plot(ax, x=x, y=y, label=label)
        ordinate, name = (p / 1e6, "p / MPa") if fixed == "T" else (T, "T / K")
        (line,) = ax.plot(z, ordinate, ".-", label=label)
        ax.plot(np.ravel(self.y[..., 0]), ordinate, ".--", color=line.get_color())
        ax.set(xlabel=f"mole fraction of {written_name(self._components[0])}", ylabel=name)
        if label is not None:
            ax.legend()
        return ax


def _constant(values: np.ndarray) -> bool:
    known = values[np.isfinite(values)]
    return known.size == 0 or bool(np.ptp(known) < 1e-9 * np.max(np.abs(known)))


class Envelope(OfComponents):
    """A phase envelope, from the dew side at low pressure on.

    Attributes, one axis: T (K), p (Pa), rho, rho_incipient (mol/m³), bubble (the incipient phase is the
    lighter one), unstable (a third phase is more stable), y (components last), value_error (bound of the
    relative error of p and T), x_error (of that of the compositions; both not-a-number without
    ``stability``, and where none is known); critical, cricondentherm, cricondenbar: lists of (T, p);
    closed: whether it came back to low pressure.
    """

    columns: ClassVar[tuple[str, ...]] = ("T", "p", "rho", "rho_incipient", "value_error", "x_error", "y")
    further: ClassVar[tuple[str, ...]] = ("bubble", "unstable")
    words: ClassVar[tuple[str, ...]] = ("critical", "cricondentherm", "cricondenbar", "closed")

    def __init__(self, d: dict[str, Any], components: Sequence[str]):
        points = d["points"]
        self.T, self.p, self.rho, self.rho_incipient = (points[:, k] for k in range(4))
        self.bubble, self.unstable = points[:, 4] > 0, points[:, 5] > 0
        self.value_error, self.x_error = points[:, 6], points[:, 7]
        self.y, self.status = points[:, 8:], np.zeros(len(points), dtype=np.int8)
        for name in ("critical", "cricondentherm", "cricondenbar"):
            setattr(self, name, [tuple(row[:2]) for row in d[name]])
        self.closed, self._components = d["closed"], components

    @draws
    def plot(self, ax: Any = None, *, label: str | None = None) -> Any:
        """Pressure over temperature, critical points marked; with a label in one colour, dew points dashed."""
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
    words: ClassVar[tuple[str, ...]] = ("kind", "begin", "end", "azeotropes")

    def __init__(self, d: dict[str, Any]):
        points = d["points"]
        for name, column in zip(self.columns, (*range(6), 7, 8)):
            setattr(self, name, points[:, column])
        self.status = np.zeros(len(points), dtype=np.int8)
        self.kind, self.begin, self.end = d["kind"], d["begin"], d["end"]
        self.azeotropes = d["azeotropes"][:, :3]

    @draws
    def plot(self, ax: Any = None, *, x: str | None = None, y: str | None = None, label: str | None = None) -> Any:
        """p (or T) over the mole fraction of the first component in both phases; or as :meth:`State.plot` what ``x`` and
        ``y`` name. label: of the legend."""
        if x is not None or y is not None:
            return super().plot(ax, x=x, y=y, label=label)
        ordinate, name = (self.T, "T / K") if _constant(self.p) else (self.p / 1e6, "p / MPa")
        (line,) = ax.plot(self.x, ordinate, label=label)
        ax.plot(self.y, ordinate, color=line.get_color())
        ax.set(xlabel="mole fraction of the first component", ylabel=name)
        if label is not None:
            ax.legend()
        return ax


class Diagram(Collection):
    """All stable two-phase states of a binary at one T or p.

    Attributes: branches (list of :class:`Branch`), three_phase (array of rows T/K, p/Pa, x of three
    phases, their densities, dmu, dp, tpd, value_error, x_error), complete (every branch is explained at both ends and nothing is open).
    """

    parts: ClassVar[tuple[str, ...]] = ("branches",)
    words: ClassVar[tuple[str, ...]] = ("three_phase", "complete")

    def __init__(self, d: dict[str, Any], at_T: bool, value: float, components: Sequence[str]):
        self.branches = [Branch(b) for b in d["branches"]]
        self.three_phase, self.complete = d["three_phase"], d["complete"]
        self._at_T, self._value, self._components = at_T, value, components

    @draws
    def plot(self, ax: Any = None, *, label: str | None = None) -> Any:
        """p (or T) over the mole fraction of the first component in both phases; with a label in one colour."""
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


class CriticalPoints(OfComponents):
    """Critical points, one axis, or one for every composition that was given: T (K), p (Pa), rho (mol/m³), stable, x (components last), conditions (largest
    residual of the critical conditions), tpd (lowest tangent-plane distance found, over RT)."""

    columns: ClassVar[tuple[str, ...]] = ("T", "p", "rho", "x", "conditions", "tpd")
    further: ClassVar[tuple[str, ...]] = ("stable",)

    def __init__(self, rows: np.ndarray, components: Sequence[str], status: np.ndarray | None = None):
        self.T, self.p, self.rho, self.stable = rows[..., 0], rows[..., 1], rows[..., 2], rows[..., 3] > 0
        self.conditions, self.tpd = rows[..., 4], rows[..., 5]
        self.status = np.zeros(len(rows), dtype=np.int8) if status is None else status
        self.x, self._components = rows[..., 6:], components


class CriticalLine(CriticalPoints):
    """A critical line of a binary, one axis: T (K), p (Pa), rho (mol/m³) and the others of :class:`CriticalPoints`; begin
    and end in words."""

    words: ClassVar[tuple[str, ...]] = ("begin", "end")

    def __init__(self, d: dict[str, Any], components: Sequence[str]):
        super().__init__(d["points"], components)
        self.begin, self.end = d["begin"], d["end"]


class ThreePhaseLine(Table):
    """A line of three fluid phases of a binary, by rising T: T (K), p (Pa); x (mole fraction of the first component)
    and rho (mol/m³) with an axis more, for the phases by falling mass density; dmu, dp, tpd (as of
    :class:`FlashResult`), value_error (bound of the relative errors of T and p) and x_error (not-a-number at critical
    ends); begin and end in words."""

    columns: ClassVar[tuple[str, ...]] = ("T", "p", "x", "rho", "dmu", "dp", "tpd", "value_error", "x_error")
    words: ClassVar[tuple[str, ...]] = ("begin", "end")

    def __init__(self, d: dict[str, Any]):
        points = d["points"]
        self.T, self.p, self.x, self.rho = points[:, 0], points[:, 1], points[:, 2:5], points[:, 5:8]
        self.dmu, self.dp, self.tpd, self.value_error, self.x_error = points[:, 8:].T
        self.begin, self.end, self.status = d["begin"], d["end"], np.zeros(len(points), dtype=np.int8)

    def _label(self, k: int) -> str:
        return str(k + 1)


class AzeotropicLine(Table):
    """A line of azeotropes of a binary, one axis: T (K), p (Pa), x (mole fraction of the first component),
    rho_liquid, rho_vapour (mol/m³), dmu, dp, tpd, value_error, x_error (as of :class:`ThreePhaseLine`); begin and end
    in words."""

    columns: ClassVar[tuple[str, ...]] = ("T", "p", "x", "rho_liquid", "rho_vapour", "dmu", "dp", "tpd", "value_error",
                                          "x_error")  # fmt: skip
    words: ClassVar[tuple[str, ...]] = ("begin", "end")

    def __init__(self, d: dict[str, Any]):
        for k, name in enumerate(self.columns):
            setattr(self, name, d["points"][:, k])
        self.begin, self.end, self.status = d["begin"], d["end"], np.zeros(len(self.T), dtype=np.int8)


class TernaryRegion(OfComponents):
    """A region of two phases of a ternary: its tie lines, one axis.

    Attributes: x, y (compositions of the phase that is denser by mass half-way and of the other, components last),
    rho_x, rho_y (mol/m³), dmu, dp, tpd, x_error (certificate of every tie line; at a plait point x_error is
    not-a-number); kind, begin, end in words.
    """

    columns: ClassVar[tuple[str, ...]] = ("x", "y", "rho_x", "rho_y", "dmu", "dp", "tpd", "x_error")
    words: ClassVar[tuple[str, ...]] = ("kind", "begin", "end")

    def __init__(self, d: dict[str, Any], components: Sequence[str]):
        points = d["points"]
        self.x, self.y = points[:, :3], points[:, 3:6]
        for k, name in enumerate(self.columns[2:]):
            setattr(self, name, points[:, 6 + k])
        self.kind, self.begin, self.end = d["kind"], d["begin"], d["end"]
        self.status, self._components = np.zeros(len(points), dtype=np.int8), components

    @draws
    def plot(self, ax: Any = None, *, label: str | None = None) -> Any:  # type: ignore[override]
        """The triangle with both boundaries of the region. label: of the legend."""
        draw_triangle(ax, self._components)
        (line,) = ax.plot(*in_triangle(self.x), label=label)
        ax.plot(*in_triangle(self.y), color=line.get_color())
        if label is not None:
            ax.legend()
        return ax


class TernaryDiagram(Collection):
    """Everything that is stable in a ternary at T and p.

    Attributes: T (K), p (Pa), regions (list of :class:`TernaryRegion`), three_phase (compositions of the corners of
    every triangle, shape (n, 3 phases, 3 components)), three_phase_rho (mol/m³, shape (n, 3)), plait
    (:class:`CriticalPoints`), open (compositions of which nothing certain is known), complete (every region is
    explained at both ends, and nothing is open).
    """

    parts: ClassVar[tuple[str, ...]] = ("regions", "plait")
    words: ClassVar[tuple[str, ...]] = ("T", "p", "three_phase", "three_phase_rho", "open", "complete")

    def __init__(self, d: dict[str, Any], T: float, p: float, components: Sequence[str]):
        self.T, self.p, self._components = T, p, components
        self.regions = [TernaryRegion(r, components) for r in d["regions"]]
        self.three_phase, self.three_phase_rho = d["three_phase"][..., :3], d["three_phase"][..., 3]
        self.plait, self.open = CriticalPoints(d["plait"], components), d["open"]
        self.complete = d["complete"]

    @draws
    def plot(self, ax: Any = None, *, tie_lines: int = 12, label: str | None = None) -> Any:
        """The triangle, the first component at the top, the second at the lower left; about so many tie lines of
        every region. With a label in one colour."""
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


class SolidPoints(OfComponents):
    """Fluids above a pure solid.

    Attributes: T (K), p (Pa), rho, rho_solid (mol/m³), stable (the fluid does not split, and the other component does
    not freeze), x (of the fluid, components last), status; of a line also begin and end, in words.
    """

    columns: ClassVar[tuple[str, ...]] = ("T", "p", "rho", "rho_solid", "x")
    further: ClassVar[tuple[str, ...]] = ("stable",)
    words: ClassVar[tuple[str, ...]] = ("begin", "end")
    begin = end = ""

    def __init__(self, rows: np.ndarray, status: np.ndarray, components: Sequence[str], solid: int):
        for k, name in enumerate(self.columns[:-1]):
            setattr(self, name, rows[..., k])
        self.stable, self.x = rows[..., 4] > 0, rows[..., 5:]
        self.status, self._components, self._solid = status, components, solid

    @draws
    def plot(self, ax: Any = None, *, label: str | None = None) -> Any:
        """The mole fraction of the component that is solid: over p, or over T where p is one."""
        p, y = np.ravel(self.p) / 1e6, np.ravel(self.x[..., self._solid])
        at_p = np.ptp(p[np.isfinite(p)]) < 1e-9 * np.nanmax(p)
        ax.plot(np.ravel(self.T) if at_p else p, y, label=label or f"solid {written_name(self._components[self._solid])}")
        ax.set(xlabel="T / K" if at_p else "p / MPa", ylabel=f"mole fraction of {written_name(self._components[self._solid])}", yscale="log")
        if label is not None:
            ax.legend()
        return ax


class Projection(Collection):
    """What a binary does in p (Pa) and T (K): attributes ``vapour_pressures`` (name: :class:`corvane.Saturation`),
    ``critical`` (:class:`CriticalLine`), ``three_phase`` (:class:`ThreePhaseLine`) and ``azeotropic``
    (:class:`AzeotropicLine`)."""

    parts: ClassVar[tuple[str, ...]] = ("vapour_pressures", "critical", "three_phase", "azeotropic")

    def __init__(self, vapour_pressures: dict[str, Any], critical: list[CriticalLine],
                 three_phase: list[ThreePhaseLine], azeotropic: list[AzeotropicLine]):  # fmt: skip
        self.vapour_pressures, self.critical = vapour_pressures, critical
        self.three_phase, self.azeotropic = three_phase, azeotropic

    def __repr__(self) -> str:
        count = ", ".join(f"{len(getattr(self, part))} {part}" for part in self.parts)
        return f"Projection of {' + '.join(self.vapour_pressures)}: {count}"

    @draws
    def plot(self, ax: Any = None, *, label: str | None = None) -> Any:
        """Pressure over temperature; with a label in one colour: three phases dotted, azeotropes dashed."""
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
