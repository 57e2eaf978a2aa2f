"""Quantities of pint through the whole public surface: what goes in with units comes out with units."""

import copy
import inspect
import pickle

import numpy as np
import pytest

import corvane as cv
from corvane.compat import coolprop

pint = pytest.importorskip("pint")
u = pint.UnitRegistry()
Q = u.Quantity
DENSITY, ENERGY = "mol/l", "kJ/mol"

# method: (arguments in numbers of SI, the same as quantities in other units, {attribute: a unit it converts to})
FLUID = {
    "state": ({"T": 300.0, "p": 2e5}, {"T": Q(26.85, "degC"), "p": Q(2, "bar")},
              {"rho": DENSITY, "h": ENERGY, "w": "km/s", "v": "l/mol"}),
    "states": ({"p": 2e5, "T": 300.0}, {"p": Q(2, "bar"), "T": Q(300, "K")}, {"rho": DENSITY}),
    "phase": ({"T": 300.0, "rho": 50.0}, {"T": Q(300, "K"), "rho": Q(0.05, DENSITY)}, {"p": "bar", "cp": "J/(K*kmol)"}),
    "density": ({"T": 300.0, "p": 1e5}, {"T": Q(300, "K"), "p": Q(1, "bar")}, DENSITY),
    "saturation": ({"T": [300.0, 310.0]}, {"T": Q([300.0, 310.0], "K")},
                   {"p": "bar", "rho_vapour": DENSITY, "h_vaporisation": ENERGY, "liquid.h": ENERGY}),
    "virial": ({"T": 300.0, "order": 3}, {"T": Q(300, "K"), "order": 3}, "l**2/mol**2"),
    "diagram": ({"T": [300.0], "p": [], "points": 9}, {"T": Q([300.0], "K"), "p": [], "points": 9},
                {"liquid.p": "bar", "lines.T.0.0": "K", "lines.T.0.1.h": ENERGY}),
    "ideal_curve": ({"T": [600.0]}, {"T": Q([600.0], "K")}, {"p": "bar", "T_zero": "K", "rho": DENSITY}),
    "viscosity": ({"T": 300.0, "p": 1e6}, {"T": Q(300, "K"), "p": Q(1, "MPa")}, {"viscosity": "mPa*s", "rho": DENSITY}),
    "thermal_conductivity": ({"T": 300.0, "rho": 50.0}, {"T": Q(300, "K"), "rho": Q(0.05, DENSITY)},
                             {"conductivity": "mW/(m*K)", "T": "K"}),
    "diffusion": ({"T": 300.0, "rho": 50.0}, {"T": Q(300, "K"), "rho": Q(0.05, DENSITY)}, {"diffusion": "cm**2/s", "T": "K"}),
    "surface_tension": ({"T": 300.0}, {"T": Q(300, "K")}, {"tension": "mN/m"}),
}  # fmt: skip
Z, ZQ = [0.5, 0.5], Q([50.0, 50.0], "percent")
TIE = cv.Mixture("PR+vdW1", ["methane", "propane"]).bubble(Z, T=250.0)
MIXTURE = {
    "phase": ({"T": 300.0, "rho": 50.0, "x": Z}, {"T": Q(300, "K"), "rho": Q(0.05, DENSITY), "x": ZQ}, {"p": "bar"}),
    "density": ({"T": 300.0, "p": 1e5, "x": Z}, {"T": Q(300, "K"), "p": Q(1, "bar"), "x": ZQ}, DENSITY),
    "ln_phi": ({"T": 300.0, "rho": 50.0, "x": Z}, {"T": Q(300, "K"), "rho": Q(0.05, DENSITY), "x": ZQ}, ""),
    "flash": ({"z": Z, "p": 2e6, "T": 250.0}, {"z": ZQ, "p": Q(2, "MPa"), "T": Q(250, "K")},
              {"rho": DENSITY, "rho_phase": DENSITY, "h": ENERGY}),
    "bubble": ({"z": Z, "T": 250.0}, {"z": ZQ, "T": Q(250, "K")}, {"p": "bar", "rho_incipient": DENSITY}),
    "dew": ({"z": Z, "p": 2e6}, {"z": ZQ, "p": Q(2, "MPa")}, {"T": "K", "rho": DENSITY}),
    "envelope": ({"z": Z, "p_start": 1e6}, {"z": ZQ, "p_start": Q(1, "MPa")}, {"p": "bar", "critical.0.1": "bar"}),
    "pxy": ({"T": 250.0}, {"T": Q(250, "K")}, {"branches.0.p": "bar", "branches.0.rho_x": DENSITY}),
    "Txy": ({"p": 2e6}, {"p": Q(2, "MPa")}, {"branches.0.T": "K"}),
    "critical_point": ({"z": Z}, {"z": ZQ}, {"T": "K", "p": "bar", "rho": DENSITY}),
    "critical_points": ({"z": Z}, {"z": ZQ}, {"T": "K"}),
    "critical_lines": ({"p_max": 1e8}, {"p_max": Q(100, "MPa")}, {"0.T": "K", "0.p": "bar"}),
    "projection": ({"p_max": 1e8}, {"p_max": Q(100, "MPa")},
                   {"vapour_pressures.methane.p": "bar", "critical.0.rho": DENSITY}),
    "excess": ({"x": Z, "T": 200.0, "p": 5e6}, {"x": ZQ, "T": Q(200, "K"), "p": Q(5, "MPa")},
               {"hE": ENERGY, "vE": "l/mol", "rho_pure": DENSITY}),
    "henry": ({"solute": 0, "T": 250.0}, {"solute": 0, "T": Q(250, "K")}, {"H": "bar", "v": "l/mol"}),
    "virial": ({"x": Z, "T": 300.0}, {"x": ZQ, "T": Q(300, "K")}, {"B": "l/mol", "C": "l**2/mol**2", "B_ij": "l/mol"}),
    "ideal_curve": ({"x": Z, "T": [600.0]}, {"x": ZQ, "T": Q([600.0], "K")}, {"p": "bar", "T_zero": "K"}),
    "diagram": ({"z": Z, "T": [300.0], "p": [], "points": 9}, {"z": ZQ, "T": Q([300.0], "K"), "p": [], "points": 9},
                {"liquid.p": "bar", "lines.T.0.0": "K", "lines.T.0.1.h": ENERGY}),
    "mass_to_mole": ({"w": Z}, {"w": ZQ}, ""),
    "ternary": ({"T": 250.0, "p": 2e6, "step": 0.2}, {"T": Q(250, "K"), "p": Q(2, "MPa"), "step": 0.2},
                {"T": "K", "regions.0.rho_x": DENSITY, "three_phase_rho": DENSITY, "plait.p": "bar"}),
    "residue_curves": ({"p": 5e5, "mesh": 3}, {"p": Q(5, "bar"), "mesh": 3},
                       {"p": "bar", "curves.0.T": "K", "T_singular": "K"}),
    "solubility": ({"solid": 0, "T": 88.0, "p": 1e6}, {"solid": 0, "T": Q(88, "K"), "p": Q(1, "MPa")},
                   {"rho": DENSITY, "rho_solid": DENSITY}),
    "solid_lines": ({"solid": 0, "p": 1e6}, {"solid": 0, "p": Q(1, "MPa")}, {"0.T": "K", "0.rho": DENSITY}),
    "flashes": ({"z": Z, "T": 250.0, "h": 3000.0}, {"z": ZQ, "T": Q(250, "K"), "h": Q(3, "kJ/mol")},
                {"u": ENERGY, "rho": DENSITY}),
    "three_phase_lines": ({"p_max": 1e8}, {"p_max": Q(100, "MPa")}, {}),
    "azeotropic_lines": ({"p_max": 1e8}, {"p_max": Q(100, "MPa")}, {}),
    "viscosity": ({"T": 300.0, "rho": 50.0, "x": Z}, {"T": Q(300, "K"), "rho": Q(0.05, DENSITY), "x": ZQ},
                  {"viscosity": "mPa*s", "rho": DENSITY}),
    "thermal_conductivity": ({"T": 300.0, "rho": 50.0, "x": Z}, {"T": Q(300, "K"), "rho": Q(0.05, DENSITY), "x": ZQ},
                             {"conductivity": "mW/(m*K)", "T": "K"}),
    "interface": ({"T": 250.0, "rho_liquid": TIE.rho, "x": Z, "rho_vapour": TIE.rho_incipient, "y": TIE.y},
                  {"T": Q(250, "K"), "rho_liquid": Q(float(TIE.rho) / 1e3, DENSITY), "x": ZQ,
                   "rho_vapour": Q(float(TIE.rho_incipient) / 1e3, DENSITY), "y": Q(100 * TIE.y, "percent")},
                  {"rho": DENSITY}),  # the potential at the ends is a difference of large numbers
    "diffusion": ({"T": 300.0, "rho": 50.0, "x": Z}, {"T": Q(300, "K"), "rho": Q(0.05, DENSITY), "x": ZQ},
                  {"diffusion": "cm**2/s", "T": "K"}),
    "surface_tension": ({"T": 250.0, "rho_liquid": 14000.0, "x": Z, "rho_vapour": 1000.0, "y": [0.9, 0.1]},
                        {"T": Q(250, "K"), "rho_liquid": Q(14, DENSITY), "x": ZQ, "rho_vapour": Q(1, DENSITY),
                         "y": Q([90, 10], "percent")}, {"tension": "mN/m"}),
    "binary_type": ({"p_max": 1e8}, {"p_max": Q(100, "MPa")}, {}),
}  # fmt: skip
PLAIN = {"set_parameter", "parameters", "pair_parameter", "set_pair_parameter", "component_parameters",
         "set_component_parameter"}  # fmt: skip


