"""Residue curve maps of ternary mixtures."""

from __future__ import annotations

from typing import Any, ClassVar, Sequence

from ._native import written_name
from ._numpy import np
from .results import Collection, Table, draws

_MARKS = {"unstable node": "o", "saddle": "s", "stable node": "o", "unclear": "^"}


def in_triangle(x: np.ndarray) -> tuple[np.ndarray, np.ndarray]:
    """Where compositions are drawn: the first component at the top, the second at the lower left."""
    return 1 - x[..., 1] - 0.5 * x[..., 0], np.sqrt(0.75) * x[..., 0]


def draw_triangle(ax: Any, components: Sequence[str]) -> None:
    """Frame and names."""
    ax.plot(*in_triangle(np.array([[1, 0, 0], [0, 1, 0], [0, 0, 1], [1, 0, 0]])), "k-", lw=1)
    for name, x, way in zip(components, np.eye(3), ("bottom", "top", "top")):
        ax.annotate(written_name(name), in_triangle(x), ha="center", va=way, textcoords="offset points",
                    xytext=(0, 4 if way == "bottom" else -4))  # fmt: skip
    ax.set_aspect("equal")
    ax.set_axis_off()


class ResidueCurve(Table):
    """A residue curve by rising T. Attributes: T (K), xi (−ln of the liquid that is left), x, y (liquid and vapour,
    shape (n, 3)); begin, end (numbers of singular points, −1: open), boundary (it begins or ends at a saddle)."""

    columns: ClassVar[tuple[str, ...]] = ("T", "xi", "x", "y")
    words: ClassVar[tuple[str, ...]] = ("begin", "end", "boundary")
    ordinates: ClassVar[tuple[str, ...]] = ("xi",)

    def __init__(self, rows: np.ndarray, begin: int, end: int, boundary: bool):
        self.T, self.xi, self.x, self.y = rows[:, 0], rows[:, 1], rows[:, 2:5], rows[:, 5:8]
        self.begin, self.end, self.boundary = begin, end, boundary
        self.status = np.zeros(len(rows), dtype=np.int8)


class ResidueMap(Collection):
    """Attributes: p (Pa), curves (list of :class:`ResidueCurve`), singular (compositions of pure components and
    azeotropes, shape (n, 3)), T_singular (K), kinds ("unstable node", "saddle", "stable node", "unclear"), consistent
    (nodes and saddles fulfil the condition of Doherty and Perkins, 1979), failures (bubble points not found)."""

    parts: ClassVar[tuple[str, ...]] = ("curves",)
    words: ClassVar[tuple[str, ...]] = ("p", "singular", "T_singular", "kinds", "consistent", "failures")

    def __init__(self, d: dict[str, Any], p: float, components: Sequence[str]):
        self.p, self._components = p, components
        self.curves = [ResidueCurve(*c) for c in d["curves"]]
        self.singular, self.T_singular, self.kinds = d["singular"][:, 1:], d["singular"][:, 0], d["kinds"]
        self.consistent, self.failures = d["consistent"], d["failures"]

    def __repr__(self) -> str:
        return f"ResidueMap at p = {self.p:g} Pa: {len(self.curves)} curves; {', '.join(self.kinds)}"

    @draws
    def plot(self, ax: Any = None) -> Any:
        """The triangle: curves run to where it boils higher; filled circles are stable nodes, squares saddles."""
        draw_triangle(ax, self._components)
        for c in self.curves:
            ends = [self.singular[[k]] if k >= 0 else np.empty((0, 3)) for k in (c.begin, c.end)]
            x, y = in_triangle(np.concatenate([ends[0], c.x, ends[1]]))
            ax.plot(x, y, color="k" if c.boundary else "C0", lw=1.5 if c.boundary else 0.8)
            m = len(x) // 2
            if not c.boundary and m > 0:
                ax.annotate("", (x[m], y[m]), (x[m - 1], y[m - 1]), arrowprops={"arrowstyle": "->", "color": "C0"})
        for x, T, kind in zip(self.singular, self.T_singular, self.kinds):
            ax.plot(*in_triangle(x), "k" + _MARKS[kind], mfc="w" if kind == "unstable node" else "k")
            ax.annotate(f"{T:.4g} K", in_triangle(x), xytext=(6, 6), textcoords="offset points", fontsize="small")
        ax.set_title(f"p = {self.p / 1e6:g} MPa", pad=18)
        return ax
