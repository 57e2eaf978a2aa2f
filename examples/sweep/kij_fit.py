"""k_ij of Peng-Robinson for 500 pairs, fitted to bubble pressures.

    python kij_fit.py [threads:2 | local:2 | ADDRESS]

There is no bank of measured data here that may be passed on: bubble pressures of the multi-fluid model, whose pairs are
fitted to measurements, stand in for it. Put your own table into data(). Leaves kij/ (the dataset), kij.csv and kij.png.
"""

import csv
import pathlib
import sys

import numpy as np

import corvane as cv
from corvane import sweep

HERE = pathlib.Path(__file__).resolve().parent
X = np.array([0.1, 0.3, 0.5, 0.7, 0.9])


def data(a, b):
    """Bubble pressures at two temperatures, 0.6 and 0.8 of the mean critical one."""
    reference = cv.Mixture("MEOS+GERG", [a, b], pair_set=2, estimate=False)  # of Bell & Lemmon (2016)
    x = np.column_stack([X, 1.0 - X])
    Tc = 0.5 * sum(cv.Fluid(name, "PR").T_critical for name in (a, b))
    T = np.repeat([0.6 * Tc, 0.8 * Tc], len(X))
    p = reference.bubble(np.tile(x, (2, 1)), T=T, errors="nan").p
    found = np.isfinite(p)
    if np.count_nonzero(found) < 4:
        raise ValueError(f"{np.count_nonzero(found)} points")
    return {"T/K": T[found], "p/Pa": p[found], f"x_{a}": np.tile(X, 2)[found]}


def fitted(a, b):
    r = cv.fit("PR+vdW1", [a, b], data(a, b), "kij", start={"kij": 0.0}, loss="huber")
    (summary,) = (s for s in r.sets if s["quantity"] == "p")
    return {"kij": r.parameters["kij"], "error": r.errors["kij"], "points": summary["points"],
            "deviation": summary["after"]["mean"], "deviation_before": summary["before"]["mean"]}  # fmt: skip


def pairs(n):
    """Pairs of the multi-fluid model whose substances have sets of Peng-Robinson, too, in the order of the alphabet."""
    parameters = pathlib.Path(cv.data_home(), "CorvaneS", "parameters")
    cubic = {f.name.split(";")[0] for f in (parameters / "PR").iterdir()}
    found = sorted(tuple(f.name[:-2].split("+")) for f in (parameters / "MEOS" / "GERG").glob("*;2"))
    return [p for p in found if len(p) == 2 and cubic.issuperset(p)][:n]


if __name__ == "__main__":
    table = HERE / "kij_pairs.csv"
    if not table.exists():
        with table.open("w", newline="") as f:
            csv.writer(f, lineterminator="\n").writerows([("a", "b"), *pairs(500)])
    print(sweep.run(sweep.Function(fitted), table, HERE / "kij", scheduler=sys.argv[1] if len(sys.argv) > 1 else "threads"))
    result = sweep.read(HERE / "kij").to_table().to_pandas().drop(columns="point")
    result.to_csv(HERE / "kij.csv", index=False)
    import matplotlib

    matplotlib.use("Agg")
    import matplotlib.pyplot as plt

    good = result[result.status == 0]
    fig, (left, right) = plt.subplots(1, 2, figsize=(9, 3.6))
    left.hist(good.kij, bins=50)
    left.set(xlabel="k_ij", ylabel="pairs")
    right.loglog(100 * good.deviation_before, 100 * good.deviation, ".")
    right.loglog([1e-2, 1e2], [1e-2, 1e2], "k-", lw=0.5)
    right.set(xlabel="mean deviation of p with k_ij = 0, %", ylabel="after the fit, %")
    fig.tight_layout()
    fig.savefig(HERE / "kij.png", dpi=90)