def number(x):
    return np.asarray(getattr(x, "magnitude", x), dtype=float)


# Functions of the module, the interface with other names, equations: (call, as above)
def equation(**given):
    class VanDerWaals(cv.Equation):
        components = ["argon"]
        M, T_critical, rho_critical = (given[k] for k in ("M", "T", "rho"))

        def cp0(self, T):
            return given["cp"]

        def alphar(self, T, rho, x):
            return -np.log1p(-3.22e-5 * rho) - 0.1362 * rho / (8.3144621 * T)

    return VanDerWaals().fluid().phase(300.0, 100.0).cp


def fitted(T, p):
    return cv.fit("PCSAFT", "propane", {"T/K": T, "p/Pa": p, "u_p/%": 1.0}, ["Ts"]).parameters["Ts"]


T_DATA, P_DATA = [240.0, 280.0, 320.0], [1.48e5, 5.82e5, 1.6e6]
FUNCTIONS = {
    "PropsSI": (coolprop.PropsSI, ("H", "T", 300.0, "P", [1e5, -1.0], "Water"),
                ("H", "T", Q(26.85, "degC"), "P", Q([1.0, -1.0], "bar"), "Water"), "kJ/kg"),
    "PropsSI_molar": (coolprop.PropsSI, ("Dmolar", "P", 1e5, "S", 2e3, "Water"),
                      ("Dmolar", "P", Q(1, "bar"), "S", Q(2, "kJ/(kg*K)"), "Water"), "mol/l"),
    "PropsSI_number": (coolprop.PropsSI, ("Z", "T", 300.0, "D", 1.0, "CO2"),
                       ("Z", "T", Q(300, "K"), "D", Q(1, "g/l"), "CO2"), ""),
    "PropsSI_slope": (coolprop.PropsSI, ("d(H)/d(T)|P", "T", 300.0, "P", 1e5, "Water"),
                      ("d(H)/d(T)|P", "T", Q(300, "K"), "P", Q(1, "bar"), "Water"), "kJ/(kg*K)"),
    "PropsSI_viscosity": (coolprop.PropsSI, ("V", "T", 300.0, "P", 1e5, "Water"),
                          ("V", "T", Q(300, "K"), "P", Q(1, "bar"), "Water"), "mPa*s"),
    "fit": (fitted, (T_DATA, P_DATA), (Q(T_DATA, "K"), Q(np.array(P_DATA) / 1e5, "bar")), None),
}  # fmt: skip


