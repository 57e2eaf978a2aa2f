"""What all results have in common: dictionaries, tables, pictures, copies; names, docstrings and types of what is public."""

import copy
import functools
import inspect
import os
import pathlib
import pickle
import re
import subprocess
import sys

import numpy as np
import pytest

import corvane as cv
from corvane import mixture_results, results
from corvane.compat import coolprop

pandas, matplotlib = pytest.importorskip("pandas"), pytest.importorskip("matplotlib")
matplotlib.use("Agg")


@functools.lru_cache
def gas():
    return cv.Mixture("PR+vdW1", ["methane", "propane"])


@functools.lru_cache
def fluid():
    return cv.Fluid("propane", "PR")


@functools.lru_cache
def three():
    return cv.Mixture("PR+vdW1", ["nitrogen", "methane", "ethane"])


def fitted():
    T = [240.0, 280.0, 320.0, 350.0]
    return cv.fit("PCSAFT", "propane", {"T/K": T, "p/Pa": cv.Fluid("propane").saturation(T=T).p}, ["Ts"])


Z, T = [0.5, 0.5], np.linspace(220.0, 260.0, 5)
MAKE = {
    "State": lambda: fluid().state(T=300.0, p=[1e5, 5e5, 2e6]),
    "Saturation": lambda: fluid().saturation(T=T),
    "MixtureState": lambda: gas().phase(300.0, [10.0, 100.0, 1000.0], Z),
    "FlashResult": lambda: gas().flash(Z, T=[200.0, 230.0, 260.0, 330.0], p=2e6),
    "SaturationPoints": lambda: gas().bubble([[0.2, 0.8], [0.5, 0.5]], T=250.0),
    "Envelope": lambda: gas().envelope(Z),
    "Diagram": lambda: gas().pxy(250.0),
    "Branch": lambda: gas().Txy(2e6).branches[0],
    "CriticalPoints": lambda: gas().critical_point([[0.3, 0.7], [0.5, 0.5], [0.7, 0.3]]),
    "CriticalLine": lambda: gas().critical_lines()[0],
    "ThreePhaseLine": lambda: cv.Mixture("PR+vdW1", ["propane", "water"]).three_phase_lines()[0],
    "AzeotropicLine": lambda: cv.Mixture("PR+vdW1", ["carbon_dioxide", "ethane"]).azeotropic_lines()[0],
    "TernaryDiagram": lambda: three().ternary(120.0, 3e6, step=0.1),
    "TernaryRegion": lambda: three().ternary(120.0, 3e6, step=0.1).regions[0],
    "SolidPoints": lambda: gas().solubility("methane", T=[80.0, 84.0, 88.0], p=1e6),
    "Projection": lambda: gas().projection(),
    "Isoline": lambda: fluid().diagram(T=[300.0], p=[], points=9).lines["T"][0][1],
    "PropertyDiagram": lambda: fluid().diagram(T=[300.0, 400.0], p=[1e6], points=9),
    "ExcessProperties": lambda: gas().excess([[0.2, 0.8], [0.5, 0.5]], T=200.0, p=5e6),
    "HenryConstants": lambda: gas().henry(0, T=T),
    "VirialCoefficients": lambda: gas().virial(Z, T=T),
    "IdealCurve": lambda: fluid().ideal_curve("boyle"),
    "ResidueMap": lambda: three().residue_curves(1e6, mesh=3),
    "ResidueCurve": lambda: three().residue_curves(1e6, mesh=3).curves[0],
    "FitResult": fitted,
    "TabulatedStates": lambda: cv.PropertyTable.build(fluid(), "pT", p=(1e5, 1e6), T=(400, 500), halvings=3)(
        p=[2e5, 5e5, 8e5], T=450.0),
}  # fmt: skip
if hasattr(cv, "Viscosity"):
    MAKE["Viscosity"] = lambda: cv.Fluid("water").viscosity(T=T + 60, rho=55000.0)
    MAKE["Conductivity"] = lambda: cv.Fluid("water").thermal_conductivity(T=T + 60, rho=55000.0)
    MAKE["Diffusion"] = lambda: cv.Fluid("water").diffusion(T=T + 60, rho=55000.0)
    MAKE["Interface"] = lambda: gas().interface(230.0, *_bubble())
    MAKE["SurfaceTension"] = lambda: cv.Fluid("water").surface_tension(T=T + 60)


