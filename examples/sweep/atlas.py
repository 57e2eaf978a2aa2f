"""An atlas of binary phase behaviour: all pairs of 60 substances by Peng-Robinson, classified after van Konynenburg & Scott.

    python atlas.py [threads:2 | local:2 | ADDRESS]

k_ij is the published one of the data home where there is one; else that of Chueh & Prausnitz (AIChE J. 13 (1967) 1099) from
the critical volumes, k = 1 - (2 (v1 v2)^(1/6) / (v1^(1/3) + v2^(1/3)))^3. Leaves atlas/ (the dataset), atlas.csv, atlas.png,
and atlas_compared.csv: the types of pairs that are known from measurements (types.csv).
"""

import csv
import itertools
import pathlib
import sys

import numpy as np

import corvane as cv
from corvane import sweep

HERE = pathlib.Path(__file__).resolve().parent
TYPES = ["I", "II", "III", "IV", "V", "VI", ""]


def pair(a, b):
    """One pair: a row of the dataset."""
    mixture = cv.Mixture("PR+vdW1", [a, b])
    source = "published"
    if mixture.estimated:
        v = [1.0 / cv.Fluid(name, "PR").rho_critical for name in (a, b)]
        mixture.set_pair_parameter(a, b, 1.0 - (2.0 * (v[0] * v[1]) ** (1 / 6) / (v[0] ** (1 / 3) + v[1] ** (1 / 3))) ** 3)
        source = "predicted"
    found = mixture.binary_type()
    return {"type": found.type, "azeotrope": int(found.azeotrope), "heteroazeotrope": int(found.heteroazeotrope),
            "kij": mixture.pair_parameter(a, b), "kij_source": source, "why": found.why}  # fmt: skip


def compute(scheduler, folder=HERE / "atlas", names=None):
    names = names or (HERE / "substances.txt").read_text().split()
    table = pathlib.Path(folder).with_suffix(".pairs.csv")
    with table.open("w", newline="") as f:
        csv.writer(f, lineterminator="\n").writerows([("a", "b"), *itertools.combinations(names, 2)])
    report = sweep.run(sweep.Function(f"{HERE / 'atlas.py'}:pair"), table, folder, scheduler=scheduler, rows=30)
    print(report)
    return sweep.read(folder).to_table().to_pandas()


def label(row):
    """As BinaryType writes it: II-HA."""
    suffix = "H" * int(row.heteroazeotrope == 1) + "A" * int(row.azeotrope == 1)
    return (row.type or "?") + (f"-{suffix}" if suffix else "")


def compare(atlas, file):
    found = {frozenset((row.a, row.b)): row for row in atlas.itertuples() if row.status == 0}
    with (HERE / "types.csv").open() as f:
        known = [row for row in csv.DictReader(f) if frozenset((row["a"], row["b"])) in found]
    rows = [(k["a"], k["b"], k["type"], found[frozenset((k["a"], k["b"]))], k["source"]) for k in known]
    with file.open("w", newline="") as f:
        out = csv.writer(f, lineterminator="\n")
        out.writerow(("a", "b", "measured", "here", "kij", "kij_source", "source"))
        out.writerows((a, b, t, label(r), f"{r.kij:.4g}", r.kij_source, s) for a, b, t, r, s in rows)
    agree = sum(r.type in t.split("/") for _, _, t, r, _ in rows)
    print(f"{agree} of {len(rows)} pairs of known type have it here")
    for a, b, t, r, _ in rows:
        if r.type not in t.split("/"):
            print(f"  {a} + {b}: measured {t}, here {label(r)} (k_ij {r.kij:.3g}, {r.kij_source})")


def draw(atlas, file):
    import matplotlib

    matplotlib.use("Agg")
    import matplotlib.pyplot as plt
    from matplotlib.colors import ListedColormap

    names = sorted({*atlas.a, *atlas.b}, key=lambda name: cv.Fluid(name, "PR").T_critical)
    at = {name: k for k, name in enumerate(names)}
    grid = np.full((len(names), len(names)), np.nan)
    marks = {"azeotrope": [], "heteroazeotrope": []}
    for row in atlas.itertuples():
        i, j = sorted((at[row.a], at[row.b]))
        grid[j, i] = TYPES.index(row.type if isinstance(row.type, str) else "")
        for kind, where in marks.items():
            if getattr(row, kind) == 1:
                where.append((i, j))
    fig, ax = plt.subplots(figsize=(11, 11))
    colours = ListedColormap(["#dfe9f3", "#9ec5e8", "#f2b26b", "#b07cc6", "#7fc97f", "#e377c2", "#d62728"])
    image = ax.imshow(grid, cmap=colours, vmin=-0.5, vmax=6.5)
    for kind, style in (("azeotrope", "k."), ("heteroazeotrope", "kx")):
        if marks[kind]:
            ax.plot(*zip(*marks[kind]), style, ms=3, mew=0.6, label=kind)
    for ticks in (ax.set_xticks, ax.set_yticks):
        ticks(range(len(names)), [cv._native.written_name(n) for n in names], fontsize=7)
    ax.tick_params(axis="x", rotation=90)
    ax.legend(loc="upper right", frameon=False)
    bar = fig.colorbar(image, ticks=range(7), shrink=0.4)
    bar.ax.set_yticklabels([*TYPES[:-1], "other"])
    ax.set_title("Types of binaries by Peng-Robinson, ordered by critical temperature")
    fig.tight_layout()
    fig.savefig(file, dpi=90)


if __name__ == "__main__":
    atlas = compute(sys.argv[1] if len(sys.argv) > 1 else "threads")
    atlas.drop(columns="point").to_csv(HERE / "atlas.csv", index=False)
    counts = atlas.type.replace("", "other").value_counts()
    print(", ".join(f"{n} {kind}" for kind, n in counts.items()), f"; {int((atlas.status != 0).sum())} failed")
    compare(atlas, HERE / "atlas_compared.csv")
    draw(atlas, HERE / "atlas.png")
