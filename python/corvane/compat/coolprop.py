"""``PropsSI``, ``PhaseSI`` and ``Props1SI`` with the names, keys and units that users of CoolProp type.

An existing script runs with one import changed::

    from corvane.compat.coolprop import PropsSI

    PropsSI("D", "T", 300, "P", 1e5, "CO2")

Quantities of pint are taken, and then returned, in the units of the keys.

Equal: keys, SI units by mass (``D``, ``H``, ``S`` …) and by mole (``Dmolar`` …), viscosity, conductivity, surface tension
and Prandtl number (Pa s, W/(m K), N/m), first derivatives of one phase (``d(Hmass)/d(T)|P``), broadcasting, fluid names and most aliases, ``HEOS::``, ``PR::``, ``SRK::`` before
a name (``PCSAFT::`` besides), mixtures by mole fractions::

    PropsSI("D", "T", 300, "P", 5e6, "Methane[0.9]&Ethane[0.1]")

Different: the zeros of h, s and u are those of Corvane's ideal-gas tables until
:func:`set_reference_state` is called (differences do not depend on them); equations and constants are
those of Corvane's data; a failure is ``ValueError`` with Corvane's words; ``CP0MASS`` comes from tables. States of mixtures
are certified flashes: where there are two liquids, ``Q`` is the amount of the lightest phase. Without ``HEOS::`` a
mixture takes the model that :class:`corvane.Mixture` chooses; with it, GERG with published pairs alone.

Missing: ``INCOMP::`` fluids, humid air, second derivatives and those along saturation, mixtures by a name (``R410A.mix``).
"""

from __future__ import annotations

import functools
import re
from typing import Any, Callable, TypeVar

from .. import _native
from .._numpy import np
from ..arrays import UNITS
from ..fluid import Fluid
from ..mixture import Mixture
from ..quantities import registry_of
from ._substances import Blend, Pure

__all__ = ["PhaseSI", "Props1SI", "PropsSI", "set_reference_state"]

_Opened = TypeVar("_Opened")


class _UnknownFluid(ValueError, _native.OpenError):
    """A name that the data home has not, nor something that it needs."""


# key: (attribute of a state; by mass: 1 multiplied by M, −1 divided by it, 0 neither)
_OUTPUTS = {
    "T": ("T", 0), "P": ("p", 0), "Q": ("q", 0), "Z": ("Z", 0), "A": ("w", 0), "SPEED_OF_SOUND": ("w", 0),
    "D": ("rho", 1), "DMASS": ("rho", 1), "DMOLAR": ("rho", 0),
    "H": ("h", -1), "HMASS": ("h", -1), "HMOLAR": ("h", 0),
    "S": ("s", -1), "SMASS": ("s", -1), "SMOLAR": ("s", 0),
    "U": ("u", -1), "UMASS": ("u", -1), "UMOLAR": ("u", 0),
    "G": ("g", -1), "GMASS": ("g", -1), "GMOLAR": ("g", 0),
    "HELMHOLTZMASS": ("a", -1), "HELMHOLTZMOLAR": ("a", 0),
    "C": ("cp", -1), "CPMASS": ("cp", -1), "CPMOLAR": ("cp", 0),
    "O": ("cv", -1), "CVMASS": ("cv", -1), "CVMOLAR": ("cv", 0),
    "ISOTHERMAL_COMPRESSIBILITY": ("kappa_T", 0), "ISOBARIC_EXPANSION_COEFFICIENT": ("alpha_p", 0),
    "ISENTROPIC_EXPANSION_COEFFICIENT": ("n_s", 0), "CP0MASS": ("cp0", -1), "CP0MOLAR": ("cp0", 0),
    "V": ("viscosity", 0), "VISCOSITY": ("viscosity", 0), "L": ("conductivity", 0), "CONDUCTIVITY": ("conductivity", 0),
    "I": ("tension", 0), "SURFACE_TENSION": ("tension", 0), "PRANDTL": ("prandtl", 0),
}  # fmt: skip
_INPUTS = {"T", "P", "D", "DMASS", "DMOLAR", "H", "HMASS", "HMOLAR", "S", "SMASS", "SMOLAR", "U", "UMASS",
           "UMOLAR", "Q"}  # fmt: skip
_SLOPE = re.compile(r"D\((\w+)\)/D\((\w+)\)\|(\w+)")
_EQUATIONS = {"HEOS": "MEOS", "PR": "PR", "SRK": "SRK", "PCSAFT": "PCSAFT"}
_MIXTURES = {"HEOS": "MEOS+GERG", "PR": "PR+vdW1", "SRK": "SRK+vdW1", "PCSAFT": "PCSAFT+LB"}
_TRIVIAL = {
    "M": "M", "MOLARMASS": "M", "MOLAR_MASS": "M", "MOLEMASS": "M",
    "TCRIT": "T_critical", "T_CRITICAL": "T_critical",
    "PCRIT": "p_critical", "P_CRITICAL": "p_critical",
    "RHOMOLAR_CRITICAL": "rho_critical",
    "TTRIPLE": "T_triple", "T_TRIPLE": "T_triple", "ACENTRIC": "acentric_factor",
    "ACENTRIC_FACTOR": "acentric_factor", "TMIN": "T_min", "TMAX": "T_max", "PMAX": "p_max",
}  # fmt: skip

