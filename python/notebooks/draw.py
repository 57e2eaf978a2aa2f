"""Runs the notebooks and leaves the last picture of each in a folder: docs/pictures, where docs/gallery.md shows them.

PYTHONPATH=build/test/python build/venv/bin/python python/notebooks/draw.py docs/pictures
"""

import contextlib
import io
import json
import pathlib
import sys

import matplotlib

matplotlib.use("Agg")
import matplotlib.pyplot as plt  # noqa: E402

for path in sorted(pathlib.Path(__file__).parent.glob("*.ipynb")):
    names = {}
    for cell in json.loads(path.read_text())["cells"]:
        if cell["cell_type"] == "code":
            with contextlib.redirect_stdout(io.StringIO()):
                exec(compile("".join(cell["source"]), path.name, "exec"), names)
    if not plt.gcf().get_constrained_layout():
        plt.gcf().tight_layout()
    plt.savefig(pathlib.Path(sys.argv[1]) / f"notebook_{path.stem}.png", dpi=120 if plt.gcf().get_figwidth() < 5 else 80)
    plt.close("all")
