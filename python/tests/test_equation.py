"""Equations written in Python, judged by the same equation as a plug-in, by exact results and by identities."""

import copy

import numpy as np
import pytest

import corvane as cv

R = 8.3144621


class VanDerWaals(cv.Equation):
    """Of van der Waals, by its critical point: a = 27/64 (R Tc)²/pc, b = R Tc/(8 pc)."""

    components, M, T_critical, rho_critical = ["argon"], 0.039948, 140.0, 11000.0
    ideal = ["argon"]
    Tc, pc = 150.687, 4.863e6

    def alphar(self, T, rho, x):
        a, b = 27 / 64 * (R * self.Tc) ** 2 / self.pc, R * self.Tc / (8 * self.pc)
        return -np.log1p(-b * rho) - a * rho / (R * T)


class PengRobinson(cv.Equation):
    """With parameters of the plug-in, one-fluid mixing rules (van der Waals)."""

    def __init__(self, components, kij=0.0):
        fluids = [cv.Fluid(c, "PR") for c in components]
        self.components = self.ideal = [f.name for f in fluids]
        self.M = [f.M for f in fluids]
        self.T_critical = [1.05 * f.T_critical for f in fluids]
        self.rho_critical = [0.9 * f.rho_critical for f in fluids]
        Tc, pc = (np.array([getattr(f, k) for f in fluids]) for k in ("T_critical", "p_critical"))
        omega = np.array([f.parameters[3] for f in fluids])
        self.Tc, self.m = Tc, 0.37464 + 1.54226 * omega - 0.26992 * omega**2
        eta = 1 / (1 + np.cbrt(4 - np.sqrt(8)) + np.cbrt(4 + np.sqrt(8)))
        self.b = (eta * R * Tc / pc) / (3 + eta)
        self.a = (8 + 40 * eta) / (49 - 37 * eta) * (R * Tc) ** 2 / pc
        self.one_minus_k = 1 - kij * (1 - np.eye(len(components)))

    def alphar(self, T, rho, x):
        root = np.sqrt(self.a) * (1 + self.m * (1 - (T / self.Tc) ** 0.5)) * x
        a, b = root @ self.one_minus_k @ root, self.b @ x
        y, s = b * rho, np.sqrt(2.0)
        return -np.log1p(-y) - a / (2 * s * b * R * T) * np.log1p(2 * s * y / (1 + (1 - s) * y))


def test_van_der_waals_has_its_exact_critical_point_and_virial_coefficients():
    f = VanDerWaals().fluid()
    assert f.T_critical == pytest.approx(150.687, rel=1e-12)
    assert f.p_critical == pytest.approx(4.863e6, rel=1e-12)
    assert f.p_critical / (f.rho_critical * R * f.T_critical) == pytest.approx(3 / 8, rel=1e-12)
    a, b = 27 / 64 * (R * 150.687) ** 2 / 4.863e6, R * 150.687 / (8 * 4.863e6)
    assert f.virial(300.0) == pytest.approx(b - a / (R * 300.0), rel=1e-7)
    assert f.virial(300.0, 3) == pytest.approx(b * b, rel=1e-5)
    assert f.saturation(T=151.0, errors="nan").status == cv.Status.NO_SOLUTION


@pytest.fixture(scope="module")
def pair():
    plug_in = cv.Mixture("PR+vdW1", ["methane", "propane"], kij=0.02)
    return plug_in, PengRobinson(["methane", "propane"], kij=0.02).mixture()


def test_the_same_pure_fluid_as_the_plug_in():
    plug_in, own = cv.Fluid("propane", "PR"), PengRobinson(["propane"]).fluid()
    T, rho = np.array([[250.0], [369.0], [500.0]]), np.array([1.0, 500.0, 5000.0, 12000.0])
    s, t = plug_in.phase(T, rho), own.phase(T, rho)
    for name in ("p", "h", "s", "cv", "cp", "w", "mu_JT", "kappa_T", "alpha_p"):
        assert np.allclose(getattr(s, name), getattr(t, name), rtol=1e-8, equal_nan=True), name
    assert np.allclose(plug_in.saturation(T=[200, 300, 365]).p, own.saturation(T=[200, 300, 365]).p, rtol=1e-8)
    assert np.allclose(plug_in.state(p=1e6, h=[0.0, 2e4]).T, own.state(p=1e6, h=[0.0, 2e4]).T, rtol=1e-8)
    assert copy.deepcopy(own).saturation(T=300.0).p == own.saturation(T=300.0).p


def test_the_same_equilibria_as_the_plug_in(pair):
    plug_in, own = pair
    z = [0.4, 0.6]
    assert np.allclose(own.phase(300.0, 4000.0, z).cp, plug_in.phase(300.0, 4000.0, z).cp, rtol=1e-9)
    assert np.allclose(own.ln_phi(300.0, 4000.0, z), plug_in.ln_phi(300.0, 4000.0, z), rtol=1e-9)
    a, b = own.bubble(z, T=280.0), plug_in.bubble(z, T=280.0)
    assert a.p == pytest.approx(b.p, rel=1e-8) and np.allclose(a.y, b.y, rtol=1e-8)


def test_heat_capacities_from_a_method():
    class Hot(VanDerWaals):
        ideal = None

        def cp0(self, T):
            return 2.5 * R

    s, t = Hot().fluid().phase(300.0, 100.0), VanDerWaals().fluid().phase(300.0, 100.0)
    assert s.cp == pytest.approx(t.cp, rel=1e-5)  # argon is monatomic: cp° = 5/2 R; its table has three digits


def test_conformance_and_failures():
    assert cv.check_equation(VanDerWaals()) == [] == cv.check_equation(PengRobinson(["methane", "propane"]))

    class Bad(VanDerWaals):
        def alphar(self, T, rho, x):
            return super().alphar(T, rho, x) + 1e-3 * (1.0 if rho > 5000.0 else float(np.sin(getattr(T, "value", T))))

    assert any("temperature" in text for text in cv.check_equation(Bad()))

    class Broken(VanDerWaals):
        def alphar(self, T, rho, x):
            raise RuntimeError("not written yet")

    assert "not written yet" in cv.check_equation(Broken())[0]
    with pytest.raises(RuntimeError, match="not written yet"):
        Broken().fluid()

    class Ideal(VanDerWaals):
        def alphar(self, T, rho, x):
            return 0.0 * rho

    with pytest.raises(ValueError, match="critical"):
        Ideal().fluid()