_zeros: dict[str, tuple[float, float]] = {}  # substance: what is added to h [J/mol] and s [J/(mol K)]


def _plain(name: str) -> str:
    return re.sub(r"[^a-z0-9]", "", name.lower())


@functools.lru_cache(maxsize=1)
def _names() -> dict[str, str]:
    names: dict[str, str] = {}
    for s in _native.substances("", None):
        for alias in s["aliases"]:
            names.setdefault(_plain(alias), s["name"])
    for s in _native.substances("", None):
        names[_plain(s["name"])] = s["name"]
    return names


@functools.lru_cache(maxsize=64)
def _substance(text: str) -> Pure | Blend:
    backend, _, name = text.rpartition("::")
    if backend and backend not in _EQUATIONS:
        raise ValueError(f"no backend {backend}: use one of {', '.join(_EQUATIONS)}")
    try:
        if "&" in name or "[" in name:
            return _blend(backend, name)
        return Pure(_opened(name, lambda known: Fluid(known, _EQUATIONS.get(backend, ""))))
    except _native.OpenError as e:
        raise _UnknownFluid(str(e)) from None


def _blend(backend: str, text: str) -> Blend | Pure:
    names, z = [], []
    for part in text.split("&"):
        found = re.fullmatch(r"([^\[\]]+)\[([^\[\]]+)\]", part.strip())
        try:
            names.append(found[1])  # type: ignore[index]
            z.append(float(found[2]))  # type: ignore[index]
        except (TypeError, ValueError):
            raise ValueError(f"{text}: a mixture is written with mole fractions, as Methane[0.9]&Ethane[0.1]") from None
    names = [_opened(name, lambda known: _native.substance_name(known, None)) for name in names]
    if len(names) == 1:
        return Pure(Fluid(names[0], _EQUATIONS.get(backend, "")))
    given = (_MIXTURES[backend], names) if backend else (names,)
    return Blend(Mixture(*given, estimate=backend != "HEOS"), z)


def _opened(name: str, of: Callable[[str], _Opened]) -> _Opened:
    """In another spelling, perhaps."""
    try:
        return of(name)
    except _native.OpenError:
        known = _names().get(_plain(name))
        if known is None:
            raise
        return of(known)


def _zero(of: Pure | Blend, attribute: str, T: Any) -> Any:
    h, s = (sum(x * _zeros[name][k] for name, x in of.parts if name in _zeros) for k in (0, 1))
    return {"h": h, "u": h, "s": s, "g": h - T * s, "a": h - T * s}.get(attribute, 0.0)


def _unit(key: str) -> str:
    """Of an input or output, as pint reads it."""
    attribute, mass = _OUTPUTS[key]
    unit = UNITS.get(attribute, "")
    return unit.replace("mol", "kg") if mass else unit


def _state(name1: str, value1: Any, name2: str, value2: Any, fluid: Pure | Blend, errors: str) -> Any:
    given = {}
    for name, value in ((name1, value1), (name2, value2)):
        key = name.upper()
        if key not in _INPUTS:
            raise ValueError(f"{name} is no input; inputs are {', '.join(sorted(_INPUTS))}")
        attribute, mass = _OUTPUTS[key]
        value = value.to(_unit(key)).magnitude if hasattr(value, "magnitude") else value
        if not isinstance(value, (int, float)):
            value = np.asarray(value, dtype=float)
        if mass:
            value = value / fluid.M if mass > 0 else value * fluid.M
        if attribute in ("h", "s", "u"):
            value = value - _zero(fluid, attribute, 0.0)
        given[attribute] = value
    try:
        return fluid.state(errors=errors, **given)
    except (TypeError, _native.EquilibriumError) as e:  # no such pair; no such state
        raise ValueError(f"{e} ({name1}, {name2} of {' + '.join(name for name, _ in fluid.parts)})") from None


