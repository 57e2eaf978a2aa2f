"""The familiar names: printed figures in SI units by mass, round trips, words."""

import pathlib
import re
import runpy

import numpy as np
import pytest

import corvane as cv
from corvane.compat.coolprop import PhaseSI, Props1SI, PropsSI, set_reference_state


def test_printed_values():
    # IAPWS-95 (2018), table 8, at 450 K: rho' 890.341250, rho'' 4.81200360 kg/m³, hvap 2025.3 kJ/kg; the
    # equation's gas constant differs by 1.1e-5 from the library's.
    assert PropsSI("D", "T", 450, "Q", 0, "Water") == pytest.approx(890.341250, rel=1e-7)
    assert PropsSI("Dmass", "T", 450, "Q", 1, "HEOS::Water") == pytest.approx(4.81200360, rel=1e-7)
    hvap = np.diff(PropsSI("H", "T", 450, "Q", [0, 1], "H2O"))[0]
    assert hvap == pytest.approx(2774.41078e3 - 749.161585e3, rel=2e-5)
    assert PropsSI("P", "T", 450, "Q", 0, "water") == pytest.approx(0.932203564e6, rel=2e-5)
    assert PropsSI("Dmolar", "T", 300, "P", 1e5, "CO2") * Props1SI("CO2", "M") == pytest.approx(
        PropsSI("D", "P", 1e5, "T", 300, "CarbonDioxide"))
    assert PropsSI("TCRIT", "R134a") == Props1SI("TCRIT", "R134a") == pytest.approx(374.2, abs=0.2)
    # steam tables (IAPWS-IF97) at 400 °C and 25 MPa: h 2578.7 kJ/kg above the liquid at the triple point
    h = PropsSI("H", "T", 673.15, "P", 25e6, "Water") - PropsSI("H", "T", 273.16, "Q", 0, "Water")
    assert h == pytest.approx(2578.6e3, rel=2e-4)


def test_round_trips_in_any_reference_state():
    T = np.linspace(250, 420, 7)
    for state in ("IIR", "ASHRAE", "NBP", "RESET"):
        set_reference_state("n-Propane", state)
        h, s = (PropsSI(key, "T", T, "P", 2e6, "n-Propane") for key in "HS")
        assert np.allclose(PropsSI("T", "P", 2e6, "H", h, "n-Propane"), T, rtol=1e-8)
        assert np.allclose(PropsSI("T", "P", 2e6, "S", s, "n-Propane"), T, rtol=1e-8)
        if state == "IIR":
            assert PropsSI("H", "T", 273.15, "Q", 0, "Propane") == pytest.approx(2e5)
            assert PropsSI("S", "T", 273.15, "Q", 0, "Propane") == pytest.approx(1e3)


@pytest.mark.parametrize("T, p, phase", [
    (300, 1e5, "liquid"), (400, 1e5, "gas"), (700, 3e7, "supercritical"), (700, 1e5, "supercritical_gas"),
    (300, 3e7, "supercritical_liquid"),
])  # fmt: skip
def test_phases(T, p, phase):
    assert PhaseSI("T", T, "P", p, "Water") == phase
    assert PropsSI("Q", "T", T, "P", p, "Water") == -1


def test_one_phase_and_two():
    # IAPWS R12-08 and R15-11, tables of check values; surface tension by the formula of IAPWS R1-76 (another source)
    assert PropsSI("V", "T", 298.15, "D", 998.0, "Water") == pytest.approx(889.735100e-6, rel=1e-8)
    assert PropsSI("conductivity", "D", 998.0, "T", 298.15, "Water") == pytest.approx(0.607712868, rel=1e-6)
    tau = 1 - 300 / 647.096
    assert PropsSI("I", "T", 300, "Q", 0.5, "Water") == pytest.approx(0.2358 * tau**1.256 * (1 - 0.625 * tau), rel=2e-3)
    for fluid in ("Propane", GAS):
        T, ends = 190.0, [0, 0.4, 1]
        D = PropsSI("D", "T", T, "Q", ends, fluid)
        for key in ("C", "O", "A", "V", "L", "PRANDTL", "ISOTHERMAL_COMPRESSIBILITY"):
            x = PropsSI(key, "T", T, "Q", ends, fluid)
            assert np.isinf(x[1]), key
            for k, aside in ((0, 1e-6), (2, -1e-6)):  # the last state of one phase
                assert x[k] == pytest.approx(PropsSI(key, "T", T, "D", D[k] * (1 + aside), fluid), rel=2e-4), key
                assert x[k] == pytest.approx(PropsSI(key, "T", T, "Q", ends[k], fluid), rel=1e-12), key
            with pytest.raises(ValueError, match="belongs to one phase"):
                PropsSI(key, "T", T, "Q", 0.4, fluid)
        H, S, U, G, A, Z, P, M = (PropsSI(key, "T", T, "Q", 0.4, fluid) for key in (
            "H", "S", "U", "G", "Helmholtzmass", "Z", "P", "M"))  # fmt: skip
        assert G == pytest.approx(H - T * S) and A == pytest.approx(U - T * S) and U == pytest.approx(H - P / D[1])
        assert Z == pytest.approx(P * M / (D[1] * 8.314462618 * T), rel=3e-6)  # gas constants differ
        n, D, A, P = (PropsSI(key, "T", T, "Q", 0, fluid) for key in ("ISENTROPIC_EXPANSION_COEFFICIENT", "D", "A", "P"))
        assert n == pytest.approx(D * A**2 / P)
        cp, V, L, pr = (PropsSI(key, "T", 300, "P", 1e5, fluid) for key in ("C", "V", "L", "PRANDTL"))
        assert pr == pytest.approx(cp * V / L)
        assert PropsSI("CP0MASS", "T", 300, "P", 1e5, fluid) == pytest.approx(PropsSI("C", "T", 300, "P", 0.1, fluid), rel=1e-6)


