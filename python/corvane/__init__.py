"""Thermodynamic properties and certified phase equilibria from equations of state.

>>> import corvane as cv
>>> co2 = cv.Fluid("CO2")
>>> round(float(co2.state(T=300.0, p=1e6).rho), 1)
18.6...

Units: K, Pa, mol/m³, J/mol, J/(mol K), m/s, kg/mol; mole fractions. Every argument takes scalars or
arrays that broadcast against each other; compositions have the components on their last axis.
"""

from typing import TYPE_CHECKING as _TYPE_CHECKING

from ._native import EquilibriumError, Jet, OpenError, __version__
from .binary_type import BinaryType
from .catalogue import data_home, equations, mixture_models, search
from .diagram import Isoline, PropertyDiagram
from .equation import Equation, check_equation
from .fluid import Fluid, Saturation, State
from .mixture import Mixture
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
    TernaryRegion,
    ThreePhaseLine,
)
from .outputs import ExcessProperties, HenryConstants, IdealCurve, VirialCoefficients
from .property_table import PropertyTable, TabulatedStates
from .residue import ResidueCurve, ResidueMap
from .status import Interrupted, Status
from .transport import Conductivity, Diffusion, Interface, SurfaceTension, Viscosity

if _TYPE_CHECKING:
    from .fitting import FitResult, fit


def __getattr__(name: str) -> object:
    """What is rarely needed is imported when it is: an import takes half the time without."""
    if name not in ("FitResult", "fit"):
        raise AttributeError(f"module 'corvane' has no attribute {name!r}")
    from . import fitting

    return getattr(fitting, name)


def __dir__() -> list[str]:
    return sorted({*globals(), *__all__})


__all__ = [
    "AzeotropicLine",
    "BinaryType",
    "Conductivity",
    "CriticalLine",
    "CriticalPoints",
    "Diagram",
    "Envelope",
    "Equation",
    "EquilibriumError",
    "ExcessProperties",
    "FitResult",
    "FlashResult",
    "Fluid",
    "HenryConstants",
    "IdealCurve",
    "Interface",
    "Interrupted",
    "Isoline",
    "Mixture",
    "Jet",
    "MixtureState",
    "OpenError",
    "Projection",
    "PropertyTable",
    "PropertyDiagram",
    "ResidueCurve",
    "ResidueMap",
    "Saturation",
    "SaturationPoints",
    "SolidPoints",
    "State",
    "Status",
    "SurfaceTension",
    "TabulatedStates",
    "TernaryDiagram",
    "TernaryRegion",
    "ThreePhaseLine",
    "VirialCoefficients",
    "Viscosity",
    "check_equation",
    "data_home",
    "equations",
    "fit",
    "mixture_models",
    "search",
]