def PropsSI(output: str, name1: str, value1: Any = None, name2: str | None = None, value2: Any = None,
            fluid: str | None = None) -> Any:  # fmt: skip
    """One property from two others, in SI units by mass (by mole with ``…molar``); floats for floats, arrays for arrays.

    ``PropsSI("D", "T", 300, "P", 1e5, "CO2")``, or ``PropsSI("TCRIT", "CO2")``. In arrays, states that
    do not exist are ``inf``.

    >>> round(PropsSI("T", "P", 101325, "Q", 0, "Water"), 2)
    373.12
    """
    if value1 is None:
        return Props1SI(output, name1)
    if name2 is None or fluid is None:
        raise ValueError("PropsSI takes an output, two inputs with their values, and a fluid")
    if output.upper() in _TRIVIAL:
        return Props1SI(fluid, output)
    key, slope = output.upper(), _SLOPE.fullmatch(output.upper())
    if key not in _OUTPUTS and not (slope and set(slope.groups()) <= _INPUTS - {"Q"}):
        raise ValueError(f"no output {output}; there are {', '.join(sorted({*_OUTPUTS, *_TRIVIAL}))}, d(P)/d(T)|D and its like")
    f, registry = _substance(fluid), registry_of(value1, value2)
    single = isinstance(value1, (int, float)) and isinstance(value2, (int, float))  # needs no NumPy
    shape = () if single else np.broadcast_shapes(np.shape(value1), np.shape(value2))
    errors = "nan" if shape else "raise"
    s = _state(name1, value1, name2, value2, f, errors)
    if slope:
        (a, a_mass), (b, b_mass), (c, _) = (_OUTPUTS[name] for name in slope.groups())
        x, mass, unit = f.slope(s, a, b, c, errors), a_mass - b_mass, f"({_unit(slope[1])})/({_unit(slope[2])})"
    else:
        attribute, mass = _OUTPUTS[key]
        x, unit = f.value(s, attribute, errors) + _zero(f, attribute, s.T), _unit(key)
        if attribute == "q":
            x = np.where(np.isnan(x), -1.0, x) if shape else -1.0 if x != x else x  # what one phase has for a quality there
    x = x * f.M**mass
    if not shape and x != x:
        raise ValueError(f"{output} is not known of {fluid}: it has no ideal-gas data")
    x = np.where((s.status == 0) & ~np.isnan(x), x, np.inf) if shape else float(x)
    return registry.Quantity(x, unit) if registry else x


def Props1SI(first: str, second: str) -> float:
    """A constant of a fluid (K, Pa, kg/m³, mol/m³, kg/mol): ``Props1SI("CO2", "TCRIT")``, in either order."""
    fluid, key = (second, first) if first.upper() in _TRIVIAL or first.upper().startswith("RHO") else (first, second)
    key = key.upper()
    of = _substance(fluid)
    if key in ("RHOCRIT", "RHOMASS_CRITICAL"):
        return _critical(of)[2] * of.M
    if key not in _TRIVIAL:
        raise ValueError(f"no constant {key}; there are {', '.join(sorted(_TRIVIAL))}")
    attribute = _TRIVIAL[key]
    if attribute == "M":
        return of.M
    if attribute.endswith("_critical"):
        return _critical(of)[("T_critical", "p_critical", "rho_critical").index(attribute)]
    if isinstance(of, Blend):
        raise ValueError(f"{key} is a constant of pure fluids; {fluid} is a mixture")
    f = of.fluid
    if attribute in f.valid:
        return f.valid[attribute]
    if hasattr(f, attribute):
        return float(getattr(f, attribute))
    return next(s[attribute] for s in _native.substances(f.name, None) if s["name"] == f.name)


def PhaseSI(name1: str, value1: float, name2: str, value2: float, fluid: str) -> str:
    """``"liquid"``, ``"gas"``, ``"twophase"``, ``"supercritical"``, ``"supercritical_gas"`` (above the
    critical temperature only) or ``"supercritical_liquid"`` (above the critical pressure only), mixtures by the
    critical point of their composition; ``"threephase"`` there besides."""
    f = _substance(fluid)
    s = _state(name1, value1, name2, value2, f, "raise")
    if s.q == s.q:
        return "twophase" if getattr(s, "phases", 2) == 2 else "threephase"
    T_critical, p_critical, rho_critical = _critical(f)
    hot, high = s.T >= T_critical, s.p >= p_critical
    if hot or high:
        return "supercritical" if hot and high else "supercritical_gas" if hot else "supercritical_liquid"
    return "liquid" if s.rho > rho_critical else "gas"


def _critical(of: Pure | Blend) -> tuple[float, float, float]:
    try:
        return of.critical
    except _native.EquilibriumError as e:
        raise ValueError(str(e)) from None


def set_reference_state(fluid: str, state: str) -> None:
    """Sets the zeros of h and s of a fluid in this module: ``"IIR"`` (200 kJ/kg and 1 kJ/(kg K) for the
    saturated liquid at 0 °C), ``"ASHRAE"`` (zero at −40 °C), ``"NBP"`` (zero at 101 325 Pa), or
    ``"RESET"`` (those of Corvane's tables)."""
    of = _substance(fluid)
    if isinstance(of, Blend):
        raise ValueError(f"{fluid}: set the reference states of its components; the mixture has their mean")
    f = of.fluid
    if state == "RESET":
        _zeros.pop(f.name, None)
        return
    wanted = {"IIR": (2e5, 1e3), "ASHRAE": (0.0, 0.0), "NBP": (0.0, 0.0)}
    if state not in wanted:
        raise ValueError(f"no reference state {state}; there are IIR, ASHRAE, NBP, RESET")
    at = ("P", 101325.0) if state == "NBP" else ("T", 273.15 if state == "IIR" else 233.15)
    s = _state(*at, "Q", 0.0, of, "raise")
    h, entropy = wanted[state]
    _zeros[f.name] = (h * f.M - float(s.h), entropy * f.M - float(s.s))
