"""Quantities of pint: arguments with units in, results with units out."""

from __future__ import annotations

import copy
import functools
from typing import Any, Callable, TypeVar, overload

from .arrays import unit

_Method = TypeVar("_Method", bound=Callable[..., Any])

__all__ = ["Quantities", "registry_of", "returns_quantities"]


class Quantities:
    """A result whose columns are quantities, as its arguments were; all else is that of ``plain``.

    Rows of unlike numbers (``three_phase`` of a diagram: T, p, compositions, densities) stay numbers."""

    def __init__(self, plain: Any, registry: Any):
        self.plain = plain
        self._registry = registry

    def __getattr__(self, name: str) -> Any:
        if name.startswith("__"):
            raise AttributeError(name)
        value = getattr(self.plain, name)
        return value if callable(value) else self._with_units(value, name)

    def _with_units(self, value: Any, name: str) -> Any:
        """The same with results in it as :class:`Quantities`, and numbers with the unit that the name has."""
        if hasattr(value, "plot") or hasattr(value, "columns"):  # a result within the result
            return Quantities(value, self._registry)
        if isinstance(value, dict):
            return {key: self._with_units(one, key) for key, one in value.items()}
        if isinstance(value, list):
            return [self._with_units(one, name) for one in value]
        if isinstance(value, tuple):  # an isoline, or a point in T, p (and rho)
            line = hasattr(value[-1], "columns")
            names = (name, "") if line else ("T", "p", "rho")
            return tuple(self._with_units(one, key) for one, key in zip(value, names))
        number = isinstance(value, float) or hasattr(value, "dtype")
        columns = (*getattr(self.plain, "columns", ()), *getattr(self.plain, "further", ()))
        flags = getattr(value, "dtype", None) == bool
        if not flags and (name in columns or (unit(name) and number)):
            return self._registry.Quantity(value, unit(name))
        return value

    def __copy__(self) -> Quantities:
        return Quantities(copy.copy(self.plain), self._registry)

    def __deepcopy__(self, memo: dict[int, Any]) -> Quantities:
        return Quantities(copy.deepcopy(self.plain, memo), self._registry)

    def __reduce__(self) -> tuple[Any, ...]:
        """Registries cannot be pickled; as quantities themselves do, these come back with the application's."""
        return _with_registry_of_application, (self.plain,)

    def __len__(self) -> int:
        return len(self.plain)

    def __repr__(self) -> str:
        return repr(self.plain)

    def _repr_html_(self) -> str:
        return self.plain._repr_html_() if hasattr(self.plain, "_repr_html_") else repr(self.plain)


def _with_registry_of_application(plain: Any) -> Quantities:
    import pint

    return Quantities(plain, pint.get_application_registry())


def registry_of(*arguments: Any) -> Any:
    """The registry of the first quantity among the arguments; None without one."""
    return next((x._REGISTRY for x in arguments if getattr(x, "_REGISTRY", None) is not None), None)


@overload
def returns_quantities(method: _Method) -> _Method: ...
@overload
def returns_quantities(*, unit: str) -> Callable[[_Method], _Method]: ...


def returns_quantities(method: Any = None, *, unit: str | None = None) -> Any:
    """Wraps a method that returns results, lists of them, or an array in ``unit``. To type checkers it is as before: with
    quantities it returns what has the same attributes."""
    if method is None:
        return functools.partial(returns_quantities, unit=unit)

    @functools.wraps(method)
    def call(*arguments: Any, **named: Any) -> Any:
        result = method(*arguments, **named)
        registry = registry_of(*arguments[1:], *named.values())
        if registry is None:
            return result
        return Quantities(None, registry)._with_units(result, "") if unit is None else registry.Quantity(result, unit)

    return call
