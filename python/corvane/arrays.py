"""Broadcasting, flat arrays for the extension module, and quantities of pint."""

from __future__ import annotations

from typing import Any

from ._numpy import np

#: What arguments and results are measured in, as pint reads it.
UNITS = {
    "T": "kelvin", "p": "pascal", "rho": "mol/m**3", "h": "J/mol", "u": "J/mol", "g": "J/mol",
    "a": "J/mol", "s": "J/(mol*K)", "cv": "J/(mol*K)", "cp": "J/(mol*K)", "w": "m/s",
    "mu_JT": "K/Pa", "kappa_T": "1/Pa", "alpha_p": "1/K", "dp_dT": "Pa/K", "dp_drho": "J/mol",
    "M": "kg/mol", "v": "m**3/mol", "rho_mass": "kg/m**3", "gE": "J/mol", "hE": "J/mol", "sE": "J/(mol*K)",
    "cpE": "J/(mol*K)", "vE": "m**3/mol", "H": "pascal", "B": "m**3/mol", "C": "m**6/mol**2", "TdBdT": "m**3/mol",
    "three_phase_rho": "mol/m**3",
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
