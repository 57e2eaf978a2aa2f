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


def test_failures():
    assert PhaseSI("P", 1e5, "Q", 0.5, "Water") == "twophase"
    for call in (lambda: PropsSI("D", "T", 300, "P", 1e5, "R32&R125"), lambda: PropsSI("X", "T", 3, "P", 1, "Water"),
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
# Ref. Data 52 (2023), Table 7). The other scripts assert what must hold.
@pytest.mark.parametrize("script, printed", [
    ("boiling_water", r"0 m   99\.97 C"), ("refrigerator", "COP = 3"), ("rankine", r"x4 = 0\.793, efficiency = 0\.40[12]\d"),
    ("ts_diagram", "widest"), ("speed_of_sound", r"Nitrogen +349\.\d m/s  1\.40"), ("heat_exchanger", "pinch"),
    ("constants", r"Water 647\.1 2\.206\d*e\+07 322 0\.344"), ("phases", "liquid liquid gas"), ("tank", r"0\.4270652 MPa"),
    ("cubic", "200000"),
])  # fmt: skip
def test_scripts_of_users(script, printed, capsys):
    runpy.run_path(str(pathlib.Path(__file__).with_name("scripts") / f"{script}.py"), run_name="__main__")
    assert re.search(printed, capsys.readouterr().out)
