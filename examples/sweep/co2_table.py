"""Draws what co2_table.toml has computed so far: density over T and p, with the states of two phases. Reads one column at
a time, and every n-th row, so that a table that does not fit into memory can be looked at."""

import pathlib
import sys

import matplotlib

matplotlib.use("Agg")
import matplotlib.pyplot as plt
import numpy as np
import pyarrow.compute as pc

from corvane import sweep

HERE = pathlib.Path(__file__).resolve().parent
folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else HERE / "co2_table"
data = sweep.read(folder)
step = max(1, data.count_rows() // 300_000)
rows = data.to_table(columns=["T", "p", "rho", "phases", "row"], filter=(pc.field("row") - pc.multiply(
    pc.divide(pc.field("row"), step), step)) == 0).to_pandas()  # fmt: skip
fig, ax = plt.subplots(figsize=(7, 4.5))
image = ax.scatter(rows["T"], rows.p / 1e6, c=rows.rho, s=1, linewidths=0, rasterized=True)
two = rows[rows.phases > 1]
ax.plot(two["T"], two.p / 1e6, "r,", label="two phases")
ax.set(xlabel="T / K", ylabel="p / MPa", yscale="log", title=f"{data.count_rows()} states, {np.isnan(rows.rho).sum()} of "
       f"{len(rows)} drawn without a result")
fig.colorbar(image, label="density / (mol/m³)")
ax.legend(loc="upper left")
fig.tight_layout()
fig.savefig(folder.with_suffix(".png"), dpi=90)