@pytest.mark.parametrize("name", FUNCTIONS)
def test_units_in_functions(name):
    call, plain, dressed, unit = FUNCTIONS[name]
    bare, result = call(*plain), call(*dressed)
    assert isinstance(result, u.Quantity) == (unit is not None)
    value = number(result) if unit is None else number(result.to(unit).to(result.units))
    np.testing.assert_allclose(value, bare, rtol=1e-9)


def test_units_in_equations_and_words():
    SI = {"M": 0.039948, "T": 140.0, "rho": 11000.0, "cp": 20.786}
    units = {"M": Q(39.948, "g/mol"), "T": Q(140, "K"), "rho": Q(11, "mol/l"), "cp": Q(20.786, "J/(mol*K)")}
    assert equation(**SI) == pytest.approx(equation(**units), rel=1e-9)
    assert coolprop.PhaseSI("T", Q(26.85, "degC"), "P", Q(1, "bar"), "Water") == "liquid"
    takes_no_numbers = {"check_equation", "data_home", "equations", "mixture_models", "search"}
    assert {n for n, f in inspect.getmembers(cv, inspect.isfunction) if n in cv.__all__} - takes_no_numbers == {"fit"}


def model(kind, name):
    if kind is cv.Fluid:
        return cv.Fluid("propane", "PR")
    return cv.Mixture("PR+vdW1", ["methane", "propane", "ethane"][: 3 if name in ("ternary", "residue_curves") else 2])


