"""Pure fluids: printed figures, identities, shapes, failures. The numbers themselves are tested in C++."""

import copy
import ctypes
import pathlib
import pickle
import signal
import subprocess
import sys
import threading
import time
import types

import numpy as np
import pytest
from hypothesis import given, settings
from hypothesis import strategies as st

import corvane as cv

R = 8.3144621  # of the library, J/(mol K)


@pytest.fixture(scope="module")
def water():
    return cv.Fluid("water")


def test_water_has_the_printed_properties(water):
    # IAPWS-95 (2018), table 7: p in MPa, cv in kJ/(kg K) at T/K and rho in kg/m³; the equation has a gas
    # constant of its own, 8.314371357587 J/(mol K).
    scale = 8.314371357587 / R
    T, rho, p, cv_mass = np.array([
        [300, 996.5560, 0.0992418352, 4.13018112],
        [500, 0.435, 0.0999679423, 1.50817541],
        [647, 358.0, 22.0384756, 6.18315728],
        [900, 870.769, 700.000006, 2.66422350],
    ]).T  # fmt: skip
    s = water.phase(T, rho / water.M)
    assert np.allclose(s.p * scale / 1e6, p, rtol=1e-8)
    # the ideal-gas part is a table
    assert np.allclose(s.cv * scale / water.M / 1e3, cv_mass, rtol=2e-5)


@settings(max_examples=40)
@given(st.floats(0.5, 3.0), st.floats(-4.0, 1.0), st.sampled_from(["MEOS", "PR", "PCSAFT"]))
def test_identities_and_round_trips(Tr, log_pr, eos):
    fluid = cv.Fluid("propane", eos)
    s = fluid.state(T=Tr * fluid.T_critical, p=10**log_pr * fluid.p_critical)
    assert s.g == pytest.approx(s.h - s.T * s.s, abs=1e-8 * R * s.T)
    assert s.h == pytest.approx(s.u + s.p * s.v, abs=1e-8 * R * s.T)
    # cp − cv = T·v·α²/κ
    assert s.cp - s.cv == pytest.approx(s.T * s.v * s.alpha_p**2 / s.kappa_T, rel=1e-8)
    for pair in ("ph", "ps"):
        back = fluid.state(**{name: getattr(s, name) for name in pair})
        assert back.T == pytest.approx(s.T, rel=1e-7)


def test_shapes_and_status():
    f = cv.Fluid("propane", "PR")
    s = f.state(T=np.array([[250.0], [300.0]]), p=[1e5, 1e6, np.nan])
    assert s.rho.shape == s.status.shape == (2, 3)
    assert (s.status[:, 2] == cv.Status.INVALID).all() and np.isnan(s.rho[:, 2]).all()
    assert (s.status[:, :2] == cv.Status.OK).all() and np.isfinite(s.rho[:, :2]).all()
    assert f.state(T=300.0, p=1e5).rho.shape == ()
    assert f.state(T=[], p=1e5).rho.shape == (0,)
    assert set(s.to_dict()) == {*cv.State.columns, *cv.State.further, "status"}
    assert len(s.to_pandas()) == 6
    assert "<table>" in s._repr_html_() and "kelvin" in repr(s)
    two = f.state(T=300.0, q=[0.0, 0.5, 1.0])
    assert np.allclose(two.rho_liquid, f.density(300.0, two.p, "liquid"))
    assert two.rho[0] == pytest.approx(two.rho_liquid[0]) and two.rho[2] == pytest.approx(two.rho_vapour[2])
    assert np.isnan(two.cp).all() and np.isnan(f.state(T=300.0, p=1e5).q)


