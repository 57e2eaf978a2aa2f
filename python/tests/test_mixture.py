"""Mixtures: certified equilibria judged by their conditions, shapes, failures."""

import copy
import pickle

import numpy as np
import pytest

import corvane as cv


@pytest.fixture(scope="module")
def gas():
    return cv.Mixture("PR+vdW1", ["methane", "propane"])


def ln_f(m, T, rho, x):
    """ln(x·φ) of every component."""
    return np.log(x) + m.ln_phi(T, rho, x)


def test_bubble_points_satisfy_equilibrium(gas):
    z, T = np.array([0.3, 0.7]), np.array([260.0, 300.0, 340.0])
    q = gas.bubble(z, T=T)
    assert (q.status == 0).all()
    liquid, vapour = ln_f(gas, T, q.rho, np.tile(z, (3, 1))), ln_f(gas, T, q.rho_incipient, q.y)
    assert np.allclose(liquid, vapour, atol=1e-8)
    assert np.allclose(gas.phase(T, q.rho_incipient, q.y).p, q.p, rtol=1e-8)
    # the dew point of that vapour is the same equilibrium
    assert np.allclose(gas.dew(q.y[0], T=260.0).p, q.p[0], rtol=1e-7)


def test_flashes_balance_and_come_back(gas):
    T, p = np.array([230.0, 260.0, 350.0]), np.array([2e6, 2e6, 2e6])
    z = np.array([0.5, 0.5])
    r = gas.flash(z, T=T, p=p)
    assert (r.status == 0).all()
    assert list(r.phases) == [2, 2, 1] and r.x.shape == (3, 3, 2) and r.fraction.shape == (3, 3)
    assert np.allclose(np.nansum(r.fraction[..., None] * r.x, axis=1), z, atol=1e-12)
    for given in ({"p": p, "h": r.h}, {"p": p, "s": r.s}, {"T": T, "rho": r.rho}, {"h": r.h, "s": r.s},
                  {"u": r.u, "rho": r.rho}, {"s": r.s, "T": T}, {"s": r.s, "rho": r.rho}, {"p": p, "u": r.u},
                  {"p": p, "rho": r.rho}, {"rho": r.rho, "h": r.h}):  # fmt: skip
        back = gas.flash(z, **given)
        assert np.allclose(back.T, T, rtol=1e-8) and np.allclose(back.p, p, rtol=1e-7)
    assert (r.x_error[:2] < 1e-8).all() and (r.dmu < 1e-9).all() and (r.tpd > -1e-9).all()
    # h at given T falls, then rises with the density: two states, told from one
    two = gas.flashes(z, T=250.0, h=3000.0)
    assert two.complete and len(two) == 2 and np.allclose(two.h, 3000.0) and two.p[1] > 10 * two.p[0]
    assert np.allclose(gas.flash(z, T=two.T, rho=two.rho).h, 3000.0, rtol=1e-8)
    assert list(gas.flash(z, T=[250.0], h=[3000.0]).status) == [cv.Status.SEVERAL]
    assert np.allclose(gas.flash(z, T=two.T, u=two.u).p, two.p, rtol=1e-7)  # u has one
    one = gas.phase(350.0, r.rho[2], z)
    assert one.h == pytest.approx(r.h[2], rel=1e-9) and one.s == pytest.approx(r.s[2], rel=1e-9)
    assert gas.density(350.0, 2e6, z) == pytest.approx(r.rho[2], rel=1e-10)
    assert "phase 2" in repr(gas.flash(z, T=260.0, p=2e6))