def follow(result, path):
    for step in filter(None, path.split(".")):
        if isinstance(result, (list, tuple)):
            result = result[int(step)]
        else:
            result = result[step] if isinstance(result, dict) else getattr(result, step)
    return result


@pytest.mark.parametrize("kind, name", [(k, n) for k, t in ((cv.Fluid, FLUID), (cv.Mixture, MIXTURE)) for n in t])
def test_units_in_units_out(kind, name):
    plain, dressed, expected = (FLUID if kind is cv.Fluid else MIXTURE)[name]
    call = getattr(model(kind, name), name)
    bare, result = call(**plain), call(**dressed)
    for path, unit in {"": expected}.items() if isinstance(expected, str) else expected.items():
        value = follow(result, path)
        assert isinstance(value, u.Quantity), path
        value.to(unit)
        # 26.85 °C and percents are rounded once more than 300 K
        np.testing.assert_allclose(number(value),
                                   number(follow(bare, path)), rtol=1e-9, atol=1e-12)  # fmt: skip
    if expected == {}:
        assert not isinstance(result, u.Quantity)
        np.testing.assert_equal(result, bare)


@pytest.mark.parametrize("kind, table", [(cv.Fluid, FLUID), (cv.Mixture, MIXTURE)])
def test_nothing_is_left_out(kind, table):
    public = {n for n, _ in inspect.getmembers(kind, inspect.isfunction) if not n.startswith("_")}
    assert public - PLAIN == set(table)


def test_copies_and_pickles_keep_their_units():
    s = cv.Fluid("propane", "PR").state(T=Q([300.0, 350.0], "K"), p=2e5)
    for other in (copy.copy(s), copy.deepcopy(s), pickle.loads(pickle.dumps(s))):
        assert str(other.rho.units) == str(s.rho.units) and np.array_equal(other.rho.magnitude, s.rho.magnitude)
        assert repr(other) == repr(s) and other.plain.to_dict().keys() == s.plain.to_dict().keys()


def test_wrong_dimensions_are_refused():
    with pytest.raises(pint.DimensionalityError):
        cv.Fluid("propane", "PR").state(T=Q(1, "bar"), p=1e5)