def test_single_states_need_no_numpy_and_are_those_of_arrays(water):
    """Loading NumPy takes longer than the first number may."""
    code = ("import sys, corvane as cv; f = cv.Fluid('water'); s = f.state(T=300.0, p=1e5); q = f.saturation(T=400); "
            "x = [s.rho, s.v, s.rho_mass, q.p, q.h_vaporisation, f.density(300.0, 1e5), f.virial(400.0), f.phase(300, 10.0).cp, "
            "f.state(T=300, q=0.5).h, f.states(p=1e5, T=300).p[0] if 'numpy' not in sys.modules else 'numpy']; "
            "print(*(float(v).hex() for v in x))")  # fmt: skip
    done = subprocess.run([sys.executable, "-c", code], capture_output=True, text=True, check=True)
    s, q = water.state(T=[300.0], p=1e5), water.saturation(T=[400.0])
    arrays = [s.rho, s.v, s.rho_mass, q.p, q.h_vaporisation, water.density([300.0], 1e5), water.virial([400.0]),
              water.phase([300.0], 10.0).cp, water.state(T=[300.0], q=0.5).h, [1e5]]  # fmt: skip
    assert [float.fromhex(v) for v in done.stdout.split()] == pytest.approx([a[0] for a in arrays], rel=1e-15)
    one = water.state(T=300, p=1e5)
    assert one.rho.shape == () == np.shape(one.status) and one.rho.round(1) == round(one.rho, 1) and np.isnan(one.q)
    assert water.state(T=300.0, v=one.v).p == pytest.approx(1e5) and pickle.loads(pickle.dumps(one.rho)) == one.rho
    assert water.saturation(T=700.0, errors="nan").status == cv.Status.NO_SOLUTION
    with pytest.raises(cv.EquilibriumError):
        water.saturation(T=700.0)
    with pytest.raises(ValueError, match="phase is 'liquid', 'vapour'"):
        water.density(300.0, 1e5, "gas")


def test_scalar_loops_and_threads_give_the_same_bits():
    f = cv.Fluid("carbon_dioxide")
    T, p = np.linspace(230, 700, 500), np.linspace(1e5, 5e7, 500)
    one = f.state(T=T, p=p, threads=1)
    many = f.state(T=T, p=p, threads=4)
    assert np.array_equal(one.h, many.h)
    assert [float(f.state(T=a, p=b).h) for a, b in zip(T[::50], p[::50])] == list(one.h[::50])
    results = {}
    workers = [threading.Thread(target=lambda k=k: results.update({k: f.state(T=T, p=p).h})) for k in range(4)]
    [w.start() for w in workers]
    [w.join() for w in workers]
    assert all(np.array_equal(one.h, h) for h in results.values())


@pytest.mark.parametrize("call, error, words", [
    (lambda: cv.Fluid("unobtainium"), cv.OpenError, "unknown substance"),
    (lambda: cv.Fluid("propane", "pr"), cv.OpenError, "no equation pr"),
    (lambda: cv.Fluid("propane", "PR", set=99), cv.OpenError, "sets: 1"),
    (lambda: cv.Fluid("propane", home="/nonexistent"), cv.OpenError, "CorvaneS"),
    (lambda: cv.Fluid("propane").state(T=-1.0, p=1e5), ValueError, "out of range"),
    (lambda: cv.Fluid("propane").saturation(T=400.0), cv.EquilibriumError, "critical"),
    (lambda: cv.Fluid("propane").state(T=300.0), TypeError, "two of"),
    (lambda: cv.Fluid("propane").state(T=300.0, x=1), TypeError, "two of"),
    (lambda: cv.Fluid("water").state(p=101325.0, rho=999.9 / 0.018015268), ValueError, "states"),
    (lambda: cv.Fluid("propane").set_parameter(10**6, 0.0), IndexError, "no such"),
])  # fmt: skip
def test_failures_say_what_is_wrong(call, error, words):
    with pytest.raises(error, match=words):
        call()


def test_copies_and_parameters():
    f = cv.Fluid("propane", "PR")
    before = f.saturation(T=300.0).p
    f.set_parameter(3, 0.2)  # the acentric factor
    assert f.parameters[3] == 0.2 and f.saturation(T=300.0).p != before
    for other in (pickle.loads(pickle.dumps(f)), copy.copy(f), copy.deepcopy(f)):
        assert other.saturation(T=300.0).p == f.saturation(T=300.0).p
        other.set_parameter(3, 0.1)
    assert f.parameters[3] == 0.2
    assert cv.Fluid("propane", "PR").saturation(T=300.0).p == before


def test_from_any_directory(tmp_path, monkeypatch, water):
    monkeypatch.chdir(tmp_path)
    # IAPWS-95: 101.3 kPa is reached at 373.1 K (99.97 °C)
    assert cv.Fluid("H2O").saturation(p=101325.0).T == pytest.approx(373.124, abs=2e-3)
    assert "propane" in [s["name"] for s in cv.search("74-98-6")]
    assert cv.equations("CO2")[0] == "MEOS" and "PR+vdW1" in cv.mixture_models()


