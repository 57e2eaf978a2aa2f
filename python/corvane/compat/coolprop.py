"""``PropsSI``, ``PhaseSI`` and ``Props1SI`` with the names, keys and units that users of CoolProp type.

An existing script runs with one import changed::

    from corvane.compat.coolprop import PropsSI

    PropsSI("D", "T", 300, "P", 1e5, "CO2")

Quantities of pint are taken, and then returned, in the units of the keys.

Equal: keys, SI units by mass (``D``, ``H``, ``S`` …) and by mole (``Dmolar`` …), broadcasting, fluid names
and most aliases, ``HEOS::``, ``PR::``, ``SRK::`` before a name (``PCSAFT::`` besides).

Different: the zeros of h, s and u are those of Corvane's ideal-gas tables until
:func:`set_reference_state` is called (differences do not depend on them); equations and constants are
those of Corvane's data; a failure is ``ValueError`` with Corvane's words; ``CP0MASS`` comes from tables.

Missing: mixtures (see :class:`corvane.Mixture`), transport properties (see :meth:`corvane.Fluid.viscosity`), ``INCOMP::`` fluids, humid air,
partial derivatives as keys.
"""

from __future__ import annotations

import functools
import re
from typing import Any

from .. import _native
from .._numpy import np
from ..arrays import UNITS
from ..fluid import Fluid, State
from ..quantities import registry_of

__all__ = ["PhaseSI", "Props1SI", "PropsSI", "set_reference_state"]

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
}  # fmt: skip
_INPUTS = {"T", "P", "D", "DMASS", "DMOLAR", "H", "HMASS", "HMOLAR", "S", "SMASS", "SMOLAR", "U", "UMASS",
           "UMOLAR", "Q"}  # fmt: skip
_EQUATIONS = {"HEOS": "MEOS", "PR": "PR", "SRK": "SRK", "PCSAFT": "PCSAFT"}
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
def _fluid(text: str) -> Fluid:
    backend, _, name = text.rpartition("::")
    if backend and backend not in _EQUATIONS:
        raise ValueError(f"no backend {backend}: use one of {', '.join(_EQUATIONS)}")
    if "&" in name or "[" in name:
        raise ValueError(f"{text}: mixtures are not available here, see corvane.Mixture")
    equation = _EQUATIONS[backend] if backend else ""
    try:
        return Fluid(name, equation)
    except _native.OpenError:  # in another spelling, perhaps
        known = _names().get(_plain(name))
        if known is None:
            raise
        return Fluid(known, equation)


def _zero(fluid: Fluid, attribute: str, T: Any) -> Any:
    h, s = _zeros.get(fluid.name, (0.0, 0.0))
    return {"h": h, "u": h, "s": s, "g": h - T * s, "a": h - T * s}.get(attribute, 0.0)


def _unit(key: str) -> str:
    """Of an input or output, as pint reads it."""
    attribute, mass = _OUTPUTS[key]
    unit = UNITS.get(attribute, "")
    return unit.replace("mol", "kg") if mass else unit


def _state(name1: str, value1: Any, name2: str, value2: Any, fluid: Fluid, errors: str | None) -> State:
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
    return fluid.state(errors=errors, **given)


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
    if output.upper() not in _OUTPUTS:
        raise ValueError(f"no output {output}; there are {', '.join(sorted({*_OUTPUTS, *_TRIVIAL}))}")
    f, registry = _fluid(fluid), registry_of(value1, value2)
    single = isinstance(value1, (int, float)) and isinstance(value2, (int, float))  # needs no NumPy
    shape = () if single else np.broadcast_shapes(np.shape(value1), np.shape(value2))
    s = _state(name1, value1, name2, value2, f, "nan" if shape else "raise")
    attribute, mass = _OUTPUTS[output.upper()]
    x = getattr(s, attribute) + _zero(f, attribute, s.T)
    if attribute == "q":
        x = np.where(np.isnan(x), -1.0, x) if shape else -1.0 if x != x else x  # what one phase has for a quality there
    if mass:
        x = x * f.M if mass > 0 else x / f.M
    x = np.where(s.status == 0, x, np.inf) if shape else float(x)
    return registry.Quantity(x, _unit(output.upper())) if registry else x


def Props1SI(first: str, second: str) -> float:
    """A constant of a fluid (K, Pa, kg/m³, mol/m³, kg/mol): ``Props1SI("CO2", "TCRIT")``, in either order."""
    fluid, key = (second, first) if first.upper() in _TRIVIAL or first.upper().startswith("RHO") else (first, second)
    key = key.upper()
    f = _fluid(fluid)
    if key in ("RHOCRIT", "RHOMASS_CRITICAL"):
        return f.rho_critical * f.M
    if key not in _TRIVIAL:
        raise ValueError(f"no constant {key}; there are {', '.join(sorted(_TRIVIAL))}")
    attribute = _TRIVIAL[key]
    if attribute in f.valid:
        return f.valid[attribute]
    if hasattr(f, attribute):
        return float(getattr(f, attribute))
    return next(s[attribute] for s in _native.substances(f.name, None) if s["name"] == f.name)


def PhaseSI(name1: str, value1: float, name2: str, value2: float, fluid: str) -> str:
    """``"liquid"``, ``"gas"``, ``"twophase"``, ``"supercritical"``, ``"supercritical_gas"`` (above the
    critical temperature only) or ``"supercritical_liquid"`` (above the critical pressure only)."""
    f = _fluid(fluid)
    s = _state(name1, value1, name2, value2, f, "raise")
    if s.q == s.q:
        return "twophase"
    hot, high = s.T >= f.T_critical, s.p >= f.p_critical
    if hot or high:
        return "supercritical" if hot and high else "supercritical_gas" if hot else "supercritical_liquid"
    return "liquid" if s.rho > f.rho_critical else "gas"


def set_reference_state(fluid: str, state: str) -> None:
    """Sets the zeros of h and s of a fluid in this module: ``"IIR"`` (200 kJ/kg and 1 kJ/(kg K) for the
    saturated liquid at 0 °C), ``"ASHRAE"`` (zero at −40 °C), ``"NBP"`` (zero at 101 325 Pa), or
    ``"RESET"`` (those of Corvane's tables)."""
    f = _fluid(fluid)
    if state == "RESET":
        _zeros.pop(f.name, None)
        return
    wanted = {"IIR": (2e5, 1e3), "ASHRAE": (0.0, 0.0), "NBP": (0.0, 0.0)}
    if state not in wanted:
        raise ValueError(f"no reference state {state}; there are IIR, ASHRAE, NBP, RESET")
    at = {"p": 101325.0} if state == "NBP" else {"T": 273.15 if state == "IIR" else 233.15}
    s = f.state(q=0.0, **at)
    h, entropy = wanted[state]
    _zeros[f.name] = (h * f.M - float(s.h), entropy * f.M - float(s.s))
