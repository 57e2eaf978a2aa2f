"""Quantities of pint: arguments with units in, results with units out."""

from __future__ import annotations

import functools
from typing import Any, Callable

from .arrays import unit

__all__ = ["Quantities", "returns_quantities"]


class Quantities:
    """A result whose columns are quantities, as its arguments were; all else is that of ``plain``."""

    def __init__(self, plain: Any, registry: Any):
        self.plain = plain
        self._registry = registry

    def __getattr__(self, name: str) -> Any:
        if name.startswith("__"):
            raise AttributeError(name)
        value = getattr(self.plain, name)
        if hasattr(value, "columns"):  # a result within the result: the liquid of a saturation
            return Quantities(value, self._registry)
        if name in self.plain.columns or unit(name):
            return self._registry.Quantity(value, unit(name))
        return value

    def __len__(self) -> int:
        return len(self.plain)

    def __repr__(self) -> str:
        return repr(self.plain)

    def _repr_html_(self) -> str:
        return self.plain._repr_html_()


def returns_quantities(method: Callable[..., Any]) -> Callable[..., Any]:
    """Wraps a method that returns a table, or an array of densities."""

    @functools.wraps(method)
    def call(*arguments: Any, **named: Any) -> Any:
        result = method(*arguments, **named)
        for x in (*arguments[1:], *named.values()):
            registry = getattr(x, "_REGISTRY", None)
            if registry is None:
                continue
            if hasattr(result, "columns"):
                return Quantities(result, registry)
            return registry.Quantity(result, "mol/m**3")
        return result

    return call