def test_quantities(water):
    pint = pytest.importorskip("pint")
    u = pint.UnitRegistry()
    plain = water.state(T=373.15, p=2e5)
    s = water.state(T=u.Quantity(100, "degC"), p=u.Quantity(2, "bar"))
    assert s.rho.to("mol/m**3").magnitude == plain.rho and s.plain.rho == plain.rho
    assert s.w.to("km/s").magnitude == pytest.approx(plain.w / 1e3)
    assert plain.quantity("w", u).to("km/s").magnitude == pytest.approx(plain.w / 1e3)
    q = water.saturation(T=u.Quantity([300.0, 350.0], "kelvin"))
    bare = water.saturation(T=[300.0, 350.0])
    for name in ("rho_vapour", "h_vaporisation"):
        assert np.all(getattr(q, name).magnitude == getattr(bare, name))
    assert q.rho_vapour.check("[substance]/[length]**3") and q.h_vaporisation.check("[energy]/[substance]")
    assert np.all(q.liquid.h.magnitude == bare.liquid.h)
    assert water.density(u.Quantity(300, "K"), 1e5).units == u.Unit("mol/m**3")
    m = cv.Mixture("PR+vdW1", ["methane", "propane"])
    split = m.flash([0.5, 0.5], T=u.Quantity(250, "K"), p=2e6)
    assert split.rho_phase.check("[substance]/[length]**3") and split.fraction.shape == (3,)
    assert m.bubble([0.5, 0.5], T=u.Quantity(250, "K")).p.to("MPa").magnitude == m.bubble([0.5, 0.5], T=250).p / 1e6


def test_plot(water):
    matplotlib = pytest.importorskip("matplotlib")
    matplotlib.use("Agg")
    ax = water.saturation(T=[300, 400, 500]).plot()
    assert list(ax.lines[0].get_xdata()) == [300, 400, 500]


def test_interruption_keeps_what_is_done_and_progress_is_shown(monkeypatch, interruption):
    shown = []

    class Bar:
        def __init__(self, **options):
            self.total = options["total"]

        def update(self, more):
            shown.append(more)

        def close(self):
            shown.append("closed")

    monkeypatch.setitem(sys.modules, "tqdm", types.SimpleNamespace(tqdm=Bar))
    gas, n = cv.Mixture("PR+vdW1", ["methane", "propane"]), 10**6
    with interruption(lambda: shown), pytest.raises(cv.Interrupted) as caught:  # half a minute's work, whose bar comes after 1 s
        gas.bubble([0.3, 0.7], T=np.linspace(200, 320, n), threads=2)
    partial = caught.value.partial
    done = partial.status == cv.Status.OK
    assert partial.T.shape == (n,) and 0 < done.sum() < n
    assert (partial.status[~done] == cv.Status.INTERRUPTED).all() and np.isnan(partial.T[~done]).all()
    k = int(np.flatnonzero(done)[-1])
    assert partial.p[k] == gas.bubble([0.3, 0.7], T=partial.T[k]).p
    assert shown[-1] == "closed" and 0 < sum(shown[:-1]) < n


def test_an_interruption_while_the_bar_is_closed(monkeypatch):
    class Bar:
        def show(self, done):
            pass

        def close(self):
            raise KeyboardInterrupt

    class Slow(cv.Equation):  # van der Waals, and so that there is a bar on any machine
        components, M, T_critical, rho_critical = ["argon"], 0.039948, 140.0, 11000.0
        seconds = 0.0

        def alphar(self, T, rho, x):
            time.sleep(self.seconds)
            return -np.log1p(-3.2e-5 * rho) - 0.1361 * rho / (8.3144621 * T)

    fluid = Slow().fluid()
    Slow.seconds = 0.05
    monkeypatch.setattr("corvane.progress.bar", lambda n: Bar())
    before = signal.signal(signal.SIGINT, signal.default_int_handler)
    try:
        with pytest.raises(KeyboardInterrupt):
            fluid.phase(T=np.linspace(240, 300, 40), rho=1.0)
    finally:
        signal.signal(signal.SIGINT, before)


