"""Pure fluids."""

from __future__ import annotations

import math
import os
from typing import TYPE_CHECKING, Any, ClassVar, Sequence

from . import _native
from ._numpy import np
from .arrays import Given, Number, alike, divided, magnitude
from .catalogue import directory
from .diagram import PropertyDiagram, diagram
from .outputs import IdealCurve, ideal_curve
from .quantities import registry_of, returns_quantities
from .results import Table, draws
from .status import code_of, judge
from .transport import Conductivity, Diffusion, SurfaceTension, Viscosity

if TYPE_CHECKING:
    from numpy.typing import ArrayLike

_CODES = {"T": 0, "p": 1, "rho": 2, "h": 3, "s": 4, "u": 5, "q": 6}
_STATE = ("T", "p", "rho", "h", "s", "u", "q")
_PHASE = ("p", "Z", "u", "h", "s", "g", "a", "cv", "cp", "w", "mu_JT", "kappa_T", "alpha_p", "dp_dT",
          "dp_drho", "M", "n_s")  # fmt: skip


class State(Table):
    """States of a pure fluid. Attributes, all of the shape of the arguments:

    T (K), p (Pa), rho (mol/m³), h, u, g, a (J/mol), s, cv, cp (J/(mol K)), w (speed of sound, m/s),
    Z (–), mu_JT (Joule–Thomson coefficient, K/Pa), kappa_T (1/Pa), alpha_p (1/K), dp_dT (Pa/K),
    dp_drho (Pa m³/mol), M (kg/mol), n_s (isentropic exponent), q (vapour fraction; not-a-number in one phase), rho_liquid and
    rho_vapour (mol/m³, in two phases), status.

    In two phases rho, h, s and u are those of the whole, and what belongs to one phase only (cp, w, …)
    is not-a-number. What needs ideal-gas data is, too, where the substance has none.
    """

    columns: ClassVar[tuple[str, ...]] = (*_STATE, "Z", "g", "a", "cv", "cp", "w", "mu_JT", "kappa_T",
                                          "alpha_p", "dp_dT", "dp_drho", "M", "rho_liquid",
                                          "rho_vapour")  # fmt: skip
    further: ClassVar[tuple[str, ...]] = ("n_s",)
    ordinates: ClassVar[tuple[str, ...]] = ("rho", "p")

    def __init__(self, values: dict[str, np.ndarray], status: np.ndarray):
        for name in (*self.columns, *self.further):
            setattr(self, name, values[name])
        self.status = status

    @property
    def v(self) -> np.ndarray:
        """Molar volume, m³/mol."""
        return divided(1.0, self.rho)

    @property
    def rho_mass(self) -> np.ndarray:
        """Mass density, kg/m³."""
        return alike(self.rho * self.M)


class Saturation(Table):
    """Vapour–liquid equilibria of a pure fluid.

    Attributes: T (K), p (Pa), rho_liquid, rho_vapour (mol/m³), h_vaporisation (J/mol), status; value_error and rho_error,
    bounds of the relative errors of what was not given of T and p, and of the densities; and ``liquid``, ``vapour``: the
    saturated phases as :class:`State`.
    """

    columns: ClassVar[tuple[str, ...]] = ("T", "p", "rho_liquid", "rho_vapour", "h_vaporisation")
    further: ClassVar[tuple[str, ...]] = ("value_error", "rho_error")
    words: ClassVar[tuple[str, ...]] = ("liquid", "vapour")

    def __init__(self, columns: Sequence[np.ndarray], status: np.ndarray, liquid: State, vapour: State, name: str):
        self.T, self.p, self.rho_liquid, self.rho_vapour, self.value_error, self.rho_error = columns
        self.liquid, self.vapour, self.status = liquid, vapour, status
        self.h_vaporisation = alike(vapour.h - liquid.h)
        self._name = name

    @draws
    def plot(self, ax: Any = None, *, x: str | None = None, y: str | None = None, label: str | None = None) -> Any:
        """Vapour pressure over temperature (K, MPa), or what ``x`` and ``y`` name, as :meth:`State.plot`. label: of the
        legend, else the name."""
        if x is not None or y is not None:
            return super().plot(ax, x=x, y=y, label=label)
        order = np.argsort(np.ravel(self.T))
        ax.plot(np.ravel(self.T)[order], np.ravel(self.p)[order] / 1e6, label=label or self._name)
        ax.set(xlabel="T / K", ylabel="p / MPa", yscale="log")
        if label is not None:
            ax.legend()
        return ax


