"""Tables of properties for programs that need millions of states, with gaps where they are not known well enough."""

from __future__ import annotations

import os
from typing import TYPE_CHECKING, Any, ClassVar, Sequence

from . import _native
from .arrays import Given, magnitude
from .quantities import returns_quantities
from .results import Table
from .status import code_of, judge

if TYPE_CHECKING:
    from numpy.typing import ArrayLike

    from .fluid import Fluid
    from .mixture import Mixture

_INPUTS = {"pT": 0, "ph": 1, "rhou": 2}
_AXES = (("p", "T"), ("p", "h"), ("rho", "u"))


class TabulatedStates(Table):
    """States from a table. Attributes, of the shape of the arguments: T (K), p (Pa), rho (mol/m³), h, u (J/mol), s, cv,
    cp (J/(mol K)), w (m/s), q (amount of the vapour; not-a-number in one phase), as far as they vary, and status:
    ``NOT_TABULATED`` outside the table and in its gaps. cv, cp and w are of one phase."""

    columns: ClassVar[tuple[str, ...]] = ("T", "p", "rho", "h", "s", "u", "q", "cv", "cp", "w")
    ordinates: ClassVar[tuple[str, ...]] = ("rho", "T", "p")

    def __init__(self, values: dict[str, Any], status: Any):
        for name in self.columns:
            setattr(self, name, values[name])
        self.status = status


class PropertyTable:
    """Stable states over two quantities as polynomials on cells, in a file that C++ programs read, too.

    >>> table = corvane.PropertyTable.build(corvane.Fluid("propane", eos="PR"), "ph", p=(1e5, 1e7), h=(0, 3e4), halvings=5)
    >>> table(p=1e6, h=2e4).status
    0

    Cells are halved until polynomials of degree 6 give what the equation gives within the tolerance, at 62 states in
    the cell and 36 around it. Where they may not be halved any more (phase boundaries, critical points, where the
    equation has no state) the table has gaps, which answer not-a-number: ask the equation there. What lies between the
    states is not proven; :meth:`check` draws as large a sample as you like.
    """

    def __init__(self, native: Any):
        self._native = native

    @classmethod
    def build(cls, model: Fluid | Mixture, inputs: str = "ph", *, z: ArrayLike | None = None, tolerance: float = 1e-6,
              halvings: int = 8, note: str | None = None, **ranges: Sequence[float]) -> PropertyTable:  # fmt: skip
        """A table of a fluid, or of a mixture of mole fractions z.

        Parameters
        ----------
        inputs : str
            ``"pT"``, ``"ph"`` or ``"rhou"``.
        p, T, h, rho, u : pair of numbers
            From and to of the two: Pa, K, J/mol, mol/m³, J/mol. Cells halve ln p and ln rho.
        tolerance : float
            1e-10 to 1e-2: relative of T, p, rho, cv, cp, w; in R·Tc of h and u, in R of s, in 1 of q.
        halvings : int
            At most, 0 to 16: the finest cells are 2**-halvings of the range.
        note : str, optional
            Kept in the file; else the name of the model.

        Raises
        ------
        ValueError
            Ranges, tolerance, halvings; h and u without ideal-gas data.
        """
        code = code_of("inputs", inputs, _INPUTS)
        if set(ranges) != set(_AXES[code]):
            raise TypeError(f"{inputs} takes {' and '.join(f'{name}=(from, to)' for name in _AXES[code])}")
        limits = [float(magnitude(x, name)) for name in _AXES[code] for x in ranges[name]]
        note = repr(model).splitlines()[0] if note is None else note
        last = (code, limits, tolerance, halvings, note)
        if z is None:
            return cls(_native.PropertyTable.of_fluid(model._native, *last))
        (z,) = Given(z=z).flat
        return cls(_native.PropertyTable.of_mixture(model._native, z, *last))

    @classmethod
    def read(cls, path: str | os.PathLike[str]) -> PropertyTable:
        """From a file. OSError: there is none, it is no table, or damaged."""
        return cls(_native.PropertyTable.read(os.fspath(path)))

    def write(self, path: str | os.PathLike[str]) -> None:
        """To a file, as a whole or not at all (OSError)."""
        self._native.write(os.fspath(path))

    @returns_quantities
    def __call__(self, *, threads: int = 1, errors: str | None = None, **given: ArrayLike) -> TabulatedStates:
        """States at its two inputs (SI, in any shape): see :class:`TabulatedStates`."""
        names = self.inputs
        if set(given) != set(names):
            raise TypeError(f"give {names[0]} and {names[1]}")
        asked = Given(**{name: given[name] for name in names})
        column, status, words, done = asked.received(self._native.at(*asked.flat, threads, asked.single))
        values = {name: asked.everywhere(float("nan")) for name in TabulatedStates.columns}
        values |= {name: asked.shaped(x) for name, x in zip(names, asked.flat)}
        values |= {name: column(k) for k, name in enumerate(self._native.columns)}
        return judge(TabulatedStates(values, status), status, words, done, errors)

    def check(self, model: Fluid | Mixture, points: int = 1000, seed: int = 0, z: ArrayLike | None = None) -> dict[str, Any]:
        """Against the model at random points: points, answered (by the table), without (not answered, and without a
        state), other (answered where the state is of another kind), worst (column: largest error, as of the tolerance)."""
        if z is None:
            return self._native.check_fluid(model._native, points, seed)
        (z,) = Given(z=z).flat
        return self._native.check_mixture(model._native, z, points, seed)

    @property
    def inputs(self) -> tuple[str, str]:
        """Names of the two quantities."""
        a, b = self._native.inputs
        return a, b

    @property
    def ranges(self) -> dict[str, tuple[float, float]]:
        """From and to of both (K, Pa, mol/m³, J/mol)."""
        a, b, c, d = self._native.range
        return dict(zip(self.inputs, ((a, b), (c, d))))

    @property
    def tolerance(self) -> float:
        """Of the values."""
        return self._native.tolerance

    @property
    def cells(self) -> int:
        """Number of cells that answer."""
        return self._native.cells

    @property
    def coverage(self) -> float:
        """Share of the ranges that they cover."""
        return self._native.coverage

    @property
    def note(self) -> str:
        """What it is of."""
        return self._native.note

    def __repr__(self) -> str:
        limits = ", ".join(f"{name} {low:.6g} to {high:.6g}" for name, (low, high) in self.ranges.items())
        return f"PropertyTable({self.note}; {limits}; tolerance {self.tolerance:g}, {self.cells} cells cover {self.coverage:.2%})"