def test_curves_of_a_binary(gas):
    e = gas.envelope([0.5, 0.5])
    c = gas.critical_point([0.5, 0.5])
    assert len(e.critical) == 1 and e.critical[0] == pytest.approx((c.T[0], c.p[0]), rel=1e-4)
    assert e.T.max() <= e.cricondentherm[0][0] * (1 + 1e-12)
    line = gas.critical_lines()[0]
    ends = {name: cv.Fluid(name, "PR") for name in gas.components}
    assert line.T[0] == pytest.approx(ends["methane"].T_critical)
    assert line.p[-1] == pytest.approx(ends["propane"].p_critical)
    # bounds of the errors, and evidence of lines
    bounded = gas.envelope([0.5, 0.5], stability=True)
    assert np.isnan(e.value_error).all() and np.nanmax(bounded.value_error) < 1e-6 and np.nanmax(bounded.x_error) < 1e-6
    assert np.isfinite(bounded.value_error).mean() > 0.9
    assert (np.abs(line.conditions) < 1e-8).all() and (line.tpd > -1e-9).all()
    d = gas.pxy(300.0)
    assert np.nanmax(d.branches[0].value_error) < 1e-7 and np.isfinite(d.branches[0].x_error).mean() > 0.9
    assert d.complete and d.branches[0].begin == "pure" and d.branches[0].end == "critical"
    middle = d.branches[0]
    k = len(middle) // 2
    assert gas.bubble([middle.x[k], 1 - middle.x[k]], T=300.0).p == pytest.approx(middle.p[k], rel=1e-8)
    txy = gas.Txy(2e6)
    assert txy.branches[0].begin == txy.branches[0].end == "pure"
    assert len(d.to_pandas()) == sum(len(b) for b in d.branches)


def test_azeotropes_and_three_phases():
    m = cv.Mixture("PR+vdW1", ["carbon_dioxide", "ethane"])
    line = m.azeotropic_lines()[0]
    k = len(line) // 2
    x = line.x[k]
    assert m.bubble([x, 1 - x], T=line.T[k]).y[0] == pytest.approx(x, abs=1e-6)
    assert (line.dmu < 1e-9).all() and "critical" in line.end + line.begin
    water = cv.Mixture("PR+vdW1", ["propane", "water"])
    line = water.three_phase_lines()[0]
    k = len(line) // 2
    x = np.stack([line.x[k], 1 - line.x[k]], axis=-1)
    f = ln_f(water, line.T[k], line.rho[k], x)
    assert np.allclose(f[0], f[1], atol=1e-8) and np.allclose(f[0], f[2], atol=1e-8)
    assert list(line.to_pandas().columns[2:8]) == ["x_1", "x_2", "x_3", "rho_1", "rho_2", "rho_3"]


def test_ternary_is_that_of_flashes(gas):
    m = cv.Mixture("PCSAFT+LB", ["CO2", "methanol", "water"])
    d = m.ternary(300.0, 7e6)
    assert d.complete and len(d.regions) == 3 and len(d.plait) == 2 and d.three_phase.shape == (1, 3, 3)
    f = m.flash(d.three_phase[0].mean(axis=0), T=300.0, p=7e6)
    assert f.phases == 3 and f.x[:3] == pytest.approx(d.three_phase[0], abs=1e-8)
    region = d.regions[1]
    k = len(region) // 2
    f = m.flash(0.5 * (region.x[k] + region.y[k]), T=300.0, p=7e6)
    assert f.phases == 2 and f.x[:2] == pytest.approx(np.stack([region.x[k], region.y[k]]), abs=1e-8)
    assert len(d.to_pandas()) == sum(len(r) for r in d.regions) + len(d.plait) and "1 triangles" in repr(d)
    with pytest.raises(ValueError):
        gas.ternary(300.0, 7e6)


@pytest.mark.parametrize("model", ["PR+vdW1", "PCSAFT+LB"])
def test_parameters_of_components_are_those_of_the_pure_fluid(model):
    pure, mixture = cv.Fluid("propane", model.split("+")[0]), cv.Mixture(model, ["methane", "propane"])
    assert np.array_equal(mixture.component_parameters("propane"), pure.parameters)
    pure.set_parameter(1, 1.03 * pure.parameters[1])
    mixture.set_component_parameter("propane", 1, pure.parameters[1])
    again = pickle.loads(pickle.dumps(mixture))
    p = pure.phase(300.0, 5000.0).p
    assert p != cv.Fluid("propane", pure.eos).phase(300.0, 5000.0).p
    assert mixture.phase(300.0, 5000.0, [0.0, 1.0]).p == pytest.approx(p, rel=1e-10)
    assert again.phase(300.0, 5000.0, [0.0, 1.0]).p == mixture.phase(300.0, 5000.0, [0.0, 1.0]).p


