"""Equations of state written in Python."""

from __future__ import annotations

import math
from typing import Any, Sequence

from . import _native
from ._numpy import np
from .arrays import magnitude
from .fluid import Fluid
from .mixture import Mixture

R = 8.3144621  #: molar gas constant of the library, J/(mol K)


class Equation:
    """Base class of an equation of state that is written in Python: for teaching and research.

    Attributes and heat capacities may be quantities of pint; what ``alphar`` gets and returns are numbers.

    A subclass gives :meth:`alphar` and the start values below; :meth:`fluid` and :meth:`mixture` make models with
    every property, saturation and certified equilibria. Derivatives come from Taylor series that go through
    ``alphar`` (exact to rounding); one evaluation takes some microseconds for every operation.

    Attributes
    ----------
    components : sequence of str
        Names; one for a pure fluid.
    M : float or sequence of float
        Molar masses, kg/mol.
    T_critical, rho_critical : float or sequence of float
        Start values of the critical points of the components (K, mol/m³), within some 30 per cent: the equation's
        own are found from them.
    ideal : sequence of str, optional
        Substances of the data home whose ideal-gas heat capacities are the components'. Without them, and without
        :meth:`cp0`, h, s, cp and w are not-a-number.

    Examples
    --------
    >>> class VanDerWaals(corvane.Equation):
    ...     components, M, T_critical, rho_critical = ["argon"], 0.039948, 150.0, 10000.0
    ...     ideal = ["argon"]
    ...     def alphar(self, T, rho, x):
    ...         return -np.log1p(-3.2e-5 * rho) - 0.1355 * rho / (8.3144621 * T)
    >>> VanDerWaals().fluid().saturation(T=120.0).p
    """

    components: Sequence[str] = ("substance",)
    M: Any = None
    T_critical: Any = None
    rho_critical: Any = None
    ideal: Sequence[str] | None = None

    def alphar(self, T: Any, rho: Any, x: Any) -> Any:
        """Residual Helmholtz energy over RT (–) at T (K), rho (mol/m³) and mole fractions x (one axis).

        All three are numbers, or :class:`corvane.Jet` (x: an array of them), which know ``+ - * / **``, comparison,
        and NumPy's exp, expm1, log, log1p, sqrt, sin, cos, tanh, arctan; the functions of ``math`` refuse them.
        Zero at zero density, and relatively accurate near it (log1p, no differences of logarithms); one loop of van
        der Waals' kind below the critical temperature.
        """
        raise NotImplementedError

    def cp0(self, T: float) -> float | Sequence[float] | None:
        """Ideal-gas heat capacity at T (K), of every component, J/(mol K). Default: see ``ideal``."""
        return None

    def fluid(self, *, home: str | None = None) -> Fluid:
        """The pure fluid. home: data home of ``ideal``. Raises ValueError where no critical point is found."""
        if len(self.components) != 1:
            raise ValueError("a fluid has one component")
        M, T, rho, names, homes = self._described(home)
        return Fluid._of_native(_native.python_fluid(self, M[0], T[0], rho[0], names[0], homes[0]), self, home)

    def mixture(self, *, home: str | None = None) -> Mixture:
        """The mixture of all components. home: data home of ``ideal``."""
        M, T, rho, names, homes = self._described(home)
        return Mixture._of_native(_native.python_mixture(self, M, T, rho, names, homes), self, home)

    # ---- inside

    def _evaluate(self, T: Any, rho: Any, x: list[Any]) -> Any:
        """Called by the extension module: beyond a pole an equation has no value."""
        try:
            with np.errstate(all="ignore"):
                return self.alphar(T, rho, np.array(x))
        except (ZeroDivisionError, OverflowError):
            return math.nan

    def _described(self, home: str | None) -> tuple[Any, ...]:
        n = len(self.components)
        values = []
        for name in ("M", "T_critical", "rho_critical"):
            given = getattr(self, name)
            if given is None:
                raise TypeError(f"{type(self).__name__} needs {name}")
            given = np.asarray(magnitude(given, name.split("_")[0]), dtype=float)
            values.append([float(v) for v in np.broadcast_to(given, (n,))])
            if not all(v > 0 and math.isfinite(v) for v in values[-1]):
                raise ValueError(f"{name} must be positive")
        if self.cp0(300.0) is not None:
            return (*values, list(self.components), [self._table_home()] * n)
        if self.ideal is not None:
            if len(self.ideal) != n:
                raise ValueError("ideal names a substance for every component")
            names = [_native.substance_name(s, home) for s in self.ideal]
            return (*values, names, [_native.find_home(home)] * n)
        return (*values, list(self.components), [None] * n)

    def _table_home(self) -> str:
        """A data home of heat capacities alone, which lives as long as this object."""
        import pathlib
        import tempfile

        self._folder = tempfile.TemporaryDirectory(prefix="corvane-")
        folder = pathlib.Path(self._folder.name, "CorvaneS", "ideal")
        folder.mkdir(parents=True)
        T = np.geomspace(50.0, 3000.0, 200)
        cp = np.array([np.broadcast_to(np.asarray(magnitude(self.cp0(float(t)), "cp"), dtype=float), (len(self.components),))
                       for t in T])  # fmt: skip
        for k, name in enumerate(self.components):
            rows = "".join(f"{t!r} {c!r}\n" for t, c in zip(T.tolist(), cp[:, k].tolist()))
            (folder / name).write_text(f"{len(T)}\n{rows}")
        return self._folder.name