def _bubble():
    point = gas().bubble(Z, T=230.0)
    return float(point.rho), Z, float(point.rho_incipient), point.y


SINGLE = {
    "State": lambda: fluid().state(T=300.0, p=1e5),
    "Saturation": lambda: fluid().saturation(T=300.0),
    "FlashResult": lambda: gas().flash(Z, T=230.0, p=2e6),
    "SaturationPoints": lambda: gas().dew(Z, T=230.0),
}  # fmt: skip


# The parts of FitResult and of a map's curves have their own words for what stands beside the columns.
UNSAID = {"columns", "further", "words", "parts", "ordinates", "plain"}


def test_nothing_is_left_out():
    kinds = {n for n, c in vars(cv).items() if inspect.isclass(c) and issubclass(c, (results.Table, results.Collection))}
    kinds |= {n for n, c in vars(mixture_results).items() if inspect.isclass(c) and issubclass(c, results.Table)}
    assert kinds - {"Table", "OfComponents", "Collection"} <= set(MAKE) and "FitResult" in MAKE


def same(a, b):
    if isinstance(a, dict):
        return a.keys() == b.keys() and all(same(a[k], b[k]) for k in a)
    if isinstance(a, (list, tuple)):
        return len(a) == len(b) and all(same(x, y) for x, y in zip(a, b))
    return np.array_equal(a, b, equal_nan=np.asarray(a).dtype.kind == "f")


@pytest.mark.parametrize("kind, make", [*MAKE.items(), *((f"{n} of one", f) for n, f in SINGLE.items())])
def test_results_are_dictionaries_tables_pictures_and_copies(kind, make):
    result = make()
    assert type(result).__name__ == kind.split()[0]
    attributes = {n for n in vars(result) if not n.startswith("_")}
    words = result.to_dict()
    assert attributes <= set(words) | UNSAID  # every attribute is there
    rows = result.to_pandas()
    assert len(rows) > 0 and not rows.columns.duplicated().any()
    if isinstance(result, results.Table):
        assert len(rows) == len(result) == np.size(result.status) and "status" in rows
        assert result._repr_html_().count("<tr>") == 1 + min(20, len(result))
    for other in (pickle.loads(pickle.dumps(result)), copy.copy(result), copy.deepcopy(result)):
        assert same(other.to_dict(), words) and repr(other) == repr(result) != object.__repr__(result)
    ax = result.plot()
    drawn = [line.get_ydata() for line in ax.lines] + [c.get_offsets().data[:, 1] for c in ax.collections]
    assert any(np.isfinite(np.asarray(y, dtype=float)).any() for y in drawn)
    assert ax.get_ylabel() or not ax.axison  # triangles have none
    assert result.plot(ax) is ax
    matplotlib.pyplot.close("all")


def test_pictures_of_any_columns_with_the_defaults_of_a_publication():
    before = matplotlib.rcParams["font.size"]
    s = MAKE["State"]()
    ax = s.plot(x="p", y="cp", label="300 K")
    assert (ax.get_xlabel(), ax.get_ylabel()) == ("p / MPa", "cp / (J/(mol K))")
    assert np.allclose(ax.lines[0].get_xdata(), s.p / 1e6) and np.allclose(ax.lines[0].get_ydata(), s.cp)
    assert ax.figure.get_size_inches()[0] < 5 and ax.xaxis.label.get_fontsize() == 9
    assert matplotlib.rcParams["font.size"] == before  # the user's own are not touched
    with pytest.raises(ValueError, match="no column viscous"):
        s.plot(y="viscous")
    flash = MAKE["FlashResult"]()
    table = flash.to_pandas()
    assert np.allclose(table["x_2_methane"], flash.x[:, 1, 0], equal_nan=True)
    assert len(flash.plot().lines) == 2 and np.allclose(flash.plot(y="rho").lines[0].get_ydata(), flash.rho)
    points = MAKE["SaturationPoints"]()
    liquid, vapour = points.plot().lines
    assert np.allclose(liquid.get_xdata(), [0.2, 0.5]) and np.allclose(vapour.get_xdata(), points.y[:, 0])
    matplotlib.pyplot.close("all")


