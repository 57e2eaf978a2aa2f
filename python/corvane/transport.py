"""Viscosity, thermal conductivity, surface tension: values with their models."""

from __future__ import annotations

from typing import Any, ClassVar, Sequence

from .results import Table


class TransportTable(Table):
    """Values of a transport property with where they come from.

    Attributes, all of the shape of the arguments: T (K), the property, in_range (is T within what the source states?),
    second_source (relative deviation of a second source of this property, not-a-number where there is none), status;
    and ``models``, the models that the values came from, each with its publication.
    """

    further: ClassVar[tuple[str, ...]] = ("in_range",)
    words: ClassVar[tuple[str, ...]] = ("models",)

    def __init__(self, T: Any, rho: Any, values: Sequence[Any], status: Any, models: list[tuple[str, str]]):
        self.T, self.rho, self.status = T, rho, status
        value, in_range, self.second_source = values
        setattr(self, self.columns[-2], value)
        self.in_range = in_range == 1.0
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


class SurfaceTension(TransportTable):
    """Surface tensions (N/m) at temperatures (K): see :class:`TransportTable`."""

    columns: ClassVar[tuple[str, ...]] = ("T", "tension", "second_source")
    ordinates: ClassVar[tuple[str, ...]] = ("tension",)
