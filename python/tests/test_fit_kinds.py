"""Every kind of measured values that a fit takes, as a table and as a CSV file: calculated by other functions of the
package from a known parameter, each alone leads back to it."""

import numpy as np
import pytest

import corvane as cv


def of_propane():
    f = cv.Fluid("propane", "PCSAFT")
    T = np.array([220.0, 260.0, 300.0, 330.0])
    s, gas = f.saturation(T=T), f.state(T=T + 60.0, p=1e6)
    yield {"T/K": T, "p/Pa": s.p}
    yield {"T/K": T, "rhoL/(mol/m3)": s.rho_liquid}
    yield {"T/K": T, "rhoV/(mol/m3)": s.rho_vapour}
    yield {"T/K": T, "hvap/(J/mol)": s.h_vaporisation}
    for name, values in (("rho/(mol/m3)", gas.rho), ("cp/(J/(mol K))", gas.cp), ("w/(m/s)", gas.w), ("JT/(K/Pa)", gas.mu_JT)):
        yield {"T/K": T + 60.0, "p/Pa": 1e6, name: values}
    yield {"T/K": T, "B/(m3/mol)": f.virial(T)}
    yield {"Tc/K": f.T_critical, "pc/Pa": f.p_critical, "rhoc/(mol/m3)": f.rho_critical}


def of_methane_propane(m):
    x = np.array([0.2, 0.3, 0.4])
    z = np.stack([x, 1.0 - x], axis=-1)
    bubble, dew, critical = m.bubble(z, T=250.0), m.dew(z, T=250.0), m.critical_point(z)
    yield {"T/K": 250.0, "p/Pa": bubble.p, "x_methane": x}
    yield {"T/K": 250.0, "p/Pa": bubble.p, "x_methane": x, "y_methane": bubble.y[:, 0]}
    yield {"T/K": 250.0, "p/Pa": dew.p, "y_methane": x}
    yield {"Tc/K": critical.T, "pc/Pa": critical.p, "rhoc/(mol/m3)": critical.rho, "x_methane": x}
    yield {"T/K": 250.0, "p/Pa": 2e7, "x_methane": x, "rho/(mol/m3)": m.density(250.0, 2e7, z)}
    yield {"T/K": 250.0, "x_methane": x, "B/(m3/mol)": m.virial(z, T=250.0).B}
    T = np.array([230.0, 250.0])
    yield {"T/K": T, "H_methane/Pa": m.henry("methane", T=T).H}


def of_benzene_hexane(m):
    x = np.array([0.2, 0.5, 0.8])
    e = m.excess(np.stack([x, 1.0 - x], axis=-1), T=300.0, p=1e5)
    for name, values in (("vE/(m3/mol)", e.vE), ("hE/(J/mol)", e.hE), ("gamma_hexane", e.gamma[:, 1])):
        yield {"T/K": 300.0, "p/Pa": 1e5, "x_benzene": x, name: values}
    yield {"T/K": [290.0, 300.0], "p/Pa": 1e5, "gammainf_hexane": m.henry("hexane", T=[290.0, 300.0], p=1e5).gamma}
    s = m.solubility("benzene", T=[230.0, 255.0], p=1e5)
    yield {"T/K": [230.0, 255.0], "p/Pa": 1e5, "solubility_benzene": s.x[:, 0]}


def of_methanol_hexane(m):
    liquids = m.flash(np.full((3, 2), 0.5), T=[270.0, 280.0, 290.0], p=5e5)
    (line,) = m.three_phase_lines()
    dense, light = (0, 1) if line.x[-1, 0] > line.x[-1, 1] else (1, 0)
    some = np.flatnonzero((line.T > 260.0) & (line.T < 290.0))[:3]
    yield {"T/K": liquids.T, "p/Pa": 5e5, "x_methanol": liquids.x[:, 0, 0], "x2_methanol": liquids.x[:, 1, 0]}
    yield {"T/K": line.T[some], "p/Pa": line.p[some], "kind": "three_phase"}
    yield {"T/K": line.T[some], "p/Pa": line.p[some], "x_methanol": line.x[some, dense],
           "x2_methanol": line.x[some, light], "y_methanol": line.x[some, 2]}  # fmt: skip


def of_carbon_dioxide_ethane(m):
    (line,) = m.azeotropic_lines()
    some = np.flatnonzero((line.T > 220.0) & (line.T < 270.0))[:3]
    yield {"T/K": line.T[some], "p/Pa": line.p[some], "x_CO2": line.x[some], "kind": "azeotrope"}


def check(model, substances, table, name, value, start, folder):
    """By the table and by a file of it."""
    columns = np.broadcast_arrays(*map(np.atleast_1d, table.values()))
    file = folder / "data.csv"
    file.write_text("\n".join([",".join(table)] + [",".join(map(str, row)) for row in zip(*(c.tolist() for c in columns))]))
    for data in (table, file):
        r = cv.fit(model, substances, data, name, start={name: start})
        assert r.converged and r.parameters[name] == pytest.approx(value, rel=1e-6, abs=1e-6), list(table)
        assert sum(s["without_solution"] + s["unstable"] for s in r.sets) == 0, list(table)


def test_values_of_a_substance_lead_back(tmp_path):
    for table in of_propane():
        check("PCSAFT", "propane", table, "Ts", 208.11, 205.0, tmp_path)  # Gross & Sadowski (2001)


@pytest.mark.parametrize("model, pair, kij, start, tables", [
    ("PR+vdW1", ["methane", "propane"], 0.03, 0.0, of_methane_propane),
    ("PR+vdW1", ["benzene", "hexane"], 0.01, 0.03, of_benzene_hexane),
    ("SRK+vdW1", ["methanol", "hexane"], 0.02, 0.03, of_methanol_hexane),
    ("PR+vdW1", ["carbon_dioxide", "ethane"], 0.13, 0.1, of_carbon_dioxide_ethane),
])  # fmt: skip
def test_values_of_a_pair_lead_back(tmp_path, model, pair, kij, start, tables):
    for table in tables(cv.Mixture(model, pair, kij=kij)):
        check(model, pair, table, "kij", kij, start, tmp_path)
