"""Viscosity, thermal conductivity, diffusion, surface tension: values with their models; interfaces."""

from __future__ import annotations

from typing import Any, ClassVar, Sequence

from ._numpy import np
from .results import Table, draws


class TransportTable(Table):
    """Values of a transport property with where they come from.

    Attributes, all of the shape of the arguments: T (K), the property, in_range (is T within what the source states?),
    second_source (relative deviation of a second source of this property, not-a-number where there is none), uncertainty (what
    nine of ten values of the model stay below, relative, not-a-number where the publication states it), metastable (is the state
    between the densities of vapour and liquid? Of pure fluids), status; and ``models``, the models that the values came from, each with its publication.
    """

    further: ClassVar[tuple[str, ...]] = ("in_range", "uncertainty", "metastable")
    words: ClassVar[tuple[str, ...]] = ("models",)

    def __init__(self, T: Any, rho: Any, values: Sequence[Any], status: Any, models: list[tuple[str, str]]):
        self.T, self.rho, self.status = T, rho, status
        value, in_range, self.second_source, self.uncertainty, metastable = values
        setattr(self, self.columns[-2], value)
        self.in_range, self.metastable = in_range == 1.0, metastable == 1.0
        self.models = tuple(models)

    @property
    def model(self) -> str:
        """The models in words; several where gas and dense fluid have their own."""
        return "; ".join(f"{model} ({source})" for model, source in self.models)


class Viscosity(TransportTable):
    """Viscosities (Pa s): see :class:`TransportTable`; ``rho``: density, mol/m³."""

    columns: ClassVar[tuple[str, ...]] = ("T", "rho", "viscosity", "second_source")
    ordinates: ClassVar[tuple[str, ...]] = ("viscosity",)


class Conductivity(TransportTable):
    """Thermal conductivities (W/(m K)): see :class:`TransportTable`; ``rho``: density, mol/m³."""

    columns: ClassVar[tuple[str, ...]] = ("T", "rho", "conductivity", "second_source")
    ordinates: ClassVar[tuple[str, ...]] = ("conductivity",)


class Diffusion(TransportTable):
    """Diffusion coefficients (m²/s): see :class:`TransportTable`; ``rho``: density, mol/m³."""

    columns: ClassVar[tuple[str, ...]] = ("T", "rho", "diffusion", "second_source")
    ordinates: ClassVar[tuple[str, ...]] = ("diffusion",)


class SurfaceTension(TransportTable):
    """Surface tensions (N/m) at temperatures (K): see :class:`TransportTable`."""

    columns: ClassVar[tuple[str, ...]] = ("T", "tension", "second_source")
    ordinates: ClassVar[tuple[str, ...]] = ("tension",)


class Interface(Table):
    """An interface by density-gradient theory: distance (m, into the liquid), rho (mol/m³, components last), potential (Pa: grand
    potential above that of the phases), status; and of the whole tension (N/m), tension_error (relative, of the quadrature)."""

    columns: ClassVar[tuple[str, ...]] = ("distance", "rho", "potential")
    words: ClassVar[tuple[str, ...]] = ("tension", "tension_error", "components")

    def __init__(self, rows: Any, tension: float, tension_error: float, components: Sequence[str]):
        self.distance, self.potential, self.rho = rows[:, 0], rows[:, 1], rows[:, 2:]
        self.tension, self.tension_error, self.components = tension, tension_error, tuple(components)
        self.status = np.zeros(len(self.distance), dtype=int)

    def _label(self, k: int) -> str:
        return self.components[k]

    @draws
    def plot(self, ax: Any = None, *, label: str | None = None) -> Any:
        """The partial densities through the interface."""
        for k, name in enumerate(self.components):
            ax.plot(self.distance * 1e9, self.rho[:, k] / 1e3, label=name if label is None else f"{label}: {name}")
        ax.set(xlabel="z / nm", ylabel="partial density / (mol/dm³)")
        ax.legend()
        return ax
