"""What :mod:`corvane.compat.coolprop` asks of a pure fluid and of a mixture of fixed composition."""

from __future__ import annotations

import functools
import math
from typing import Any, Sequence

from .._numpy import np
from ..arrays import Number
from ..fluid import Fluid, State, _of_one_phase
from ..mixture import Mixture
from ..mixture_results import FlashResult

__all__ = ["Blend", "Pure"]

_DILUTE = 1e-6  # mol/m³: cp is that of the ideal gas to 1e-9
_TRANSPORT = {"viscosity": ("viscosity", "viscosity"), "conductivity": ("thermal_conductivity", "conductivity")}
_TWO = "{} belongs to one phase, and this state has several; Q = 0 and Q = 1 are its liquid and its vapour"


class _Substance:
    """States come from ``state(errors, **given)``; ``value(state, attribute, errors)`` reads them in SI units by mole."""

    M: float  #: kg/mol
    parts: Sequence[tuple[str, float]]  #: names with their mole fractions

    def value(self, s: Any, attribute: str, errors: str) -> Any:
        if attribute in ("T", "p", "rho", "h", "s", "u", "q"):
            return getattr(s, attribute)
        if attribute in ("g", "a"):
            return (s.h if attribute == "g" else s.u) - s.T * s.s
        if attribute == "Z":
            return s.p / (s.rho * s.T * self._R)
        if attribute == "cp0":
            return self._phase(s.T, _DILUTE, "cp", errors)
        if attribute == "tension":
            return self._tension(s, errors)
        if attribute == "prandtl":
            cp, eta, k = (self.value(s, name, errors) for name in ("cp", "viscosity", "conductivity"))
            return cp / self.M * eta / k
        rho = self._density(s)
        if isinstance(rho, float) and math.isnan(rho):
            raise ValueError(_TWO.format(attribute))
        if attribute in _TRANSPORT:
            return self._transport(s, rho, *_TRANSPORT[attribute], errors)
        return self._known(s, rho, attribute, errors)

    def slope(self, s: Any, a: str, b: str, c: str, errors: str) -> Any:
        """∂a/∂b of one phase at constant c; T, p, rho, h, s, u."""
        p_T, p_rho, cv = (self.value(s, name, errors) for name in ("dp_dT", "dp_drho", "cv"))
        T, rho = s.T, self._density(s)
        by_T_and_rho = {"T": (1.0, 0.0), "rho": (0.0, 1.0), "p": (p_T, p_rho), "s": (cv / T, -p_T / rho**2),
                        "u": (cv, (s.p - T * p_T) / rho**2), "h": (cv + p_T / rho, (p_rho - T * p_T / rho) / rho)}  # fmt: skip

        def jacobian(y: str, z: str) -> Any:
            (y_T, y_rho), (z_T, z_rho) = by_T_and_rho[y], by_T_and_rho[z]
            return y_T * z_rho - y_rho * z_T

        return jacobian(a, c) / jacobian(b, c)

    @functools.cached_property
    def _R(self) -> float:
        p, Z = (float(self._phase(300.0, _DILUTE, name, "raise")) for name in ("p", "Z"))
        return p / (_DILUTE * 300.0 * Z)

    # Of one phase: its density, not-a-number where there are several; its properties.

    def _density(self, s: Any) -> Any:
        raise NotImplementedError

    def _known(self, s: Any, rho: Any, attribute: str, errors: str) -> Any:
        return self._phase(s.T, rho, attribute, errors)

    def _phase(self, T: Any, rho: Any, attribute: str, errors: str) -> Any:
        raise NotImplementedError

    def _transport(self, s: Any, rho: Any, method: str, attribute: str, errors: str) -> Any:
        raise NotImplementedError

    def _tension(self, s: Any, errors: str) -> Any:
        raise NotImplementedError