# Every method that takes arrays, with arguments of shapes (2, 1) and (3,), compositions with an axis more.
COLUMN, ROW = np.array([[250.0], [260.0]]), np.array([2e6, 2.5e6, 3e6])
LIQUID, MANY = np.array([[0.2, 0.8], [0.3, 0.7], [0.4, 0.6]]), np.array([[[0.3, 0.7]], [[0.6, 0.4]]])
ARRAYS = {
    "state": (fluid, {"T": COLUMN, "p": ROW}), "phase": (fluid, {"T": COLUMN, "rho": ROW / 1e4}),
    "density": (fluid, {"T": COLUMN, "p": ROW}), "saturation": (fluid, {"T": COLUMN + ROW / 1e6}),
    "virial": (fluid, {"T": COLUMN + ROW / 1e6}), "mixture.phase": (gas, {"T": COLUMN, "rho": ROW / 1e4, "x": LIQUID}),
    "mixture.density": (gas, {"T": COLUMN, "p": ROW, "x": Z}), "mixture.ln_phi": (gas, {"T": COLUMN, "rho": ROW / 1e4, "x": Z}),
    "mixture.excess": (gas, {"T": COLUMN - 60, "p": ROW, "x": LIQUID}), "mixture.henry": (gas, {"solute": 0, "T": COLUMN, "p": ROW}),
    "mixture.virial": (gas, {"T": COLUMN, "x": LIQUID}), "mixture.flash": (gas, {"T": COLUMN, "p": ROW, "z": MANY}),
    "mixture.bubble": (gas, {"T": COLUMN, "z": LIQUID}), "mixture.dew": (gas, {"p": ROW, "z": MANY}),
    "mixture.solubility": (gas, {"solid": 0, "T": COLUMN / 3, "p": ROW}),
    "mixture.viscosity": (gas, {"T": COLUMN, "rho": ROW / 1e4, "x": LIQUID}),
    "mixture.thermal_conductivity": (gas, {"T": COLUMN, "rho": ROW / 1e4, "x": Z}),
    "mixture.surface_tension": (gas, {"T": COLUMN, "rho_liquid": 14000.0 + ROW / 1e4, "x": Z, "rho_vapour": COLUMN, "y": MANY}),
    "mixture.critical_point": (gas, {"z": MANY + 0.05 * np.array([[-1, 1], [0, 0], [1, -1]])}),
}  # fmt: skip


def numbers(result):
    """The columns of a result, or the array that it is."""
    return result.to_dict() if isinstance(result, results.Table) else {"": result}


@pytest.mark.parametrize("name", ARRAYS)
def test_arrays_of_any_shape_are_loops_over_single_states(name):
    make, given = ARRAYS[name]
    call = getattr(make(), name.rpartition(".")[2])
    all_states = numbers(call(**given))
    assert same(all_states, numbers(call(**given, threads=2)))

    def one(argument, value, i, j):
        if isinstance(value, (int, list)):
            return value
        last = 1 if argument in ("x", "y", "z") else 0
        return np.broadcast_to(value, (2, 3, *value.shape[value.ndim - last:]))[i, j]

    for i, j in ((0, 0), (1, 2)):
        single = numbers(call(**{k: one(k, v, i, j) for k, v in given.items()}))
        for column, values in all_states.items():
            if isinstance(values, np.ndarray):
                assert values.shape[:2] == (2, 3)
                np.testing.assert_array_equal(np.squeeze(single[column]), np.squeeze(values[i, j]), err_msg=column)
    first = next(k for k in given if not isinstance(given[k], int))
    wrong = {**given, first: np.where(np.arange(given[first].size).reshape(given[first].shape) == 0, np.nan, given[first])}
    status = getattr(call(**wrong), "status", None)
    assert status is None or (status.any() and not status.all())
    with pytest.raises(ValueError):
        call(**wrong, errors="raise")
    call(**{k: one(k, v, 0, 0) for k, v in wrong.items()}, errors="nan")
    with pytest.raises(ValueError, match="errors is"):
        call(**given, errors="ignore")