def test_matplotlib_pictures(gas):
    matplotlib = pytest.importorskip("matplotlib")
    matplotlib.use("Agg")
    assert gas.pxy(300.0).plot().get_xlim() == (0, 1)
    assert gas.envelope([0.5, 0.5]).plot().get_xlabel() == "T / K"
    other = cv.Mixture("SRK+vdW1", ["methane", "propane"])
    for draw in (lambda m, **to: m.pxy(300.0).plot(**to), lambda m, **to: m.envelope([0.5, 0.5]).plot(**to),
                 lambda m, **to: m.projection().plot(**to),
                 lambda m, **to: m.diagram([0.5, 0.5], T=[300.0], p=[], points=9).plot(**to)):  # fmt: skip
        ax = draw(gas, label="A")
        assert draw(other, ax=ax, label="B") is ax
        assert [t.get_text() for t in ax.get_legend().get_texts()] == ["A", "B"]
        drawn = {line.get_color() for line in ax.get_lines()}
        assert len(drawn) == 2  # a colour for every model
        matplotlib.pyplot.close()
    triangle = cv.Mixture("PR+vdW1", ["nitrogen", "methane", "ethane"]).ternary(120.0, 3e6).plot()
    assert [t.get_text() for t in triangle.texts] == ["nitrogen", "methane", "ethane"]


def test_parameters_copies_and_choice(gas):
    m = cv.Mixture("PR+vdW1", ["methane", "propane"], kij=0.05)
    assert m.pair_parameter("C3H8", "methane") == 0.05 != gas.pair_parameter(0, 1)
    p = m.bubble([0.3, 0.7], T=260.0).p
    for other in (pickle.loads(pickle.dumps(m)), copy.deepcopy(m)):
        assert other.bubble([0.3, 0.7], T=260.0).p == p
    assert cv.Mixture(["nitrogen", "oxygen"]).model == "MEOS+GERG"
    guess = cv.Mixture("PR+vdW1", ["mercury", "aniline"])
    assert guess.estimated == [("mercury", "aniline")]
    fluids = "MEOS+GERG", ["propane", "dodecane"]
    assert cv.Mixture(*fluids).predicted[("propane", "dodecane")][0] == "PCSAFT+LB"
    plain = pickle.loads(pickle.dumps(cv.Mixture(*fluids, predict=False)))
    assert plain.predicted == {} and plain.pair_parameter(0, 1, 1) == 1.0
    # 1 g of each: more moles of the lighter one
    assert gas.mass_to_mole([0.5, 0.5])[0] == pytest.approx(gas.M[1] / gas.M.sum())


@pytest.mark.parametrize("call, error, words", [
    (lambda m: m.bubble([0.3, 0.7], T=600.0), cv.EquilibriumError, "bubble"),
    (lambda m: m.bubble([0.3, 0.7]), TypeError, "T or p"),
    (lambda m: m.bubble([1.0], T=300.0), ValueError, "last axis"),
    (lambda m: m.flash([0.3, 0.8], T=300.0, p=1e5), ValueError, "out of range"),
    (lambda m: m.flash([0.3, 0.7], u=300.0, h=1e5), TypeError, "give"),
    (lambda m: m.pair_parameter("argon", "propane"), KeyError, "not a component"),
    (lambda m: m.pair_parameter(0, 0), IndexError, "no such"),
    (lambda m: m.pair_parameter(0, 1, 99), IndexError, "no such"),
    (lambda m: m.set_pair_parameter(0, 1, 0.1, 99), IndexError, "no such"),
    (lambda m: m.set_component_parameter(0, 99, 0.1), IndexError, "no such"),
    (lambda m: m.component_parameters(2), IndexError, "range"),
    (lambda m: m.envelope([[0.5, 0.5]]), ValueError, "one composition"),
    (lambda m: cv.Mixture("PR", ["argon"]), cv.OpenError, "mixing theory"),
    (lambda m: cv.Mixture("PR+vdW1", ["mercury", "aniline"], estimate=False), cv.OpenError, "parameters"),
])  # fmt: skip
def test_failures_say_what_is_wrong(gas, call, error, words):
    with pytest.raises(error, match=words):
        call(gas)


def test_arrays_do_not_raise(gas):
    q = gas.bubble([0.3, 0.7], T=[260.0, 600.0, np.nan])
    assert list(q.status) == [cv.Status.OK, cv.Status.NO_SOLUTION, cv.Status.INVALID]
    assert np.isfinite(q.p[0]) and np.isnan(q.p[1:]).all() and np.isnan(q.y[1:]).all()