class Pure(_Substance):
    def __init__(self, fluid: Fluid):
        self.fluid, self.M, self.parts = fluid, fluid.M, ((fluid.name, 1.0),)
        self.critical = fluid.T_critical, fluid.p_critical, fluid.rho_critical

    def state(self, errors: str, **given: Any) -> State:
        return self.fluid.state(errors=errors, **given)

    def _density(self, s: State) -> Any:
        return _of_one_phase(s)

    def _known(self, s: State, rho: Any, attribute: str, errors: str) -> Any:
        x = getattr(s, attribute)
        if isinstance(rho, Number):
            return x if math.isnan(s.q) else self._phase(s.T, rho, attribute, errors)
        ends = (s.q == 0.0) | (s.q == 1.0)
        if ends.any():
            x = np.array(x)
            x[ends] = self._phase(s.T[ends], rho[ends], attribute, errors)
        return x

    def _phase(self, T: Any, rho: Any, attribute: str, errors: str) -> Any:
        return getattr(self.fluid.phase(T, rho, errors=errors), attribute)

    def _transport(self, s: State, rho: Any, method: str, attribute: str, errors: str) -> Any:
        return getattr(getattr(self.fluid, method)(T=s.T, rho=rho, errors=errors), attribute)

    def _tension(self, s: State, errors: str) -> Any:
        T = s.T if isinstance(s.T, Number) else np.where(np.isnan(s.q), np.nan, s.T)
        if isinstance(T, Number) and math.isnan(s.q):
            raise ValueError("surface tension is that between a liquid and a vapour; give Q, or a state in two phases")
        return self.fluid.surface_tension(T, errors=errors).tension


class Blend(_Substance):
    """Mole fractions sum to one within 1e-3, and are divided by their sum."""

    def __init__(self, mixture: Mixture, z: Sequence[float]):
        total = math.fsum(z)
        if not abs(total - 1.0) < 1e-3 or min(z) < 0.0:
            raise ValueError(f"mole fractions of {' + '.join(mixture.components)} sum to {total:.6g}")
        self.mixture, self.z = mixture, np.asarray(z) / total
        self.M = float(self.z @ mixture.M)
        self.parts = tuple(zip(mixture.components, self.z))

    @functools.cached_property
    def critical(self) -> tuple[float, float, float]:
        c = self.mixture.critical_point(self.z)
        return float(c.T[0]), float(c.p[0]), float(c.rho[0])

    def state(self, errors: str, **given: Any) -> FlashResult:
        s = self.mixture.flash(self.z, errors=errors, **given)
        with np.errstate(invalid="ignore"):
            last = np.take_along_axis(s.fraction, np.nan_to_num(s.phases[..., None] - 1).astype(int), -1)[..., 0]
            s.q = np.where(s.phases > 1, last, np.nan)  # the lightest phase
        return s

    def _which(self, s: FlashResult) -> Any:
        """Number of the phase that is all, with an axis more; several: −1."""
        one = s.fraction == 1.0
        return np.where(one.any(axis=-1), one.argmax(axis=-1), -1)

    def _density(self, s: FlashResult) -> Any:
        rho = np.where(self._which(s) < 0, np.nan, s.rho)
        return float(rho) if rho.ndim == 0 else rho

    def _phase(self, T: Any, rho: Any, attribute: str, errors: str) -> Any:
        return getattr(self.mixture.phase(T, rho, self.z, errors=errors), attribute)

    def _transport(self, s: FlashResult, rho: Any, method: str, attribute: str, errors: str) -> Any:
        return getattr(getattr(self.mixture, method)(s.T, rho, self.z, errors=errors), attribute)

    def _tension(self, s: FlashResult, errors: str) -> Any:
        two = s.phases == 2
        if not s.status.ndim and not two:
            raise ValueError("surface tension is that between a liquid and a vapour; this state has not two phases")
        rho = np.where(two[..., None], s.rho_phase[..., :2], np.nan)
        return self.mixture.surface_tension(s.T, rho[..., 0], s.x[..., 0, :], rho[..., 1], s.x[..., 1, :], errors=errors).tension