# Table of GERG-2008's example (AGA Report No. 8, Part 2): 400 K, 50 MPa; its gas constant is 8.314472.
EXAMPLE = dict(Methane=0.77824, Nitrogen=0.02, CarbonDioxide=0.06, Ethane=0.08, Propane=0.03, IsoButane=0.0015, Butane=0.003,
               Isopentane=0.0005, Pentane=0.00165, Hexane=0.00215, Heptane=0.00088, Octane=0.00024, Nonane=0.00015,
               Decane=0.00009, Hydrogen=0.004, Oxygen=0.005, CarbonMonoxide=0.002, Water=0.0001, HydrogenSulfide=0.0025,
               Helium=0.007, Argon=0.001)  # fmt: skip
PRINTED = {"Dmolar": 12798.28626082062, "Z": 1.174690666383717, "Cvmolar": 39.02948218156372, "Cpmolar": 58.45522051000366,
           "A": 714.4248840596024, "M": 20.5427445016e-3, "isentropic_expansion_coefficient": 2.683820255058032}  # fmt: skip
GAS = "Methane[0.85]&Ethane[0.1]&Propane[0.05]"


def test_mixtures():
    text = "HEOS::" + "&".join(f"{name}[{x}]" for name, x in EXAMPLE.items())
    for key, value in PRINTED.items():
        assert PropsSI(key, "T", 400, "P", 50e6, text) == pytest.approx(value, rel=1e-5), key
    # the way there and back by every pair; heat capacity by differences; the object's own numbers
    T, p = np.linspace(180.0, 320.0, 5), 3e6
    values = {key: PropsSI(key, "T", T, "P", p, GAS) for key in ("H", "S", "U", "Dmolar", "Q")}
    for key in ("H", "S", "U", "Dmolar"):
        assert np.allclose(PropsSI("T", "P", p, key, values[key], GAS), T, rtol=1e-8), key
    m = cv.Mixture(["methane", "ethane", "propane"])
    f = m.flash([0.85, 0.1, 0.05], T=T, p=p)
    assert np.array_equal(values["Dmolar"], f.rho)
    assert (np.where(values["Q"] < 0, 1, 2) == f.phases).all() and set(f.phases) == {1, 2}
    h = PropsSI("H", "T", 300 + np.array([-0.01, 0.01]), "P", p, GAS)
    assert PropsSI("C", "T", 300, "P", p, GAS) == pytest.approx(np.diff(h)[0] / 0.02, rel=1e-7)
    assert Props1SI(GAS, "TCRIT") == PropsSI("TCRIT", GAS) == m.critical_point([0.85, 0.1, 0.05]).T[0]
    assert PropsSI("D", "T", 300, "P", 1e5, "PR::Methane[1.0]") == PropsSI("D", "T", 300, "P", 1e5, "PR::Methane")
    for state in ((200.0, 3e6, "twophase"), (110.0, 3e6, "liquid"), (200.0, 2e5, "gas"), (300.0, 3e6, "supercritical_gas"),
                  (300.0, 3e7, "supercritical")):  # fmt: skip
        assert PhaseSI("T", state[0], "P", state[1], GAS) == state[2]
    pure = PropsSI("Hmolar", "T", 200, "P", p, "Propane")
    set_reference_state("Propane", "IIR")  # of a component: its share
    assert np.allclose(PropsSI("Hmolar", "T", T, "P", p, GAS) - f.h, 0.05 * (PropsSI("Hmolar", "T", 200, "P", p, "Propane") - pure))
    set_reference_state("Propane", "RESET")