class Fluid:
    """A pure substance with an equation of state.

    Parameters
    ----------
    substance : str
        Name, synonym, CAS number or formula: ``"CO2"``, ``"propane"``, ``"74-98-6"``.
    eos : str, optional
        ``"MEOS"`` (reference equations), ``"PCSAFT"``, ``"PR"``, ``"SRK"``. Default: the first of these
        that has parameters.
    set : int, optional
        Number of the parameter set; default: the recommended one.
    home : path, optional
        Data home, which lies over the default one: see :func:`corvane.data_home`.

    Raises
    ------
    corvane.OpenError
        Unknown substance, equation or set: one sentence with what there is.

    Notes
    -----
    K, Pa, mol/m³, J/mol, J/(mol K), m/s, kg/mol. Objects hold no state but their parameters: threads may share one
    while nobody changes these.
    """

    def __init__(self, substance: str, eos: str = "", *, set: int = 0, home: str | os.PathLike[str] | None = None):
        self._home = directory(home)
        self._native = _native.Fluid.open(eos, substance, set, self._home)
        self._changed: dict[int, float] = {}
        self._equation: Any = None
        self._transport_model: Any = None

    @classmethod
    def _of_native(cls, native: Any, equation: Any, home: str | os.PathLike[str] | None) -> Fluid:
        """A fluid with an equation written in Python."""
        fluid = cls.__new__(cls)
        fluid._native, fluid._home, fluid._changed, fluid._equation = native, home, {}, equation
        fluid._transport_model = None
        return fluid

    # ---- what it is

    @property
    def name(self) -> str:
        """Name of the substance in the data home."""
        return self._native.substance

    @property
    def eos(self) -> str:
        """Name of the equation: ``"MEOS"``, ``"PR"`` …"""
        return self._native.equation

    @property
    def set(self) -> int:
        """Number of the parameter set."""
        return self._native.set

    @property
    def source(self) -> str:
        """Where the parameters come from."""
        return self._native.source or self._native.comment

    @property
    def M(self) -> float:
        """Molar mass, kg/mol."""
        return self._native.M

    @property
    def T_critical(self) -> float:
        """Critical temperature of the equation, K."""
        return self._native.T_critical

    @property
    def p_critical(self) -> float:
        """Critical pressure of the equation, Pa."""
        return self._native.p_critical

    @property
    def rho_critical(self) -> float:
        """Critical density of the equation, mol/m³."""
        return self._native.rho_critical

    @property
    def valid(self) -> dict[str, float]:
        """Published range of the parameters: T_min, T_max (K), p_max (Pa); not-a-number: unknown."""
        n = self._native
        return {"T_min": n.T_min, "T_max": n.T_max, "p_max": n.p_max}

    @property
    def parameters(self) -> np.ndarray:
        """Parameters of the equation, in the library's order and units (a copy)."""
        return np.asarray(self._native.parameters)

    def set_parameter(self, index: int, value: float) -> None:
        """Changes one parameter of this object; number and unit as in :attr:`parameters`."""
        self._native.set_parameter(index, value)
        self._changed[index] = float(value)
        self._transport_model = None

    # ---- states

    @returns_quantities
    def state(self, *, threads: int = 1, errors: str | None = None, **given: ArrayLike) -> State:
        """Stable states from two of T, p, rho (or v), h, s, u, q.

        Parameters
        ----------
        T, p, rho, v, h, s, u, q : array_like
            Exactly two of: temperature (K), pressure (Pa), density (mol/m³) or volume (m³/mol),
            enthalpy, internal energy (J/mol), entropy (J/(mol K)), vapour fraction (0 to 1). They
            broadcast. Pairs: T or p with any other; rho with h, s, u; h with s.
        threads : int
            0: as many as the machine has.
        errors : {"raise", "nan"}, optional
            What to do about elements without a state. Default: raise for a single state, not-a-number
            and ``status`` in arrays.

        Examples
        --------
        >>> corvane.Fluid("water").state(T=300.0, p=1e5).cp.round(2)
        75.31
        """
        names, known = self._given(given)
        (a, b), single = known.flat, known.single
        out = self._native.states(_CODES[names[0]], a, _CODES[names[1]], b, threads, single)
        return self._states(known.received(out), known, errors)

    @returns_quantities
    def states(self, **given: float) -> State:
        """All stable states with two single values (K, Pa, mol/m³, J/mol, J/(mol K)), as :meth:`state`: cold water has
        two temperatures of one density. One axis."""
        names, known = self._given(given)
        if known.shape:
            raise ValueError("states() takes single values; state() takes arrays")
        a, b = (float(x[0]) for x in known.flat)
        values, status, words, done = self._native.all_states(_CODES[names[0]], a, _CODES[names[1]], b)
        found = Given(T=np.empty(len(status)))
        return self._states(found.received((values, status, words, done)), found, "nan")

    @returns_quantities
    def phase(self, T: ArrayLike, rho: ArrayLike, *, threads: int = 1, errors: str | None = None) -> State:
        """Properties of the homogeneous phase at T (K) and rho (mol/m³), stable or not, in their broadcast
        shape: the fastest way from T and rho to p, h, s, c_p, w."""
        given = Given(T=T, rho=rho)
        t, r = given.flat
        column, status, words, done = given.received(self._native.properties(t, r, threads, given.single))
        columns = {name: column(k) for k, name in enumerate(_PHASE)}
        missing = given.everywhere(math.nan)
        columns.update(T=given.shaped(t), rho=given.shaped(r), q=missing, rho_liquid=missing, rho_vapour=missing)
        return judge(State(columns, status), status, words, done, errors)

    @returns_quantities(unit="mol/m**3")
    def density(self, T: ArrayLike, p: ArrayLike, phase: str = "liquid", *, threads: int = 1,
                errors: str | None = None) -> np.ndarray:  # fmt: skip
        """Density (mol/m³) of the densest (``"liquid"``) or thinnest (``"vapour"``) root at T (K) and
        p (Pa), metastable ones included; the stable one is ``state(T=T, p=p).rho``."""
        code = code_of("phase", phase, {"liquid": 1, "vapour": 3})
        given = Given(T=T, p=p)
        column, status, words, done = given.received(self._native.densities(*given.flat, code, threads, given.single))
        return judge(column(0), status, words, done, errors)

    @returns_quantities
    def saturation(self, *, T: ArrayLike | None = None, p: ArrayLike | None = None, threads: int = 1,
                   errors: str | None = None) -> Saturation:  # fmt: skip
        """Vapour–liquid equilibrium at T (K) or p (Pa), in the shape of these.

        From a thousand points on they come from a curve that is computed before (pieces of polynomials), where its
        errors are bounded by 1e-10; the rest one by one.

        >>> round(float(corvane.Fluid("water").saturation(T=373.15).p))
        1014...
        """
        if (T is None) == (p is None):
            raise TypeError("give T or p")
        given = Given(T=T) if p is None else Given(p=p)
        out = self._native.saturation(p is None, given.flat[0], threads, given.single)
        column, status, words, done = given.received(out)
        columns = [column(k) for k in range(6)]
        liquid, vapour = (self.phase(columns[0], columns[k], threads=threads, errors="nan") for k in (2, 3))
        name = f"{_native.written_name(self.name)} ({self.eos})"
        return judge(Saturation(columns, status, liquid, vapour, name), status, words, done, errors)

    @returns_quantities
    def diagram(self, y: str = "p", x: str = "h", *, T: ArrayLike | None = None, p: ArrayLike | None = None,
                q: ArrayLike | None = None, s: ArrayLike | None = None, rho: ArrayLike | None = None,
                points: int = 120) -> PropertyDiagram:  # fmt: skip
        """A property diagram (p-h, T-s, h-s …) with isolines.

        Parameters
        ----------
        y, x : str
            Two of T, p, rho, v, h, s, u.
        T, p, q, s, rho : array_like, optional
            Values of isotherms (K), isobars (Pa), lines of equal vapour fraction, isentropes (J/(mol K)) and isochores
            (mol/m³). Defaults: ten temperatures from 0.55 to 1.6 critical ones, eight pressures from 0.001 to 10
            critical ones, but for those of an axis; no others.
        points : int
            Of every line.
        """
        low = 0.55 * self.T_critical
        if np.isfinite(self.valid["T_min"]):
            low = max(low, self.valid["T_min"])
        return diagram(self._native.property_diagram, y, x, f"{_native.written_name(self.name)} ({self.eos})", self.T_critical,
                       self.p_critical, low, points, {"T": T, "p": p, "q": q, "s": s, "rho": rho})  # fmt: skip

    def virial(self, T: ArrayLike, order: int = 2, *, threads: int = 1, errors: str | None = None) -> np.ndarray:
        """Virial coefficient of this order (2 to 9) at T (K), (m³/mol)^(order − 1), in the shape of T."""
        registry = registry_of(T)
        given = Given(T=T)
        out = self._native.virial(given.flat[0], order, threads, given.single)
        column, status, words, done = given.received(out)
        B = judge(column(0), status, words, done, errors)
        return registry.Quantity(B, f"(m**3/mol)**{order - 1}") if registry else B

    @returns_quantities
    def ideal_curve(self, kind: str = "joule-thomson", *, T: ArrayLike | None = None, T_min: float = 0.0,
                    p_max: float = 0.0) -> IdealCurve:  # fmt: skip
        """Where the fluid is as an ideal gas in one respect: ``"joule-thomson"`` (inversion), ``"boyle"``, ``"zeno"``
        (Z = 1), ``"joule"``. T (K): only the points at these temperatures. It ends at the saturated liquid, T_min (K; 0:
        0.4 critical temperatures) or p_max (Pa; 0: 10 GPa)."""
        return ideal_curve(self._native, kind, T, T_min, p_max)

    # ---- transport

    @returns_quantities
    def viscosity(self, *, threads: int = 1, errors: str | None = None, **given: ArrayLike) -> Viscosity:
        """Viscosity (Pa s) at T and rho, or at two other quantities as in :meth:`state`.

        By the best model that there is for the substance, which the result names with its publication: a reference
        correlation, else correlations of the liquid and of the dilute gas, joined along the density. ``rho=0`` is the
        dilute gas. ``in_range`` is false where T lies outside what the source states.

        >>> eta = corvane.Fluid("water").viscosity(T=298.15, rho=55345.0)
        >>> round(1e6 * float(eta.viscosity), 1), eta.models[0][0]
        (890.1, 'reference correlation')
        """
        return self._transport(Viscosity, 0, given, threads, errors)

    @returns_quantities
    def thermal_conductivity(self, *, threads: int = 1, errors: str | None = None, **given: ArrayLike) -> Conductivity:
        """Thermal conductivity (W/(m K)), likewise; reference correlations with their critical enhancement."""
        return self._transport(Conductivity, 1, given, threads, errors)

    @returns_quantities
    def diffusion(self, *, threads: int = 1, errors: str | None = None, **given: ArrayLike) -> Diffusion:
        """Coefficient of self-diffusion (m²/s), likewise; ``rho`` above 0."""
        return self._transport(Diffusion, 3, given, threads, errors)

    @returns_quantities
    def surface_tension(self, T: ArrayLike, *, threads: int = 1, errors: str | None = None) -> SurfaceTension:
        """Surface tension (N/m) of liquid and vapour at T (K); zero from the critical temperature on."""
        return self._transport(SurfaceTension, 2, {"T": T, "rho": 0.0}, threads, errors)

    def _transport(self, kind: type, what: int, given: dict[str, Any], threads: int, errors: str | None) -> Any:
        if given.keys() == {"T", "rho"}:
            known = Given(**given)
        else:
            state = self.state(threads=threads, errors=errors, **given)
            state = getattr(state, "plain", state)
            known = Given(T=state.T, rho=_of_one_phase(state))
        if self._transport_model is None:  # reads tables
            self._transport_model = _native.Transport(self._native)
        out, models = self._transport_model.values(what, *known.flat, threads, known.single)
        column, status, words, done = known.received(out)
        T, rho = (known.shaped(x) for x in known.flat)
        return judge(kind(T, rho, [column(k) for k in range(5)], status, models), status, words, done, errors)

    # ---- inside

    def _given(self, given: dict[str, Any]) -> tuple[list[str], Given]:
        if "v" in given:
            v = magnitude(given.pop("v"), "v")
            plain = isinstance(v, (int, float))
            given = {**given, "rho": divided(1.0, Number(v) if plain else np.asarray(v, dtype=float))}
        names = [name for name in given if name in _CODES]
        if len(names) != 2 or len(given) != 2:
            raise TypeError("give two of T, p, rho (or v), h, s, u, q")
        return names, Given(**given)

    def _states(self, received: tuple[Any, ...], given: Given, errors: str | None) -> State:
        column, status, words, done = received
        names = (*_PHASE, *_STATE)  # those of the whole hold where both have a name
        index = {name: len(_STATE) + k for k, name in enumerate(_PHASE)}
        index.update({name: k for k, name in enumerate(_STATE)})
        columns = {name: column(index[name]) for name in names}
        columns["rho_liquid"], columns["rho_vapour"] = (column(len(_STATE) + len(_PHASE) + k) for k in (0, 1))
        columns["M"] = given.everywhere(self.M) if given.single else np.where(np.isnan(columns["T"]), np.nan, self.M)
        return judge(State(columns, status), status, words, done, errors)

    def __reduce__(self) -> tuple[Any, ...]:
        if self._equation is not None:
            return _again, (self._equation, "fluid", self._home)
        return _reopen, (self.name, self.eos, self.set, self._home, self._changed)

    def __repr__(self) -> str:
        return f"Fluid({self.name!r}, {self.eos!r}, set={self.set})"

    def _repr_html_(self) -> str:
        return (f"<b>{self.name}</b>, {self.eos} set {self.set}<br>T<sub>c</sub> = {self.T_critical:.6g} K, "
                f"p<sub>c</sub> = {self.p_critical / 1e6:.6g} MPa<br><small>{self.source}</small>")  # fmt: skip


def _of_one_phase(state: State) -> Any:
    """Densities; between liquid and vapour, where there are two, not-a-number."""
    if isinstance(state.q, Number):
        ends = {0.0: state.rho_liquid, 1.0: state.rho_vapour}
        return state.rho if math.isnan(state.q) else ends.get(state.q, math.nan)
    end = np.where(state.q == 0.0, state.rho_liquid, np.where(state.q == 1.0, state.rho_vapour, np.nan))
    return np.where(np.isnan(state.q), state.rho, end)


def _again(equation: Any, kind: str, home: str | os.PathLike[str] | None) -> Any:
    return getattr(equation, kind)(home=home)


def _reopen(name: str, eos: str, set: int, home: str | os.PathLike[str] | None, changed: dict[int, float]) -> Fluid:
    fluid = Fluid(name, eos, set=set, home=home)
    for index, value in changed.items():
        fluid.set_parameter(index, value)
    return fluid
