"""Draws what co2_table.toml has computed so far: density and enthalpy over T and p, averaged in each pixel. Reads one
partition after the other, so that memory is that of one partition, whatever the size of the table."""

import pathlib
import sys

import matplotlib

matplotlib.use("Agg")
import matplotlib.pyplot as plt
import numpy as np

from corvane import sweep
from corvane.sweep.command import read_file

HERE = pathlib.Path(__file__).resolve().parent
PIXELS = 400, 300


def averages(data, names, edges):
    """Of each column in each pixel of T and log p, with the number of rows and of those without a result."""
    sums, counts = {name: np.zeros(PIXELS) for name in names}, np.zeros(PIXELS)
    rows = failed = 0
    for part in data.get_fragments():  # a scan of the dataset would run ahead of the sums, up to all of it
        table = part.to_table(columns=["T", "p", "status", *names])
        column = {name: table[name].to_numpy() for name in table.column_names}
        good = column.pop("status") == 0
        rows, failed = rows + len(good), failed + np.count_nonzero(~good)
        at = column["T"][good], np.log(column["p"][good])
        counts += np.histogram2d(*at, bins=edges)[0]
        for name in names:
            sums[name] += np.histogram2d(*at, bins=edges, weights=column[name][good])[0]
    with np.errstate(invalid="ignore"):
        return {name: s / counts for name, s in sums.items()}, rows, failed


def draw(folder, file):
    _, _, design, _ = read_file(str(HERE / "co2_table.toml"))
    ends = design.rows(0, 1), design.rows(len(design) - 1, len(design))
    edges = [np.linspace(*(f(end[name][0]) for end in ends), n + 1) for name, f, n in zip("Tp", (float, np.log), PIXELS)]
    found, rows, failed = averages(sweep.read(folder), ["rho", "h", "phases"], edges)
    T, p = (0.5 * (e[1:] + e[:-1]) for e in edges)
    p = np.exp(p) / 1e6
    fig, axes = plt.subplots(1, 2, figsize=(10, 4.2), sharey=True)
    for ax, values, words in zip(axes, (found["rho"] / 1e3, found["h"] / 1e3), ("density / (mol/dm³)", "enthalpy / (kJ/mol)")):
        image = ax.pcolormesh(T, p, values.T, rasterized=True)
        ax.contour(T, p, found["phases"].T, levels=[1.5], colors="white", linewidths=1.0)
        ax.set(xlabel="T / K", yscale="log", title=words)
        fig.colorbar(image, ax=ax)
    axes[0].set_ylabel("p / MPa")
    axes[0].annotate("two phases", (260.0, 3.6), (300.0, 1.8), color="white", arrowprops={"arrowstyle": "->", "color": "white"})
    fig.suptitle(f"0.95 CO2 + 0.02 nitrogen + 0.02 methane + 0.01 hydrogen, PR: {rows:,} states, {failed} without a result")
    fig.tight_layout()
    fig.savefig(file, dpi=80)


if __name__ == "__main__":
    folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else HERE / "co2_table"
    draw(folder, folder.with_suffix(".png"))
