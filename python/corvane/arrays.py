"""Broadcasting, flat arrays for the extension module, and quantities of pint."""

from __future__ import annotations

import array
import math
from typing import Any, Callable

from ._numpy import np

#: What arguments and results are measured in, as pint reads it.
UNITS = {
    "T": "kelvin", "p": "pascal", "rho": "mol/m**3", "h": "J/mol", "u": "J/mol", "g": "J/mol",
    "a": "J/mol", "s": "J/(mol*K)", "cv": "J/(mol*K)", "cp": "J/(mol*K)", "w": "m/s",
    "mu_JT": "K/Pa", "kappa_T": "1/Pa", "alpha_p": "1/K", "dp_dT": "Pa/K", "dp_drho": "J/mol",
    "M": "kg/mol", "v": "m**3/mol", "rho_mass": "kg/m**3", "gE": "J/mol", "hE": "J/mol", "sE": "J/(mol*K)",
    "cpE": "J/(mol*K)", "vE": "m**3/mol", "H": "pascal", "B": "m**3/mol", "C": "m**6/mol**2", "TdBdT": "m**3/mol",
    "three_phase_rho": "mol/m**3", "viscosity": "Pa*s", "conductivity": "W/(m*K)", "tension": "N/m",
    "diffusion": "m**2/s", "distance": "m", "potential": "Pa",
}  # fmt: skip


def unit(name: str) -> str:
    """The unit of a column, by the first part of its name ("rho_vapour"); "" for numbers and relative errors."""
    if name.endswith("_error"):
        return ""
    return UNITS.get(name) or UNITS.get(name.split("_")[0], "")


def magnitude(x: Any, name: str) -> Any:
    """The number of a quantity in this package's unit; anything else as it is."""
    if hasattr(x, "magnitude") and hasattr(x, "to"):
        return x.to(UNITS[name]).magnitude if name in UNITS else x.to("").magnitude
    return x


class Number(float):
    """A value of a single state: a float that knows of arrays what is asked of results, and needs no NumPy."""

    shape: tuple[int, ...] = ()
    ndim = 0
    size = 1

    def round(self, digits: int = 0) -> Number:
        """As of an array."""
        return Number(round(float(self), digits))

    def __reduce__(self) -> tuple[Any, ...]:
        return Number, (float(self),)


class Given:
    """Arguments of one value each, for the extension module.

    ``shape``: that of their broadcast; ``flat``: contiguous, one axis; ``single``: plain numbers were given, for which
    NumPy is not loaded.
    """

    def __init__(self, **named: Any):
        values = {name: magnitude(x, name) for name, x in named.items()}
        self.single = all(isinstance(x, (int, float)) for x in values.values())
        self.shape: tuple[int, ...] = ()
        self.flat: list[Any] = [array.array("d", [x]) for x in values.values()] if self.single else []
        if not self.single:
            self.shape, self.flat = flat(**values)

    def shaped(self, values: Any) -> Any:
        """One of the arguments in its shape."""
        return Number(values[0]) if self.single else values.reshape(self.shape)

    def received(self, out: tuple[Any, ...]) -> tuple[Callable[[int], Any], Any, str, bool]:
        """What the extension module returns: columns by their number, status, words, whether all was done."""
        values, status, words, done = out
        if self.single:
            return (lambda k: Number(values[k])), status, words, done
        rows = values.reshape(self.shape + values.shape[1:])
        return (lambda k: rows[..., k] if values.ndim > 1 else rows), status.reshape(self.shape), words, done

    def everywhere(self, value: float) -> Any:
        """The value in every element."""
        return Number(value) if self.single else np.broadcast_to(np.float64(value), self.shape)


def alike(x: Any) -> Any:
    """What single values gave, as a :class:`Number`; arrays as they are."""
    return Number(x) if isinstance(x, float) else x


def divided(a: Any, b: Any) -> Any:
    """a/b of arrays or single numbers; division by zero as NumPy does it."""
    if not isinstance(b, Number):
        return a / b
    return Number(a / b) if b else Number(math.copysign(math.inf, a) if a else math.nan)


def flat(**named: Any) -> tuple[tuple[int, ...], list[np.ndarray]]:
    """Broadcasts arguments of one value each; returns the shape and contiguous flat arrays."""
    arrays = [np.asarray(magnitude(x, name), dtype=float) for name, x in named.items()]
    shape = np.broadcast_shapes(*(a.shape for a in arrays))
    return shape, [np.ascontiguousarray(np.broadcast_to(a, shape)).reshape(-1) for a in arrays]


def flat_with_composition(
    x: Any, n: int, **named: Any
) -> tuple[tuple[int, ...], list[np.ndarray], np.ndarray]:
    """The same beside a composition, whose last axis has n components."""
    x = np.asarray(magnitude(x, "x"), dtype=float)
    if x.ndim < 1 or x.shape[-1] != n:
        raise ValueError(f"the last axis of a composition has {n} values, one for every component")
    arrays = [np.asarray(magnitude(v, name), dtype=float) for name, v in named.items()]
    shape = np.broadcast_shapes(x.shape[:-1], *(a.shape for a in arrays))
    flats = [np.ascontiguousarray(np.broadcast_to(a, shape)).reshape(-1) for a in arrays]
    return shape, flats, np.ascontiguousarray(np.broadcast_to(x, (*shape, n))).reshape(-1, n)
