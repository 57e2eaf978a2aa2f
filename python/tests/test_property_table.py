"""Tables against the models that they are of; the library's own tests judge the tables themselves."""

import math

import numpy as np
import pint
import pytest

import corvane as cv


@pytest.fixture(scope="module")
def propane():
    return cv.Fluid("propane", eos="PR")


@pytest.fixture(scope="module")
def table(propane):
    return cv.PropertyTable.build(propane, "ph", p=(1e5, 1e7), h=(-1e4, 4e4), tolerance=1e-5, halvings=5)


def test_gives_what_the_fluid_gives_in_its_units(propane, table, tmp_path):
    p, h = np.geomspace(1e5, 1e7, 40)[:, None], np.linspace(-1e4, 4e4, 30)
    states, exact = table(p=p, h=h), propane.state(p=p, h=h)
    known = states.status == cv.Status.OK
    assert 0.85 < known.mean() < 1
    assert np.all(states.status[~known] == cv.Status.NOT_TABULATED) and np.all(np.isnan(states.rho[~known]))
    scale = {"h": 8.314 * 370, "u": 8.314 * 370, "s": 8.314, "q": 1}
    for name in states.columns:
        a, b = getattr(states, name)[known], getattr(exact, name)[known]
        assert np.all(np.isnan(a) == np.isnan(b)), name
        error = np.abs(a - b) / scale.get(name, np.abs(b))
        assert np.nanmax(error) < 1e-5, name
    table.write(tmp_path / "propane.table")
    again = cv.PropertyTable.read(tmp_path / "propane.table")
    np.testing.assert_array_equal(again(p=p, h=h).rho, states.rho)
    assert again.ranges == {"p": (1e5, 1e7), "h": (-1e4, 4e4)} and "propane" in again.note and again.cells == table.cells
    one = again(p=2e6, h=1.5e4)
    assert isinstance(one.rho, float) and one.rho == table(p=[2e6], h=1.5e4).rho[0]
    check = again.check(propane, points=500, seed=3)
    assert check["other"] == 0 and max(check["worst"].values()) < 1e-5


def test_of_a_mixture_by_p_and_T():
    air = cv.Mixture("PR+vdW1", ["nitrogen", "oxygen"])
    table = cv.PropertyTable.build(air, "pT", z=[0.79, 0.21], p=(1e5, 1e7), T=(200, 400), tolerance=1e-6, halvings=4)
    assert table.coverage == 1
    flash = air.flash([0.79, 0.21], T=310.0, p=3.3e6)
    assert math.isclose(table(p=3.3e6, T=310.0).rho, flash.rho, rel_tol=1e-6)
    assert table.check(air, points=50, z=[0.79, 0.21])["worst"]["h"] < 1e-6


def test_units_and_refusals(propane, table, tmp_path):
    ureg = pint.UnitRegistry()
    state = table(p=20 * ureg.bar, h=15 * ureg.kJ / ureg.mol)
    assert math.isclose(state.T.to("kelvin").magnitude, table(p=2e6, h=1.5e4).T)
    with pytest.raises(ValueError, match="gaps"):
        table(p=1e4, h=1e4)
    with pytest.raises(TypeError, match="p and h"):
        table(p=1e6, T=300.0)
    with pytest.raises(TypeError, match="p=.*T="):
        cv.PropertyTable.build(propane, "pT", p=(1e5, 1e6), h=(0, 1))
    with pytest.raises(ValueError, match="tolerance"):
        cv.PropertyTable.build(propane, "pT", p=(1e5, 1e6), T=(300, 400), tolerance=1.0)
    (tmp_path / "bad").write_bytes(b"corvane table 1\nrubbish")
    with pytest.raises(OSError, match="damaged"):
        cv.PropertyTable.read(tmp_path / "bad")
    with pytest.raises(OSError, match="no such file"):
        cv.PropertyTable.read(tmp_path / "none")