@pytest.mark.parametrize("fluid, T, p", [("Water", 450.0, 2e6), ("Propane", 300.0, 5e5), (GAS, 300.0, 5e6)])
def test_derivatives(fluid, T, p):
    def at(key, *given):
        return PropsSI(key, *given, fluid)

    state = "T", T, "P", p
    cp, cv, w, D = (at(key, *state) for key in ("C", "O", "A", "D"))
    assert at("d(Hmass)/d(T)|P", *state) == pytest.approx(cp) and at("d(U)/d(T)|D", *state) == pytest.approx(cv)
    assert at("d(P)/d(D)|S", *state) == pytest.approx(w**2)
    for first, second, third in (("Hmass", "P", "T"), ("Dmolar", "H", "P"), ("Smolar", "D", "T"), ("T", "P", "H"), ("U", "T", "P")):
        x, held = at(second, *state), at(third, *state)
        ends = [at(first, second, x * (1 + e), third, held) for e in (-1e-4, 1e-4)]
        slope = at(f"d({first})/d({second})|{third}", *state)
        assert slope == pytest.approx((ends[1] - ends[0]) / (2e-4 * x), rel=2e-4), (first, second, third)
    T = 0.9 * Props1SI(fluid, "TCRIT")
    assert at("d(H)/d(T)|P", "T", T, "Q", 0) == pytest.approx(at("C", "T", T, "Q", 0))
    with pytest.raises(ValueError, match="one phase"):
        at("d(H)/d(T)|P", "T", T, "Q", 0.5)
    with pytest.raises(ValueError, match="no output"):
        at("d(H)/d(V)|P", "T", T, "Q", 0)


def test_failures():
    assert PhaseSI("P", 1e5, "Q", 0.5, "Water") == "twophase"
    for call in (lambda: PropsSI("D", "T", 300, "P", 1e5, "R32&R125"), lambda: PropsSI("D", "H", 3, "U", 1, GAS),
                 lambda: PropsSI("D", "T", 300, "P", 1e5, "R32[0.5]&R125[0.6]"), lambda: PropsSI("D", "T", 300, "Q", 0, GAS),
                 lambda: PropsSI("D", "T", 300, "P", 1e5, "R32[x]&R125[0.6]"), lambda: Props1SI(GAS, "TTRIPLE"),
                 lambda: PropsSI("I", "T", 300, "P", 1e5, "Water"), lambda: PropsSI("I", "T", 300, "P", 1e5, GAS),
                 lambda: PropsSI("D", "T", 700, "Q", 0, "Water"), lambda: PropsSI("D", "P", 1e5, "P", 2e5, "Water"),
                 lambda: PropsSI("D", "T", 300, "P", 1e5, "NoSuchFluid"), lambda: set_reference_state(GAS, "IIR"),
                 lambda: set_reference_state("Methane", "IIR"),
                 lambda: PropsSI("X", "T", 3, "P", 1, "Water"),
                 lambda: PropsSI("D", "X", 300, "P", 1e5, "Water"), lambda: PropsSI("D", "T", 300, "Water"),
                 lambda: PropsSI("D", "T", -300, "P", 1e5, "Water"), lambda: PropsSI("D", "T", 3, "P", 1, "INCOMP::X"),
                 lambda: set_reference_state("Water", "X")):  # fmt: skip
        with pytest.raises(ValueError):
            call()
    with pytest.raises(cv.OpenError):
        PropsSI("D", "T", 300, "P", 1e5, "NoSuchFluid")
    assert list(np.isinf(PropsSI("D", "T", [300, -1], "P", 1e5, "Water"))) == [False, True]


# Printed in textbooks: IAPWS-95 boils at 99.97 °C; a Rankine cycle of 10 MPa, 500 °C and 10 kPa has x = 0.793 and
# 40.2 % (Çengel & Boles); speeds of sound of gases at 20 °C and 1 atm: 349, 1007, 319, 267, 445 m/s within 1; the
# enthalpy of the IIR state is 200 kJ/kg; ammonia gas at 275 K and 0.2 mol/dm³: 0.4270652 MPa (Gao et al., J. Phys. Chem.
# Ref. Data 52 (2023), Table 7); water at 300 K has a Prandtl number of 5.83 and 855 µPa s (Incropera, Table A.6). The other
# scripts assert what must hold.
@pytest.mark.parametrize("script, printed", [
    ("boiling_water", r"0 m   99\.97 C"), ("refrigerator", "COP = 3"), ("rankine", r"x4 = 0\.793, efficiency = 0\.40[12]\d"),
    ("ts_diagram", "widest"), ("speed_of_sound", r"Nitrogen +349\.\d m/s  1\.40"), ("heat_exchanger", "pinch"),
    ("constants", r"Water 647\.1 2\.206\d*e\+07 322 0\.344"), ("phases", "liquid liquid gas"), ("tank", r"0\.4270652 MPa"),
    ("cubic", "200000"), ("pipe", r"Pr = 5\.8\d, viscosity 85\d uPa s"), ("natural_gas", r"dew point 2\d\d\.\d K"),
])  # fmt: skip
def test_scripts_of_users(script, printed, capsys):
    runpy.run_path(str(pathlib.Path(__file__).with_name("scripts") / f"{script}.py"), run_name="__main__")
    assert re.search(printed, capsys.readouterr().out)
