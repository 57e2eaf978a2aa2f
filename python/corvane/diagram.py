"""Property diagrams of pure fluids and of mixtures of given composition."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any, ClassVar

from ._numpy import np
from .arrays import magnitude
from .results import Collection, Table, colour_of, draws, written_unit

if TYPE_CHECKING:
    from numpy.typing import ArrayLike

AXES = ("T", "p", "rho", "v", "h", "s", "u")
_GIVEN = ("T", "p", "q", "s", "rho")
_CODES = {0: "T", 1: "p", 2: "rho", 4: "s", 6: "q"}
_NAMES = {"T": "isotherms", "p": "isobars", "q": "equal vapour fraction", "s": "isentropes", "rho": "isochores"}
_COLOURS = {"T": "#c8402a", "p": "#2e8b57", "q": "#808080", "s": "#8e44ad", "rho": "#8a6d1f"}


def _axis(name: str) -> str:
    unit = written_unit(name)
    return f"{name} / ({unit})" if "/" in unit else f"{name} / {unit}"


class Isoline(Table):
    """Stable states along a line: T (K), p (Pa), rho (mol/m³), h, u (J/mol), s (J/(mol K)), q (amount of the lighter
    of two phases, else not-a-number), v (m³/mol)."""

    columns: ClassVar[tuple[str, ...]] = ("T", "p", "rho", "h", "s", "u", "q")
    ordinates: ClassVar[tuple[str, ...]] = ("p", "T")

    def __init__(self, rows: np.ndarray):
        for k, name in enumerate(self.columns):
            setattr(self, name, rows[:, k])
        self.status = np.zeros(len(rows), dtype=np.int8)

    def _axes(self, columns: dict[str, np.ndarray], x: str | None, y: str | None) -> tuple[str, str]:
        known = "h" if np.isfinite(self.h).any() else "rho"
        return super()._axes(columns, known if x is None and y != known else x, y)

    @property
    def v(self) -> np.ndarray:
        """Molar volume, m³/mol."""
        return 1.0 / self.rho


class PropertyDiagram(Collection):
    """A property diagram with isolines, in K, Pa, mol/m³, J/mol, J/(mol K).

    Attributes: ``x``, ``y`` (names of the axes), ``liquid``, ``vapour`` (bubble and dew points, :class:`Isoline`),
    ``lines`` (name of the isoline: list of (value, :class:`Isoline`)), ``failures`` (states that are missing).
    """

    parts: ClassVar[tuple[str, ...]] = ("liquid", "vapour", "lines")
    words: ClassVar[tuple[str, ...]] = ("x", "y", "failures")

    def __init__(self, x: str, y: str, d: dict[str, Any], title: str):
        self.x, self.y, self._title = x, y, title
        self.liquid, self.vapour = Isoline(d["liquid"]), Isoline(d["vapour"])
        self.failures = d["failures"]
        self.lines: dict[str, list[tuple[float, Isoline]]] = {}
        for code, value, rows in d["lines"]:
            self.lines.setdefault(_CODES[code], []).append((value, Isoline(rows)))

    def __repr__(self) -> str:
        lines = ", ".join(f"{len(lines)} {_NAMES[name]}" for name, lines in self.lines.items())
        return f"PropertyDiagram {self.y} over {self.x}, {self._title}: {lines}" + (
            f"; {self.failures} states are missing" if self.failures else ""
        )

    @draws
    def plot(self, ax: Any = None, *, label: str | None = None) -> Any:
        """Axes in the package's units; p, rho and v logarithmic. Lines bear their values at the end. With a label in one
        colour."""
        ours = colour_of(ax, label)
        for name, lines in self.lines.items():
            colour = ours or _COLOURS[name]
            for i, (value, s) in enumerate(lines):
                what = f"{_NAMES[name]}, {written_unit(name)}" if written_unit(name) else _NAMES[name]
                x, y = getattr(s, self.x), getattr(s, self.y)
                ax.plot(x, y, color=colour, lw=0.7, label=what if i == 0 and label is None else None)
                at = 0 if name == "q" or (name == "T" and self.y == "p") else -1
                ax.annotate(f"{value:.4g}", (x[at], y[at]), color=colour, fontsize="x-small", ha="center",
                            annotation_clip=True)  # fmt: skip
        for s, colour, what in ((self.liquid, "#1f5fa8", "bubble points"), (self.vapour, "#202020", "dew points")):
            ax.plot(getattr(s, self.x), getattr(s, self.y), color=ours or colour, lw=1.5, label=what if label is None else None)
        for name, scale in ((self.x, ax.set_xscale), (self.y, ax.set_yscale)):
            if name in ("p", "rho", "v"):
                scale("log")
        ax.set(xlabel=_axis(self.x), ylabel=_axis(self.y), title=self._title)
        ax.legend(fontsize="small")
        return ax


def diagram(trace: Any, y: str, x: str, title: str, Tc: float, pc: float, low: float, points: int,
            given: dict[str, ArrayLike | None]) -> PropertyDiagram:  # fmt: skip
    """Asks the library for the lines that are given; of isotherms and isobars there are others otherwise, but for
    those of an axis."""
    for name in (x, y):
        if name not in AXES:
            raise ValueError(f"no axis {name}")
    usual = {"T": np.linspace(low, 1.6 * Tc, 10), "p": np.geomspace(1e-3, 10, 8) * pc}
    values = []
    for name in _GIVEN:
        asked = given.get(name)
        if asked is not None:
            values.append(np.ravel(np.asarray(magnitude(asked, name), dtype=float)).tolist())
        else:
            values.append([] if name in (x, y) else usual.get(name, np.empty(0)).tolist())
    return PropertyDiagram(x, y, trace(values, [low, 1.6 * Tc, 1e-4 * pc, 10 * pc], int(points)), title)
