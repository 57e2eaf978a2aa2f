"""Mixtures: properties, certified equilibria, diagrams."""

from __future__ import annotations

import os
from typing import TYPE_CHECKING, Any, Mapping, Sequence

from . import _native, binary_type, outputs
from ._native import written_name
from ._numpy import np
from .arrays import flat, flat_with_composition, magnitude
from .binary_type import BinaryType
from .catalogue import directory
from .diagram import PropertyDiagram, diagram
from .fluid import _CODES, _PHASE, Fluid, _again
from .mixture_results import (
    AzeotropicLine,
    CriticalLine,
    CriticalPoints,
    Diagram,
    Envelope,
    FlashResult,
    MixtureState,
    Projection,
    SaturationPoints,
    SolidPoints,
    TernaryDiagram,
    ThreePhaseLine,
)
from .quantities import returns_quantities
from .residue import ResidueMap
from .status import code_of, judge
from .transport import Conductivity, Diffusion, Interface, SurfaceTension, Viscosity

if TYPE_CHECKING:
    from numpy.typing import ArrayLike

_BRANCH = {"any": 0, "lower": 1, "upper": 2}
_ROOT = {"liquid": 1, "stable": 2, "vapour": 3}


class Mixture:
    """A mixture with an equation of state and a mixing theory.

    Parameters
    ----------
    model : str
        ``"PR+vdW1"``, ``"SRK+vdW1"``, ``"PCSAFT+LB"``, ``"MEOS+GERG"`` … (:func:`corvane.mixture_models`). May be left
        out: see Notes.
    components : sequence of str
        As for :class:`corvane.Fluid`.
    kij : float or mapping, optional
        Interaction parameter of a binary, or ``{("methane", "propane"): 0.01}``, in place of the stored
        one (parameter 0 of the pair).
    sets : sequence of int, optional
        Parameter sets of the components. Default: those that the pairs were made for.
    pair_set : int, optional
        Parameter set of the pairs. Default: the first under which all pairs are published.
    estimate : bool
        False: a pair without published parameters is refused. True: the mixing theory's own estimate
        stands in, see ``estimated``; for the multi-fluid model the reducing parameters with which it agrees with a
        predictive model, see ``predicted``.
    predict : bool
        False: of the multi-fluid model such pairs have reducing parameters of 1.
    home : path, optional
        As for :class:`corvane.Fluid`.

    Notes
    -----
    ``Mixture(["nitrogen", "oxygen"])`` takes the library's choice: the multi-fluid model where parameters of all pairs
    are published, else PC-SAFT on the same condition, else SRK+PSRK where the groups of all components are known,
    else Peng–Robinson; ``chosen`` says why. Units: K, Pa, mol/m³, J/mol, J/(mol K), m/s, kg/mol, mole fractions.
    """

    def __init__(self, model: str | Sequence[str], components: Sequence[str] | None = None, *,
                 kij: float | Mapping[tuple[str, str], float] | None = None, sets: Sequence[int] = (),
                 pair_set: int = 0, estimate: bool = True, predict: bool = True,
                 home: str | os.PathLike[str] | None = None):  # fmt: skip
        self._options = (tuple(sets), pair_set, estimate, predict, directory(home))
        if components is None:
            if isinstance(model, str):
                raise TypeError("a mixture needs components")
            model, components = "", model
        self._asked = str(model)
        self._native = _native.Mixture.open(self._asked, [str(c) for c in components], list(sets), pair_set, estimate,
                                            predict, self._options[4])  # fmt: skip
        self._changed: dict[tuple[int, int, int], float] = {}
        self._changed_components: dict[tuple[int, int], float] = {}
        self._equation: Any = None
        self._transport_model: Any = None
        if kij is not None:
            self._set_kij(kij)

    @classmethod
    def _of_native(cls, native: Any, equation: Any, home: str | os.PathLike[str] | None) -> Mixture:
        """A mixture with an equation written in Python."""
        mixture = cls.__new__(cls)
        mixture._native, mixture._changed, mixture._equation = native, {}, equation
        mixture._changed_components, mixture._options, mixture._asked = {}, ((), 1, True, True, home), ""
        mixture._transport_model = None
        return mixture

    # ---- what it is

    @property
    def model(self) -> str:
        """Equation and mixing theory: ``"PR+vdW1"``."""
        return self._native.model

    @property
    def chosen(self) -> str:
        """Why this model, where none was named; else empty."""
        return self._native.chosen

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
    def predicted(self) -> dict[tuple[str, str], tuple[str, float]]:
        """Multi-fluid pairs whose reducing parameters come from a predictive model: its name, and the mean relative
        error of bubble pressures to expect."""
        names = self.components
        return {(names[i], names[j]): (model, error) for i, j, model, error in self._native.predicted}

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
        """Changes one parameter of a component in this object; number and unit as in :meth:`component_parameters`."""
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
        """Properties of the homogeneous phase at T (K), rho (mol/m³) and mole fractions x, stable or not, in the
        broadcast shape of T, rho and x without its last axis."""
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
        values, status, words, done = self._native.densities(t, q, z, code_of("phase", phase, _ROOT), threads)
        return judge(values.reshape(shape), status.reshape(shape), words, done, errors)

    @returns_quantities(unit="")
    def ln_phi(self, T: ArrayLike, rho: ArrayLike, x: ArrayLike, *, threads: int = 1,
               errors: str | None = None) -> np.ndarray:  # fmt: skip
        """Logarithms of the fugacity coefficients at T (K), rho (mol/m³), in their broadcast shape, components last."""
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
        """As :meth:`Fluid.ideal_curve` (T, T_min in K, p_max in Pa), of one phase of this composition (one axis), whether
        it splits or not."""
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
        """All states of composition z (one axis) with two single values (units as of :meth:`flash`), one axis, by rising
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
        """Certified dew points of the vapour z at T (K) or p (Pa), as :meth:`bubble`."""
        return self._saturation(False, z, T, p, branch, threads, errors)

    @returns_quantities
    def envelope(self, z: ArrayLike, *, p_start: float = 5e4, p_max: float = 1e9, stability: bool = False) -> Envelope:
        """The phase envelope of composition z (one axis), from the dew point at p_start (Pa) up to p_max (Pa).
        stability: test every point for a third phase, and bound its errors."""
        d = self._native.envelope(_one(z), float(magnitude(p_start, "p")), float(magnitude(p_max, "p")), stability)
        return Envelope(d, self.components)

    @returns_quantities
    def pxy(self, T: float, *, p_max: float = 1e9) -> Diagram:
        """The complete p-x-y diagram of a binary at T (K), up to p_max (Pa)."""
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
    def critical_point(self, z: ArrayLike, *, threads: int = 1, errors: str | None = None) -> CriticalPoints:
        """The stable critical points (K, Pa, mol/m³) of compositions z (components last), certified, one for each; of a
        single composition one row."""
        shape, _, x = flat_with_composition(z, len(self.components))
        values, status, words, done = self._native.critical_point(x, threads)
        if not shape:
            shape, errors = (1,), errors or "raise"
        status = status.reshape(shape)
        result = CriticalPoints(values.reshape(*shape, -1), self.components, status)
        return judge(result, status, words, done, errors)

    @returns_quantities
    def critical_points(self, z: ArrayLike) -> CriticalPoints:
        """All critical points (K, Pa, mol/m³) of composition z (one axis) that a search finds, stable or not."""
        return CriticalPoints(self._native.critical_points(_one(z)), self.components)

    @returns_quantities
    def critical_lines(self, *, p_max: float = 1e9) -> list[CriticalLine]:
        """The critical lines of a binary up to p_max (Pa), certified."""
        lines = self._native.critical_lines(float(magnitude(p_max, "p")))
        return [CriticalLine(d, self.components) for d in lines]

    @returns_quantities
    def three_phase_lines(self, *, p_max: float = 1e9) -> list[ThreePhaseLine]:
        """Lines of three fluid phases of a binary up to p_max (Pa), certified."""
        return [ThreePhaseLine(d) for d in self._native.three_phase_lines(float(magnitude(p_max, "p")))]

    @returns_quantities
    def azeotropic_lines(self, *, p_max: float = 1e9) -> list[AzeotropicLine]:
        """Azeotropic lines of a binary up to p_max (Pa), certified."""
        return [AzeotropicLine(d) for d in self._native.azeotropic_lines(float(magnitude(p_max, "p")))]

    @returns_quantities
    def projection(self, *, p_max: float = 1e8) -> Projection:
        """The p-T projection of a binary up to p_max (Pa): vapour pressures of the components, critical, three-phase
        and azeotropic lines."""
        pure, p_max = {}, float(magnitude(p_max, "p"))
        for k, name in enumerate(self.components):
            fluid = Fluid(name, self.model.split("+")[0], set=self._native.sets[k], home=self._options[4])
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

    # ---- transport

    @returns_quantities
    def viscosity(self, T: ArrayLike, rho: ArrayLike, x: ArrayLike, *, threads: int = 1,
                  errors: str | None = None) -> Viscosity:  # fmt: skip
        """Viscosity (Pa s) of the homogeneous phase at T (K), rho (mol/m³) and mole fractions x (components last), in their
        broadcast shape: by Wilke's rule of the dilute gas and Grunberg and Nissan's of what density adds, from the
        components alone. Phases of a flash have their own: ``gas.viscosity(f.T, f.rho_phase[0], f.x[0])``."""
        return self._of_phase(Viscosity, 0, T, rho, x, threads, errors)

    @returns_quantities
    def thermal_conductivity(self, T: ArrayLike, rho: ArrayLike, x: ArrayLike, *, threads: int = 1,
                             errors: str | None = None) -> Conductivity:  # fmt: skip
        """Thermal conductivity (W/(m K)) at T (K) and rho (mol/m³), likewise, by Wassiljewa's equation and Filippov's rule,
        without critical enhancement."""
        return self._of_phase(Conductivity, 1, T, rho, x, threads, errors)

    @returns_quantities
    def diffusion(self, T: ArrayLike, rho: ArrayLike, x: ArrayLike, *, fick: bool = False, threads: int = 1,
                  errors: str | None = None) -> Diffusion:  # fmt: skip
        """Diffusion (m²/s) of two components at T (K) and rho (mol/m³, above 0), likewise: the coefficient of Maxwell and Stefan, or
        Fick's, which is that times the thermodynamic factor of the model."""
        return self._of_phase(Diffusion, 3 if fick else 2, T, rho, x, threads, errors)

    @returns_quantities
    def interface(self, T: ArrayLike, rho_liquid: ArrayLike, x: ArrayLike, rho_vapour: ArrayLike, y: ArrayLike) -> Interface:
        """The profile of the interface between a liquid x and a vapour y in equilibrium at T (K), of densities in mol/m³, by
        density-gradient theory with the components' own surface tensions. Raises :class:`corvane.EquilibriumError` without one."""
        n = len(self.components)
        _, (t, liquid), x = flat_with_composition(x, n, T=T, rho=rho_liquid)
        _, (_, vapour), y = flat_with_composition(y, n, T=T, rho=rho_vapour)
        if self._transport_model is None:
            self._transport_model = _native.MixtureTransport(self._native)
        return Interface(*self._transport_model.profile(float(t[0]), float(liquid[0]), x, float(vapour[0]), y), self.components)

    @returns_quantities
    def surface_tension(self, T: ArrayLike, rho_liquid: ArrayLike, x: ArrayLike, rho_vapour: ArrayLike, y: ArrayLike, *,
                        threads: int = 1, errors: str | None = None) -> SurfaceTension:  # fmt: skip
        """Surface tension (N/m) of a liquid x beside a vapour y (components last) at T (K), of densities in mol/m³:
        by density-gradient theory where they are in equilibrium, else by parachors; ``models`` says which."""
        n, named = len(self.components), {"T": T, "rho": rho_liquid}
        other = {**named, "rho": rho_vapour}
        shape = np.broadcast_shapes(*(flat_with_composition(z, n, **given)[0] for z, given in ((x, named), (y, other))))
        of = np.empty(shape)  # gives all of them the shape of the whole
        _, (t, liquid, _), x = flat_with_composition(x, n, **named, of=of)
        _, (t, vapour, _), y = flat_with_composition(y, n, **other, of=of)
        return self._transport(SurfaceTension, shape, t, liquid, threads, errors, "tension", t, liquid, x, vapour, y)

    def _of_phase(self, kind: Any, what: int, T: Any, rho: Any, x: Any, threads: int, errors: str | None) -> Any:
        shape, (t, r), z = flat_with_composition(x, len(self.components), T=T, rho=rho)
        return self._transport(kind, shape, t, r, threads, errors, "values", what, t, r, z)

    def _transport(self, kind: Any, shape: Any, T: Any, rho: Any, threads: int, errors: str | None, call: str,
                   *arguments: Any) -> Any:  # fmt: skip
        if self._transport_model is None:  # opens every component
            self._transport_model = _native.MixtureTransport(self._native)
        (values, status, words, done), models = getattr(self._transport_model, call)(*arguments, threads)
        columns, status = [values[:, k].reshape(shape) for k in range(5)], status.reshape(shape)
        result = kind(T.reshape(shape), rho.reshape(shape), columns, status, models)
        return judge(result, status, words, done, errors)

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
        code = code_of("branch", branch, _BRANCH)
        values, status, words, done = self._native.saturation(bubble, p is None, value, x, code, threads)
        status = status.reshape(shape)
        result = SaturationPoints(values.reshape(*shape, -1), x.reshape(*shape, n), status, self.components)
        return judge(result, status, words, done, errors)

    def _index(self, component: str | int) -> int:
        if isinstance(component, str):
            name = _native.substance_name(component, self._options[4])
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
        sets, pair_set, estimate, predict, home = self._options
        if self._equation is not None:
            return _again, (self._equation, "mixture", home)
        changed = self._changed, self._changed_components
        arguments = (self._asked, self.components, sets, pair_set, estimate, predict, home, *changed)
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


def _reopen(model: str, components: list[str], sets: Sequence[int], pair_set: int, estimate: bool,
            predict: bool, home: str | os.PathLike[str] | None, changed: dict[tuple[int, int, int], float],
            changed_components: dict[tuple[int, int], float]) -> Mixture:  # fmt: skip
    asked: Any = (model, components) if model else (components,)
    mixture = Mixture(*asked, sets=sets, pair_set=pair_set, estimate=estimate, predict=predict, home=home)
    for (index, i, j), value in changed.items():
        mixture.set_pair_parameter(i, j, value, index)
    for (i, index), value in changed_components.items():
        mixture.set_component_parameter(i, index, value)
    return mixture