def test_projection_and_solids():
    matplotlib = pytest.importorskip("matplotlib")
    matplotlib.use("Agg")
    m = cv.Mixture("PR+vdW1", ["carbon_dioxide", "naphthalene"], kij=0.0965)
    p = np.array([1e7, 2e7])
    q = m.solubility("naphthalene", T=308.15, p=p)
    (line,) = m.solid_lines("naphthalene", T=308.15, p_max=3e7)
    assert np.allclose(np.interp(p, line.p, line.x[:, 1]), q.x[:, 1], rtol=0.02) and q.stable.all()
    assert line.plot().get_yscale() == "log"
    # the vapour above the solid at its sublimation pressure is pure
    assert line.begin.startswith("the pure component") and line.x[0, 1] == pytest.approx(1.0)
    with pytest.raises(ValueError, match="binaries"):
        cv.Mixture("PR+vdW1", ["methane", "ethane", "propane"]).solubility("methane", T=80.0, p=1e5)
    projection = cv.Mixture("PR+vdW1", ["carbon_dioxide", "ethane"]).projection()
    assert len(projection.azeotropic) == 1 and projection.plot().get_ylabel() == "p / MPa"


def test_activity_henry_and_virial_coefficients_belong_together():
    m = cv.Mixture("PR+vdW1", ["propane", "butane"])
    x = np.array([[0.0, 1.0], [0.4, 0.6], [1.0, 0.0]])
    q = m.excess(x, T=300.0, p=1e6)
    gE = 8.31446261815324 * 300.0 * (x * np.log(q.gamma)).sum(axis=-1)
    assert np.allclose(q.gE, gE, atol=1e-3) and np.allclose(q.hE - 300.0 * q.sE, q.gE, atol=1e-9)
    assert q.gamma[0, 1] == pytest.approx(1.0) and q.liquid.all() and q.to_pandas().shape[0] == 3
    h = m.henry("propane", T=[300.0, 320.0])
    thin = m.excess([1e-7, 1 - 1e-7], T=300.0, p=h.p[0])
    assert h.H[0] == pytest.approx(thin.phi[0] * h.p[0], rel=1e-6)
    assert m.henry("propane", T=300.0, p=1e6).gamma == pytest.approx(q.gamma[0, 0], rel=1e-12)
    v = m.virial([0.4, 0.6], T=[300.0, 400.0])
    assert np.allclose(np.einsum("tij,i,j->t", v.B_ij, [0.4, 0.6], [0.4, 0.6]), v.B)
    assert v.B_ij[0, 0, 0] == pytest.approx(cv.Fluid("propane", "PR").virial(300.0), rel=1e-8)
    with pytest.raises(ValueError):
        m.excess([0.5, 0.6], T=300.0, p=1e6)
    with pytest.raises(cv.EquilibriumError):
        m.henry("propane", T=450.0)


def test_ideal_curves_meet_their_condition():
    f = cv.Fluid("nitrogen")
    c = f.ideal_curve()
    assert c.end == "saturation" and c.highest[1] == pytest.approx(c.p.max(), rel=1e-3)
    assert np.abs(f.phase(c.T[1:], c.rho[1:]).mu_JT).max() < 1e-13
    z = f.ideal_curve("zeno", T=[150.0, 200.0])
    assert sorted(z.T) == pytest.approx([150.0, 200.0]) and np.allclose(f.phase(z.T, z.rho).Z, 1.0)
    m = cv.Mixture("PR+vdW1", ["methane", "ethane"])
    assert m.ideal_curve([0.9, 0.1], "boyle").T_zero > cv.Fluid("methane", "PR").ideal_curve("boyle").T_zero
    with pytest.raises(cv.EquilibriumError):
        cv.Fluid("methane").ideal_curve("joule")
    with pytest.raises(ValueError):
        f.ideal_curve("inversion")


def test_residue_curves():
    m = cv.Mixture("PR+vdW1", ["propane", "butane", "pentane"])
    d = m.residue_curves(5e5, mesh=4)
    assert d.consistent and d.failures == 0 and d.kinds == ["unstable node", "saddle", "stable node"]
    c = d.curves[0]
    assert (np.diff(c.T) > 0).all() and c.begin == 0 and c.end == 2
    k = len(c) // 2
    assert np.allclose(m.bubble(c.x[k], p=5e5).y, c.y[k], atol=1e-9)
    matplotlib = pytest.importorskip("matplotlib")
    matplotlib.use("Agg")
    assert d.plot().get_title() == "p = 0.5 MPa"