def check_equation(equation: Equation, *, states: int = 20, seed: int = 1) -> list[str]:
    """What is wrong with an equation; an empty list if nothing is found.

    At random states (T from 0.6 to 2 critical temperatures, rho up to 2 critical densities, random x): Taylor series
    and plain numbers give the same value, first derivatives agree with differences, the value vanishes with the
    density and stays relatively accurate there, order and amounts of the components do not matter beyond x.
    """
    rng = np.random.default_rng(seed)
    n = len(equation.components)
    M, T_c, rho_c, _, _ = equation._described(None)
    found: list[str] = []

    def note(text: str) -> None:
        if text not in found:
            found.append(text)

    for _ in range(states):
        x = rng.dirichlet(np.ones(n))
        T = float(rng.uniform(0.6, 2.0) * x @ T_c)
        rho = float(rng.uniform(0.0, 2.0) / (x @ (1 / np.asarray(rho_c))))
        try:
            value, d_T, d_rho = _native.python_derivatives(equation, T, rho, list(x))
            plain = [float(equation._evaluate(T, r, list(x))) for r in (rho, rho * (1 + 1e-6), rho * (1 - 1e-6))]
            warm = [float(equation._evaluate(t, rho, list(x))) for t in (T * (1 + 1e-6), T * (1 - 1e-6))]
            thin = [float(equation._evaluate(T, r, list(x))) / r for r in (1e-4, 1e-8)]
        except Exception as e:  # the user's code
            note(f"alphar fails: {e}")
            continue
        if not math.isfinite(plain[0]):
            continue  # beyond the end of the equation
        size = abs(plain[0]) + abs(d_rho) + abs(d_T) + 1e-3
        if abs(value - plain[0]) > 1e-12 * size:
            note("plain numbers and Jets give different values: some operation is not differentiable")
        if abs((plain[1] - plain[2]) / 2e-6 - d_rho) > 1e-5 * size:
            note("the derivative in the density is not that of the values")
        if abs((warm[0] - warm[1]) / 2e-6 - d_T) > 1e-5 * size:
            note("the derivative in the temperature is not that of the values")
        if abs(thin[0] - thin[1]) > 1e-6 * abs(thin[0]) + 1e-12:
            note("alphar over rho has no limit at zero density (use log1p, no differences)")
    return found