def test_numbers_are_those_of_the_library_to_the_bit(water):
    """By the C functions of the library that this process has loaded; only powers of ten differ. (The command has
    g, a, cp and w from other functions of the model, which round otherwise.)"""
    with open("/proc/self/maps") as maps:
        library = ctypes.CDLL(next(line.split(maxsplit=5)[5].strip() for line in maps if "libcorvane" in line))
    library.Corvane_open.restype = library.Corvane_pure_phase.restype = ctypes.c_void_p
    library.Corvane_Result_value.restype = ctypes.c_double
    fluid = ctypes.c_void_p(library.Corvane_open(b"MEOS", b"water", 0, cv.data_home().encode(), None))
    names = {"p": (1, 1e6), "h": (3, 1), "s": (4, 1), "u": (5, 1), "g": (8, 1), "a": (9, 1), "Z": (10, 1), "cv": (11, 1),
             "cp": (12, 1), "w": (13, 1), "alpha_p": (16, 1), "dp_dT": (17, 1e6), "dp_drho": (18, 1)}  # fmt: skip
    T, rho = np.array([300.0, 450.0, 700.0, 1500.0]), np.array([55500.0, 51000.0, 3000.0, 0.1])
    s = water.phase(T=T, rho=rho)
    for k in range(4):
        q = ctypes.c_void_p(library.Corvane_pure_phase(fluid, ctypes.c_double(T[k]), ctypes.c_double(rho[k] / 1e6), None))
        for name, (number, factor) in names.items():
            assert getattr(s, name)[k] == library.Corvane_Result_value(q, 0, 0, 0, number, None) * factor, name
        library.Corvane_release(q)
    library.Corvane_release(fluid)


def test_a_plugin_out_of_the_tree_by_the_path_of_its_folder(tmp_path):
    build = pathlib.Path(cv.__file__).parents[2]
    plugin = build / "tests/plugins/libthvdw.dll"
    if not plugin.exists():
        pytest.skip("not in a build tree")
    (tmp_path / "CorvaneS/parameters").mkdir(parents=True)
    (tmp_path / "CorvaneS/libthvdw.dll").symlink_to(plugin)
    source = pathlib.Path(__file__).parents[2] / "examples/vdw_plugin/parameters"
    (tmp_path / "CorvaneS/parameters/vdw").symlink_to(source.resolve())
    f = cv.Fluid("Ar", "vdw", home=tmp_path)  # substances, ideal gases: those of the package
    assert f.state(T=300.0, p=1e5).Z == pytest.approx(1.0, abs=2e-3) and f.name == "argon"
    assert pickle.loads(pickle.dumps(f)).saturation(T=120.0).p == f.saturation(T=120.0).p
    assert "vdw" in cv.equations("argon", home=tmp_path) and "PR" in cv.equations("argon", home=tmp_path)


def test_everything_has_a_docstring():
    from corvane import _native

    bare = [f"{owner.__name__}.{name}" for owner in (_native, *(vars(_native)[c] for c in ("Fluid", "Mixture", "Jet")))
            for name in vars(owner) if not name.startswith("_") and not (getattr(owner, name).__doc__ or "").strip()]
    assert bare == []


def test_property_diagram():
    matplotlib = pytest.importorskip("matplotlib")
    matplotlib.use("Agg")
    f = cv.Fluid("propane", "PR")
    d = f.diagram("p", "h", T=[280.0, 400.0], rho=[1000.0], points=30)
    assert list(d.lines) == ["T", "rho"] and [value for value, _ in d.lines["T"]] == [280.0, 400.0]
    cold, isochore = d.lines["T"][0][1], d.lines["rho"][0][1]
    assert np.isclose(cold.p, f.saturation(T=280.0).p, rtol=1e-9).sum() == 11  # the two-phase part in tenths
    assert np.allclose(isochore.rho, 1000.0) and np.allclose(f.state(T=isochore.T, rho=1000.0).h, isochore.h)
    assert np.allclose(d.liquid.rho, f.saturation(T=d.liquid.T).rho_liquid)
    assert d.plot().get_yscale() == "log" and d.failures == 0
    z = [0.7, 0.3]
    m = cv.Mixture("PR+vdW1", ["methane", "propane"])
    mixed = m.diagram(z, "T", "s", p=[2e6], rho=[4000.0], points=40)
    (_, isobar), (_, isochore) = mixed.lines["p"][0], mixed.lines["rho"][0]
    flash = m.flash(z, T=isobar.T[20], p=2e6)
    assert isobar.h[20] == pytest.approx(float(flash.h)) and np.allclose(isochore.rho, 4000.0)
    assert mixed.plot().get_title().startswith("0.7 methane + 0.3 propane")


