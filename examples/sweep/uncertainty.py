"""How sure is a bubble-point curve? PC-SAFT parameters of hexane are fitted, drawn from their joint distribution, and the
curve of propane + hexane at 350 K computed for each draw.

    python uncertainty.py [threads:2 | local:2 | ADDRESS]

Leaves uncertainty/ (the dataset, 2000 draws) and uncertainty.png.
"""

import pathlib
import re
import sys
import tempfile

import numpy as np

import corvane as cv
from corvane import sweep

HERE = pathlib.Path(__file__).resolve().parent
T = 350.0
X = np.linspace(0.05, 0.95, 10)  # of propane
NAMES = ["m", "Ts", "vs"]


def curve(**parameters):
    """Bubble pressures with these parameters of hexane: a data home with one file lies over the default one."""
    text = pathlib.Path(cv.data_home(), "CorvaneS", "parameters", "PCSAFT", "hexane;1").read_text()
    text = re.sub(r"(?m)^id:.*", "id:\t9", text)
    for name, value in parameters.items():
        text = re.sub(rf"(?m)^{name}:.*", f"{name}:\t{value!r}", text)
    with tempfile.TemporaryDirectory() as home:
        folder = pathlib.Path(home, "CorvaneS", "parameters", "PCSAFT")
        folder.mkdir(parents=True)
        (folder / "hexane;9").write_text(text)
        mixture = cv.Mixture("PCSAFT+LB", ["propane", "hexane"], sets=[1, 9], home=home)
        p = mixture.bubble(np.column_stack([X, 1.0 - X]), T=T, errors="nan").p
    return {f"p_{x:.2f}": value for x, value in zip(X, p)}


def fit():
    """Mean and covariance of the parameters, from vapour pressures and liquid densities of the reference equation with an
    uncertainty of half a per cent: what good measurements have."""
    t = np.linspace(200.0, 460.0, 27)
    q = cv.Fluid("hexane").saturation(T=t)
    data = {"T/K": t, "p/Pa": q.p, "rhoL/(mol/m3)": q.rho_liquid, "u_p/%": 0.5, "u_rhoL/%": 0.5}
    r = cv.fit("PCSAFT", "hexane", data, NAMES)
    error = np.array([r.errors[name] for name in NAMES])
    return [r.parameters[name] for name in NAMES], r.correlation * np.outer(error, error)


if __name__ == "__main__":
    mean, covariance = fit()
    draws = sweep.Random({}, 2000, seed=7, normal={"names": NAMES, "mean": mean, "covariance": covariance})
    scheduler = sys.argv[1] if len(sys.argv) > 1 else "threads"
    print(sweep.run(sweep.Function(curve), draws, HERE / "uncertainty", scheduler=scheduler))
    table = sweep.read(HERE / "uncertainty").to_table().to_pandas()
    p = np.array([table[f"p_{x:.2f}"] for x in X]) / 1e6
    low, middle, high = np.nanpercentile(p, [2.5, 50.0, 97.5], axis=1)
    for row in zip(X, middle, 100 * (high - low) / (2 * middle)):
        print("x = {:.2f}  p = {:.4f} MPa  +- {:.2f} % (95 %)".format(*row))
    import matplotlib

    matplotlib.use("Agg")
    import matplotlib.pyplot as plt

    fig, (left, right) = plt.subplots(1, 2, figsize=(9, 3.6))
    left.plot(X, middle, "C0", label="median")
    left.set(xlabel="mole fraction of propane", ylabel="p / MPa", title=f"bubble points, T = {T:g} K")
    left.legend()
    right.plot(X, 100 * (p[:, :200].T / middle - 1).T, color="0.8", lw=0.5)
    right.fill_between(X, 100 * (low / middle - 1), 100 * (high / middle - 1), color="C0", alpha=0.5, zorder=3,
                       label="95 %")  # fmt: skip
    right.set(xlabel="mole fraction of propane", ylabel="deviation of p from the median, %")
    right.legend()
    fig.tight_layout()
    fig.savefig(HERE / "uncertainty.png", dpi=90)