# ---- what is public has a docstring, and what has a dimension says its unit


def public():
    """(where, object) of everything that a user of the package can name without an underscore."""
    modules = {"corvane": {n: getattr(cv, n) for n in cv.__all__},
               "coolprop": {n: getattr(coolprop, n) for n in coolprop.__all__}}  # fmt: skip
    for module, names in modules.items():
        for name, thing in names.items():
            yield f"{module}.{name}", thing
            if inspect.isclass(thing) and thing.__module__.startswith("corvane"):
                for member, value in vars(thing).items():
                    documented = inspect.isfunction(value) or isinstance(value, (property, classmethod, staticmethod))
                    if documented and not member.startswith("_"):
                        yield f"{module}.{name}.{member}", value


UNIT = re.compile(r"\bK\b|\bPa\b|mol|J/|m/s|m³|units? |\(–\)|quantit|fraction|Logarithm|relative|coefficient", re.I)
# Those that neither take nor give a number with a dimension.
WITHOUT = re.compile(r"(BinaryType|Error|Interrupted|Status|Jet(\.\w+)?|check_equation|data_home|equations|mixture_models|rounded"
                     r"|name|eos|set|source|model|models|chosen|components|estimated|pair_parameter|set_pair_parameter"
                     r"|set_parameter|mass_to_mole|fluid|mixture|plot|pairs|PhaseSI|file|PropertyTable\.(read|write|inputs|tolerance|cells|coverage|note|check)|set_reference_state|parameters)$")


def test_everything_has_a_docstring_with_units():
    bare = [where for where, thing in public() if not (inspect.getdoc(thing) or "").strip()]
    assert bare == []
    silent = [where for where, thing in public() if not WITHOUT.search(where) and not UNIT.search(inspect.getdoc(thing))]
    assert silent == []


USER = """
import corvane as cv
water = cv.Fluid("water")
reveal_type(water.state(p=25e6, T=[600, 650]).h)
reveal_type(water.saturation(T=300.0).liquid)
reveal_type(water.density(300.0, 1e5))
gas = cv.Mixture("PR+vdW1", ["methane", "propane"], kij=0.012)
reveal_type(gas.flash([0.5, 0.5], p=2e6, h=1500.0))
reveal_type(gas.critical_lines()[0])
reveal_type(cv.fit("PR+vdW1", ["methane", "propane"], "a.csv", "kij").parameters)
class Ideal(cv.Equation):
    def alphar(self, T: cv.Jet, rho: cv.Jet, x: object) -> cv.Jet:
        return 0.0 * (T + 1.0) ** 2 / rho - T
gas.bubble([0.5, 0.5], T=300.0, brunch="upper")
"""


def test_types_are_known_to_checkers(tmp_path):
    pytest.importorskip("mypy")
    (tmp_path / "user.py").write_text(USER)
    (tmp_path / "mypy.ini").write_text("[mypy]\n[mypy-corvane.*]\nfollow_imports = silent\n")
    environment = {**os.environ, "MYPYPATH": str(pathlib.Path(cv.__file__).parents[1])}
    command = [sys.executable, "-m", "mypy", "--strict", "--no-pretty", "--cache-dir", str(tmp_path / "cache"), "user.py"]
    out = subprocess.run(command, cwd=tmp_path, env=environment, capture_output=True, text=True).stdout
    said = re.findall(r"^user.py:\d+: (?:note: Revealed type is \"(.*)\"|error: (.*))$", out, re.M)
    array = "numpy.ndarray[Any, Any]"
    assert [a for a, _ in said[:-1]] == [array, "corvane.fluid.State", array, "corvane.mixture_results.FlashResult",
                                         "corvane.mixture_results.CriticalLine",
                                         "builtins.dict[builtins.str, builtins.float]"]  # fmt: skip
    assert "brunch" in said[-1][1]