def test_transport_has_the_printed_values_and_names_its_models(water):
    # IAPWS R12-08, table 4, and R15-11, table 4 (298.15 K, 998 kg/m³); R1-76 (2014), table 1: 72.75 mN/m at 20 °C.
    rho = 998.0 / water.M
    eta, conductivity = water.viscosity(T=298.15, rho=rho), water.thermal_conductivity(T=298.15, rho=rho)
    assert eta.viscosity == pytest.approx(889.735100e-6, rel=2e-7)
    assert conductivity.conductivity == pytest.approx(0.607712868, rel=2e-7)
    assert [model for model, _ in eta.models] == ["reference correlation"]
    tension = water.surface_tension([293.15, 2000.0])
    # The shipped correlation is another one (Mulero and co-workers): 0.1 % higher, a quarter of IAPWS's uncertainty.
    assert tension.tension == pytest.approx([72.75e-3, 0.0], abs=1e-4)
    # At T and p, at the ends of the two phases, and between them.
    saturated = water.saturation(T=400.0)
    ends = water.viscosity(T=400.0, q=[0.0, 0.5, 1.0])
    assert ends.rho[[0, 2]] == pytest.approx([saturated.rho_liquid, saturated.rho_vapour])
    assert np.isnan(ends.viscosity[1]) and ends.status[1] != 0
    assert water.viscosity(T=300.0, p=1e5).viscosity == water.viscosity(T=300.0, rho=water.state(T=300.0, p=1e5).rho).viscosity


def test_diffusion_interfaces_and_what_values_say_of_themselves(water):
    # Mills, J. Phys. Chem. 77 (1973) 685: 2.299e-9 m²/s; the relation of Li and Chang is some per cent off.
    d = water.diffusion(T=298.15, p=1e5)
    assert d.diffusion == pytest.approx(2.299e-9, rel=0.05) and d.uncertainty == 0.25
    eta = water.viscosity(T=400.0, rho=[50.0, 30000.0, 53000.0])
    assert eta.metastable.tolist() == [False, True, False] and np.isnan(eta.uncertainty).all()
    liquid = cv.Mixture("PCSAFT+LB", ["hexane", "toluene"])
    point = liquid.bubble([0.4, 0.6], T=330.0)
    at = {"T": 330.0, "rho": float(point.rho), "x": [0.4, 0.6]}
    assert 0.5 < liquid.diffusion(**at, fick=True).diffusion / liquid.diffusion(**at).diffusion < 1.0
    both = (330.0, float(point.rho), [0.4, 0.6], float(point.rho_incipient), point.y)
    profile, sigma = liquid.interface(*both), liquid.surface_tension(*both)
    assert sigma.tension == pytest.approx(profile.tension, rel=1e-12) and sigma.models[0][0] == "density-gradient theory"
    assert np.all(np.diff(profile.distance) > 0) and profile.rho[-1] == pytest.approx(point.rho * np.array([0.4, 0.6]), rel=0.01)
    assert profile.plot().get_xlabel() == "z / nm"
    with pytest.raises(cv.EquilibriumError):
        liquid.interface(330.0, 1.1 * float(point.rho), *both[2:])


def test_transport_says_what_is_extrapolated_and_what_is_missing():
    acetone = cv.Fluid("acetone", "PR")
    eta = acetone.viscosity(T=[300.0, 1900.0], rho=0.0)
    assert eta.in_range.tolist() == [True, False] and eta.model.startswith("gas correlation (")
    with pytest.raises(ValueError, match="no viscosity of 1_2_pentanediol in the data tree"):
        cv.Fluid("1_2_pentanediol", "PR").viscosity(T=300.0, rho=0.0)
    with pytest.raises(ValueError):
        acetone.viscosity(T=-1.0, rho=0.0)
